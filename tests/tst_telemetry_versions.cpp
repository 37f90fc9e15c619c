// Records of versions 1 and 2: the table cut at fields 69 and 122, and the
// conversion of the fixed F8 record into a version-1 record.

#include "telemetry/tmipage_kite1.h"
#include "telemetry/tmipage_kite2.h"
#include "telemetry/tmipage_kite3.h"
#include "module/zor_language.h"
#include "zor_tmi_formats.h"

#include <QtTest>

#include <cstring>
#include <memory>

namespace {

// An F8 record whose byte i is i + 1 (byte 0 unused), up to `length`.
QByteArray countingF8(int length)
{
    QByteArray f8(length, '\0');
    for (int i = 0; i < length; ++i)
        f8[i] = char(i + 1);
    return f8;
}

} // namespace

class TestTelemetryVersions : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ZOR_Language::instance().load(QStringLiteral("keys")); }
    void f8FieldSetIsFieldsOneToSixtyNineLessMissing();
    void f8RunsLandOnTheirFields_data();
    void f8RunsLandOnTheirFields();
    void shortF8ReadsZerosForTheTail();
    void f8ReencodesAsTheVersionOneRecord();
    void extendedRecordAnswersTypesAndNumber();
};

// The F8 record carries fields 1-69 less those it has no room for.
void TestTelemetryVersions::f8FieldSetIsFieldsOneToSixtyNineLessMissing()
{
    TmiPage_Kite1 page(recordBytes(countingF8(128)), 128);
    QString expected = fullFormat(69) + QString(255 - 69, QLatin1Char('0'));
    for (int n : {6, 24, 25, 26, 27, 28, 30, 32, 49, 50, 51, 52, 66})
        expected[n - 1] = QLatin1Char('0');
    QCOMPARE(page.getStrFormatKite1(), expected);
    QCOMPARE(page.getFormatType(), 176);
    QCOMPARE(page.getVersionType(), 10);
}

void TestTelemetryVersions::f8RunsLandOnTheirFields_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("f8Offset");
    QTest::addColumn<int>("width");
    // The last field of each run of F8 bytes: a run copied from the wrong
    // place or with the wrong length moves it.
    QTest::newRow("NumPage") << 1 << 1 << 4;
    QTest::newRow("Code .. Module1") << 5 << 12 << 1;
    QTest::newRow("GSM") << 7 << 13 << 1;
    QTest::newRow("Out1") << 31 << 14 << 1;
    QTest::newRow("In1") << 29 << 15 << 1;
    QTest::newRow("Power .. StateU_Ain3") << 23 << 24 << 2;
    QTest::newRow("In_Imp1 .. Temp4") << 48 << 59 << 1;
    QTest::newRow("StateNGauge .. SecondsLast") << 18 << 93 << 2;
    QTest::newRow("CanFuelLevel .. CanEngineLoad") << 65 << 120 << 1;
    QTest::newRow("CanEngineTime .. CanSpeed") << 69 << 127 << 1;
}

void TestTelemetryVersions::f8RunsLandOnTheirFields()
{
    QFETCH(int, field);
    QFETCH(int, f8Offset);
    QFETCH(int, width);
    const QByteArray f8 = countingF8(128);
    TmiPage_Kite1 page(recordBytes(f8), f8.size());
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(page.fieldBytes(field)), width), f8.mid(f8Offset, width));
    QVERIFY(page.isUseParam(field));
}

void TestTelemetryVersions::shortF8ReadsZerosForTheTail()
{
    const QByteArray f8 = countingF8(100);
    TmiPage_Kite1 page(recordBytes(f8), f8.size());
    QCOMPARE(page.getCanTimeTO(), quint16(0));
    QCOMPARE(page.getCanSpeed(), quint8(0));
    QCOMPARE(page.getCanEngineTime(), quint32(0));
    QCOMPARE(page.getNumPage(), qFromLittleEndian<quint32>("\x02\x03\x04\x05"));
    QVERIFY(!page.isUseParamModule2());
    QCOMPARE(page.getStrModule2(), QStringLiteral("n/a"));
}

// Re-encoded, the F8 record is the version-1 record of its fields (127
// bytes), which decodes to the same values.
void TestTelemetryVersions::f8ReencodesAsTheVersionOneRecord()
{
    const QByteArray f8 = countingF8(128);
    TmiPage_Kite1 converted(QString(), false);
    converted.setCurrentPacketF8ToKite(recordBytes(f8), f8.size());
    QByteArray packet;
    converted.getPagePacket(packet);
    QCOMPARE(packet.size(), 127);
    QCOMPARE(packet.left(4), f8.mid(1, 4));
    QCOMPARE(packet.right(1), f8.right(1));

    TmiPage_Kite1 decoded(converted.getStrFormatKite1());
    QVERIFY(decoded.setCurrentTMI(recordBytes(packet), packet.size()));
    const szCurrentTMI_KITE1 a = converted.getCurrentTMI();
    const szCurrentTMI_KITE1 b = decoded.getCurrentTMI();
    QVERIFY(std::memcmp(&a, &b, sizeof a) == 0);
}

void TestTelemetryVersions::extendedRecordAnswersTypesAndNumber()
{
    szExtTMI_KITE3 ext = {};
    ext.FormatType = 3;
    ext.VersionType = 4;
    ext.NumPage = qToLittleEndian<quint32>(777);
    ext.Latitude = qToLittleEndian<qint32>(33507407);
    ext.VisibleSize = 20;
    ext.HiddenSize = 200;
    TmiPage_Kite3 page(&ext);
    QVERIFY(page.IsKite3Ext());
    QCOMPARE(page.getFormatType(), 3);
    QCOMPARE(page.getVersionType(), 4);
    QCOMPARE(page.getNumberTmiPage(), quint32(777));
    QCOMPARE(page.getStrLatitude_Ext(), QStringLiteral("55 50.7407'"));
    QCOMPARE(page.getDynamicDataSize_Ext(), 20 + 128);
    TmiPage_Kite2 v2(&ext);
    QVERIFY(v2.IsKite2Ext());
    QCOMPARE(v2.getNumberTmiPage(), quint32(777));
    QVERIFY(!TmiPage_Kite3(QStringLiteral("1")).IsKite3Ext());
}

QTEST_GUILESS_MAIN(TestTelemetryVersions)
#include "tst_telemetry_versions.moc"
