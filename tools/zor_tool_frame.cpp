// frame, unframe, crc8/crc16/crc32: framed commands and checksums.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include "module/zor_cp1251.h"
#include "protocol/commonfunctions.h"
#include "protocol/crc32.h"
#include "protocol/zor_checksum.h"

#include <QCommandLineParser>

#include <cstdio>

namespace {

const uchar* bytesOf(const QByteArray& b)
{
    return reinterpret_cast<const uchar*>(b.constData());
}

QString faultText(commonFunctions::FrameFault fault, const QByteArray& frame)
{
    switch (fault) {
    case commonFunctions::FrameTruncatedHeader:
        return QStringLiteral("truncated frame: %1 bytes, the header alone is %2")
            .arg(frame.size())
            .arg(int(commonFunctions::HeaderSize));
    case commonFunctions::FrameBadSignature:
        return QStringLiteral("wrong signature: %1 (expected 405a4f52, \"@ZOR\")").arg(ZorTool::toHex(frame.left(4)));
    case commonFunctions::FrameBadHeaderChecksum:
        return QStringLiteral("bad header checksum: %1, the header bytes give %2")
            .arg(ZorTool::toHex(frame.mid(15, 1)))
            .arg(getSumDataToByte(frame.constData(), 15), 2, 16, QLatin1Char('0'));
    case commonFunctions::FrameLengthPastEnd:
    case commonFunctions::FrameTrailingBytes: {
        const int length = uchar(frame[12]) | (uchar(frame[13]) << 8);
        return QStringLiteral("%1: the header gives %2 data bytes, the frame has %3")
            .arg(fault == commonFunctions::FrameLengthPastEnd ? QStringLiteral("length past the end")
                                                              : QStringLiteral("bytes after the data"))
            .arg(length)
            .arg(frame.size() - commonFunctions::HeaderSize);
    }
    case commonFunctions::FrameBadDataChecksum:
        return QStringLiteral("bad data checksum: %1, the data bytes give %2")
            .arg(ZorTool::toHex(frame.mid(14, 1)))
            .arg(getSumDataToByte(
                     frame.constData() + commonFunctions::HeaderSize, frame.size() - commonFunctions::HeaderSize),
                2, 16, QLatin1Char('0'));
    case commonFunctions::FrameOk: break;
    }
    return QString();
}

struct CrcKind
{
    const char* name;
    int digits;
    quint32 (*compute)(const QByteArray&);
};

const CrcKind kCrcKinds[] = {
    {"crc8", 2, [](const QByteArray& b) -> quint32 { return SummCRC8(bytesOf(b), b.size()); }},
    {"crc16", 4, [](const QByteArray& b) -> quint32 { return SummCRC16(bytesOf(b), b.size()); }},
    {"crc32", 8,
        [](const QByteArray& b) -> quint32 {
            crc32 c;
            c.ProcessCRC(bytesOf(b), b.size());
            return c.value();
        }},
};

} // namespace

int toolFrame(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Prints the framed command for TEXT (Windows-1251) as lower-case hex."));
    parser.addPositionalArgument(QStringLiteral("TEXT"), QStringLiteral("command text, e.g. \"*?V\""));
    const QCommandLineOption payloadOption(QStringLiteral("payload"),
        QStringLiteral("binary parameter block appended to the text"), QStringLiteral("HEX"));
    parser.addOption(payloadOption);
    const QCommandLineOption rawOption(QStringLiteral("raw"), QStringLiteral("write the frame's bytes instead of hex"));
    parser.addOption(rawOption);
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    const QStringList positional = parser.positionalArguments();
    if (positional.size() != 1)
        return ZorTool::fail(2, QStringLiteral("frame takes exactly one TEXT (try frame --help)"));
    QByteArray payload;
    QString error;
    if (parser.isSet(payloadOption) && !ZorTool::parseHex(parser.value(payloadOption), payload, &error))
        return ZorTool::fail(2, error);
    const QByteArray frame = commonFunctions().getUsbCommandToDevice(positional.first(), payload);
    if (parser.isSet(rawOption)) {
        std::fwrite(frame.constData(), 1, size_t(frame.size()), stdout);
        return 0;
    }
    ZorTool::out() << ZorTool::toHex(frame) << '\n';
    return 0;
}

