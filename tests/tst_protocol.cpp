// Framed commands, checksums, byte order and bit helpers.

#include "module/zor_cp1251.h"
#include "protocol/commonfunctions.h"
#include "protocol/crc32.h"
#include "protocol/zor_bits.h"
#include "protocol/zor_checksum.h"

#include <QRandomGenerator>
#include <QtTest>

#include <zlib.h>

#include <functional>

using Builder = std::function<QByteArray(const commonFunctions&)>;
Q_DECLARE_METATYPE(Builder)
Q_DECLARE_METATYPE(commonFunctions::FrameFault)

namespace {

const uchar* u(const QByteArray& b)
{
    return reinterpret_cast<const uchar*>(b.constData());
}

} // namespace

class TestProtocol : public QObject
{
    Q_OBJECT
private slots:
    void scrambledTextsComeBackOnlyWithTheirKey_data();
    void scrambledTextsComeBackOnlyWithTheirKey();
    void framesMatchTheWireLayout_data();
    void framesMatchTheWireLayout();
    void namedBuildersCarryTheirTextAndBlock_data();
    void namedBuildersCarryTheirTextAndBlock();
    void xorSumOfTwoBuffersCoversBoth();
    void checkFrameNamesEachFault_data();
    void checkFrameNamesEachFault();
    void checkValues_data();
    void checkValues();
    void crc16ContinuesAcrossPieces();
    void crc32MatchesZlibOnRandomPieces();
    void byteOrderModeIsProcessWide();
    void bitHelpers();
};

void TestProtocol::framesMatchTheWireLayout_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("*?V is 19 bytes") << QStringLiteral("*?V") << QByteArray()
                                     << QByteArray::fromHex("405a4f520000000001000000030043462a3f56");
    QTest::newRow("empty data: length 0, checksum 0")
        << QString() << QByteArray() << QByteArray::fromHex("405a4f52000000000100000000000006");
    QTest::newRow("cyrillic in windows-1251") << QStringLiteral(
        "*>PASS:Ёж") << QByteArray() << QByteArray::fromHex("405a4f5200000000010000000900717e2a3e504153533aa8e6");
    QTest::newRow("payload counted in length and checksum")
        << QStringLiteral("*!R") << QByteArray::fromHex("04030201")
        << QByteArray::fromHex("405a4f52000000000100000007005d5c2a215204030201");
}

void TestProtocol::framesMatchTheWireLayout()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, payload);
    QFETCH(QByteArray, frame);
    const commonFunctions f;
    QCOMPARE(f.getUsbCommandToDevice(text, payload).toHex(), frame.toHex());
    if (payload.isEmpty())
        QCOMPARE(f.getUsbCommandToDevice(text).toHex(), frame.toHex());
    QByteArray data = frame.mid(16);
    QCOMPARE(f.getUsbArrCommandToDevice(data).toHex(), frame.toHex());
    // The header alone, from the text and payload or from the data.
    QByteArray header;
    f.getHeaderCommand(text, payload, header);
    QCOMPARE(header, frame.left(16));
    f.getHeaderCommand(data, header);
    QCOMPARE(header, frame.left(16));
    if (payload.isEmpty()) {
        f.getHeaderCommand(text, header);
        QCOMPARE(header, frame.left(16));
    }
}

