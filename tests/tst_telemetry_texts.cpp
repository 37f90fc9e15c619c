// Texts of telemetry values: coordinates, sentinels, units, captions, the
// zone text, user-parameter types and the per-field column texts. Captions
// show as their keys (language "keys"), times in UTC.

#include "module/zor_language.h"
#include "telemetry/tmipage_kite3.h"
#include "zor_tmi_record_writer.h"

#include <QtTest>

#include <cstring>
#include <ctime>

namespace {

const unsigned char* bytes(const QByteArray& a)
{
    return reinterpret_cast<const unsigned char*>(a.constData());
}

// The text of one column of a full record carrying the writer's values.
QString columnTextOf(const ZorTmiRecordWriter& w, int column)
{
    const QString format = ZorTmiRecordWriter::fullFormat();
    const QByteArray rec = w.record(format);
    TmiPage_Kite3 page(format);
    page.setCurrentTMI(bytes(rec), rec.size());
    return page.columnText(column);
}

} // namespace

class TestTelemetryTexts : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void valueTexts_data();
    void valueTexts();
    void floatTexts_data();
    void floatTexts();
    void floatTextsMatchQtFormattingAtEveryMagnitude();
    void namedGettersReachTheirBytes();
    void zoneText_data();
    void zoneText();
    void dateTimeWithOffset();
    void rs485TemperatureFollowsLevelPresence();
    void userParamTypes_data();
    void userParamTypes();
    void userParamFieldsUseTheirWidth();
    void columnTextsFollowCaptions();
    void lineTextsFollowTheColumnDefiningRecord();
};

void TestTelemetryTexts::initTestCase()
{
    qputenv("TZ", "UTC");
    tzset();
    ZOR_Language::instance().load(QStringLiteral("keys"));
}

