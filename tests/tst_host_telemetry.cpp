// The telemetry window: the simulated archive, lazy reading of archives
// that fit their field set and ones that do not, the bytes behind a value,
// re-decoding after a field-set change, and the CSV export against
// zor-tool's.

#include "config/zor_configdocument.h"
#include "config/zor_form_config_set_kite3.h"
#include "zor_telemetry_window.h"
#include "zor_tmi_archivemodel.h"
#include "zor_tmi_exportjob.h"
#include "zor_tmi_fieldset.h"
#include "zor_tmi_formats.h"

#include <QItemSelectionModel>
#include <QProcess>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

namespace {

const QString kAll = fullFormat();

QString bin(const char* lpName)
{
    return QStringLiteral(ZOR_BIN_DIR "/") + QLatin1String(lpName);
}

// Runs a program of the project; its exit code, standard output in out.
int run(const char* lpProgram, const QStringList& args, QByteArray* lpOut = nullptr)
{
    QProcess process;
    process.start(bin(lpProgram), args);
    if (!process.waitForFinished(120000))
        return -1;
    if (lpOut)
        *lpOut = process.readAllStandardOutput();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

bool makeArchive(const QString& qsPath, int nRecords, int nVersion, const QString& qsMask)
{
    return run("zor-sim",
               {"--archive", QString::number(nRecords), "--version", QString::number(nVersion), "--mask", qsMask, "-o",
                   qsPath})
        == 0;
}

ZOR_TmiFieldSet fieldSet(int nVersion, const QString& qsMask)
{
    ZOR_TmiFieldSet set;
    set.setVersion(nVersion);
    set.parse(qsMask);
    return set;
}

QByteArray contents(const QString& qsPath)
{
    QFile file(qsPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

QString cell(const QAbstractItemModel* lpModel, int nRow, int nColumn)
{
    return lpModel->data(lpModel->index(nRow, nColumn)).toString();
}

} // namespace

class TestHostTelemetry : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void simulatorWritesRecordsOfTheFieldSet_data();
    void simulatorWritesRecordsOfTheFieldSet();
    void simulatorRefusesBadOptions();
    void showsWhatFitsAndSaysWhatIsWrong_data();
    void showsWhatFitsAndSaysWhatIsWrong();
    void fourGigabyteFileOpensWithoutReadingIt();
    void cellsMatchZorToolDecode_data();
    void cellsMatchZorToolDecode();
    void highlightsTheBytesOfTheSelectedValue_data();
    void highlightsTheBytesOfTheSelectedValue();
    void changingTheFieldSetRedecodes();
    void fieldSetFromSettingsFile();
    void fieldSetFromTheOpenConfiguration();
    void exportEqualsZorToolCsv();
    void exportOfSelectedRows();
    void cancelledExportLeavesNoFile();

private:
    QString path(const QString& qsName) const { return m_dir.filePath(qsName); }
    QTemporaryDir m_dir;
};

void TestHostTelemetry::simulatorWritesRecordsOfTheFieldSet_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<qint64>("size");
    QTest::newRow("default: version 3, all 255 fields, 734 bytes") << QStringList() << qint64(10 * 734);
    QTest::newRow("version 1 full: 146 bytes")
        << QStringList{QStringLiteral("--version"), QStringLiteral("1")} << qint64(10 * 146);
    QTest::newRow("mask-hex 60..: Code and Time, 6 bytes")
        << QStringList{QStringLiteral("--mask-hex"), QStringLiteral("60") + QString(62, QLatin1Char('0'))}
        << qint64(60);
}

void TestHostTelemetry::simulatorWritesRecordsOfTheFieldSet()
{
    QFETCH(QStringList, args);
    QFETCH(qint64, size);
    const QString qsFile = path(QStringLiteral("sim.bin"));
    args += QStringList{"--archive", "10", "-o", qsFile};
    QCOMPARE(run("zor-sim", args), 0);
    QCOMPARE(QFileInfo(qsFile).size(), size);
    // The same records every time.
    const QByteArray bytes = contents(qsFile);
    QCOMPARE(run("zor-sim", args), 0);
    QCOMPARE(contents(qsFile), bytes);
}

void TestHostTelemetry::simulatorRefusesBadOptions()
{
    const QString qsFile = path(QStringLiteral("bad.bin"));
    for (const QStringList& args : {QStringList{"--version", "4", "-o", qsFile},
             QStringList{"--mask-hex", "FF", "-o", qsFile}, QStringList{"--mask", "0", "-o", qsFile}, QStringList()})
        QCOMPARE(run("zor-sim", QStringList{"--archive", "5"} + args), 2);
    QVERIFY(!QFile::exists(qsFile));
}

void TestHostTelemetry::showsWhatFitsAndSaysWhatIsWrong_data()
{
    QTest::addColumn<int>("records");
    QTest::addColumn<int>("extraBytes");
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("partial");
    QTest::addColumn<QString>("problemPart");
    QTest::newRow("whole records") << 1000 << 0 << 1000 << false << QString();
    QTest::newRow("empty file") << 0 << 0 << 0 << false << QStringLiteral("пуст");
    QTest::newRow("shorter than one record") << 0 << 100 << 1 << true << QStringLiteral("100");
    // 10 records of 734 bytes, then 7 bytes: offset 7340, 727 missing.
    QTest::newRow("field set does not divide the file") << 10 << 7 << 11 << true << QStringLiteral("7340");
}

void TestHostTelemetry::showsWhatFitsAndSaysWhatIsWrong()
{
    QFETCH(int, records);
    QFETCH(int, extraBytes);
    QFETCH(int, rows);
    QFETCH(bool, partial);
    QFETCH(QString, problemPart);
    const QString qsFile = path(QStringLiteral("fit.bin"));
    QVERIFY(makeArchive(qsFile, records + (extraBytes ? 1 : 0), 3, kAll));
    QVERIFY(QFile::resize(qsFile, qint64(records) * 734 + extraBytes));

    ZOR_TelemetryWindow window;
    QVERIFY(window.openFile(qsFile));
    ZOR_TmiArchiveModel* lpModel = window.model();
    QCOMPARE(lpModel->rowCount(), rows);
    QCOMPARE(lpModel->hasPartialRecord(), partial);
    QCOMPARE(lpModel->problem().isEmpty(), problemPart.isEmpty());
    QVERIFY2(window.infoText().contains(problemPart), qPrintable(window.infoText()));
    if (partial) {
        QCOMPARE(lpModel->partialBytes(), extraBytes);
        QCOMPARE(lpModel->recordBytes(rows - 1).size(), extraBytes);
        QVERIFY(lpModel->problem().contains(QString::number(734 - extraBytes)));
        // What whole fields the partial record has are shown, the rest "n/a".
        QCOMPARE(cell(lpModel, rows - 1, 0), QString::number(records + 1));
        QCOMPARE(cell(lpModel, rows - 1, lpModel->columnCount() - 1), QStringLiteral("n/a"));
    }
    // Only what was asked was decoded.
    QVERIFY(lpModel->rowsDecoded() <= 64);
}

void TestHostTelemetry::fourGigabyteFileOpensWithoutReadingIt()
{
    const QString qsFile = path(QStringLiteral("huge.bin"));
    const qint64 nSize = (qint64(4) << 30) + 5;
    {
        QFile file(qsFile);
        QVERIFY(file.open(QIODevice::WriteOnly));
        if (!file.resize(nSize))
            QSKIP("no room for a sparse 4 GB file");
    }
    ZOR_TmiArchiveModel model;
    QVERIFY(model.openFile(qsFile));
    QCOMPARE(model.recordCount(), int(nSize / 734));
    QCOMPARE(model.partialBytes(), int(nSize % 734));
    QCOMPARE(model.rowCount(), int(nSize / 734) + 1);
    // The last whole record and the partial one lie past 2^32.
    QCOMPARE(model.recordBytes(model.recordCount() - 1), QByteArray(734, '\0'));
    QCOMPARE(model.recordBytes(model.recordCount()).size(), int(nSize % 734));
    QCOMPARE(cell(&model, model.recordCount() - 1, 0), QStringLiteral("0"));
    QCOMPARE(model.rowsDecoded(), quint64(1));
    QFile::remove(qsFile);
}

void TestHostTelemetry::cellsMatchZorToolDecode_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QString>("mask");
    QTest::newRow("version 3, all fields") << 3 << kAll;
    QTest::newRow("version 1, all fields") << 1 << kAll;
    QTest::newRow("version 3, a few fields") << 3 << formatOf({1, 3, 4, 10, 11, 13, 31, 53, 200});
}

