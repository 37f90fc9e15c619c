// CSV export of telemetry records beyond the golden archives of
// tests/data/telemetry (every cell of full records of each version): the
// captions, the event-code override, null and extended records, and the
// block writer giving the bytes of the stream members.

#include "module/zor_language.h"
#include "telemetry/tmipage_kite3.h"
#include "telemetry/zor_tmicsvwriter.h"
#include "zor_tmi_formats.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// Record bytes counting up from seed (all zero for seed 0).
QByteArray counting(int size, int seed)
{
    QByteArray a(size, '\0');
    for (int i = 0; seed && i < size; ++i)
        a[i] = char(seed + i * 7);
    return a;
}

QString header(const TmiPage_Base& columns)
{
    QString s;
    QTextStream stream(&s);
    columns.setExcelHeader(stream);
    stream.flush();
    return s;
}

QString dataLine(const TmiPage_Base& columns, const TmiPage_Base* record, const QString& codeText = QString())
{
    QString s;
    QTextStream stream(&s);
    columns.setExcelData(stream, record, codeText);
    stream.flush();
    return s;
}

// Cells of a line without its "\r\n"; every cell ends with ";".
QStringList cells(QString line)
{
    if (!line.endsWith(QLatin1String("\r\n")))
        return {QStringLiteral("<no line end>")};
    line.chop(2);
    if (line.isEmpty())
        return {};
    if (!line.endsWith(QLatin1Char(';')))
        return {QStringLiteral("<no cell end>")};
    line.chop(1);
    return line.split(QLatin1Char(';'));
}

} // namespace

class TestTelemetryCsv : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void headerNamesEveryColumnByItsCaption();
    void emptyFieldSet_data();
    void emptyFieldSet();
    void nullRecordWritesNoLineAtAll();
    void dataLineTexts_data();
    void dataLineTexts();
    void extendedRecordFillsTheSharedColumns();
    void writerGivesTheBytesOfTheStreamMembers();
    void writerEncodesWindows1251();
    void cancelledExportKeepsTheOldFile();
};

void TestTelemetryCsv::initTestCase()
{
    qputenv("TZ", "UTC");
    tzset();
    ZOR_Language::instance().load(QStringLiteral("keys"));
}

void TestTelemetryCsv::headerNamesEveryColumnByItsCaption()
{
    TmiPage_Kite3 columns(formatOf({1, 4, 38, 246}));
    const QStringList expected = {QStringLiteral("tmikte_123"), QStringLiteral("tmikte_001"),
        QStringLiteral("tmikte_126"), QStringLiteral("tmikte_127"), QStringLiteral("tmikte_128"),
        QStringLiteral("tmikte_129"), QStringLiteral("tmikte_130"), QStringLiteral("tmikte_131"),
        QStringLiteral("RS-485 tmikte_163 1"), QStringLiteral("tmikte_357 9")};
    QCOMPARE(cells(header(columns)), expected);
}

void TestTelemetryCsv::emptyFieldSet_data()
{
    QTest::addColumn<bool>("flag");
    QTest::addColumn<QString>("expectedHeader");
    QTest::newRow("plain") << false << QStringLiteral("\r\n");
    QTest::newRow("flag adds its cell") << true << QStringLiteral("tmikte_359;\r\n");
}

void TestTelemetryCsv::emptyFieldSet()
{
    QFETCH(bool, flag);
    QFETCH(QString, expectedHeader);
    TmiPage_Kite3 columns(QString(), flag);
    TmiPage_Kite3 record(fullFormat());
    QCOMPARE(header(columns), expectedHeader);
    QCOMPARE(dataLine(columns, &record), QStringLiteral("\r\n"));
}

void TestTelemetryCsv::nullRecordWritesNoLineAtAll()
{
    TmiPage_Kite3 columns(QStringLiteral("11"));
    QCOMPARE(dataLine(columns, nullptr, QStringLiteral("code")), QString());
    ZOR_TmiCsvWriter csv(columns);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QVERIFY(csv.open(&buffer));
    QVERIFY(csv.writeRecord(nullptr));
    QVERIFY(csv.commit());
    QCOMPARE(buffer.data(), QByteArray());
}

void TestTelemetryCsv::dataLineTexts_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("codeText");
    QTest::addColumn<QString>("expected");
    const QString codeGsm = formatOf({2, 7});
    const QByteArray rec = QByteArray::fromHex("010207");
    QTest::newRow("empty code text keeps the record's code")
        << codeGsm << codeGsm << rec << QString() << QStringLiteral("=\"513\";=\"22\";\r\n");
    QTest::newRow("code text replaces it")
        << codeGsm << codeGsm << rec << QStringLiteral("Alarm") << QStringLiteral("=\"Alarm\";=\"22\";\r\n");
    QTest::newRow("NUL inside the code text is kept")
        << codeGsm << codeGsm << rec << QStringLiteral("a") + QChar(0) + QStringLiteral("b")
        << QStringLiteral("=\"a") + QChar(0) + QStringLiteral("b\";=\"22\";\r\n");
    QTest::newRow("quotes stay unescaped")
        << codeGsm << codeGsm << rec << QStringLiteral("say \"hi\"") << QStringLiteral("=\"say \"hi\"\";=\"22\";\r\n");
    QTest::newRow("time cell without MiliSec ends in n/a")
        << formatOf({3}) << formatOf({3}) << QByteArray::fromHex("10000000") << QString()
        << QStringLiteral("=\"01.01.1970 0:00:16n/a\";\r\n");
    // The record lacks field 7 and carries 14, which has no column here.
    QTest::newRow("columns follow the column-defining record") << formatOf({1, 7}) << formatOf({1, 14})
                                                               << QByteArray::fromHex("05000000"
                                                                                      "5a00")
                                                               << QString() << QStringLiteral("=\"5\";=\"n/a\";\r\n");
}

