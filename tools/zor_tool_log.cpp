// zor-tool log: an exchange log as readable lines. The log separates its
// pieces with bare carriage returns, which a terminal would print over
// each other.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include <cstdio>

int toolLog(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Prints an exchange log with its carriage-return line ends as lines. The bytes are "
        "otherwise printed as they are (the log is in the local 8-bit encoding)."));
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("the log file, or - for standard input"));
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    const QStringList positional = parser.positionalArguments();
    if (positional.size() != 1)
        return ZorTool::fail(2, QStringLiteral("log takes exactly one FILE (try log --help)"));
    QByteArray bytes;
    QString error;
    if (!ZorTool::readFile(positional.first(), bytes, &error))
        return ZorTool::fail(2, error);
    bytes.replace("\r\n", "\n");
    bytes.replace('\r', '\n');
    if (!bytes.isEmpty() && !bytes.endsWith('\n'))
        bytes += '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    return 0;
}