void TestTelemetryTexts::valueTexts_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<QString>("text");
    using namespace ZorTmi;
    auto row = [](const char* name, int col, qint64 v, const char* text) {
        QTest::newRow(name) << col << v << QString::fromUtf8(text);
    };
    row("latitude", Col_Latitude, 33507407, "55 50.7407'");
    row("latitude south", Col_Latitude, -33507407, "-55 -50.7407'");
    row("latitude below a degree", Col_Latitude, -5000, "0 -0.5000'");
    row("longitude whole", Col_Longitude, 600000 * 37, "37 0.0000'");
    row("precise latitude", Col_NaviLatitude, Q_INT64_C(33507407123), "55 50.7407123'");
    row("precise longitude west", Col_NaviLongitude, -Q_INT64_C(600000001), "-1 -0.0000001'");
    row("altitude truncates", Col_Altitude, -15, "-1");
    row("altitude", Col_Altitude, 1234, "123");
    row("record number max", Col_NumPage, 4294967295LL, "4294967295");
    row("8 bytes at 2^32", Col_User8Byte1, 4294967296LL, "4294967296");
    row("8 bytes at 10^19", Col_User8Byte1, Q_INT64_C(-8446744073709551616), "10000000000000000000");
    row("8 bytes max", Col_User8Byte1, -1, "18446744073709551615");
    row("GSM unknown", Col_GSM, 99, "tmikte_027");
    row("GSM 0", Col_GSM, 0, "0");
    row("GSM 31", Col_GSM, 31, "99");
    row("GSM 10", Col_GSM, 10, "32");
    row("Temp1 no sensor", Col_Temp1, -128, "");
    row("Temp8 below zero", Col_Temp8, -5, "-5 abbr_017");
    row("tyre temperature no data", Col_TiresTemp7, -127, "n/a");
    row("tyre temperature", Col_TiresTemp30, -20, "-20");
    row("tyre pressure", Col_TiresPres7, 25, "2.5");
    row("tyre number", Col_TiresNum15, 200, "200");
    row("CAN level no data", Col_CanFuelLevel, 0x7FFF, "n/a");
    row("CAN level no data percent bit", Col_CanFuelLevel, 0xFFFF, "n/a");
    row("CAN level percent", Col_CanFuelLevel, 0x8032, "50 %");
    row("CAN level litres", Col_CanFuelLevel, 1234, "123.4 abbr_026");
    row("CAN level percent column, litres", Col_CanFuelLevelPercent, 1234, "");
    row("CAN level litres column", Col_CanFuelLevelLitres, 1234, "123.4 abbr_026");
    row("filtered level no data", Col_CanLevelFiltrLitres, 0x7FFF, "n/a");
    row("CAN speed no data", Col_CanSpeed, 255, "n/a");
    row("CAN speed", Col_CanSpeed, 90, "90 abbr_024");
    row("CAN service no data", Col_CanTimeTO, 0xFFFF, "n/a");
    row("CAN service", Col_CanTimeTO, 100, "500 abbr_023");
    row("CAN temperature", Col_CanTemp, -40, "-40 abbr_017");
    row("pedal", Col_CanPedalAccel, 35, "35 %");
    row("axle", Col_CanAxleLoad5, 8000, "8000 abbr_009");
    row("linear acceleration no data", Col_AccelLinearX, -32768, "n/a");
    row("linear acceleration", Col_AccelLinearZ, -1500, "-1.500 tmikte_072");
    row("angular no data", Col_AccelAngularCorner, -32768, "n/a");
    row("angular", Col_AccelAngularPlus, 5, "0.005");
    row("acceleration change", Col_AccelDelta, 250, "2.50 tmikte_071");
    row("precise temperature no data", Col_HPrecisionTemp1, -32768, "n/a");
    row("precise temperature", Col_HPrecisionTemp4, 1, "0.05 abbr_017");
    row("precise temperature below zero", Col_HPrecisionTemp2, -1, "-0.05 abbr_017");
    row("humidity", Col_HPrecisionHumidity1, 3, "1.5 abbr_008");
    row("vertical acceleration", Col_VAccelVertical, 3, "0.75");
    row("roll", Col_VAccelRoll, 3, "4.5");
    row("main supply", Col_Power, 12345, "12.345 abbr_012");
    row("analogue input", Col_StateU_Ain8, 5, "0.005 abbr_012");
    row("engine hours", Col_Motochas, 5400, "1.50 abbr_001");
    row("engine hours round half up", Col_CanEngineTime, 18, "0.01 abbr_001");
    row("refrigerator hours", Col_RefrPowerEngine, 12345, "123.45 abbr_001");
    row("refrigerator zone", Col_RefrTemp1, -1850, "-18.50 abbr_017");
    row("navigation altitude", Col_NaviAlt, -1500, "-1.500");
    row("HDOP", Col_NaviHDop, 15, "1.5");
    row("course", Col_NaviCourse, 12345, "123.45");
    row("LBS level", Col_LbsLevel_2, 70, "70 dBm");
    row("LBS MCC", Col_LbsMcc_1, 250, "250");
    row("LBS time", Col_LbsTime, 3600, "01:00:00 01.01.1970");
    row("time", Col_Time, 86400 + 3661, "02.01.1970 1:01:01");
    row("SIM 1", Col_SimNumber, 0, "1");
    row("SIM 2", Col_SimNumber, 1, "2");
    row("input 17", Col_StateIn_I17, 1, "1");
    row("satellites", Col_NGaugeSatellites, 63, "63");
    row("taho violation", Col_TahoViolation2, 5, "5");
    row("taho mode", Col_TahoMode, 2, "tmikte_047");
    row("taho mode other", Col_TahoMode, 9, "tmikte_014");
    row("taho odometer", Col_TahoOdometer, 1234567, "123456.7");
    row("display state", Col_DispCur, 7, "tmikte_062");
    row("flow meter mode", Col_FfsModeReturn, 3, "tmikte_096");
    row("ThermoKing", Col_RefrStateThermoKing, 3, "HEAT");
    row("ThermoKing unknown", Col_RefrStateThermoKing, 20, "20");
    row("refrigerator engine", Col_RefrEngineMode, 2, "tmikte_110");
    row("refrigerator engine speed", Col_RefrEngineSpeed, 1500, "1500 abbr_018");
    row("CAN state bit set", Col_CAN3State_3, 1, "wrd_001");
    row("CAN state bit clear", Col_CAN3State_16, 0, "wrd_002");
    row("CAN event", Col_CAN3Event, 1, "tmikte_114");
    row("CAN crash", Col_CAN3Crash, 0xAB, "0x000000AB");
    row("failure code", Col_CAN3FailureCode, 4000000000LL, "4000000000");
    row("milliseconds", Col_MiliSec, 5, ".5");
    row("8-byte user parameter", Col_User8Byte1, -1, "18446744073709551615");
    row("2-byte user parameter", Col_User2Byte15, 65535, "65535");
}

