#include "protocol/commonfunctions.h"

#include "module/zor_cp1251.h"
#include "protocol/crc32.h"

#include <QtEndian>

#include <cctype>
#include <cstring>

namespace {

enum HeaderOffset { OffAddress1 = 4, OffAddress2 = 8, OffLength = 12, OffDataSum = 14, OffHeaderSum = 15 };

} // namespace

commonFunctions::commonFunctions()
    : m_qsSignature(QStringLiteral("@ZOR"))
    , m_signatureBytes(ZOR_Cp1251::encode(m_qsSignature))
    , m_nAddress1(0)
    , m_nAddress2(1)
{
}

unsigned char commonFunctions::getSumDataToByte(const unsigned char* data, int len)
{
    return ::getSumDataToByte(data, len);
}

unsigned char commonFunctions::getSumDataToByte(const char* data, int len)
{
    return ::getSumDataToByte(data, len);
}

unsigned char commonFunctions::getSumDataToByte(
    const unsigned char* first, int len1, const unsigned char* second, int len2, unsigned char* scratch)
{
    if (len1 < 0)
        len1 = 0;
    if (len2 < 0)
        len2 = 0;
    if (len1 + len2 < 1)
        return 0;
    if (len1)
        std::memcpy(scratch, first, static_cast<size_t>(len1));
    if (len2)
        std::memcpy(scratch + len1, second, static_cast<size_t>(len2));
    return ::getSumDataToByte(scratch, len1 + len2);
}

QByteArray commonFunctions::header(const QByteArray& data) const
{
    QByteArray h(HeaderSize, '\0');
    uchar* p = reinterpret_cast<uchar*>(h.data());
    std::memcpy(p, m_signatureBytes.constData(), qMin(4, m_signatureBytes.size()));
    qToLittleEndian<quint32>(m_nAddress1, p + OffAddress1);
    qToLittleEndian<quint32>(m_nAddress2, p + OffAddress2);
    qToLittleEndian<quint16>(static_cast<quint16>(data.size()), p + OffLength);
    p[OffDataSum] = ::getSumDataToByte(data.constData(), data.size());
    p[OffHeaderSum] = ::getSumDataToByte(p, OffHeaderSum);
    return h;
}

void commonFunctions::getHeaderCommand(const QString& text, QByteArray& header) const
{
    header = this->header(ZOR_Cp1251::encode(text));
}

void commonFunctions::getHeaderCommand(const QString& text, QByteArray& payload, QByteArray& header) const
{
    header = this->header(ZOR_Cp1251::encode(text) + payload);
}

void commonFunctions::getHeaderCommand(QByteArray& data, QByteArray& header) const
{
    header = this->header(data);
}

QByteArray commonFunctions::getUsbArrCommandToDevice(const QByteArray& data) const
{
    return header(data) + data;
}

QByteArray commonFunctions::getUsbCommandToDevice(const QString& text) const
{
    return getUsbArrCommandToDevice(ZOR_Cp1251::encode(text));
}

QByteArray commonFunctions::getUsbCommandToDevice(const QString& text, const QByteArray& payload) const
{
    return getUsbArrCommandToDevice(ZOR_Cp1251::encode(text) + payload);
}

#define ZOR_DEFINE_FIXED(name, text)                                                                                   \
    QByteArray commonFunctions::name() const                                                                           \
    {                                                                                                                  \
        return getUsbCommandToDevice(QStringLiteral(text));                                                            \
    }
#define ZOR_DEFINE_PREFIX(name, text)                                                                                  \
    QByteArray commonFunctions::name(const QByteArray& payload) const                                                  \
    {                                                                                                                  \
        return getUsbCommandToDevice(QStringLiteral(text), payload);                                                   \
    }
ZOR_FIXED_COMMANDS(ZOR_DEFINE_FIXED)
ZOR_PREFIX_COMMANDS(ZOR_DEFINE_PREFIX)
#undef ZOR_DEFINE_FIXED
#undef ZOR_DEFINE_PREFIX

