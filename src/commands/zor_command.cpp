#include "commands/zor_command.h"

ZOR_Command::ZOR_Command(const QString& qsName_, const QString& qsCommand_)
    : qsName(qsName_)
    , qsCommand(qsCommand_)
{
}
