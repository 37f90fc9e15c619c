#include "log/zor_logbinfile.h"

#include <cstring>

namespace {

// Searched in this order, so a longer word wins over a shorter one that
// begins the same way.
const char* const kCommandWords[] = {
    "*!SETT_RESET",
    "*@SETT_RESET",
    "*!CNCT_RFU:",
    "*!CNCT_RCS:",
    "*!ACL_RESET",
    "*@ACL_RESET",
    "*?FUEL_UN",
    "*#FUEL_UN",
    "*!CANLOG",
    "*@CANLOG",
    "*>PASS:",
    "*?USSD:",
    "*#USSD:",
    "*?ACCEL",
    "*#ACCEL",
    "*?SNDTH",
    "*#SNDTH",
    "*>TMKEY",
    "*<TMKEY",
    "*!ACSD:",
    "*!SYNC:",
    "*?AN2G",
    "*#AN2G",
    "*?FUEL",
    "*#FUEL",
    "*!RCSD",
    "*#RCSD",
    "*!AVD:",
    "*!OFF:",
    "*!PASS",
    "*?PASS",
    "*?DISP",
    "*#DISP",
    "*?PING",
    "*#PING",
    "*?SAT",
    "*#SAT",
    "*!ON:",
    "*!U2S",
    "*@U2S",
    "*>U2S",
    "*<U2S",
    "*!S2U",
    "*@S2U",
    "*>S2U",
    "*<S2U",
    "*!GN",
    "*!GY",
    "*!G2",
    "*!G3",
    "*!1Y",
    "*!1N",
    "*!2Y",
    "*!2N",
    "*!3Y",
    "*!3N",
    "*!4Y",
    "*!4N",
    "*!TM",
    "*?TM",
    "*#TM",
    "UPRI",
    "*?V",
    "*#V",
    "*?S",
    "*#S",
    "*?A",
    "*#A",
    "*?I",
    "*#I",
    "*?L",
    "*#L",
    "*?R",
    "*#R",
    "*>T",
    "*<T",
    "*>A",
    "*<A",
    "*>S",
    "*<S",
    "*@C",
    "*!W",
    "*@W",
    "*!R",
    "*@R",
    "*!U",
    "*@U",
    "*!P",
    "*@P",
    "UPR",
    "UPA",
};

const int kHeaderSize = 16;
// Only this many data bytes are looked at for the command word.
const int kWordWindow = 12;

} // namespace

ZOR_LogBinFile::ZOR_LogBinFile(QString fileName, QObject* parent)
    : QObject(parent)
    , m_qsFileName(fileName)
    , m_file(fileName)
    , m_clock([] { return QDateTime::currentDateTime(); })
{
    if (m_file.open(QIODevice::WriteOnly)) {
        m_stream.setDevice(&m_file);
        m_file.close();
    }
}

void ZOR_LogBinFile::setClock(std::function<QDateTime()> clock)
{
    m_clock = std::move(clock);
}

int ZOR_LogBinFile::getLenCommand(QString text)
{
    for (const char* word : kCommandWords) {
        if (text.startsWith(QLatin1String(word)))
            return static_cast<int>(std::strlen(word));
    }
    return 0;
}

bool ZOR_LogBinFile::openForAppend()
{
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append);
}

void ZOR_LogBinFile::writeCut(const QString& text, int count)
{
    const QByteArray bytes = text.toLocal8Bit();
    m_file.write(bytes.constData(), qMin(count, bytes.size()));
}

void ZOR_LogBinFile::writeHex(const char* bytes, int size)
{
    // Round trip through the local encoding first: the log shows what the
    // local text of these bytes is made of, not the bytes themselves.
    const QString decoded = QString::fromLocal8Bit(bytes, size);
    writeCut(QString::fromLatin1(decoded.toLocal8Bit().toHex()), decoded.length());
}

void ZOR_LogBinFile::writeStamp()
{
    write(m_clock().toString(QStringLiteral("dd.MM.yyyy hh:mm:ss:zzz  ")));
}

void ZOR_LogBinFile::writeEntryEnd()
{
    write(QStringLiteral("\r--------------\r"));
    m_file.flush();
    m_file.close();
}

void ZOR_LogBinFile::setLogStr(QString text)
{
    if (!openForAppend())
        return;
    writeStamp();
    write(text);
    writeEntryEnd();
}

void ZOR_LogBinFile::setLogBuf(bool isRead, unsigned char* buf, int len)
{
    if (!openForAppend())
        return;
    writeStamp();
    write(isRead ? QStringLiteral("Прочитано") : QStringLiteral("Записано"));
    write(QStringLiteral("\r"));

    // The header line always covers 16 bytes; a shorter block counts as
    // padded with zeros rather than reading past it.
    char header[kHeaderSize] = {};
    if (buf && len > 0)
        std::memcpy(header, buf, static_cast<size_t>(qMin(len, kHeaderSize)));
    writeHex(header, kHeaderSize);
    write(QStringLiteral("\r"));

    if (!buf || len <= kHeaderSize)
        return; // entry left open on purpose, see the class comment

    const char* data = reinterpret_cast<const char*>(buf) + kHeaderSize;
    const int n = qMin(len - kHeaderSize, kWordWindow);
    char window[kWordWindow + 1] = {};
    std::memcpy(window, data, static_cast<size_t>(n));
    const QString dataText = QString::fromLatin1(window).leftJustified(n + 1, QLatin1Char(' ')).left(n);
    const int wordLength = getLenCommand(dataText);

    write(dataText.left(wordLength).leftJustified(wordLength, QLatin1Char(' ')));
    write(QStringLiteral("\r"));
    writeHex(data + wordLength, len - kHeaderSize - wordLength);
    writeEntryEnd();
}
