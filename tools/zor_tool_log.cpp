// zor-tool log: exchange logs as readable lines. The log separates its
// pieces with bare carriage returns, which a terminal would print over
// each other. A log recorded with rotation (the console's exchange file)
// is read whole with --rotated: FILE.N ... FILE.1, then FILE.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include <QFile>

#include <cstdio>

namespace {

// The older files of a rotated log, oldest first, then the file itself.
QStringList rotatedSet(const QString& path)
{
    QStringList older;
    for (int n = 1; QFile::exists(QStringLiteral("%1.%2").arg(path).arg(n)); ++n)
        older.prepend(QStringLiteral("%1.%2").arg(path).arg(n));
    return older << path;
}

} // namespace

int toolLog(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Prints exchange logs, one after the other, with their carriage-return line ends as lines. The bytes "
        "are otherwise printed as they are (the log is in the local 8-bit encoding)."));
    parser.addPositionalArgument(QStringLiteral("FILE"),
        QStringLiteral("a log file, or - for standard input; more may follow"), QStringLiteral("FILE..."));
    const QCommandLineOption rotated(QStringLiteral("rotated"),
        QStringLiteral("print the older files of a rotated log first "
                       "(FILE.N down to FILE.1, then FILE)"));
    parser.addOption(rotated);
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty())
        return ZorTool::fail(2, QStringLiteral("log takes one FILE or more (try log --help)"));
    QStringList files;
    for (const QString& file : positional)
        files << (parser.isSet(rotated) && file != QLatin1String("-") ? rotatedSet(file) : QStringList{file});
    for (const QString& file : files) {
        QByteArray bytes;
        QString error;
        if (!ZorTool::readFile(file, bytes, &error))
            return ZorTool::fail(2, error);
        bytes.replace("\r\n", "\n");
        bytes.replace('\r', '\n');
        if (!bytes.isEmpty() && !bytes.endsWith('\n'))
            bytes += '\n';
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    }
    return 0;
}
