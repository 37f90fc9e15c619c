#include "commands/zor_command.h"

ZOR_Command::ZOR_Command(const QString& qsName_, const QString& qsCommand_)
    : m_qsName(qsName_)
    , m_qsCommand(qsCommand_)
{
}
