// The telemetry window's chart, track and table navigation: the chart's
// per-pixel envelope against the records themselves, the table row, chart
// cursor and track selection following each other, going to a time, row
// filters, and map tiles from a tile server this test runs on localhost.

#include "module/zor_language.h"
#include "zor_driveanalysis.h"
#include "zor_telemetry_window.h"
#include "zor_tmi_archivemodel.h"
#include "zor_tmi_chartpane.h"
#include "zor_tmi_chartview.h"
#include "zor_tmi_envelope.h"
#include "zor_tmi_rowfilter.h"
#include "zor_tmi_simarchive.h"
#include "zor_tmi_summarypane.h"
#include "zor_tmi_tilesource.h"
#include "zor_tmi_trackpane.h"
#include "zor_tmi_trackview.h"

#include <QBuffer>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTableView>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <limits>

namespace {

// Records are 10 s apart from 2024-06-01 00:00 UTC; the vehicle stands
// (event code 3, speed 0) for the first 5 minutes of every second hour.
constexpr qint64 kStart = 1717200000;
constexpr int kRecords = 2000;

// A tile server: /png/... answers a 256 x 256 PNG, /html/... a web page,
// /mute/... nothing at all. It keeps the User-Agent of the last request.
class TileServer : public QTcpServer
{
public:
    QByteArray userAgent;
    int nRequests = 0;

    TileServer()
    {
        QImage image(256, 256, QImage::Format_RGB32);
        image.fill(QColor(120, 200, 120));
        QBuffer buffer(&m_png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* lpSocket = nextPendingConnection())
                connect(lpSocket, &QTcpSocket::readyRead, this, [this, lpSocket] { answer(lpSocket); });
        });
        listen(QHostAddress::LocalHost);
    }
    QString url(const char* lpKind) const
    {
        return QStringLiteral("http://127.0.0.1:%1/%2/{z}/{x}/{y}.png").arg(serverPort()).arg(QLatin1String(lpKind));
    }

private:
    void answer(QTcpSocket* lpSocket)
    {
        QByteArray& request = m_requests[lpSocket];
        request += lpSocket->readAll();
        if (!request.contains("\r\n\r\n"))
            return;
        ++nRequests;
        for (const QByteArray& line : request.split('\n'))
            if (line.toLower().startsWith("user-agent:"))
                userAgent = line.mid(11).trimmed();
        const QByteArray path = request.split(' ').value(1);
        request.clear();
        if (path.startsWith("/mute/"))
            return;
        const bool bPng = path.startsWith("/png/");
        const QByteArray body = bPng ? m_png : QByteArray("<html><body>Welcome</body></html>");
        lpSocket->write("HTTP/1.1 200 OK\r\nContent-Type: " + QByteArray(bPng ? "image/png" : "text/html")
            + "\r\nCache-Control: max-age=86400\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n"
            + body);
    }
    QByteArray m_png;
    QHash<QTcpSocket*, QByteArray> m_requests;
};

} // namespace

class TestHostTelemetryPanes : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;
    QString m_qsArchive;

private slots:
    void initTestCase();
    void envelopeEqualsBruteForce_data();
    void envelopeEqualsBruteForce();
    void chartColumnsShowTheirRecords();
    void tableRowChartCursorAndTrackFollowEachOther();
    void goToTimeAndFilterRows();
    void driveSummaryAndTrackFile();
    void notComputedFollowsTheLanguage_data();
    void notComputedFollowsTheLanguage();
    void mapTilesFromALocalServer_data();
    void mapTilesFromALocalServer();
};

void TestHostTelemetryPanes::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QStandardPaths::setTestModeEnabled(true);
    m_qsArchive = m_dir.filePath(QStringLiteral("drive.bin"));
    QVERIFY(ZOR_TmiSimArchive::write(m_qsArchive, kRecords, ZOR_TmiFieldSet()));
}

void TestHostTelemetryPanes::envelopeEqualsBruteForce_data()
{
    QTest::addColumn<int>("nCount");
    QTest::addColumn<int>("nNanEvery"); // 0: no missing values
    QTest::newRow("one value") << 1 << 0;
    QTest::newRow("less than a block") << 7 << 0;
    QTest::newRow("a block and one") << 9 << 0;
    QTest::newRow("odd length, gaps") << 4099 << 5;
    QTest::newRow("mostly missing") << 1000 << 1;
    QTest::newRow("long") << 100000 << 97;
}

