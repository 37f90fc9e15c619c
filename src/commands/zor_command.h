#ifndef ZOR_COMMAND_H
#define ZOR_COMMAND_H

// A named command of the console's saved list. Default commands come from
// the shipped list and are never written to the user's file.

#include <QString>

class ZOR_Command
{
public:
    ZOR_Command(const QString& qsName, const QString& qsCommand);

    void setName(const QString& qsName) { this->qsName = qsName; }
    QString getName() const { return qsName; }
    // The text exactly as typed in the console, backslash escapes included.
    void setCommand(const QString& qsCommand) { this->qsCommand = qsCommand; }
    QString getCommand() const { return qsCommand; }
    void setDefault(bool bDefault) { this->bDefault = bDefault; }
    bool isDefault() const { return bDefault; }
    // A command that resets the terminal or its settings: the console asks
    // before it sends it. The shipped list marks its own such commands.
    void setConfirm(bool bConfirm) { this->bConfirm = bConfirm; }
    bool needsConfirm() const { return bConfirm; }

private:
    QString qsName;
    QString qsCommand;
    bool bDefault = false;
    bool bConfirm = false;
};

#endif
