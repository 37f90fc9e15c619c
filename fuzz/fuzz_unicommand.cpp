// The console's command line: any text is turned into bytes without fault,
// and any bytes written out with the line's escapes ("\\" for a backslash,
// "\XX" for a byte) come back as the same bytes.

#include "commands/zor_form_commands.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    ZOR_Form_Commands::getUniCommand(QString::fromUtf8(bytes));
    ZOR_Form_Commands::getUniCommand(QString::fromLatin1(bytes));

    QString escaped;
    for (const char c : bytes) {
        const uchar u = uchar(c);
        if (u == '\\')
            escaped += QLatin1String("\\\\");
        else if (u >= 0x20 && u < 0x7F)
            escaped += QLatin1Char(c);
        else
            escaped += QStringLiteral("\\%1").arg(u, 2, 16, QLatin1Char('0'));
    }
    if (ZOR_Form_Commands::getUniCommand(escaped) != bytes)
        std::abort();
    return 0;
}
