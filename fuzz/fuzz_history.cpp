// Arbitrary bytes as the console's command-history file: it loads, browses
// from end to end, saves, and the saved file loads back as the same
// entries.

#include "commands/zor_commandhistory.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

namespace {

QTemporaryDir* workDir;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    new QCoreApplication(*argc, *argv);
    workDir = new QTemporaryDir();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = workDir->filePath(QStringLiteral("history.txt"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.close();
    ZOR_CommandHistory history;
    if (!history.load(path))
        return 0;
    QString line;
    int walked = 0;
    while (history.older(QStringLiteral("edited"), line))
        ++walked;
    if (walked != history.entries().size())
        __builtin_trap();
    while (history.newer(line)) { }
    if (walked > 0 && line != QLatin1String("edited"))
        __builtin_trap(); // Down past the newest gives the edited line back
    const QString copy = workDir->filePath(QStringLiteral("copy.txt"));
    if (!history.save(copy))
        return 0;
    ZOR_CommandHistory again;
    if (!again.load(copy) || again.entries() != history.entries())
        __builtin_trap();
    return 0;
}