QByteArray commonFunctions::getUsbCommand_Out_On(int n) const
{
    return getUsbCommandToDevice(QStringLiteral("*!%1Y").arg(n));
}

QByteArray commonFunctions::getUsbCommand_Out_Off(int n) const
{
    return getUsbCommandToDevice(QStringLiteral("*!%1N").arg(n));
}

QByteArray commonFunctions::getUsbCommand_Canlog_Ver(int version) const
{
    return getUsbCommandToDevice(QStringLiteral("*!CANLOG%1").arg(version));
}

QByteArray commonFunctions::getUsbCommand_DeviceSetTime(long t) const
{
    // The terminal reads a leading '+' as "set", a bare number as "query".
    return getUsbCommandToDevice((t >= 1 ? QStringLiteral("*!SETTIME +%1") : QStringLiteral("*!SETTIME %1")).arg(t));
}

QByteArray commonFunctions::getUsbCommand_DevicePassword(const QString& password) const
{
    return getUsbCommandToDevice(QStringLiteral("*>PASS:") + password);
}

QByteArray commonFunctions::getUsbCommand_ReadPage(uint32_t page) const
{
    QByteArray block(4, '\0');
    qToLittleEndian<quint32>(page, block.data());
    return getUsbCommandToDevice(QStringLiteral("*!R"), block);
}

QByteArray commonFunctions::getUsbCommand_TM_FileRead(uint16_t value) const
{
    QByteArray block(2, '\0');
    qToLittleEndian<quint16>(value, block.data());
    return getUsbCommandToDevice(QStringLiteral("*!DKR"), block);
}

commonFunctions::FrameFault commonFunctions::checkFrame(const QByteArray& frame, QByteArray* data) const
{
    if (frame.size() < HeaderSize)
        return FrameTruncatedHeader;
    const uchar* p = reinterpret_cast<const uchar*>(frame.constData());
    if (std::memcmp(p, m_signatureBytes.constData(), 4) != 0)
        return FrameBadSignature;
    if (p[OffHeaderSum] != ::getSumDataToByte(p, OffHeaderSum))
        return FrameBadHeaderChecksum;
    const int length = qFromLittleEndian<quint16>(p + OffLength);
    const int available = frame.size() - HeaderSize;
    if (length > available)
        return FrameLengthPastEnd;
    if (length < available)
        return FrameTrailingBytes;
    if (p[OffDataSum] != ::getSumDataToByte(p + HeaderSize, length))
        return FrameBadDataChecksum;
    if (data)
        *data = frame.mid(HeaderSize);
    return FrameOk;
}

namespace {

// XORs bytes with the key stream of qsKey (its own inverse).
void applyKeyStream(QByteArray& bytes, const QString& qsKey)
{
    const QByteArray key = ZOR_Cp1251::encode(qsKey);
    crc32 seed;
    seed.ProcessCRC(key.constData(), key.size());
    // xorshift32 must not start from 0.
    uint32_t state = seed.value() ^ 0x9E3779B9u;
    if (state == 0)
        state = 0x9E3779B9u;
    for (char& b : bytes) {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        b = char(uchar(b) ^ uchar(state >> 24));
    }
}

} // namespace

QString stringEncrypt(const QString& qsText, const QString& qsKey)
{
    QByteArray bytes = ZOR_Cp1251::encode(qsText);
    applyKeyStream(bytes, qsKey);
    return QString::fromLatin1(bytes.toHex().toUpper());
}

bool stringDecrypt(const QString& qsHex, const QString& qsKey, QString& qsText)
{
    if (qsHex.size() % 2 != 0)
        return false;
    for (const QChar c : qsHex)
        if (!std::isxdigit(uchar(c.toLatin1())) || c.unicode() > 127)
            return false;
    QByteArray bytes = QByteArray::fromHex(qsHex.toLatin1());
    applyKeyStream(bytes, qsKey);
    qsText = ZOR_Cp1251::decode(bytes);
    return true;
}
