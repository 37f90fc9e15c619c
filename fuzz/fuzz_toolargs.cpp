// zor-tool's argument parsing end to end: arbitrary bytes split at NUL or
// line feed into a command line, byte 0 choosing the subcommand, run the
// way main() runs it. Arguments cannot leave the scratch folder (no "/"),
// standard input is empty, and every run starts from the same two files.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace {

QTemporaryDir* workDir;
QFile* nowhere;

struct Command
{
    const char* name;
    int (*run)(const QStringList&);
};
const Command kCommands[] = {
    {"frame", toolFrame},
    {"unframe", toolUnframe},
    {"crc8", toolCrc},
    {"crc16", toolCrc},
    {"crc32", toolCrc},
    {"decode", toolDecode},
    {"csv", toolCsv},
    {"settings", toolSettings},
    {"log", toolLog},
    {"track", toolTrack},
    {"summary", toolSummary},
};

void resetFolder()
{
    QDir dir(workDir->path());
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden | QDir::System))
        dir.remove(name);
    for (const QString& name : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        QDir(dir.filePath(name)).removeRecursively();
    QFile doc(dir.filePath(QStringLiteral("doc.xml")));
    if (doc.open(QIODevice::WriteOnly))
        doc.write("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<CONFIG>\n    <A x=\"1\" />\n</CONFIG>\n");
    QFile rec(dir.filePath(QStringLiteral("rec.bin")));
    if (rec.open(QIODevice::WriteOnly))
        rec.write(QByteArray(64, '\x01'));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    new QCoreApplication(*argc, *argv);
    workDir = new QTemporaryDir();
    if (!std::freopen("/dev/null", "r", stdin))
        return 1;
    nowhere = new QFile(QStringLiteral("/dev/null"));
    nowhere->open(QIODevice::WriteOnly);
    ZorTool::out().setDevice(nowhere);
    ZorTool::err().setDevice(nowhere);
    if (!std::freopen("/dev/null", "w", stdout))
        return 1;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1 || size > 4096)
        return 0;
    const Command& command = kCommands[data[0] % (sizeof kCommands / sizeof kCommands[0])];
    QStringList args{QString::fromLatin1(command.name)};
    QByteArray rest(reinterpret_cast<const char*>(data) + 1, int(size) - 1);
    rest.replace('\n', '\0');
    const int kMaxArgs = 12;
    for (const QByteArray& part : rest.split('\0')) {
        if (args.size() > kMaxArgs)
            break;
        const QString arg = QString::fromUtf8(part);
        if (arg.contains(QLatin1Char('/')))
            return 0; // would reach files outside the scratch folder
        args << arg;
    }
    resetFolder();
    const QString home = QDir::currentPath();
    QDir::setCurrent(workDir->path());
    const int code = command.run(args);
    QDir::setCurrent(home);
    if (code < 0 || code > 2)
        __builtin_trap(); // exit codes are 0, 1 and 2
    return 0;
}
