// Decoding of telemetry records: field sets, presence, stale members and the
// short-record guard. What each field decodes to is checked by the golden
// records of tests/data/telemetry (cli_telemetry_golden).

#include "telemetry/tmipage_kite3.h"
#include "zor_tmi_formats.h"

#include <QtTest>

#include <cstring>
#include <memory>

class TestTelemetryDecode : public QObject
{
    Q_OBJECT
private slots:
    void recordSizeFollowsFieldSet_data();
    void recordSizeFollowsFieldSet();
    void maskBitOrderIsTopBitFirst();
    void emptyFieldSetShowsNaEverywhere();
    void absentFieldsKeepTheirMembers();
    void packetIsKeptAsGiven();
    void shortRecordKeepsWholeFieldsOnly_data();
    void shortRecordKeepsWholeFieldsOnly();
    void completeRecordAfterShortOneDecodesAll();
};

void TestTelemetryDecode::recordSizeFollowsFieldSet_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("kept");
    QTest::newRow("empty") << QString() << 0 << formatOf({});
    QTest::newRow("full") << fullFormat() << 734 << fullFormat();
    QTest::newRow("256th character ignored") << QString(256, QLatin1Char('1')) << 734 << fullFormat();
    QTest::newRow("\"1\" is NumPage") << QStringLiteral("1") << 4 << formatOf({1});
    QTest::newRow("\"01\" is Code") << QStringLiteral("01") << 2 << formatOf({2});
    QTest::newRow("letters and blanks are absent") << QStringLiteral("1 a2x1") << 4 + 1 << formatOf({1, 6});
    QTest::newRow("last field alone") << formatOf({255}) << 8 << formatOf({255});
}

void TestTelemetryDecode::recordSizeFollowsFieldSet()
{
    QFETCH(QString, format);
    QFETCH(int, size);
    TmiPage_Kite3 page(format);
    QCOMPARE(page.recordSize(), size);
    QTEST(page.getStrFormatKite3(), "kept");
    const QByteArray rec(size, '\x5a');
    QVERIFY(page.setCurrentTMI(recordBytes(rec), rec.size()));
    QCOMPARE(page.missingBytes(), 0);
}

void TestTelemetryDecode::maskBitOrderIsTopBitFirst()
{
    TmiPage_Kite3 page(formatOf({1, 8, 9, 255}));
    QByteArray mask;
    page.getPageFormat(mask);
    QCOMPARE(mask.size(), 32);
    QCOMPARE(quint8(mask[0]), quint8(0x81));
    QCOMPARE(quint8(mask[1]), quint8(0x80));
    QCOMPARE(quint8(mask[31]), quint8(0x02));

    unsigned char bytes[32];
    int count = 0;
    TmiPage_Base::getArrSzFormat(QStringLiteral("0000000011"), bytes, count);
    QCOMPARE(count, 32);
    QCOMPARE(int(bytes[0]), 0);
    QCOMPARE(int(bytes[1]), 0xC0);
}

void TestTelemetryDecode::emptyFieldSetShowsNaEverywhere()
{
    TmiPage_Kite3 page(QString(), false);
    QVERIFY(page.setCurrentTMI(nullptr, 0));
    for (int id = 0; id < ZorTmi::ColumnCount; ++id)
        QCOMPARE(page.columnText(id), QStringLiteral("n/a"));
    QCOMPARE(page.getStrDateTime(), QStringLiteral("n/a"));
    QCOMPARE(page.getStrUser4Byte_Type_1(QStringLiteral("h")), QStringLiteral("n/a"));
    QVERIFY(!page.isUseParamNumPage());
}

void TestTelemetryDecode::absentFieldsKeepTheirMembers()
{
    TmiPage_Kite3 page(QStringLiteral("11"));
    QByteArray rec = QByteArray::fromHex("07000000"
                                         "0900");
    page.setCurrentTMI(recordBytes(rec), rec.size());
    page.setPageFormat(QStringLiteral("01"));
    rec = QByteArray("\x05\x00", 2);
    page.setCurrentTMI(recordBytes(rec), rec.size());
    QCOMPARE(page.getCode(), quint16(5));
    QCOMPARE(page.getNumPage(), quint32(7));
    QCOMPARE(page.getStrNumPage(), QStringLiteral("n/a"));
}

void TestTelemetryDecode::packetIsKeptAsGiven()
{
    TmiPage_Kite3 page(QStringLiteral("1"));
    const QByteArray rec("\x2a\x00\x00\x00\xff\xff", 6);
    page.setCurrentTMI(recordBytes(rec), rec.size());
    QByteArray packet("old");
    page.getPagePacket(packet);
    QCOMPARE(packet, rec.left(4));
}

void TestTelemetryDecode::shortRecordKeepsWholeFieldsOnly_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("firstAbsent");
    const QString full = fullFormat();
    QTest::newRow("nothing") << full << 0 << 1;
    QTest::newRow("inside the first field") << full << 3 << 1;
    QTest::newRow("first field exactly") << full << 4 << 2;
    QTest::newRow("one byte into Code") << full << 5 << 2;
    QTest::newRow("one byte short") << full << 733 << 255;
    QTest::newRow("inside LBS") << formatOf({1, 77, 78}) << 4 + 36 << 77;
    QTest::newRow("after LBS") << formatOf({1, 77, 78}) << 4 + 37 << 78;
}

void TestTelemetryDecode::shortRecordKeepsWholeFieldsOnly()
{
    QFETCH(QString, format);
    QFETCH(int, length);
    QFETCH(int, firstAbsent);
    const QByteArray rec(TmiPage_Kite3(format).recordSize(), '\x33');
    // Exactly `length` bytes on the heap, so a read past them is caught by
    // the sanitizer build.
    std::unique_ptr<unsigned char[]> data(new unsigned char[size_t(qMax(length, 1))]);
    std::memcpy(data.get(), rec.constData(), size_t(length));

    TmiPage_Kite3 page(format);
    QVERIFY(!page.setCurrentTMI(data.get(), length));
    QCOMPARE(page.missingBytes(), rec.size() - length);
    for (int n = 1; n <= 255; ++n) {
        if (format.at(n - 1) != QLatin1Char('1'))
            continue;
        QCOMPARE(page.isUseParam(n), n < firstAbsent);
        QVERIFY(page.isInFormat(n));
    }
    QByteArray packet;
    page.getPagePacket(packet);
    QCOMPARE(packet, rec.left(length));
}

void TestTelemetryDecode::completeRecordAfterShortOneDecodesAll()
{
    const QString format = fullFormat();
    QByteArray rec(734, '\x11');
    rec[733] = '\x22';
    TmiPage_Kite3 page(format);
    QVERIFY(!page.setCurrentTMI(reinterpret_cast<const unsigned char*>(rec.constData()), 100));
    QCOMPARE(page.getStrUser8Byte3(), QStringLiteral("n/a"));
    QVERIFY(page.setCurrentTMI(reinterpret_cast<const unsigned char*>(rec.constData()), rec.size() + 0));
    QCOMPARE(page.missingBytes(), 0);
    QVERIFY(page.isUseParamUser8Byte3());
    QCOMPARE(page.getStrUser8Byte3(), QString::number(Q_UINT64_C(0x2211111111111111)));
}

QTEST_GUILESS_MAIN(TestTelemetryDecode)
#include "tst_telemetry_decode.moc"
