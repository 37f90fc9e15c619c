#include "commands/zor_dialog_commands.h"

#include "module/zor_language.h"

#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include <climits>

namespace {
enum Column { NameColumn = 1, CommandColumn = 2 };
const char* const kNewCommandStem = "Command";

// Tab in the name goes on to the command of the same row, Shift+Tab in the
// command back to its name (the tree itself would go to the next row).
class FieldTabDelegate : public QStyledItemDelegate
{
public:
    explicit FieldTabDelegate(QTreeWidget* tree)
        : QStyledItemDelegate(tree)
        , lpTree(tree)
    {
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* editor = qobject_cast<QWidget*>(object);
        if (!editor || event->type() != QEvent::KeyPress)
            return QStyledItemDelegate::eventFilter(object, event);
        const int key = static_cast<QKeyEvent*>(event)->key();
        const int column = key == Qt::Key_Tab ? CommandColumn : key == Qt::Key_Backtab ? NameColumn : -1;
        QTreeWidgetItem* item = lpTree->currentItem();
        if (column < 0 || !item || lpTree->currentColumn() == column)
            return QStyledItemDelegate::eventFilter(object, event);
        emit commitData(editor);
        emit closeEditor(editor, QAbstractItemDelegate::NoHint);
        lpTree->setCurrentItem(item, column);
        lpTree->editItem(item, column);
        return true;
    }

private:
    QTreeWidget* lpTree;
};
} // namespace

ZOR_Dialog_Commands::ZOR_Dialog_Commands(QWidget* parent)
    : ZOR_Dialog_XmlList(QStringLiteral("/Localization/Temp/commands.xml"), QStringLiteral("COMMANDS"),
        QStringLiteral("COMMAND"),
        {{QStringLiteral("name"), QStringLiteral("mdln_039")}, {QStringLiteral("cmnd"), QStringLiteral("mdln_040")}},
        parent)
{
    CaptionKeys keys;
    keys.lpTitle = "mdln_033";
    keys.lpSave = "wrd_038";
    keys.lpCancel = "mdln_038";
    keys.lpAdd = "mdln_034";
    keys.lpDel = "mdln_035";
    keys.lpUp = "mdln_036";
    keys.lpDown = "mdln_037";
    setCaptionKeys(keys);
    treeWidget()->setColumnWidth(0, 45);
    treeWidget()->setColumnWidth(NameColumn, 250);
    treeWidget()->setItemDelegate(new FieldTabDelegate(treeWidget()));
    connect(this, &ZOR_Dialog_XmlList::signal_List_Change, this, &ZOR_Dialog_Commands::signal_ListCommands_Change);
    translateForm();
    readFile();
}

ZOR_Dialog_Commands::~ZOR_Dialog_Commands()
{
    qDeleteAll(vCommands);
}

void ZOR_Dialog_Commands::getListCommandsName(QStringList& list) const
{
    list << zorTr(QStringLiteral("mdln_041"));
    for (const ZOR_Command* command : vCommands)
        list << command->getName();
}

ZOR_Command* ZOR_Dialog_Commands::getCommand4Name(const QString& qsName) const
{
    for (ZOR_Command* command : vCommands) {
        if (command->getName() == qsName)
            return command;
    }
    return nullptr;
}

ZOR_Command* ZOR_Dialog_Commands::getCommand4Command(const QString& qsCommand) const
{
    for (ZOR_Command* command : vCommands) {
        if (command->getCommand() == qsCommand)
            return command;
    }
    return nullptr;
}

bool ZOR_Dialog_Commands::isUniqueName(const QString& qsName) const
{
    return isUniqueValue(NameColumn, qsName);
}

int ZOR_Dialog_Commands::getTitleCount(const QString& qsPrefix) const
{
    int nLargest = 0;
    for (const ZOR_Command* command : vCommands) {
        const QString qsName = command->getName();
        if (!qsName.startsWith(qsPrefix))
            continue;
        const QString qsNumber = qsName.mid(qsPrefix.size());
        bool bDigits = !qsNumber.isEmpty();
        for (const QChar c : qsNumber)
            bDigits = bDigits && c >= QLatin1Char('0') && c <= QLatin1Char('9');
        bool bOk = false;
        const int nNumber = bDigits ? qsNumber.toInt(&bOk) : 0;
        if (bOk && nNumber < INT_MAX && nNumber > nLargest)
            nLargest = nNumber;
    }
    return nLargest + 1;
}

QString ZOR_Dialog_Commands::getNameNewCommand() const
{
    // Unsaved rows of the editor count too, so the number moves on past them.
    const QString qsStem = QLatin1String(kNewCommandStem);
    int nNumber = getTitleCount(qsStem);
    while (!isUniqueName(qsStem + QString::number(nNumber)))
        ++nNumber;
    return qsStem + QString::number(nNumber);
}