void TestProtocol::namedBuildersCarryTheirTextAndBlock_data()
{
    QTest::addColumn<Builder>("build");
    QTest::addColumn<QByteArray>("data");
    const QByteArray block = QByteArray::fromHex("00ff10");
    // The fixed and prefix builders come from one list in the header: one of
    // each shows the list is applied; the hand-written ones follow their rules.
    QTest::newRow("fixed") << Builder([](const commonFunctions& f) { return f.getUsbCommand_ConfigReset(); })
                           << QByteArray("*!SETT_RESET");
    QTest::newRow("prefix with block") << Builder([block](const commonFunctions& f) {
        return f.getUsbCommand_SetParamValue(block);
    }) << QByteArray("*!SETP ") + block;
    QTest::newRow("out on 2") << Builder([](const commonFunctions& f) { return f.getUsbCommand_Out_On(2); })
                              << QByteArray("*!2Y");
    QTest::newRow("out off 12") << Builder([](const commonFunctions& f) { return f.getUsbCommand_Out_Off(12); })
                                << QByteArray("*!12N");
    QTest::newRow("canlog version") << Builder([](const commonFunctions& f) { return f.getUsbCommand_Canlog_Ver(3); })
                                    << QByteArray("*!CANLOG3");
    QTest::newRow("set time positive has plus")
        << Builder([](const commonFunctions& f) { return f.getUsbCommand_DeviceSetTime(1); })
        << QByteArray("*!SETTIME +1");
    QTest::newRow("set time zero has no sign")
        << Builder([](const commonFunctions& f) { return f.getUsbCommand_DeviceSetTime(0); })
        << QByteArray("*!SETTIME 0");
    QTest::newRow("set time negative keeps minus")
        << Builder([](const commonFunctions& f) { return f.getUsbCommand_DeviceSetTime(-3600); })
        << QByteArray("*!SETTIME -3600");
    QTest::newRow("password") << Builder([](const commonFunctions& f) {
        return f.getUsbCommand_DevicePassword(QStringLiteral("пароль"));
    }) << QByteArray("*>PASS:\xEF\xE0\xF0\xEE\xEB\xFC");
    QTest::newRow("read page little-endian")
        << Builder([](const commonFunctions& f) { return f.getUsbCommand_ReadPage(0x01020304u); })
        << QByteArray("*!R\x04\x03\x02\x01");
    QTest::newRow("tm file read little-endian")
        << Builder([](const commonFunctions& f) { return f.getUsbCommand_TM_FileRead(0xA0B0); })
        << QByteArray("*!DKR\xB0\xA0");
}

void TestProtocol::namedBuildersCarryTheirTextAndBlock()
{
    QFETCH(Builder, build);
    QFETCH(QByteArray, data);
    const commonFunctions f;
    QCOMPARE(build(f).toHex(), f.getUsbArrCommandToDevice(data).toHex());
}

void TestProtocol::xorSumOfTwoBuffersCoversBoth()
{
    const uchar a[] = {0x12, 0x34};
    const uchar b[] = {0x34, 0x56, 0x01};
    uchar scratch[5] = {};
    QCOMPARE(int(commonFunctions::getSumDataToByte(a, 2, b, 3, scratch)), 0x12 ^ 0x56 ^ 0x01);
    QCOMPARE(QByteArray(reinterpret_cast<char*>(scratch), 5).toHex(), QByteArray("1234345601"));
    QCOMPARE(int(commonFunctions::getSumDataToByte(a, 0, b, 0, scratch)), 0);
    QCOMPARE(int(commonFunctions::getSumDataToByte(a, -1, b, 1, scratch)), 0x34);
    QCOMPARE(int(getSumDataToByte("\x80\x01", -5)), 0);
    QCOMPARE(int(commonFunctions::getSumDataToByte("\x80\x01", 2)), 0x81);
}

void TestProtocol::checkFrameNamesEachFault_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<commonFunctions::FrameFault>("fault");
    const QByteArray good = QByteArray::fromHex("405a4f520000000001000000030043462a3f56");
    QByteArray badSignature = good;
    badSignature[0] = '#';
    QByteArray badHeaderSum = good;
    badHeaderSum[15] = 0;
    QByteArray badData = good;
    badData[18] = 'W';
    QTest::newRow("good") << good << commonFunctions::FrameOk;
    QTest::newRow("empty") << QByteArray() << commonFunctions::FrameTruncatedHeader;
    QTest::newRow("15 bytes") << good.left(15) << commonFunctions::FrameTruncatedHeader;
    QTest::newRow("signature") << badSignature << commonFunctions::FrameBadSignature;
    QTest::newRow("header checksum") << badHeaderSum << commonFunctions::FrameBadHeaderChecksum;
    QTest::newRow("data cut short") << good.left(18) << commonFunctions::FrameLengthPastEnd;
    QTest::newRow("header only") << good.left(16) << commonFunctions::FrameLengthPastEnd;
    QTest::newRow("bytes after data") << good + 'x' << commonFunctions::FrameTrailingBytes;
    QTest::newRow("data checksum") << badData << commonFunctions::FrameBadDataChecksum;
}