void TestTelemetryTexts::valueTexts()
{
    QFETCH(int, column);
    QFETCH(qint64, value);
    QFETCH(QString, text);
    ZorTmiRecordWriter w;
    w.set(column, value);
    QCOMPARE(columnTextOf(w, column), text);
}

void TestTelemetryTexts::floatTexts_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("speed") << int(ZorTmi::Col_Speed) << 61.25f << QStringLiteral("61.3 abbr_024");
    QTest::newRow("mileage") << int(ZorTmi::Col_Mileage) << 1234.5f << QStringLiteral("1234.50 abbr_023");
    QTest::newRow("distance below zero") << int(ZorTmi::Col_Distance) << -0.25f << QStringLiteral("-0.25 abbr_023");
    QTest::newRow("fuel used no data") << int(ZorTmi::Col_CanFuelConsumption) << -1.0f << QStringLiteral("n/a");
    QTest::newRow("fuel used") << int(ZorTmi::Col_CanFuelConsumption) << 12.5f << QStringLiteral("12.50 abbr_026");
    QTest::newRow("CAN mileage no data") << int(ZorTmi::Col_CanFullRun) << -0.5f << QStringLiteral("n/a");
    QTest::newRow("CAN mileage") << int(ZorTmi::Col_CanFullRun) << 0.0f << QStringLiteral("0.00 abbr_023");
    QTest::newRow("navigation speed") << int(ZorTmi::Col_NaviSpeed) << 3.0f << QStringLiteral("3.00");
}

void TestTelemetryTexts::floatTexts()
{
    QFETCH(int, column);
    QFETCH(float, value);
    QFETCH(QString, text);
    ZorTmiRecordWriter w;
    w.setFloat(column, value);
    QCOMPARE(columnTextOf(w, column), text);
}

// The fixed-point float path must give the texts of QString::number(v, 'f',
// decimals) for every exponent, including floats far beyond 64 bits, except
// that a negative value rounding to zero shows no sign.
void TestTelemetryTexts::floatTextsMatchQtFormattingAtEveryMagnitude()
{
    struct Form { int column; int decimals; const char* unit; };
    const Form forms[] = {{ZorTmi::Col_Speed, 1, " abbr_024"}, {ZorTmi::Col_NaviSpeed, 2, ""}};
    quint32 seed = 12345;
    for (int exponent = 0; exponent < 255; ++exponent) {
        for (int k = 0; k < 24; ++k) {
            seed = seed * 1103515245u + 12345u;
            const quint32 mantissa = k == 0 ? 0 : k == 1 ? 0x7FFFFF : (seed >> 9);
            const quint32 bits = (quint32(k & 1) << 31) | (quint32(exponent) << 23) | mantissa;
            float f;
            std::memcpy(&f, &bits, sizeof f);
            for (const Form& form : forms) {
                QString expected = QString::number(double(f), 'f', form.decimals);
                if (expected.startsWith(QLatin1Char('-')) && expected.count(QLatin1Char('0')) == expected.size() - 2)
                    expected.remove(0, 1);
                ZorTmiRecordWriter w;
                w.setFloat(form.column, f);
                QCOMPARE(columnTextOf(w, form.column), expected + QLatin1String(form.unit));
            }
        }
    }
}

