// The telemetry window on an archive of 1,000,000 full records (734 MB):
//  - time to first screen: open the file and paint the table and the
//    inspector of the first record (goal: under 300 ms);
//  - resident memory growth after the open and after jumping to 2,000
//    places all over the file (goal: under 64 MB);
//  - scrolling: pages of 40 rows read, decoded and shown as texts, in rows
//    per second, against the CSV export's lines per second of the same
//    records (the writer is the fast path; the table builds QStrings);
//  - the chart: first paint after choosing a column (read the column and
//    the times, build the envelope, paint; goal under 300 ms), a zoom or pan
//    redraw (goal under 16 ms) and the memory of the chart's summary and
//    values (goal under 64 MB);
//  - the track pane: reading the drive and its summary in the background.
// The archive is written once to a temporary directory and removed.

#include "telemetry/tmipage_base.h"
#include "zor_telemetry_window.h"
#include "zor_tmi_archivemodel.h"
#include "zor_tmi_chartpane.h"
#include "zor_tmi_chartview.h"
#include "zor_tmi_columnstore.h"
#include "zor_tmi_simarchive.h"
#include "zor_tmi_trackpane.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTableView>
#include <QTemporaryDir>

#include "zor_bench_support.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>

namespace {

constexpr int kRecords = 1000000;
constexpr int kPage = 40;

QTemporaryDir* lpDir = nullptr;

QString archive()
{
    static QString qsPath;
    if (qsPath.isEmpty()) {
        lpDir = new QTemporaryDir;
        qsPath = lpDir->filePath(QStringLiteral("archive.bin"));
        ZOR_TmiSimArchive::write(qsPath, kRecords, ZOR_TmiFieldSet());
    }
    return qsPath;
}

long residentKb()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields.at(1).toLong() * 4 : 0;
}

void BM_FirstScreen(benchmark::State& state)
{
    const QString qsPath = archive();
    for (auto _ : state) {
        const long nBefore = residentKb();
        QElapsedTimer timer;
        timer.start();
        ZOR_TelemetryWindow window;
        window.resize(1280, 800);
        window.openFile(qsPath);
        window.show();
        QApplication::processEvents();
        window.tableView()->viewport()->repaint();
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
        state.counters["rows"] = window.model()->rowCount();
        state.counters["rows_decoded"] = double(window.model()->rowsDecoded());
        state.counters["rss_growth_MB"] = double(residentKb() - nBefore) / 1024.0;
    }
}
BENCHMARK(BM_FirstScreen)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

