#include "protocol/zor_bits.h"

#include <QtEndian>

#include <atomic>
#include <type_traits>

namespace {

std::atomic<int> g_mode32{ZOR_ByteOrderUnset};
std::atomic<int> g_mode64{ZOR_ByteOrderUnset};

template <typename T>
T applyMode(std::atomic<int>& mode, T value)
{
    int expected = ZOR_ByteOrderUnset;
    mode.compare_exchange_strong(expected, ZOR_ByteOrderSwap);
    return mode.load() == ZOR_ByteOrderKeep
        ? value
        : T(qbswap(static_cast<typename std::conditional<sizeof(T) == 8, quint64, quint32>::type>(value)));
}

} // namespace

uint32_t htonl32(uint32_t value)
{
    return applyMode(g_mode32, value);
}
uint64_t htonl64(uint64_t value)
{
    return applyMode(g_mode64, value);
}
int htonl32Mode()
{
    return g_mode32.load();
}
int htonl64Mode()
{
    return g_mode64.load();
}
void setHtonl32Mode(int mode)
{
    g_mode32.store(mode);
}
void setHtonl64Mode(int mode)
{
    g_mode64.store(mode);
}

int getBitFromByte(unsigned char byte, int n)
{
    return (n >= 0 && n <= 7) ? (byte >> n) & 1 : 0;
}

void setBitToByte(unsigned char& byte, int n, int bit)
{
    if (n < 0 || n > 7)
        return;
    const unsigned char mask = static_cast<unsigned char>(1u << n);
    byte = static_cast<unsigned char>(bit ? (byte | mask) : (byte & ~mask));
}

int get2BitFromByte(unsigned char byte, int n)
{
    return (n >= 0 && n <= 6) ? (byte >> n) & 3 : 0;
}

int getBitFromStrByte(const QString& text, int n)
{
    const QString t = text.trimmed();
    const bool hex = t.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    bool ok = false;
    const uint value = hex ? t.mid(2).toUInt(&ok, 16) : t.toUInt(&ok, 10);
    return ok && value <= 0xFF ? getBitFromByte(static_cast<unsigned char>(value), n) : 0;
}

QString getStrByteFromBit(int n)
{
    return QString::number((n >= 0 && n <= 7) ? 1u << n : 0u);
}

int zorHexDigitValue(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u >= 'a' && u <= 'f')
        return u - 'a' + 10;
    if (u >= 'A' && u <= 'F')
        return u - 'A' + 10;
    return -1;
}
