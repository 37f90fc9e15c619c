// Blocks of any length and content into the exchange log, in both
// directions, with a text entry between them.

#include "log/zor_logbinfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstddef>
#include <cstdint>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QString path = QDir::temp().filePath(
        QStringLiteral("fuzz_logbuf_%1.log").arg(QCoreApplication::applicationPid()));
    QFile::remove(path);
    {
        ZOR_LogBinFile log(path);
        // Exactly the given bytes on the heap, so a read past them is caught.
        std::vector<unsigned char> block(data, data + size);
        log.setLogBuf(size > 0 && (data[0] & 1), block.data(), int(size));
        log.setLogStr(QString::fromUtf8(reinterpret_cast<const char*>(data), int(size)));
        const size_t half = size / 2;
        std::vector<unsigned char> tail(data + half, data + size);
        log.setLogBuf(false, tail.data(), int(tail.size()));
        ZOR_LogBinFile::getLenCommand(QString::fromLatin1(reinterpret_cast<const char*>(data), int(size)));
    }
    QFile::remove(path);
    return 0;
}