void TestTelemetryCsv::dataLineTexts()
{
    QFETCH(QString, columns);
    QFETCH(QString, format);
    QFETCH(QByteArray, record);
    QFETCH(QString, codeText);
    TmiPage_Kite3 page(format);
    QVERIFY(page.setCurrentTMI(recordBytes(record), record.size()));
    QTEST(dataLine(TmiPage_Kite3(columns), &page, codeText), "expected");
}

void TestTelemetryCsv::extendedRecordFillsTheSharedColumns()
{
    szExtTMI_KITE3 ext = {};
    ext.NumPage = qToLittleEndian<quint32>(77);
    ext.Code = qToLittleEndian<quint16>(12);
    ext.Speed = qToLittleEndian<quint16>(605);
    ext.Mileage = qToLittleEndian<quint32>(12345);
    ext.VisibleSize = 3;
    ext.Visible[0] = 0xAB;
    ext.Visible[1] = 0x01;
    ext.Visible[2] = 0xFF;
    TmiPage_Kite3 record(&ext);
    TmiPage_Kite3 columns(formatOf({1, 2, 7, 13, 15}), true);

    const QString line = dataLine(columns, &record);
    QCOMPARE(line, QStringLiteral("=\"77\";=\"12\";=\"n/a\";=\"60.5 abbr_024\";=\"12.35 abbr_023\";=\"AB01FF\";\r\n"));
    QCOMPARE(cells(line).size(), cells(header(columns)).size());
    QString viaExt;
    QTextStream stream(&viaExt);
    columns.setExcelDataExt(stream, &record, QStringLiteral("x"));
    stream.flush();
    QVERIFY(viaExt.startsWith(QLatin1String("=\"77\";=\"x\";")));
}

void TestTelemetryCsv::writerGivesTheBytesOfTheStreamMembers()
{
    const QString format = fullFormat();
    const QByteArray wire = counting(734, 5);
    TmiPage_Kite3 columns(format, true);
    TmiPage_Kite3 record(format);
    record.setCurrentTMI(recordBytes(wire), wire.size());

    QString expected = header(columns);
    // Enough lines to cross a block boundary.
    const int lines = ZOR_TmiCsvWriter::BlockSize / 4000 + 50;
    const QString line = dataLine(columns, &record);
    QVERIFY(line.size() > 4000 / 2);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZOR_TmiCsvWriter csv(columns);
    QVERIFY(csv.open(&buffer));
    QVERIFY(csv.writeHeader());
    for (int i = 0; i < lines; ++i) {
        QVERIFY(csv.writeRecord(&record));
        expected += line;
    }
    QVERIFY(csv.commit());
    QCOMPARE(csv.linesWritten(), qint64(lines + 1));
    QCOMPARE(buffer.data().size(), expected.toUtf8().size());
    QVERIFY(buffer.data() == expected.toUtf8());
}

void TestTelemetryCsv::writerEncodesWindows1251()
{
    TmiPage_Kite3 columns(QStringLiteral("01"));
    TmiPage_Kite3 record(QStringLiteral("01"));
    record.setCurrentTMI(recordBytes(QByteArray::fromHex("0100")), 2);
    const QString code = QStringLiteral("Тревога №1");
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZOR_TmiCsvWriter csv(columns, ZOR_TmiCsvWriter::Windows1251);
    QVERIFY(csv.open(&buffer));
    QVERIFY(csv.writeRecord(&record, code));
    QVERIFY(csv.commit());
    QCOMPARE(buffer.data(),
        QByteArray("=\"\xD2\xF0\xE5\xE2\xEE\xE3\xE0 \xB9"
                   "1\";\r\n"));
}

void TestTelemetryCsv::cancelledExportKeepsTheOldFile()
{
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("export.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
    file.close();
    TmiPage_Kite3 columns(QStringLiteral("1"));
    enum End { Cancel, Drop, Commit };
    for (End end : {Cancel, Drop, Commit}) {
        {
            ZOR_TmiCsvWriter csv(columns);
            QVERIFY(csv.open(file.fileName()));
            QVERIFY(csv.writeHeader());
            if (end == Cancel)
                csv.cancel();
            else if (end == Commit)
                QVERIFY(csv.commit());
        } // Drop: destroyed without commit, the export never happened.
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), end == Commit ? QByteArray("tmikte_123;\r\n") : QByteArray("old"));
        file.close();
    }
}

QTEST_GUILESS_MAIN(TestTelemetryCsv)
#include "tst_telemetry_csv.moc"
