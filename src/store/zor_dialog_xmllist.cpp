#include "store/zor_dialog_xmllist.h"

#include "ui_zor_dialog_xmllist.h"

#include "module/zor_global.h"
#include "module/zor_language.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QInputDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QSet>

namespace {

const int kDefaultRole = Qt::UserRole + 1;

ZOR_Dialog_XmlList::Answerer& answerer()
{
    static ZOR_Dialog_XmlList::Answerer hook;
    return hook;
}

ZOR_Dialog_XmlList::TextAnswerer& textAnswerer()
{
    static ZOR_Dialog_XmlList::TextAnswerer hook;
    return hook;
}

QString attentionTitle()
{
    return QStringLiteral("%1!").arg(zorTr(QStringLiteral("wrd_005")));
}

} // namespace

ZOR_Dialog_XmlList::ZOR_Dialog_XmlList(const QString& qsFileSubPath_, const QString& qsRootElement_,
    const QString& qsRecordElement_, const QVector<ZOR_XmlListField>& fields, QWidget* parent)
    : QDialog(parent, configDialogFlags())
    , ui(new Ui::ZOR_Dialog_XmlList)
    , qsFileSubPath(qsFileSubPath_)
    , qsRootElement(qsRootElement_)
    , qsRecordElement(qsRecordElement_)
    , vFields(fields)
{
    ui->setupUi(this);
    ui->treeWidget->setColumnCount(vFields.size() + 1);
    ui->treeWidget->setColumnWidth(0, 45);

    connect(ui->toolButton_Add, &QToolButton::clicked, this, &ZOR_Dialog_XmlList::slot_pressed_Btn_Add);
    connect(ui->toolButton_Del, &QToolButton::clicked, this, &ZOR_Dialog_XmlList::slot_pressed_Btn_Del);
    connect(ui->toolButton_Up, &QToolButton::clicked, this, &ZOR_Dialog_XmlList::slot_pressed_Btn_Up);
    connect(ui->toolButton_Down, &QToolButton::clicked, this, &ZOR_Dialog_XmlList::slot_pressed_Btn_Down);
    connect(ui->pushButton_Save, &QPushButton::clicked, this, &ZOR_Dialog_XmlList::slot_pressed_Btn_Save);
    connect(ui->pushButton_Cancel, &QPushButton::clicked, this, &ZOR_Dialog_XmlList::slot_pressed_Btn_Cancel);
    connect(ui->treeWidget, &QTreeWidget::currentItemChanged, this, [this] { updateButtons(); });
    // Column 0 is the row marker; only the fields of the user's rows are edited.
    connect(ui->treeWidget, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item, int nColumn) {
        if (nColumn > 0 && !isDefaultItem(item))
            ui->treeWidget->editItem(item, nColumn);
    });

    translateForm();
    updateButtons();
}

ZOR_Dialog_XmlList::~ZOR_Dialog_XmlList()
{
    delete ui;
}

void ZOR_Dialog_XmlList::translateForm()
{
    setWindowTitle(zorTr(QLatin1String(m_keys.lpTitle)));
    ui->pushButton_Save->setText(zorTr(QLatin1String(m_keys.lpSave)));
    ui->pushButton_Cancel->setText(zorTr(QLatin1String(m_keys.lpCancel)));
    ui->toolButton_Add->setToolTip(zorTr(QLatin1String(m_keys.lpAdd)));
    ui->toolButton_Del->setToolTip(zorTr(QLatin1String(m_keys.lpDel)));
    ui->toolButton_Up->setToolTip(zorTr(QLatin1String(m_keys.lpUp)));
    ui->toolButton_Down->setToolTip(zorTr(QLatin1String(m_keys.lpDown)));
    QStringList headers{QStringLiteral("№")};
    for (const ZOR_XmlListField& field : vFields)
        headers << zorTr(field.qsCaptionKey);
    ui->treeWidget->setHeaderLabels(headers);
}

// --- files -----------------------------------------------------------------

QString ZOR_Dialog_XmlList::localizedFileSubPath(const QString& qsSuffix) const
{
    const int nDot = qsFileSubPath.lastIndexOf(QLatin1Char('.'));
    if (nDot < 0)
        return qsFileSubPath + qsSuffix;
    return qsFileSubPath.left(nDot) + qsSuffix + qsFileSubPath.mid(nDot);
}