void TestProtocol::checkFrameNamesEachFault()
{
    QFETCH(QByteArray, frame);
    QFETCH(commonFunctions::FrameFault, fault);
    QByteArray data;
    // A detached copy, so that reading past its end would show under ASan.
    const QByteArray exact(frame.constData(), frame.size());
    QCOMPARE(commonFunctions().checkFrame(exact, &data), fault);
    if (fault == commonFunctions::FrameOk)
        QCOMPARE(data, QByteArray("*?V"));
}

void TestProtocol::checkValues_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<uint>("crc8");
    QTest::addColumn<uint>("crc16");
    QTest::addColumn<uint>("crc32");
    QTest::newRow("empty") << QByteArray() << 0xFFu << 0xFFFFu << 0u;
    QTest::newRow("123456789") << QByteArray("123456789") << 0xF7u << 0x29B1u << 0xCBF43926u;
    QTest::newRow("one zero byte") << QByteArray(1, '\0') << 0xACu << 0xE1F0u << 0xD202EF8Du;
}

void TestProtocol::checkValues()
{
    QFETCH(QByteArray, bytes);
    QFETCH(uint, crc8);
    QFETCH(uint, crc16);
    QFETCH(uint, crc32);
    QCOMPARE(uint(SummCRC8(u(bytes), bytes.size())), crc8);
    QCOMPARE(uint(SummCRC16(u(bytes), bytes.size())), crc16);
    class crc32 c; // "class": zlib has a function of the same name
    c.ProcessCRC(u(bytes), bytes.size());
    QCOMPARE(c.value(), crc32);
    c.ClearCRC();
    QCOMPARE(c.value(), 0u);
}

void TestProtocol::crc16ContinuesAcrossPieces()
{
    const QByteArray digits("123456789");
    const unsigned short head = SummCRC16(u(digits), 4);
    QCOMPARE(uint(SummPlusCRC16(head, u(digits) + 4, 5)), 0x29B1u);
    QCOMPARE(uint(eval_crc16(head, u(digits) + 4, 5)), 0x29B1u);
    QCOMPARE(uint(SummPlusCRC16(0x1234, nullptr, 0)), 0x1234u);
    QCOMPARE(uint(eval_crc16(0x1234, u(digits), -1)), 0x1234u);
}

void TestProtocol::crc32MatchesZlibOnRandomPieces()
{
    QRandomGenerator rng(20261123);
    for (int round = 0; round < 200; ++round) {
        QByteArray data(int(rng.bounded(round < 100 ? 64 : 70000)), Qt::Uninitialized);
        for (char& ch : data)
            ch = char(rng.bounded(256));
        class crc32 c; // "class": zlib has a function of the same name
        for (int pos = 0; pos < data.size();) {
            const int piece = qMin(data.size() - pos, int(rng.bounded(rng.bounded(2) ? 40 : 5000)));
            c.ProcessCRC(u(data) + pos, piece);
            pos += piece;
        }
        const uLong expected = ::crc32(::crc32(0L, Z_NULL, 0), u(data), uInt(data.size()));
        QCOMPARE(c.value(), quint32(expected));
    }
}