void TestTelemetryTexts::namedGettersReachTheirBytes()
{
    ZorTmiRecordWriter w;
    w.set(ZorTmi::Col_Latitude, 33507407)
        .set(ZorTmi::Col_TiresPres7, 31)
        .set(ZorTmi::Col_LbsMcc_1, 250)
        .set(ZorTmi::Col_StateIn_I17, 1)
        .set(ZorTmi::Col_EcoDriving_Braking_3, 1)
        .set(ZorTmi::Col_CnctServer1, 1)
        .set(ZorTmi::Col_NaviHDop, 15)
        .set(ZorTmi::Col_NaviAlt, 2500)
        .set(ZorTmi::Col_User4Byte_UInt_15, 0xDEADBEEF)
        .set(ZorTmi::Col_Module3Velda, 1);
    const QString format = ZorTmiRecordWriter::fullFormat();
    const QByteArray rec = w.record(format);
    TmiPage_Kite3 page(format);
    page.setCurrentTMI(bytes(rec), rec.size());
    QVERIFY(page.isUseParamLatitude());
    QCOMPARE(page.getLatitude(), 33507407);
    QCOMPARE(page.getStrLatitude(), QStringLiteral("55 50.7407'"));
    QCOMPARE(page.getTiresPres7(), quint8(31));
    QCOMPARE(page.getStrTiresPres7(), QStringLiteral("3.1"));
    QCOMPARE(page.getLbsMcc_1(), quint16(250));
    QVERIFY(page.getStateIn_I17());
    QVERIFY(!page.getStateIn_I18());
    QVERIFY(page.getEcoDriving_Braking_3());
    QVERIFY(!page.getEcoDriving_Braking_2());
    QVERIFY(page.getCnctServer1());
    QCOMPARE(page.getNaviHDop(), 1.5f);
    QCOMPARE(page.getNaviAltitude(), 2.5f);
    QCOMPARE(page.getUser4Byte_UInt_15(), quint32(0xDEADBEEF));
    QVERIFY(page.getModule3Velda());
    QCOMPARE(page.getStrModule3(), QStringLiteral("128"));
}

void TestTelemetryTexts::zoneText_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0 << QStringLiteral("(UTC)");
    QTest::newRow("+3") << 10800 << QStringLiteral("(UTC +3)");
    QTest::newRow("-5:30") << -19800 << QStringLiteral("(UTC -5:30)");
    QTest::newRow("+5:45") << 20700 << QStringLiteral("(UTC +5:45)");
    QTest::newRow("+14") << 50400 << QStringLiteral("(UTC +14)");
    QTest::newRow("-12") << -43200 << QStringLiteral("(UTC -12)");
}

void TestTelemetryTexts::zoneText()
{
    QFETCH(int, offset);
    QFETCH(QString, text);
    QCOMPARE(TmiPage_Base::getStrUtcZone(offset), text);
}