QString ZOR_Dialog_XmlList::defaultFilePath() const
{
    const QString qsLanguage = programLanguage();
    if (!qsLanguage.isEmpty() && qsLanguage != QLatin1String("ru")) {
        const QString qsCandidate = appSharedDataDirectory() + localizedFileSubPath(QLatin1Char('_') + qsLanguage);
        if (QFileInfo::exists(qsCandidate))
            return qsCandidate;
    }
    return appSharedDataDirectory() + qsFileSubPath;
}

QString ZOR_Dialog_XmlList::userFilePath() const
{
    return appUserDataDirectory() + localizedFileSubPath(QStringLiteral("_user"));
}

QList<QStringList> ZOR_Dialog_XmlList::readRecords(const QString& qsPath, bool& bOk) const
{
    return listFile().read(qsPath, bOk);
}

ZOR_XmlListFile ZOR_Dialog_XmlList::listFile() const
{
    QStringList attributes;
    for (const ZOR_XmlListField& field : vFields)
        attributes << field.qsAttribute;
    return ZOR_XmlListFile(qsRootElement, qsRecordElement, attributes);
}

bool ZOR_Dialog_XmlList::readFile()
{
    clearRecords();
    clearTree();
    qsReadLanguage = programLanguage();

    bool bDefaultOk = true;
    bool bUserOk = true;
    const QList<QStringList> defaults = readRecords(defaultFilePath(), bDefaultOk);
    const QList<QStringList> users = readRecords(userFilePath(), bUserOk);
    bUserFileBad = !bUserOk;

    QSet<QString> keys;
    const auto take = [&](QStringList fields, bool isDefault) {
        fixupRecord(fields);
        const QString qsKey = dedupKey(fields);
        // Only the user's copy is checked: it must not repeat what is
        // already listed, but the shipped list is taken as it is.
        if (!qsKey.isEmpty()) {
            if (!isDefault && keys.contains(qsKey))
                return;
            keys.insert(qsKey);
        }
        addTreeRow(fields, isDefault);
        appendRecord(fields, isDefault);
    };
    for (const QStringList& fields : defaults)
        take(fields, true);
    for (const QStringList& fields : users)
        take(fields, false);
    updateButtons();
    return bUserOk;
}

bool ZOR_Dialog_XmlList::keepBadUserFile()
{
    const QString qsPath = userFilePath();
    if (!QFileInfo::exists(qsPath))
        return true;
    QString qsCopy = qsPath + QStringLiteral(".bad");
    for (int n = 2; QFileInfo::exists(qsCopy); ++n)
        qsCopy = qsPath + QStringLiteral(".bad") + QString::number(n);
    // A file too large for a list is moved rather than copied: copying
    // gigabytes would keep the user waiting and may not fit the disk.
    const bool bMove = QFileInfo(qsPath).size() > nMaxFileBytes;
    if (!(bMove ? QFile::rename(qsPath, qsCopy) : QFile::copy(qsPath, qsCopy))) {
        ask(this, QMessageBox::Critical, attentionTitle(),
            zorTr(QStringLiteral("lst_009")).arg(QDir::toNativeSeparators(qsPath)), {zorTr(QStringLiteral("wrd_003"))});
        return false;
    }
    ask(this, QMessageBox::Warning, attentionTitle(),
        zorTr(QStringLiteral("lst_008")).arg(QDir::toNativeSeparators(qsPath), QDir::toNativeSeparators(qsCopy)),
        {zorTr(QStringLiteral("wrd_003"))});
    return true;
}

bool ZOR_Dialog_XmlList::writeRecords(const QList<QStringList>& records)
{
    if (bUserFileBad) {
        if (!keepBadUserFile())
            return false;
        bUserFileBad = false;
    }
    const QString qsPath = userFilePath();
    QDir().mkpath(QFileInfo(qsPath).absolutePath());
    QSaveFile file(qsPath);
    // Saving quietly into nowhere would let the user believe the list is
    // kept; the old file stays whole either way.
    const auto failed = [&] {
        ask(this, QMessageBox::Critical, attentionTitle(),
            zorTr(QStringLiteral("lst_011")).arg(QDir::toNativeSeparators(qsPath), file.errorString()),
            {zorTr(QStringLiteral("wrd_003"))});
        return false;
    };
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return failed();

    if (!listFile().write(&file, records)) {
        file.cancelWriting();
        return failed();
    }
    return file.commit() || failed();
}

bool ZOR_Dialog_XmlList::writeFile()
{
    if (!validateBeforeSave())
        return false;
    QList<QStringList> records;
    for (int i = 0; i < ui->treeWidget->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = ui->treeWidget->topLevelItem(i);
        if (isDefaultItem(item) || shouldSkipRow(item))
            continue;
        QStringList fields = rowFields(item);
        prepareSaveRecord(fields);
        records << fields;
    }
    if (!writeRecords(records))
        return false;
    readFile();
    emit signal_List_Change();
    return true;
}

