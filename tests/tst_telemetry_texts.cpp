// Texts of telemetry values beyond the golden records: float rounding, the
// zone text, times with an offset, the RS-485 temperature quirk and the
// user-parameter types. Captions show as their keys, times in UTC.

#include "module/zor_language.h"
#include "telemetry/tmipage_kite3.h"
#include "zor_tmi_formats.h"

#include <QtTest>

#include <cstring>
#include <ctime>
#include <memory>

namespace {

// A record of the given fields holding the given bytes (hex, spaces allowed).
std::unique_ptr<TmiPage_Kite3> decoded(std::initializer_list<int> fields, const QByteArray& hex)
{
    auto page = std::make_unique<TmiPage_Kite3>(formatOf(fields));
    const QByteArray rec = QByteArray::fromHex(hex);
    page->setCurrentTMI(recordBytes(rec), rec.size());
    return page;
}

// The text of a float field (field number, column) holding v.
QString floatText(int field, int column, float v)
{
    const QByteArray rec(reinterpret_cast<const char*>(&v), sizeof v);
    return decoded({field}, rec.toHex())->columnText(column);
}

} // namespace

class TestTelemetryTexts : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void floatTexts_data();
    void floatTexts();
    void floatTextsMatchQtFormattingAtEveryMagnitude();
    void zoneText_data();
    void zoneText();
    void dateTimeWithOffset();
    void rs485TemperatureFollowsLevelPresence();
    void userParamTypes_data();
    void userParamTypes();
    void userParamFieldsUseTheirWidth();
    void numbers_data();
    void numbers();
};

void TestTelemetryTexts::initTestCase()
{
    qputenv("TZ", "UTC");
    tzset();
    ZOR_Language::instance().load(QStringLiteral("keys"));
}

void TestTelemetryTexts::floatTexts_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("column");
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("speed: a half rounds up")
        << 13 << int(ZorTmi::Col_Speed) << 61.25f << QStringLiteral("61.3 abbr_024");
    QTest::newRow("distance below zero") << 16 << int(ZorTmi::Col_Distance) << -0.25f
                                         << QStringLiteral("-0.25 abbr_023");
    QTest::newRow("fuel used: any negative is no data")
        << 54 << int(ZorTmi::Col_CanFuelConsumption) << -0.001f << QStringLiteral("n/a");
    QTest::newRow("CAN mileage: zero is a value")
        << 57 << int(ZorTmi::Col_CanFullRun) << 0.0f << QStringLiteral("0.00 abbr_023");
}

void TestTelemetryTexts::floatTexts()
{
    QFETCH(int, field);
    QFETCH(int, column);
    QFETCH(float, value);
    QFETCH(QString, text);
    QCOMPARE(floatText(field, column, value), text);
}

// The fixed-point float path must give the texts of QString::number(v, 'f',
// decimals) for every exponent, including floats far beyond 64 bits, except
// that a negative value rounding to zero shows no sign.
void TestTelemetryTexts::floatTextsMatchQtFormattingAtEveryMagnitude()
{
    struct Form
    {
        int field;
        int column;
        int decimals;
        const char* unit;
    };
    const Form forms[] = {{13, ZorTmi::Col_Speed, 1, " abbr_024"}, {76, ZorTmi::Col_NaviSpeed, 2, ""}};
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
                QCOMPARE(floatText(form.field, form.column, f), expected + QLatin1String(form.unit));
            }
        }
    }
}

void TestTelemetryTexts::zoneText_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0 << QStringLiteral("(UTC)");
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
    auto record = decoded({3, 200}, "00f15365 2d00"); // 1700000000, 45 ms
    TmiPage_Kite3& page = *record;
    page.setDateTimeOffset(-19800);
    QCOMPARE(page.getStrDateTimeUTC(), QStringLiteral("14.11.2023 22:13:20"));
    QCOMPARE(page.getStrDateTime(), QStringLiteral("14.11.2023 22:13:20"));
    QCOMPARE(page.getStrDateTimeUTC_Offset(), QStringLiteral("16:43:20.45 14.11.2023 (UTC -5:30)"));
    QCOMPARE(page.getDateTimeUTC_Offset().toSecsSinceEpoch(), qint64(1700000000 - 19800));
    QCOMPARE(page.getStrMiliSec(), QStringLiteral(".45"));
    QCOMPARE(page.getStrLastDateTimeUTC_Offset(), QStringLiteral("n/a"));
    QCOMPARE(page.getStrLbsDateTimeUTC_Offset(), QStringLiteral("n/a"));

    // Last time 7200; LBS time 3600 after the three cells (33 bytes).
    auto withLbs = decoded({9, 77}, "201c0000" + QByteArray(66, '0') + "100e0000");
    TmiPage_Kite3& lbs = *withLbs;
    lbs.setDateTimeOffset(10800);
    QCOMPARE(lbs.getStrLbsDateTimeUTC_Offset(), QStringLiteral("04:00:00 01.01.1970 (UTC +3)"));
    QCOMPARE(lbs.getStrLastDateTimeUTC_Offset(), QStringLiteral("05:00:00 01.01.1970 (UTC +3)"));
    QCOMPARE(lbs.getLbsDateTimeUTC().toSecsSinceEpoch(), qint64(3600));
}