void TestHostTelemetryPanes::envelopeEqualsBruteForce()
{
    QFETCH(int, nCount);
    QFETCH(int, nNanEvery);
    QRandomGenerator random{quint32(nCount)};
    QVector<double> values(nCount);
    for (int i = 0; i < nCount; ++i)
        values[i] = (nNanEvery && i % nNanEvery == 0) ? std::nan("") : random.bounded(2000.0) - 1000.0;
    ZOR_TmiEnvelope envelope;
    envelope.build(values.constData(), nCount);
    for (int k = 0; k < 3000; ++k) {
        const int nFirst = int(random.bounded(nCount + 1));
        const int nLast = k % 10 == 0 ? nCount : nFirst + int(random.bounded(nCount - nFirst + 1));
        double dMin = std::numeric_limits<double>::infinity();
        double dMax = -dMin;
        for (int i = nFirst; i < nLast; ++i) {
            if (!std::isnan(values.at(i))) {
                dMin = qMin(dMin, values.at(i));
                dMax = qMax(dMax, values.at(i));
            }
        }
        double dGotMin = 0;
        double dGotMax = 0;
        const bool bAny = envelope.range(nFirst, nLast, dGotMin, dGotMax);
        QCOMPARE(bAny, dMin <= dMax);
        if (bAny) {
            QCOMPARE(dGotMin, dMin);
            QCOMPARE(dGotMax, dMax);
        }
    }
}

// Every pixel column of the plot: the records whose time falls in it, and
// the minimum and maximum of their speed read from the table's texts.
void TestHostTelemetryPanes::chartColumnsShowTheirRecords()
{
    ZOR_TelemetryWindow window;
    window.resize(1280, 800);
    QVERIFY(window.openFile(m_qsArchive));
    QVERIFY(window.chartValues({QStringLiteral("Speed")}));
    ZOR_TmiChartView* lpChart = window.chartPane()->chart();
    QVERIFY(lpChart->isTimeAxis());
    lpChart->setVisibleRange(kStart + 3000, kStart + 3000 + 20 * lpChart->plotRect().width() * 10.0 / 7);
    const int nSpeed = window.model()->firstColumnOf(13);
    const double dPerPixel = (lpChart->visibleTo() - lpChart->visibleFrom()) / lpChart->plotRect().width();
    for (int nColumn = 0; nColumn < lpChart->plotRect().width(); ++nColumn) {
        const double dFrom = lpChart->visibleFrom() + nColumn * dPerPixel;
        double dMin = std::numeric_limits<double>::infinity();
        double dMax = -dMin;
        for (int r = int(std::ceil((dFrom - kStart) / 10)); kStart + r * 10.0 < dFrom + dPerPixel; ++r) {
            const double dSpeed =
                window.model()->index(r, nSpeed).data().toString().section(QLatin1Char(' '), 0, 0).toDouble();
            dMin = qMin(dMin, dSpeed);
            dMax = qMax(dMax, dSpeed);
        }
        int nFirst = 0;
        int nLast = 0;
        double dGotMin = 0;
        double dGotMax = 0;
        QCOMPARE(lpChart->columnEnvelope(0, nColumn, nFirst, nLast, dGotMin, dGotMax), dMin <= dMax);
        if (dMin <= dMax) {
            // The table shows one decimal.
            QVERIFY2(std::abs(dGotMin - dMin) <= 0.051 && std::abs(dGotMax - dMax) <= 0.051,
                qPrintable(QStringLiteral("column %1: %2..%3, table %4..%5")
                               .arg(nColumn)
                               .arg(dGotMin)
                               .arg(dGotMax)
                               .arg(dMin)
                               .arg(dMax)));
        }
    }
}