void TestHostTelemetry::cellsMatchZorToolDecode()
{
    QFETCH(int, version);
    QFETCH(QString, mask);
    const QString qsFile = path(QStringLiteral("decode.bin"));
    QVERIFY(makeArchive(qsFile, 400, version, mask));
    ZOR_TmiArchiveModel model;
    model.setFieldSet(fieldSet(version, mask));
    QVERIFY(model.openFile(qsFile));
    for (int nRow : {0, 37, 399}) {
        QByteArray decoded;
        QCOMPARE(run("zor-tool",
                     {"decode", "--version", QString::number(version), "--mask", mask, "--hex",
                         QString::fromLatin1(model.recordBytes(nRow).toHex())},
                     &decoded),
            0);
        // Each line: number;name;the field's column texts, one per column.
        int c = 0;
        for (const QString& line : QString::fromUtf8(decoded).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            const QStringList parts = line.split(QLatin1Char(';'));
            for (int k = 2; k < parts.size(); ++k, ++c) {
                QCOMPARE(model.columnField(c), parts[0].toInt());
                QCOMPARE(cell(&model, nRow, c), parts[k]);
            }
        }
        QCOMPARE(c, model.columnCount());
    }
}

void TestHostTelemetry::highlightsTheBytesOfTheSelectedValue_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("part");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("length");
    // Offsets are the widths of the fields before, from the field table:
    // NumPage 4, Code 2, Time 4, State 1, Module1 1, Module2 1, GSM 1,
    // StateNGauge 1, LastTime 4, Latitude 4, Longitude 4, Altitude 4, Speed 4.
    QTest::newRow("full set, Speed") << kAll << 13 << 0 << 31 << 4;
    QTest::newRow("full set, a State flag") << kAll << 4 << 3 << 10 << 1;
    QTest::newRow("full set, satellites of StateNGauge") << kAll << 8 << 2 << 14 << 1;
    QTest::newRow("NumPage, Time, Speed: Speed after 8 bytes") << formatOf({1, 3, 13}) << 13 << 0 << 8 << 4;
    QTest::newRow("only Longitude") << formatOf({11}) << 11 << 0 << 0 << 4;
}