void TestTelemetryTexts::dateTimeWithOffset()
{
    ZorTmiRecordWriter w;
    w.set(ZorTmi::Col_Time, 1700000000).set(ZorTmi::Col_MiliSec, 45);
    const QString format = ZorTmiRecordWriter::formatOf({3, 200});
    const QByteArray rec = w.record(format);
    TmiPage_Kite3 page(format);
    page.setCurrentTMI(bytes(rec), rec.size());
    page.setDateTimeOffset(-19800);
    QCOMPARE(page.getStrDateTimeUTC(), QStringLiteral("14.11.2023 22:13:20"));
    QCOMPARE(page.getStrDateTime(), QStringLiteral("14.11.2023 22:13:20"));
    QCOMPARE(page.getStrDateTimeUTC_Offset(), QStringLiteral("16:43:20.45 14.11.2023 (UTC -5:30)"));
    QCOMPARE(page.getDateTimeUTC_Offset().toSecsSinceEpoch(), qint64(1700000000 - 19800));
    QCOMPARE(page.getStrMiliSec(), QStringLiteral(".45"));
    QCOMPARE(page.getStrLastDateTimeUTC_Offset(), QStringLiteral("n/a"));
    QCOMPARE(page.getStrLbsDateTimeUTC_Offset(), QStringLiteral("n/a"));

    w.set(ZorTmi::Col_LbsTime, 3600).set(ZorTmi::Col_LastTime, 7200);
    const QString withLbs = ZorTmiRecordWriter::formatOf({9, 77});
    const QByteArray rec2 = w.record(withLbs);
    TmiPage_Kite3 lbs(withLbs);
    lbs.setCurrentTMI(bytes(rec2), rec2.size());
    lbs.setDateTimeOffset(10800);
    QCOMPARE(lbs.getStrLbsDateTimeUTC_Offset(), QStringLiteral("04:00:00 01.01.1970 (UTC +3)"));
    QCOMPARE(lbs.getStrLastDateTimeUTC_Offset(), QStringLiteral("05:00:00 01.01.1970 (UTC +3)"));
    QCOMPARE(lbs.getLbsDateTimeUTC().toSecsSinceEpoch(), qint64(3600));
}

void TestTelemetryTexts::rs485TemperatureFollowsLevelPresence()
{
    ZorTmiRecordWriter w;
    w.set(ZorTmi::Col_TempRS485_1, 21).set(ZorTmi::Col_TempRS485_7, 22);
    {
        const QString format = ZorTmiRecordWriter::formatOf({78, 84});
        const QByteArray rec = w.record(format);
        TmiPage_Kite3 page(format);
        page.setCurrentTMI(bytes(rec), rec.size());
        QCOMPARE(page.getStrTempRS485_1(), QStringLiteral("n/a"));
        QCOMPARE(page.getStrTempRS485_7(), QStringLiteral("22 abbr_017"));
    }
    {
        const QString format = ZorTmiRecordWriter::formatOf({38});
        const QByteArray rec = w.record(format);
        TmiPage_Kite3 page(format);
        page.setCurrentTMI(bytes(rec), rec.size());
        QCOMPARE(page.getStrTempRS485_1(), QStringLiteral("0 abbr_017"));
        QCOMPARE(page.getStrTempRS485_2(), QStringLiteral("n/a"));
    }
}

void TestTelemetryTexts::userParamTypes_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<quint64>("value");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    auto row = [](const char* name, int w, quint64 v, const char* t, const char* text) {
        QTest::newRow(name) << w << v << QString::fromLatin1(t) << QString::fromLatin1(text);
    };
    row("1 u", 1, 0xFF, "u", "255");
    row("1 s", 1, 0xFF, "s", "-1");
    row("1 i is not signed", 1, 0xFF, "i", "255");
    row("1 b", 1, 5, "b", "00000101");
    row("1 h", 1, 0xA, "h", "0x0A");
    row("1 f is not float", 1, 7, "f", "7");
    row("1 other", 1, 0x80, "q", "128");
    row("2 s", 2, 0xFFFE, "s", "-2");
    row("2 i", 2, 0x8000, "i", "-32768");
    row("2 b", 2, 0x8001, "b", "1000000000000001");
    row("2 h", 2, 0xBEEF, "h", "0xBEEF");
    row("2 f is not float", 2, 0x3F80, "f", "16256");
    row("4 u", 4, 0xFFFFFFFFu, "u", "4294967295");
    row("4 s", 4, 0xFFFFFFFFu, "s", "-1");
    row("4 i", 4, 0x80000000u, "i", "-2147483648");
    row("4 h", 4, 0x3F800000u, "h", "0x3F800000");
    row("4 f", 4, 0x3F800000u, "f", "1.000000");
    row("4 f negative", 4, 0xC0490FDBu, "f", "-3.141593");
    row("4 b", 4, 1, "b", "00000000000000000000000000000001");
    row("8 u", 8, ~quint64(0), "u", "18446744073709551615");
    row("8 s", 8, ~quint64(0), "s", "-1");
    row("8 i", 8, quint64(1) << 63, "i", "-9223372036854775808");
    row("8 h", 8, Q_UINT64_C(0x3FF0000000000000), "h", "0x3FF0000000000000");
    row("8 f", 8, Q_UINT64_C(0x3FF0000000000000), "f", "1.000000");
    row("8 b", 8, quint64(1) << 63, "b", "1000000000000000000000000000000000000000000000000000000000000000");
    row("empty type", 8, 42, "", "42");
}