void TestTelemetryTexts::rs485TemperatureFollowsLevelPresence()
{
    // Temperatures 1-6 go with the levels 38-43: with level 1 alone present,
    // temperature 1 is shown (the golden records show the other way round).
    auto page = decoded({38}, "0000");
    QCOMPARE(page->getStrTempRS485_1(), QStringLiteral("0 abbr_017"));
    QCOMPARE(page->getStrTempRS485_2(), QStringLiteral("n/a"));
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
    row("1 s", 1, 0xFF, "s", "-1");
    row("1 i is not signed", 1, 0xFF, "i", "255");
    row("1 b", 1, 5, "b", "00000101");
    row("1 h", 1, 0xA, "h", "0x0A");
    row("1 f is not float", 1, 7, "f", "7");
    row("1 other", 1, 0x80, "q", "128");
    row("2 i", 2, 0x8000, "i", "-32768");
    row("2 b", 2, 0x8001, "b", "1000000000000001");
    row("2 f is not float", 2, 0x3F80, "f", "16256");
    row("4 u", 4, 0xFFFFFFFFu, "u", "4294967295");
    row("4 i", 4, 0x80000000u, "i", "-2147483648");
    row("4 f", 4, 0x3F800000u, "f", "1.000000");
    row("4 f negative", 4, 0xC0490FDBu, "f", "-3.141593");
    row("4 b", 4, 1, "b", "00000000000000000000000000000001");
    row("8 u", 8, ~quint64(0), "u", "18446744073709551615");
    row("8 i", 8, quint64(1) << 63, "i", "-9223372036854775808");
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
    auto record = decoded({222, 223, 252, 255}, "ff feff 0000803f feffffffffffffff");
    const TmiPage_Kite3& page = *record;
    QCOMPARE(page.getStrUser1Byte_Type_16(QStringLiteral("s")), QStringLiteral("-1"));
    QCOMPARE(page.getStrUser2Byte_Type_1(QStringLiteral("h")), QStringLiteral("0xFFFE"));
    QCOMPARE(page.getStrUser4Byte_Type_15(QStringLiteral("f")), QStringLiteral("1.000000"));
    QCOMPARE(page.getStrUser8Byte_Type_3(QStringLiteral("i")), QStringLiteral("-2"));
    QCOMPARE(page.getStrUser8Byte_Type_2(QStringLiteral("u")), QStringLiteral("n/a"));
}

QTEST_GUILESS_MAIN(TestTelemetryTexts)
// Values as numbers, in the unit of the text, from the rules of the fields:
// millivolts shown as volts, seconds as hours, 1/10000 angular minute as
// degrees, decimetres as metres; NaN where the text says there is no value.
void TestTelemetryTexts::numbers_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("column");
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<double>("number");
    const double none = qQNaN();
    QTest::newRow("time: UTC seconds") << 3 << int(ZorTmi::Col_Time) << QByteArray("80 e5 31 66") << 1714546048.0;
    QTest::newRow("engine work: flag of bit 7") << 5 << int(ZorTmi::Col_EngineWork) << QByteArray("80") << 1.0;
    QTest::newRow("SIM number: 1 when clear") << 5 << int(ZorTmi::Col_SimNumber) << QByteArray("00") << 1.0;
    QTest::newRow("satellites: bits 2-7") << 8 << int(ZorTmi::Col_NGaugeSatellites) << QByteArray("27") << 9.0;
    QTest::newRow("latitude 55 deg 45' in degrees")
        << 10 << int(ZorTmi::Col_Latitude) << QByteArray("10 68 fe 01") << 55.75;
    QTest::newRow("west longitude") << 11 << int(ZorTmi::Col_Longitude) << QByteArray("60 4c cd fe") << -33.5;
    QTest::newRow("altitude -1.5 m, not truncated")
        << 12 << int(ZorTmi::Col_Altitude) << QByteArray("f1 ff ff ff") << -1.5;
    QTest::newRow("speed: the float itself") << 13 << int(ZorTmi::Col_Speed) << QByteArray("00 00 75 42") << 61.25;
    QTest::newRow("GSM 99: unknown") << 7 << int(ZorTmi::Col_GSM) << QByteArray("63") << none;
    QTest::newRow("supply: volts") << 19 << int(ZorTmi::Col_Power) << QByteArray("39 30") << 12.345;
    QTest::newRow("engine hours") << 37 << int(ZorTmi::Col_Motochas) << QByteArray("10 0e 00 00") << 1.0;
    QTest::newRow("temperature -128: no sensor") << 45 << int(ZorTmi::Col_Temp1) << QByteArray("80") << none;
    QTest::newRow("CAN level in litres x 10")
        << 53 << int(ZorTmi::Col_CanFuelLevelLitres) << QByteArray("e9 03") << 100.1;
    QTest::newRow("CAN level in percent has no litres")
        << 53 << int(ZorTmi::Col_CanFuelLevelLitres) << QByteArray("32 80") << none;
    QTest::newRow("fuel used: negative is no data")
        << 54 << int(ZorTmi::Col_CanFuelConsumption) << QByteArray("00 00 80 bf") << none;
    QTest::newRow("service distance x 5 km") << 68 << int(ZorTmi::Col_CanTimeTO) << QByteArray("0a 00") << 50.0;
    QTest::newRow("humidity in half percent") << 167 << int(ZorTmi::Col_HPrecisionHumidity1) << QByteArray("05") << 2.5;
}

void TestTelemetryTexts::numbers()
{
    QFETCH(int, field);
    QFETCH(int, column);
    QFETCH(QByteArray, hex);
    QFETCH(double, number);
    const auto page = decoded({field}, hex);
    const double got = ZorTmi::number(ZorTmi::column(column), page->fieldBytes(field));
    if (qIsNaN(number))
        QVERIFY2(qIsNaN(got), qPrintable(QString::number(got)));
    else
        QCOMPARE(got, number);
}

#include "tst_telemetry_texts.moc"