void TestHostTelemetry::highlightsTheBytesOfTheSelectedValue()
{
    QFETCH(QString, mask);
    QFETCH(int, field);
    QFETCH(int, part);
    QFETCH(int, offset);
    QFETCH(int, length);
    const QString qsFile = path(QStringLiteral("bytes.bin"));
    QVERIFY(makeArchive(qsFile, 20, 3, mask));
    ZOR_TelemetryWindow window;
    window.setFieldSet(fieldSet(3, mask));
    QVERIFY(window.openFile(qsFile));
    const int nColumn = window.model()->firstColumnOf(field) + part;
    QCOMPARE(window.model()->columnField(nColumn), field);
    window.selectCell(5, nColumn);
    int nOffset = -1;
    int nLength = 0;
    QVERIFY(window.highlightedBytes(nOffset, nLength));
    QCOMPARE(nOffset, offset);
    QCOMPARE(nLength, length);
    // The field list shows the field with its offset and width.
    const QList<QTreeWidgetItem*> items = window.fieldList()->findItems(QString::number(field), Qt::MatchExactly, 0);
    QCOMPARE(items.size(), 1);
    QCOMPARE(items.first()->text(3).toInt(), offset); // every part here starts at its field
    // Choosing a byte of another field and then this one selects it back.
    window.selectCell(5, 0);
    window.selectByte(offset + length - 1);
    QCOMPARE(window.tableView()->currentIndex().row(), 5);
    QCOMPARE(window.model()->columnField(window.tableView()->currentIndex().column()), field);
}