void TestTelemetryTexts::userParamTypes()
{
    QFETCH(int, width);
    QFETCH(quint64, value);
    QFETCH(QString, type);
    QFETCH(QString, text);
    QString got;
    switch (width) {
    case 1: got = TmiPage_Base::getStrUserParamData(static_cast<unsigned char>(value), type); break;
    case 2: got = TmiPage_Base::getStrUserParamData(static_cast<unsigned short>(value), type); break;
    case 4: got = TmiPage_Base::getStrUserParamData(static_cast<unsigned int>(value), type); break;
    default: got = TmiPage_Base::getStrUserParamData(static_cast<unsigned long>(value), type); break;
    }
    QCOMPARE(got, text);
}

void TestTelemetryTexts::userParamFieldsUseTheirWidth()
{
    ZorTmiRecordWriter w;
    w.set(ZorTmi::Col_User1Byte16, 0xFF)
        .set(ZorTmi::Col_User2Byte1, 0xFFFE)
        .set(ZorTmi::Col_User4Byte15, 0x3F800000)
        .set(ZorTmi::Col_User8Byte3, -2);
    const QString format = ZorTmiRecordWriter::formatOf({222, 223, 252, 255});
    const QByteArray rec = w.record(format);
    TmiPage_Kite3 page(format);
    page.setCurrentTMI(bytes(rec), rec.size());
    QCOMPARE(page.getStrUser1Byte_Type_16(QStringLiteral("s")), QStringLiteral("-1"));
    QCOMPARE(page.getStrUser2Byte_Type_1(QStringLiteral("h")), QStringLiteral("0xFFFE"));
    QCOMPARE(page.getStrUser4Byte_Type_15(QStringLiteral("f")), QStringLiteral("1.000000"));
    QCOMPARE(page.getStrUser8Byte_Type_3(QStringLiteral("i")), QStringLiteral("-2"));
    QCOMPARE(page.getStrUser8Byte_Type_2(QStringLiteral("u")), QStringLiteral("n/a"));
}

