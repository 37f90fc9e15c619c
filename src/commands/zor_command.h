#ifndef ZOR_COMMAND_H
#define ZOR_COMMAND_H

// A named command of the console's saved list. Default commands come from
// the shipped list and are never written to the user's file.

#include <QString>

class ZOR_Command
{
public:
    ZOR_Command(const QString& qsName, const QString& qsCommand);

    void setName(const QString& qsName) { this->m_qsName = qsName; }
    QString getName() const { return m_qsName; }
    // The text exactly as typed in the console, backslash escapes included.
    void setCommand(const QString& qsCommand) { this->m_qsCommand = qsCommand; }
    QString getCommand() const { return m_qsCommand; }
    void setDefault(bool bDefault) { this->m_bDefault = bDefault; }
    bool isDefault() const { return m_bDefault; }
    // A command that resets the terminal or its settings: the console asks
    // before it sends it. The shipped list marks its own such commands.
    void setConfirm(bool bConfirm) { this->m_bConfirm = bConfirm; }
    bool needsConfirm() const { return m_bConfirm; }

private:
    QString m_qsName;
    QString m_qsCommand;
    bool m_bDefault = false;
    bool m_bConfirm = false;
};

#endif