void TestHostTelemetry::changingTheFieldSetRedecodes()
{
    const QString qsFile = path(QStringLiteral("mask.bin"));
    const QString qsMask = formatOf({1, 2, 3, 13}); // 14 bytes a record
    QVERIFY(makeArchive(qsFile, 734, 3, qsMask));
    ZOR_TelemetryWindow window;
    QVERIFY(window.openFile(qsFile));
    // Read with the full set: 734 x 14 bytes are 14 wrong records.
    QCOMPARE(window.model()->rowCount(), 14);
    window.selectCell(3, 0);
    ZOR_TmiFieldSet set;
    set.parse(qsMask);
    window.setFieldSet(set);
    QCOMPARE(window.model()->rowCount(), 734);
    QCOMPARE(window.model()->columnCount(), 4);
    QVERIFY(window.model()->problem().isEmpty());
    QCOMPARE(cell(window.model(), 3, 0), QStringLiteral("4"));
    QCOMPARE(cell(window.model(), 733, 0), QStringLiteral("734"));
    // The view stays on the record it showed, and the inspector follows.
    QCOMPARE(window.tableView()->currentIndex().row(), 3);
    QCOMPARE(window.fieldList()->topLevelItemCount(), 4);
    QCOMPARE(window.fieldList()->topLevelItem(3)->text(3), QStringLiteral("10"));
}

void TestHostTelemetry::fieldSetFromSettingsFile()
{
    const QString qsFile = path(QStringLiteral("config.xml"));
    QFile file(qsFile);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\r\n<CONFIG>\r\n <PROTOCOL page=\"PROTOCOL\">\r\n"
               "  <KITE format=\"20\" mask=\""
        + formatOf({1, 2, 3, 70}).toLatin1() + "\"/>\r\n </PROTOCOL>\r\n</CONFIG>\r\n");
    file.close();
    ZOR_TmiFieldSet set;
    QString qsError;
    QVERIFY2(set.readSettingsFile(qsFile, &qsError), qPrintable(qsError));
    QCOMPARE(set.version(), 2);
    QCOMPARE(set.text(), formatOf({1, 2, 3, 70}));
    QCOMPARE(set.recordSize(), 4 + 2 + 4 + 8);

    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\r\n<CONFIG/>\r\n");
    file.close();
    QVERIFY(!set.readSettingsFile(qsFile, &qsError));
    QVERIFY(!qsError.isEmpty());
    QCOMPARE(set.version(), 2);

    // Reading leaves the disk alone: a missing file stays missing.
    const QString qsMissing = path(QStringLiteral("missing.xml"));
    QVERIFY(!set.readSettingsFile(qsMissing, &qsError));
    QVERIFY2(qsError.contains(QLatin1String("no such file")), qPrintable(qsError));
    QVERIFY(!QFile::exists(qsMissing));
}

void TestHostTelemetry::fieldSetFromTheOpenConfiguration()
{
    ZOR_TelemetryWindow window;
    QVERIFY(!window.takeFieldSetFromConfig()); // no configuration: nothing changes
    QCOMPARE(window.fieldSet(), ZOR_TmiFieldSet());

    ZOR_ConfigDocument document;
    document.createForms();
    auto* lpForm = qobject_cast<ZOR_Form_Config_Set_Kite3*>(document.form(QStringLiteral("protocol")));
    QVERIFY(lpForm);
    lpForm->setTypeDFProtocol(QStringLiteral("10"));
    lpForm->setStrFormat(formatOf({1, 2, 3, 13}));
    window.setConfigSource([&document] { return &document; });
    QVERIFY(window.takeFieldSetFromConfig());
    QCOMPARE(window.fieldSet().version(), 1);
    QCOMPARE(window.fieldSet().recordSize(), 4 + 2 + 4 + 4);
}