void TestHostTelemetryPanes::tableRowChartCursorAndTrackFollowEachOther()
{
    ZOR_TelemetryWindow window;
    window.resize(1280, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.openFile(m_qsArchive));
    QVERIFY(window.chartValues({QStringLiteral("Speed"), QStringLiteral("RS485_1")}));
    QTRY_VERIFY_WITH_TIMEOUT(!window.trackPane()->isLoading(), 20000);
    ZOR_TmiChartView* lpChart = window.chartPane()->chart();
    ZOR_TmiTrackView* lpTrack = window.trackPane()->view();
    QCOMPARE(lpTrack->pointCount(), kRecords);

    window.selectCell(57, 2);
    QCOMPARE(lpChart->cursorRecord(), 57);
    QCOMPARE(lpTrack->selectedRecord(), 57);

    // A click in the chart: the nearest record becomes the table's row.
    lpChart->resetView();
    const QPoint at(lpChart->plotRect().left() + 300, lpChart->plotRect().center().y());
    QTest::mouseClick(lpChart, Qt::LeftButton, Qt::NoModifier, at);
    const int nRecord = int(std::lround(
        (lpChart->visibleFrom()
            + (300 + 0.0) * (lpChart->visibleTo() - lpChart->visibleFrom()) / lpChart->plotRect().width() - kStart)
        / 10));
    QVERIFY2(std::abs(window.currentRecord() - nRecord) <= 2, qPrintable(QString::number(window.currentRecord())));
    QCOMPARE(lpTrack->selectedRecord(), window.currentRecord());
    QCOMPARE(window.tableView()->currentIndex().column(), 2);

    // A click on the track at a record's position selects it.
    QPointF point;
    lpTrack->setSelectedRecord(-1);
    QVERIFY(lpTrack->pointOf(1234, point));
    QTest::mouseClick(lpTrack, Qt::LeftButton, Qt::NoModifier, point.toPoint());
    // Every hour drives the same loop: any lap's record at that place.
    QVERIFY2(
        std::abs(window.currentRecord() % 360 - 1234 % 360) <= 1, qPrintable(QString::number(window.currentRecord())));
    QCOMPARE(lpChart->cursorRecord(), window.currentRecord());
}

void TestHostTelemetryPanes::goToTimeAndFilterRows()
{
    ZOR_TelemetryWindow window;
    QVERIFY(window.openFile(m_qsArchive));
    QVERIFY(window.goToTime(QDateTime::fromSecsSinceEpoch(kStart + 1005, Qt::UTC)));
    QCOMPARE(window.currentRecord(), 101);
    QVERIFY(!window.goToTime(QDateTime::fromSecsSinceEpoch(kStart + 10 * kRecords, Qt::UTC)));

    // Parked: code 3, the first 30 records of hours 1, 3 and 5.
    QVERIFY(window.filterRows(QStringLiteral("3")));
    QCOMPARE(window.rowFilter()->rowCount(), 90);
    QCOMPARE(window.rowFilter()->sourceRow(0), 360);
    QVERIFY(!window.filterRows(QStringLiteral("3-x")));
    const int nSpeed = window.model()->firstColumnOf(13);
    QVERIFY(window.filterRows(QStringLiteral("1-2"), nSpeed, QStringLiteral("≥"), 60));
    QVERIFY(window.rowFilter()->rowCount() > 0);
    for (int r = 0; r < window.rowFilter()->rowCount(); ++r) {
        const QModelIndex index = window.tableView()->model()->index(r, nSpeed);
        QVERIFY(index.data().toString().section(QLatin1Char(' '), 0, 0).toDouble() >= 60);
    }
    // A record the filter hides: the table goes to the next one shown.
    window.selectCell(0, 0);
    QVERIFY(window.currentRecord() > 0);
    window.clearFilter();
    QCOMPARE(window.tableView()->model()->rowCount(), kRecords);
}

// Parked for 5 minutes at the start of hours 1, 3 and 5 of the 5.5 hours:
// four trips, three stops. The first record is at 55°45' N and 37°37' E
// plus 2.8' of longitude.
void TestHostTelemetryPanes::driveSummaryAndTrackFile()
{
    ZOR_TelemetryWindow window;
    QVERIFY(window.openFile(m_qsArchive));
    QTRY_VERIFY_WITH_TIMEOUT(!window.trackPane()->isLoading(), 20000);
    const auto drive = window.trackPane()->drive();
    QVERIFY(drive);
    QCOMPARE(int(drive->summary.trips.size()), 4);
    QCOMPARE(int(drive->summary.stops.size()), 3);
    const QString qsFile = m_dir.filePath(QStringLiteral("drive.geojson"));
    QVERIFY(window.exportTrack(ZOR_TelemetryWindow::Track_GeoJson, qsFile));
    QFile file(qsFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonArray features = QJsonDocument::fromJson(file.readAll()).object().value("features").toArray();
    QJsonArray first;
    for (const QJsonValue& feature : features)
        if (first.isEmpty() && feature["geometry"]["type"].toString() == QLatin1String("LineString"))
            first = feature["geometry"]["coordinates"].toArray().first().toArray();
    QCOMPARE(first.size(), 2);
    QVERIFY(qAbs(first[0].toDouble() - (37 + 37.0 / 60 + 2.8 / 60)) < 1e-6);
    QVERIFY(qAbs(first[1].toDouble() - (55 + 45.0 / 60)) < 1e-6);

    // The numeric CSV comes from zor-tool, in the background.
    const QString qsCsv = m_dir.filePath(QStringLiteral("numbers.csv"));
    QSignalSpy finished(&window, &ZOR_TelemetryWindow::signal_ExportFinished);
    QVERIFY(window.exportNumericCsv(qsCsv));
    QVERIFY(finished.wait(60000));
    QFile csv(qsCsv);
    QVERIFY(csv.open(QIODevice::ReadOnly));
    QVERIFY(csv.readLine().startsWith("NumPage,Code,Time,"));
    QVERIFY(csv.readLine().startsWith("1,2,2024-06-01T00:00:00Z,"));
}

void TestHostTelemetryPanes::notComputedFollowsTheLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("shown");
    QTest::newRow("ru") << "ru"
                        << "Моточасы не рассчитаны: в записях нет поля Motochas";
    QTest::newRow("en") << "en"
                        << "Engine hours not computed: the records carry no Motochas";
}