void ZOR_Dialog_XmlList::reload()
{
    readFile();
}

void ZOR_Dialog_XmlList::reloadIfLanguageChanged()
{
    if (programLanguage() == qsReadLanguage)
        return;
    translateForm();
    readFile();
    emit signal_List_Change();
}

void ZOR_Dialog_XmlList::showForm()
{
    reloadIfLanguageChanged();
    show();
    raise();
    activateWindow();
}

// --- tree ------------------------------------------------------------------

QTreeWidget* ZOR_Dialog_XmlList::treeWidget() const
{
    return ui->treeWidget;
}

bool ZOR_Dialog_XmlList::isDefaultItem(const QTreeWidgetItem* item) const
{
    return item && item->data(0, kDefaultRole).toBool();
}

QStringList ZOR_Dialog_XmlList::rowFields(const QTreeWidgetItem* item) const
{
    QStringList fields;
    for (int i = 0; i < vFields.size(); ++i)
        fields << item->text(i + 1);
    return fields;
}

QTreeWidgetItem* ZOR_Dialog_XmlList::addTreeRow(const QStringList& fields, bool isDefault)
{
    auto* item = new QTreeWidgetItem(ui->treeWidget);
    item->setData(0, kDefaultRole, isDefault);
    for (int i = 0; i < vFields.size(); ++i)
        item->setText(i + 1, fields.value(i));
    if (isDefault) {
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        for (int i = 0; i <= vFields.size(); ++i)
            item->setForeground(i, palette().brush(QPalette::Disabled, QPalette::Text));
        item->setToolTip(0, zorTr(QStringLiteral("lst_010")));
    } else {
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable);
    }
    item->setText(0, QString::number(ui->treeWidget->topLevelItemCount()));
    return item;
}

QTreeWidgetItem* ZOR_Dialog_XmlList::addNewItem()
{
    QTreeWidgetItem* item = addTreeRow(QStringList(), false);
    initNewItem(item);
    ui->treeWidget->setCurrentItem(item);
    ui->treeWidget->scrollToItem(item);
    return item;
}

void ZOR_Dialog_XmlList::clearTree()
{
    ui->treeWidget->clear();
}

void ZOR_Dialog_XmlList::renumberRows()
{
    for (int i = 0; i < ui->treeWidget->topLevelItemCount(); ++i)
        ui->treeWidget->topLevelItem(i)->setText(0, QString::number(i + 1));
}

void ZOR_Dialog_XmlList::updateButtons()
{
    QTreeWidgetItem* item = ui->treeWidget->currentItem();
    const int nIndex = item ? ui->treeWidget->indexOfTopLevelItem(item) : -1;
    ui->toolButton_Del->setEnabled(item && !isDefaultItem(item));
    ui->toolButton_Up->setEnabled(nIndex > 0);
    ui->toolButton_Down->setEnabled(nIndex >= 0 && nIndex < ui->treeWidget->topLevelItemCount() - 1);
}

void ZOR_Dialog_XmlList::moveSelectedItem(int nDirection)
{
    QTreeWidgetItem* item = ui->treeWidget->currentItem();
    if (!item || nDirection == 0)
        return;
    const int nIndex = ui->treeWidget->indexOfTopLevelItem(item);
    const int nTarget = nIndex + (nDirection < 0 ? -1 : 1);
    if (nIndex < 0 || nTarget < 0 || nTarget >= ui->treeWidget->topLevelItemCount())
        return;
    ui->treeWidget->takeTopLevelItem(nIndex);
    ui->treeWidget->insertTopLevelItem(nTarget, item);
    ui->treeWidget->setCurrentItem(item);
    renumberRows();
    updateButtons();
}

// --- unique columns --------------------------------------------------------

bool ZOR_Dialog_XmlList::isUniqueValue(int nColumn, const QString& qsValue) const
{
    for (int i = 0; i < ui->treeWidget->topLevelItemCount(); ++i) {
        if (ui->treeWidget->topLevelItem(i)->text(nColumn) == qsValue)
            return false;
    }
    return true;
}

QString ZOR_Dialog_XmlList::uniqueValue(int nColumn, const QString& qsValue) const
{
    QString qsCandidate = qsValue;
    for (int n = 2; !isUniqueValue(nColumn, qsCandidate); ++n)
        qsCandidate = QStringLiteral("%1 %2").arg(qsValue).arg(n);
    return qsCandidate;
}