void TestHostTelemetry::exportEqualsZorToolCsv()
{
    const QString qsFile = path(QStringLiteral("export.bin"));
    QVERIFY(makeArchive(qsFile, 3000, 3, kAll));
    QVERIFY(QFile::resize(qsFile, 3000 * 734 - 100)); // and a partial record, left out by both
    const QString qsTool = path(QStringLiteral("tool.csv"));
    QCOMPARE(run("zor-tool", {"csv", "--version", "3", "--mask", kAll, "--in", qsFile, "--out", qsTool}), 1);

    ZOR_TelemetryWindow window;
    QVERIFY(window.openFile(qsFile));
    QSignalSpy finished(&window, &ZOR_TelemetryWindow::signal_ExportFinished);
    const QString qsMine = path(QStringLiteral("window.csv"));
    QVERIFY(window.exportCsv(qsMine, false));
    QVERIFY(window.isExporting());
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.first().at(0).toInt(), int(ZOR_TmiExportJob::Done));
    const QByteArray expected = contents(qsTool);
    QCOMPARE(expected.count("\r\n"), 3000);
    QVERIFY(contents(qsMine) == expected);
}

void TestHostTelemetry::exportOfSelectedRows()
{
    const QString qsFile = path(QStringLiteral("selected.bin"));
    const QString qsMask = formatOf({1, 2, 3, 4, 13});
    QVERIFY(makeArchive(qsFile, 50, 3, qsMask));
    const QString qsTool = path(QStringLiteral("all.csv"));
    QCOMPARE(run("zor-tool", {"csv", "--version", "3", "--mask", qsMask, "--in", qsFile, "--out", qsTool}), 0);
    const QList<QByteArray> lines = contents(qsTool).split('\n');

    ZOR_TelemetryWindow window;
    window.setFieldSet(fieldSet(3, qsMask));
    QVERIFY(window.openFile(qsFile));
    QItemSelectionModel* lpSelection = window.tableView()->selectionModel();
    lpSelection->clearSelection();
    // Selected cells in any order, several in one row: each record once.
    for (int nRow : {40, 2, 17})
        lpSelection->select(window.tableView()->model()->index(nRow, 1), QItemSelectionModel::Select);
    lpSelection->select(window.tableView()->model()->index(2, 3), QItemSelectionModel::Select);
    QSignalSpy finished(&window, &ZOR_TelemetryWindow::signal_ExportFinished);
    const QString qsMine = path(QStringLiteral("some.csv"));
    QVERIFY(window.exportCsv(qsMine, true));
    QVERIFY(finished.wait(60000));
    QCOMPARE(contents(qsMine), lines[0] + '\n' + lines[3] + '\n' + lines[18] + '\n' + lines[41] + '\n');
}

void TestHostTelemetry::cancelledExportLeavesNoFile()
{
    const QString qsFile = path(QStringLiteral("cancel.bin"));
    QVERIFY(makeArchive(qsFile, 20000, 3, kAll));
    ZOR_TelemetryWindow window;
    QVERIFY(window.openFile(qsFile));
    QSignalSpy finished(&window, &ZOR_TelemetryWindow::signal_ExportFinished);
    const QString qsCsv = path(QStringLiteral("cancelled.csv"));
    QVERIFY(window.exportCsv(qsCsv, false));
    QVERIFY(!window.exportCsv(path(QStringLiteral("second.csv")), false)); // one at a time
    window.cancelExport();
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.first().at(0).toInt(), int(ZOR_TmiExportJob::Cancelled));
    QVERIFY(!QFile::exists(qsCsv));
    QCOMPARE(QDir(m_dir.path()).entryList({QStringLiteral("cancelled*")}, QDir::Files | QDir::Hidden).size(), 0);
    QVERIFY(!window.isExporting());
}

QTEST_MAIN(TestHostTelemetry)
#include "tst_host_telemetry.moc"