void TestProtocol::byteOrderModeIsProcessWide()
{
    QCOMPARE(htonl32Mode(), int(ZOR_ByteOrderUnset));
    QCOMPARE(htonl32(0x11223344u), 0x44332211u);
    QCOMPARE(htonl32Mode(), int(ZOR_ByteOrderSwap));
    QCOMPARE(htonl64(Q_UINT64_C(0x0102030405060708)), Q_UINT64_C(0x0807060504030201));
    QCOMPARE(htonl64Mode(), int(ZOR_ByteOrderSwap));
    setHtonl32Mode(ZOR_ByteOrderKeep);
    setHtonl64Mode(ZOR_ByteOrderKeep);
    QCOMPARE(htonl32(0x11223344u), 0x11223344u);
    QCOMPARE(htonl64(Q_UINT64_C(0x0102030405060708)), Q_UINT64_C(0x0102030405060708));
    setHtonl32Mode(ZOR_ByteOrderUnset);
    setHtonl64Mode(ZOR_ByteOrderUnset);
}

void TestProtocol::bitHelpers()
{
    QCOMPARE(getBitFromByte(0x80, 7), 1);
    QCOMPARE(getBitFromByte(0x80, 6), 0);
    QCOMPARE(getBitFromByte(0xFF, 8), 0);
    QCOMPARE(getBitFromByte(0xFF, -1), 0);
    unsigned char b = 0x0F;
    setBitToByte(b, 7, 5);
    setBitToByte(b, 0, 0);
    setBitToByte(b, 8, 1);
    QCOMPARE(int(b), 0x8E);
    QCOMPARE(get2BitFromByte(0xB4, 4), 3);
    QCOMPARE(get2BitFromByte(0xB4, 6), 2);
    QCOMPARE(get2BitFromByte(0xFF, 7), 0);
    QCOMPARE(getBitFromStrByte(QStringLiteral("010"), 1), 1); // decimal 10, not octal
    QCOMPARE(getBitFromStrByte(QStringLiteral("0x80"), 7), 1);
    QCOMPARE(getBitFromStrByte(QStringLiteral("256"), 0), 0);
    QCOMPARE(getBitFromStrByte(QStringLiteral("abc"), 0), 0);
    QCOMPARE(getStrByteFromBit(7), QStringLiteral("128"));
    QCOMPARE(getStrByteFromBit(9), QStringLiteral("0"));
}

void TestProtocol::scrambledTextsComeBackOnlyWithTheirKey_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("key");
    QString every; // all 256 Windows-1251 characters, NUL included
    for (int b = 0; b < 256; ++b)
        every += b < 128 ? QChar(b) : QChar(ZOR_Cp1251::upperHalf()[b - 128]);
    QTest::newRow("every character") << every << QStringLiteral("ключ");
    QTest::newRow("empty key") << QStringLiteral("пароль 123") << QString();
    QTest::newRow("empty text") << QString() << QStringLiteral("k");
    QTest::newRow("long repeated text") << QString(5000, QLatin1Char('a')) << QStringLiteral("a");
}

void TestProtocol::scrambledTextsComeBackOnlyWithTheirKey()
{
    QFETCH(QString, text);
    QFETCH(QString, key);
    const QString hex = stringEncrypt(text, key);
    QCOMPARE(hex.size(), text.size() * 2);
    QVERIFY(
        std::all_of(hex.cbegin(), hex.cend(), [](QChar c) { return QStringLiteral("0123456789ABCDEF").contains(c); }));
    QString back;
    QVERIFY(stringDecrypt(hex, key, back));
    QCOMPARE(back, text);
    if (!text.isEmpty()) {
        QVERIFY(hex != QString::fromLatin1(ZOR_Cp1251::encode(text).toHex().toUpper()));
        QVERIFY(stringDecrypt(hex, key + QLatin1Char('x'), back));
        QVERIFY(back != text);
    }
    back = QStringLiteral("untouched");
    QVERIFY(!stringDecrypt(QStringLiteral("ABC"), key, back));
    QVERIFY(!stringDecrypt(QStringLiteral("zz"), key, back));
    QCOMPARE(back, QStringLiteral("untouched"));
}

QTEST_APPLESS_MAIN(TestProtocol)
#include "tst_protocol.moc"