bool ZOR_Dialog_XmlList::validateUniqueColumn(int nColumn, const QString& qsMessage)
{
    QSet<QString> seen;
    QStringList clashes;
    for (int i = 0; i < ui->treeWidget->topLevelItemCount(); ++i) {
        const QString qsValue = ui->treeWidget->topLevelItem(i)->text(nColumn);
        if (seen.contains(qsValue)) {
            if (!clashes.contains(qsValue))
                clashes << qsValue;
        } else {
            seen.insert(qsValue);
        }
    }
    if (clashes.isEmpty())
        return true;
    ask(this, QMessageBox::Warning, attentionTitle(),
        QStringLiteral("%1 (%2)").arg(qsMessage, clashes.join(QStringLiteral(", "))),
        {zorTr(QStringLiteral("wrd_003"))});
    return false;
}

// --- buttons ---------------------------------------------------------------

void ZOR_Dialog_XmlList::slot_pressed_Btn_Add()
{
    addNewItem();
    updateButtons();
}

void ZOR_Dialog_XmlList::slot_pressed_Btn_Del()
{
    QTreeWidgetItem* item = ui->treeWidget->currentItem();
    if (!item || isDefaultItem(item))
        return;
    const QString qsQuestion = confirmDeleteText();
    if (!qsQuestion.isEmpty()
        && ask(this, QMessageBox::Question, attentionTitle(), qsQuestion,
               {zorTr(QStringLiteral("wrd_001")), zorTr(QStringLiteral("wrd_002"))})
            != 0)
        return;
    delete item;
    renumberRows();
    updateButtons();
}

void ZOR_Dialog_XmlList::slot_pressed_Btn_Up()
{
    moveSelectedItem(-1);
}

void ZOR_Dialog_XmlList::slot_pressed_Btn_Down()
{
    moveSelectedItem(1);
}

void ZOR_Dialog_XmlList::slot_pressed_Btn_Save()
{
    if (writeFile())
        accept();
}

void ZOR_Dialog_XmlList::slot_pressed_Btn_Cancel()
{
    reject();
}

void ZOR_Dialog_XmlList::reject()
{
    readFile();
    QDialog::reject();
}

// --- message boxes ---------------------------------------------------------

int ZOR_Dialog_XmlList::ask(
    QWidget* parent, QMessageBox::Icon icon, const QString& qsTitle, const QString& qsText, const QStringList& buttons)
{
    if (answerer())
        return answerer()(icon, qsTitle, qsText, buttons);
    QMessageBox box(icon, qsTitle, qsText, QMessageBox::NoButton, parent);
    QList<QAbstractButton*> added;
    for (int i = 0; i < buttons.size(); ++i) {
        const bool bLast = i == buttons.size() - 1 && i > 0;
        added << box.addButton(buttons[i], bLast ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
    }
    box.exec();
    return added.indexOf(box.clickedButton());
}

void ZOR_Dialog_XmlList::setAnswerer(const Answerer& hook)
{
    answerer() = hook;
}

bool ZOR_Dialog_XmlList::askText(QWidget* parent, const QString& qsTitle, const QString& qsLabel, QString& qsValue)
{
    if (textAnswerer())
        return textAnswerer()(qsTitle, qsLabel, qsValue);
    bool bOk = false;
    const QString qsText = QInputDialog::getText(parent, qsTitle, qsLabel, QLineEdit::Normal, qsValue, &bOk);
    if (bOk)
        qsValue = qsText;
    return bOk;
}

void ZOR_Dialog_XmlList::setTextAnswerer(const TextAnswerer& hook)
{
    textAnswerer() = hook;
}

// --- default hooks -----------------------------------------------------------

void ZOR_Dialog_XmlList::fixupRecord(QStringList&)
{
}
void ZOR_Dialog_XmlList::initNewItem(QTreeWidgetItem*)
{
}
bool ZOR_Dialog_XmlList::validateBeforeSave()
{
    return true;
}
QString ZOR_Dialog_XmlList::dedupKey(const QStringList&)
{
    return QString();
}
QString ZOR_Dialog_XmlList::confirmDeleteText()
{
    return QString();
}
void ZOR_Dialog_XmlList::appendRecord(const QStringList&, bool)
{
}
void ZOR_Dialog_XmlList::clearRecords()
{
}
void ZOR_Dialog_XmlList::prepareSaveRecord(QStringList&)
{
}
bool ZOR_Dialog_XmlList::shouldSkipRow(QTreeWidgetItem*)
{
    return false;
}