// The summary says what it could not compute in the window's language; a
// reason that came as text (a cut archive) stays as it came.
void TestHostTelemetryPanes::notComputedFollowsTheLanguage()
{
    QFETCH(QString, language);
    QFETCH(QString, shown);
    ZOR_Language::instance().load(language);
    ZOR_DriveSummary summary;
    summary.missing.push_back(ZOR_DriveMissing::EngineHours);
    summary.notComputed << QStringLiteral("cut <short>");
    ZOR_TmiSummaryPane pane;
    pane.setSummary(&summary, ZOR_DriveOptions());
    const QString text = pane.toPlainText();
    QVERIFY2(text.contains(shown), qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("cut <short>")));
    QVERIFY(!text.contains(QStringLiteral("engine hours:")));
}

void TestHostTelemetryPanes::mapTilesFromALocalServer_data()
{
    QTest::addColumn<QString>("qsKind");
    QTest::addColumn<bool>("bImage");
    QTest::addColumn<QString>("qsStatus");
    QTest::newRow("tiles") << "png" << true << "";
    QTest::newRow("a web page") << "html" << false << "text/html";
    QTest::newRow("no answer") << "mute" << false << "127.0.0.1";
    QTest::newRow("nobody listens") << "closed" << false << "127.0.0.1";
}

void TestHostTelemetryPanes::mapTilesFromALocalServer()
{
    QFETCH(QString, qsKind);
    QFETCH(bool, bImage);
    QFETCH(QString, qsStatus);
    TileServer server;
    QVERIFY(server.isListening());
    QString qsUrl = server.url(qsKind.toLatin1().constData());
    if (qsKind == QLatin1String("closed"))
        server.close();
    QTemporaryDir cache;
    ZOR_TmiTrackPane pane;
    pane.resize(500, 400);
    pane.tiles()->setCacheDirectory(cache.path());
    pane.tiles()->setTimeout(500);
    QVERIFY(pane.tiles()->tile(3, 4, 2).isNull()); // off until a template is set
    QVERIFY(!pane.setMap(QStringLiteral("ftp://x/{z}/{x}/{y}"), QString()));
    QVERIFY(pane.setMap(qsUrl, QStringLiteral("© test tiles")));
    QVERIFY(pane.tiles()->tile(3, 4, 2).isNull()); // asked for, not waited for
    QTRY_COMPARE_WITH_TIMEOUT(pane.tiles()->pendingCount(), 0, 10000);
    QCOMPARE(pane.tiles()->tile(3, 4, 2).isNull(), !bImage);
    QVERIFY2(pane.statusText().contains(qsStatus), qPrintable(pane.statusText()));
    QVERIFY(!pane.grab().isNull()); // the view still draws
    if (qsKind == QLatin1String("png")) {
        QVERIFY(server.userAgent.startsWith(ZOR_TmiTileSource::userAgent().left(8)));
        QVERIFY(!QDir(cache.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).isEmpty());
        // A new source with the same cache and no server: from the disk.
        server.close();
        ZOR_TmiTileSource again;
        again.setCacheDirectory(cache.path());
        QVERIFY(again.setUrlTemplate(qsUrl));
        again.tile(3, 4, 2);
        QTRY_COMPARE_WITH_TIMEOUT(again.pendingCount(), 0, 10000);
        QVERIFY(!again.tile(3, 4, 2).isNull());
    }
    QSettings().remove(QStringLiteral("telemetry"));
}

QTEST_MAIN(TestHostTelemetryPanes)
#include "tst_host_telemetry_panes.moc"
