#include "zor_tool.h"
#include "zor_tool_common.h"

int toolFrame(const QStringList& args)
{
    return ZorTool::fail(2, QStringLiteral("'%1' is not available in this build").arg(args.value(0)));
}

int toolUnframe(const QStringList& args)
{
    return ZorTool::fail(2, QStringLiteral("'%1' is not available in this build").arg(args.value(0)));
}

int toolCrc(const QStringList& args)
{
    return ZorTool::fail(2, QStringLiteral("'%1' is not available in this build").arg(args.value(0)));
}

