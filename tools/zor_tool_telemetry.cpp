#include "zor_tool.h"
#include "zor_tool_common.h"

int toolDecode(const QStringList& args)
{
    return ZorTool::fail(2, QStringLiteral("'%1' is not available in this build").arg(args.value(0)));
}

int toolCsv(const QStringList& args)
{
    return ZorTool::fail(2, QStringLiteral("'%1' is not available in this build").arg(args.value(0)));
}