bool ZOR_Dialog_Commands::setNewCommand(const QString& qsName, const QString& qsCommand)
{
    vCommands << new ZOR_Command(qsName, qsCommand);
    return commitChange();
}

bool ZOR_Dialog_Commands::updateCommand(const QString& qsName, const QString& qsCommand)
{
    ZOR_Command* command = getCommand4Name(qsName);
    if (command && command->isDefault())
        return false;
    if (command)
        command->setCommand(qsCommand);
    else
        vCommands << new ZOR_Command(qsName, qsCommand);
    return commitChange();
}

QString ZOR_Dialog_Commands::saveCommand(QWidget* parent, const QString& qsName, const QString& qsCommand)
{
    const ZOR_Command* command = getCommand4Name(qsName);
    if (!command || command->isDefault())
        return saveCommandAs(parent, qsCommand);
    if (ask(parent, QMessageBox::Question, QStringLiteral("%1!").arg(zorTr(QStringLiteral("wrd_005"))),
            zorTr(QStringLiteral("mdln_046")), {zorTr(QStringLiteral("wrd_001")), zorTr(QStringLiteral("wrd_002"))})
        == 1)
        return QString();
    updateCommand(qsName, qsCommand);
    return qsName;
}

QString ZOR_Dialog_Commands::saveCommandAs(QWidget* parent, const QString& qsCommand)
{
    const QString qsTitle = QStringLiteral("%1!").arg(zorTr(QStringLiteral("wrd_005")));
    QString qsName = getNameNewCommand();
    for (;;) {
        if (!askText(parent, zorTr(QStringLiteral("mdln_043")),
                QStringLiteral("%1:").arg(zorTr(QStringLiteral("mdln_044"))), qsName))
            return QString();
        qsName = qsName.trimmed();
        if (qsName.isEmpty()) {
            qsName = getNameNewCommand();
            continue;
        }
        const ZOR_Command* existing = getCommand4Name(qsName);
        if (!existing) {
            setNewCommand(qsName, qsCommand);
            return qsName;
        }
        if (existing->isDefault()) {
            if (ask(parent, QMessageBox::Question, qsTitle, zorTr(QStringLiteral("mdln_176")),
                    {zorTr(QStringLiteral("wrd_001")), zorTr(QStringLiteral("wrd_002"))})
                == 0)
                continue;
            return QString();
        }
        if (ask(parent, QMessageBox::Warning, qsTitle, zorTr(QStringLiteral("mdln_049")),
                {zorTr(QStringLiteral("wrd_003"))})
            != 0)
            return QString();
        updateCommand(qsName, qsCommand);
        return qsName;
    }
}

bool ZOR_Dialog_Commands::commitChange()
{
    const bool bWritten = writeFileList();
    fillTree();
    emit signal_ListCommands_Change();
    return bWritten;
}

bool ZOR_Dialog_Commands::writeFileList()
{
    QList<QStringList> records;
    for (const ZOR_Command* command : vCommands) {
        if (!command->isDefault())
            records << QStringList{command->getName(), command->getCommand()};
    }
    return writeRecords(records);
}

void ZOR_Dialog_Commands::fillTree()
{
    clearTree();
    for (const ZOR_Command* command : vCommands)
        addTreeRow({command->getName(), command->getCommand()}, command->isDefault());
}

void ZOR_Dialog_Commands::initNewItem(QTreeWidgetItem* item)
{
    item->setText(NameColumn, getNameNewCommand());
    item->setText(CommandColumn, QStringLiteral("CMND"));
}

bool ZOR_Dialog_Commands::validateBeforeSave()
{
    return validateUniqueColumn(NameColumn, zorTr(QStringLiteral("mdln_049")));
}

QString ZOR_Dialog_Commands::dedupKey(const QStringList& fields)
{
    return fields.value(0);
}

QString ZOR_Dialog_Commands::confirmDeleteText()
{
    return zorTr(QStringLiteral("mdln_048"));
}

void ZOR_Dialog_Commands::appendRecord(const QStringList& fields, bool isDefault)
{
    auto* command = new ZOR_Command(fields.value(0), fields.value(1));
    command->setDefault(isDefault);
    if (isDefault) {
        if (!bConfirmNamesRead) {
            bool bOk = false;
            const ZOR_XmlListFile file(QStringLiteral("COMMANDS"), QStringLiteral("COMMAND"),
                {QStringLiteral("name"), QStringLiteral("confirm")});
            for (const QStringList& record : file.read(defaultFilePath(), bOk)) {
                if (record.value(1) == QLatin1String("1"))
                    confirmNames.insert(record.value(0));
            }
            bConfirmNamesRead = true;
        }
        command->setConfirm(confirmNames.contains(command->getName()));
    }
    vCommands << command;
}

void ZOR_Dialog_Commands::clearRecords()
{
    qDeleteAll(vCommands);
    vCommands.clear();
    confirmNames.clear();
    bConfirmNamesRead = false;
}
