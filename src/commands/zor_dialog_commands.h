#ifndef ZOR_DIALOG_COMMANDS_H
#define ZOR_DIALOG_COMMANDS_H

// The console's saved commands: the shipped list plus the user's own, file
// "/Localization/Temp/commands.xml", records COMMAND(name, cmnd). Every
// change made from the console is written to the user's file at once.
// The shipped file may mark a record confirm="1" (a reset of the terminal or
// of its settings); the console asks before it sends such a command. The
// user's file holds names and texts only.

#include "commands/zor_command.h"
#include "store/zor_dialog_xmllist.h"

#include <QSet>
#include <QVector>

class ZOR_Dialog_Commands : public ZOR_Dialog_XmlList
{
    Q_OBJECT

public:
    explicit ZOR_Dialog_Commands(QWidget* parent = nullptr);
    ~ZOR_Dialog_Commands() override;

    // The free-command entry, then every command's name in list order.
    void getListCommandsName(QStringList& list) const;
    ZOR_Command* getCommand4Name(const QString& qsName) const;
    ZOR_Command* getCommand4Command(const QString& qsCommand) const;
    bool isUniqueName(const QString& qsName) const;
    // "Command<N>" with the next free number, never a name in use.
    QString getNameNewCommand() const;
    // One more than the largest N of the names "<prefix><N>", at least 1.
    int getTitleCount(const QString& qsPrefix) const;

    // Both write the user's file at once and announce the change. A default
    // command is never changed: updateCommand refuses it (returns false).
    bool setNewCommand(const QString& qsName, const QString& qsCommand);
    bool updateCommand(const QString& qsName, const QString& qsCommand);

    // The console's save actions with their questions. Both return the name
    // the text was saved under, or "" when nothing was saved.
    // saveCommand: replace the text of this saved command after asking; a
    // default command is never overwritten, it is saved as a new one instead.
    QString saveCommand(QWidget* parent, const QString& qsName, const QString& qsCommand);
    // saveCommandAs: ask for a name (proposing a free one) and save under it;
    // an existing user command is replaced after a warning, a default
    // command's name sends the user back to choose another.
    QString saveCommandAs(QWidget* parent, const QString& qsCommand);

    const QVector<ZOR_Command*>& commands() const { return m_vCommands; }

signals:
    void signal_ListCommands_Change();

protected:
    void initNewItem(QTreeWidgetItem* item) override;
    bool validateBeforeSave() override;
    QString dedupKey(const QStringList& fields) override;
    QString confirmDeleteText() override;
    void appendRecord(const QStringList& fields, bool isDefault) override;
    void clearRecords() override;
    bool writeFileList();

private:
    bool commitChange();
    void fillTree();

    QVector<ZOR_Command*> m_vCommands;
    // Names of the shipped commands marked confirm="1", read with the list.
    QSet<QString> m_confirmNames;
    bool m_bConfirmNamesRead = false;
};

#endif