// Jumps as a scroll bar dragged through the whole file would: every row of
// a page, every column.
void BM_JumpAllOverMemory(benchmark::State& state)
{
    const QString qsPath = archive();
    for (auto _ : state) {
        ZOR_TelemetryWindow window;
        window.resize(1280, 800);
        window.openFile(qsPath);
        window.show();
        // The track is read in the background; the table alone is measured.
        while (window.trackPane()->isLoading())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        QApplication::processEvents();
        const long nBefore = residentKb();
        ZOR_TmiArchiveModel* lpModel = window.model();
        const QAbstractItemModel* lpShown = window.tableView()->model();
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 2000; ++i) {
            window.tableView()->scrollTo(
                lpShown->index(int(qint64(i) * (kRecords - kPage) / 2000), 0), QAbstractItemView::PositionAtTop);
            window.tableView()->viewport()->repaint();
        }
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
        state.counters["rss_growth_MB"] = double(residentKb() - nBefore) / 1024.0;
        state.counters["rows_decoded"] = double(lpModel->rowsDecoded());
    }
}
BENCHMARK(BM_JumpAllOverMemory)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_ScrollRowsDecoded(benchmark::State& state)
{
    const QString qsPath = archive();
    ZOR_TmiArchiveModel model;
    model.openFile(qsPath);
    int nRow = 0;
    for (auto _ : state) {
        for (int r = nRow; r < nRow + kPage; ++r)
            for (int c = 0; c < model.columnCount(); ++c)
                benchmark::DoNotOptimize(model.data(model.index(r, c)));
        nRow = (nRow + kPage) % (kRecords - kPage);
    }
    state.counters["rows_per_s"] = benchmark::Counter(double(state.iterations()) * kPage, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ScrollRowsDecoded)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// Baseline: the CSV lines of the same records.
void BM_CsvLinesBaseline(benchmark::State& state)
{
    const QString qsPath = archive();
    ZOR_TmiArchiveModel model;
    model.openFile(qsPath);
    const std::unique_ptr<TmiPage_Base> columns = ZOR_TmiFieldSet().makeRecord();
    const std::unique_ptr<TmiPage_Base> record = ZOR_TmiFieldSet().makeRecord();
    QByteArray out;
    int nRow = 0;
    for (auto _ : state) {
        for (int r = nRow; r < nRow + kPage; ++r) {
            const QByteArray bytes = model.recordBytes(r);
            record->setCurrentTMI(reinterpret_cast<const unsigned char*>(bytes.constData()), bytes.size());
            out.clear();
            columns->appendExcelData(out, record.get(), QByteArray());
            benchmark::DoNotOptimize(out.data());
        }
        nRow = (nRow + kPage) % (kRecords - kPage);
    }
    state.counters["rows_per_s"] = benchmark::Counter(double(state.iterations()) * kPage, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_CsvLinesBaseline)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// A window on the archive with its track read, so that the background
// reading does not share the measured time.
std::unique_ptr<ZOR_TelemetryWindow> openedWindow()
{
    auto window = std::make_unique<ZOR_TelemetryWindow>();
    window->resize(1280, 800);
    window->openFile(archive());
    window->show();
    while (window->trackPane()->isLoading())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    QApplication::processEvents();
    return window;
}

void BM_ChartFirstPaint(benchmark::State& state)
{
    for (auto _ : state) {
        const std::unique_ptr<ZOR_TelemetryWindow> window = openedWindow();
        ZOR_TmiChartView* lpChart = window->chartPane()->chart();
        QElapsedTimer timer;
        timer.start();
        window->chartValues({QStringLiteral("Speed")});
        lpChart->repaint();
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
        state.counters["summary_MB"] = double(lpChart->summaryBytes()) / (1 << 20);
        state.counters["values_MB"] = double(window->columnStore()->memoryBytes()) / (1 << 20);
        state.counters["series"] = lpChart->seriesCount();
    }
}
BENCHMARK(BM_ChartFirstPaint)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

// Wheel steps in and out around the middle, then drags across, each
// followed by a repaint; one iteration is one redraw.
void BM_ChartZoomPanRedraw(benchmark::State& state)
{
    const std::unique_ptr<ZOR_TelemetryWindow> window = openedWindow();
    window->chartValues({QStringLiteral("Speed"), QStringLiteral("RS485_1"), QStringLiteral("Power")});
    ZOR_TmiChartView* lpChart = window->chartPane()->chart();
    lpChart->repaint();
    const int nMiddle = lpChart->plotRect().center().x();
    int nStep = 0;
    for (auto _ : state) {
        const int nPhase = nStep++ % 40;
        if (nPhase < 10)
            lpChart->zoomAt(0.8, nMiddle);
        else if (nPhase < 20)
            lpChart->panPixels(nPhase % 2 ? 90 : -60);
        else if (nPhase < 30)
            lpChart->zoomAt(1.25, nMiddle);
        else
            lpChart->panPixels(nPhase % 2 ? -90 : 60);
        lpChart->repaint();
    }
    state.counters["summary_MB"] = double(lpChart->summaryBytes()) / (1 << 20);
}
BENCHMARK(BM_ChartZoomPanRedraw)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_TrackAndSummaryRead(benchmark::State& state)
{
    for (auto _ : state) {
        ZOR_TelemetryWindow window;
        const long nBefore = residentKb();
        QElapsedTimer timer;
        timer.start();
        window.openFile(archive());
        while (window.trackPane()->isLoading())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
        state.counters["rss_growth_MB"] = double(residentKb() - nBefore) / 1024.0;
    }
}
BENCHMARK(BM_TrackAndSummaryRead)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int nResult = zorRunBenchmarks(argc, argv);
    delete lpDir;
    return nResult;
}