void TestTelemetryTexts::columnTextsFollowCaptions()
{
    ZorTmiRecordWriter w;
    w.set(ZorTmi::Col_LbsCellID, 1).set(ZorTmi::Col_LbsLevel_2, 70).set(ZorTmi::Col_LbsTime, 0);
    const QString format = ZorTmiRecordWriter::fullFormat();
    const QByteArray rec = w.record(format);
    TmiPage_Kite3 page(format);
    page.setCurrentTMI(bytes(rec), rec.size());

    QCOMPARE(TmiPage_Base::csvColumnCount(77), 16);
    QString out;
    page.appendColumnTexts(77, out, QLatin1String("=\""), QLatin1String("\";"));
    QCOMPARE(out, QStringLiteral("=\"1\";=\"0\";=\"0\";=\"0\";=\"0 dBm\";"
                                 "=\"0\";=\"0\";=\"0\";=\"0\";=\"0 dBm\";"
                                 "=\"0\";=\"0\";=\"0\";=\"0\";=\"70 dBm\";"
                                 "=\"00:00:00 01.01.1970\";"));
    QCOMPARE(TmiPage_Base::csvColumnCaption(38, 0), QStringLiteral("RS-485 tmikte_163 1"));
    QCOMPARE(TmiPage_Base::csvColumnCaption(8, 0), QStringLiteral("GLONASS/GPS"));
    QCOMPARE(TmiPage_Base::csvColumnCaption(29, 7), QStringLiteral("tmikte_162 8"));
    QCOMPARE(TmiPage_Base::csvColumnCaption(29, 8), QString());

    // Every field has at least one column, and a field absent from the
    // record fills all of its columns with "n/a".
    TmiPage_Kite3 empty(QString(), false);
    for (int n = 1; n <= 255; ++n) {
        const int count = TmiPage_Base::csvColumnCount(n);
        QVERIFY2(count > 0, ZorTmi::field(n).name);
        QString texts;
        empty.appendColumnTexts(n, texts, QLatin1String(""), QLatin1String(";"));
        QCOMPARE(texts, QStringLiteral("n/a;").repeated(count));
        for (int i = 0; i < count; ++i)
            QVERIFY2(!TmiPage_Base::csvColumnCaption(n, i).isEmpty(), ZorTmi::field(n).name);
    }
}

void TestTelemetryTexts::lineTextsFollowTheColumnDefiningRecord()
{
    ZorTmiRecordWriter w;
    w.set(ZorTmi::Col_NumPage, 42).set(ZorTmi::Col_GSM, 31).set(ZorTmi::Col_State, 0x05);
    const QString recordFormat = ZorTmiRecordWriter::formatOf({1, 4});
    const QByteArray rec = w.record(recordFormat);
    TmiPage_Kite3 record(recordFormat);
    record.setCurrentTMI(bytes(rec), rec.size());

    const TmiPage_Kite3 columns(ZorTmiRecordWriter::formatOf({1, 4, 7}));
    QByteArray line;
    record.appendColumnTexts(columns, line, "", ";");
    QCOMPARE(line, QByteArray("42;1;0;1;0;0;0;0;n/a;"));

    QByteArray perField;
    for (int n : {1, 4, 7})
        record.appendColumnTexts(n, perField, "", ";");
    QCOMPARE(perField, line);

    ZorTmi::LineOptions options;
    options.codeText = "Ignition";
    options.timeWithMiliSec = true;
    w.set(ZorTmi::Col_Time, 0).set(ZorTmi::Col_MiliSec, 7).set(ZorTmi::Col_Code, 12);
    const QString timed = ZorTmiRecordWriter::formatOf({2, 3, 200});
    const QByteArray rec2 = w.record(timed);
    TmiPage_Kite3 record2(timed);
    record2.setCurrentTMI(bytes(rec2), rec2.size());
    QByteArray line2;
    record2.appendColumnTexts(TmiPage_Kite3(ZorTmiRecordWriter::formatOf({2, 3})), line2, "", ";", options);
    QCOMPARE(line2, QByteArray("Ignition;01.01.1970 0:00:00.7;"));
    options.codeText.clear();
    line2.clear();
    record.appendColumnTexts(TmiPage_Kite3(ZorTmiRecordWriter::formatOf({2, 3})), line2, "", ";", options);
    QCOMPARE(line2, QByteArray("n/a;n/an/a;"));

    QByteArray none("keep");
    record.appendColumnTexts(TmiPage_Kite3(QString()), none, "=\"", "\";");
    QCOMPARE(none, QByteArray("keep"));
}

QTEST_GUILESS_MAIN(TestTelemetryTexts)
#include "tst_telemetry_texts.moc"