int toolUnframe(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Checks a frame (signature, length, header and data checksums) and prints its data part "
                       "as Windows-1251 text and as hex, or names what is wrong (exit code 1). Frames back to "
                       "back are shown one by one; bytes after the last are reported with their offset. "
                       "\"-\" reads the frames from standard input, as hex or as the raw bytes."));
    parser.addPositionalArgument(QStringLiteral("HEX"), QStringLiteral("the frame as hex, or -"));
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    const QStringList positional = parser.positionalArguments();
    if (positional.size() != 1)
        return ZorTool::fail(2, QStringLiteral("unframe takes exactly one HEX (try unframe --help)"));
    QByteArray bytes;
    QString error;
    if (positional.first() == QLatin1String("-")) {
        if (!ZorTool::readFile(QStringLiteral("-"), bytes, &error))
            return ZorTool::fail(2, error);
        // A raw capture starts with the signature, which is no hex.
        if (!bytes.startsWith("@ZOR") && !ZorTool::parseHex(QString::fromLatin1(bytes), bytes, &error))
            return ZorTool::fail(2, error);
    } else if (!ZorTool::parseHex(positional.first(), bytes, &error)) {
        return ZorTool::fail(2, error);
    }
    const int header = commonFunctions::HeaderSize;
    QString shown;
    int count = 0;
    int offset = 0;
    do {
        const QByteArray rest = bytes.mid(offset);
        const int length = rest.size() >= header ? (uchar(rest[12]) | (uchar(rest[13]) << 8)) : 0;
        const QByteArray frame = rest.left(header + length);
        QByteArray data;
        const commonFunctions::FrameFault fault = commonFunctions().checkFrame(frame, &data);
        if (fault != commonFunctions::FrameOk) {
            ZorTool::out() << shown;
            const bool trailing = count > 0
                && (fault == commonFunctions::FrameTruncatedHeader || fault == commonFunctions::FrameBadSignature
                    || fault == commonFunctions::FrameLengthPastEnd);
            if (trailing)
                return ZorTool::fail(1,
                    QStringLiteral("%1 bytes after the data of frame %2, at offset %3")
                        .arg(rest.size())
                        .arg(count)
                        .arg(offset));
            return ZorTool::fail(1,
                count ? QStringLiteral("frame %1 at offset %2: %3")
                            .arg(count + 1)
                            .arg(offset)
                            .arg(faultText(fault, frame))
                      : faultText(fault, frame));
        }
        ++count;
        if (bytes.size() > frame.size() || count > 1)
            shown += QStringLiteral("frame %1 at offset %2\n").arg(count).arg(offset);
        shown += QStringLiteral("text: %1\nhex: %2\n").arg(ZOR_Cp1251::decode(data), ZorTool::toHex(data));
        offset += frame.size();
    } while (offset < bytes.size());
    ZorTool::out() << shown;
    return 0;
}

int toolCrc(const QStringList& args)
{
    const QString name = args.value(0);
    const CrcKind* kind = nullptr;
    for (const CrcKind& k : kCrcKinds) {
        if (name == QLatin1String(k.name))
            kind = &k;
    }
    if (!kind)
        return ZorTool::fail(2, QStringLiteral("unknown checksum '%1'").arg(name));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Prints the %1 of the given bytes as lower-case hex.").arg(name.toUpper()));
    parser.addPositionalArgument(QStringLiteral("HEX"), QStringLiteral("the bytes as hex (or use --file)"));
    const QCommandLineOption fileOption(
        QStringLiteral("file"), QStringLiteral("take the bytes from a file"), QStringLiteral("PATH"));
    parser.addOption(fileOption);
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    const QStringList positional = parser.positionalArguments();
    const bool fromFile = parser.isSet(fileOption);
    if (positional.size() != (fromFile ? 0 : 1))
        return ZorTool::fail(2, QStringLiteral("%1 takes either HEX or --file PATH (try %1 --help)").arg(name));
    QByteArray bytes;
    QString error;
    const bool ok = fromFile ? ZorTool::readFile(parser.value(fileOption), bytes, &error)
                             : ZorTool::parseHex(positional.first(), bytes, &error);
    if (!ok)
        return ZorTool::fail(2, error);
    ZorTool::out() << QStringLiteral("%1").arg(kind->compute(bytes), kind->digits, 16, QLatin1Char('0')) << '\n';
    return 0;
}
