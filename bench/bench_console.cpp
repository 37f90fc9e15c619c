// A busy terminal into a shown console: 100,000 received blocks of 64 bytes
// delivered the way a host delivers them (ReceiveMessage 2056 on the UI
// thread, the event loop turning in between). Reports rows per second, the
// peak resident size, and the second 50,000 rows against the first 50,000:
// a log that slows down as it grows shows up as a ratio well above 1.
// With a small row cap the log drops its oldest rows all along, and the
// ratio shows whether dropping costs more than appending.

#include "commands/zor_form_commands.h"
#include "commands/zor_model_log.h"
#include "commands/zor_widget_log.h"
#include "module/zor_commands.h"
#include "module/zor_host_link.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTableView>

#include "zor_bench_support.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>

#include <cstdio>
#include <fstream>
#include <string>

extern "C" {
void Initialize(ZOR_SendMessageFunc func);
void ReceiveMessage(void* sender, int message, unsigned long wParam, unsigned long lParam);
}

namespace {

const int kBlocks = 100000;
const int kBlockSize = 64;

unsigned long quietHost(void*, int, unsigned long, unsigned long)
{
    return 0;
}

long peakRssKb()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

QByteArray block(int n)
{
    QByteArray bytes = "*#GPS " + QByteArray::number(n) + ",55.7522,37.6156,\xcc\xee\xf1\xea\xe2\xe0,";
    bytes.reserve(kBlockSize);
    while (bytes.size() < kBlockSize)
        bytes.append(char(bytes.size() * 7 + n));
    bytes.resize(kBlockSize);
    return bytes;
}

// Delivers blocks [from, to) and returns the seconds it took, event loop
// turns included.
double deliver(int from, int to, int nBlocksPerTurn)
{
    QElapsedTimer timer;
    timer.start();
    for (int n = from; n < to; ++n) {
        QByteArray bytes = block(n);
        ReceiveMessage(nullptr, ZOR_MSG_DEVICE_DATA, reinterpret_cast<unsigned long>(&bytes), 0);
        if (n % nBlocksPerTurn == nBlocksPerTurn - 1)
            QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    return timer.nsecsElapsed() / 1e9;
}

// Bytes the heap hands out right now, small and mapped blocks together.
double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

long rssKb()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmRSS:", 0) == 0)
            return std::stol(line.substr(6));
    }
    return 0;
}

void openConsole()
{
    Initialize(&quietHost);
    ReceiveMessage(nullptr, ZOR_MSG_CREATE_MENU, 0, 0);
    ReceiveMessage(nullptr, ZOR_MSG_DEVICE_CONNECTED, 0, 0);
    ReceiveMessage(nullptr, ZOR_MSG_MENU_CHOSEN, 0, 0);
    QCoreApplication::processEvents();
}

void BM_ConsoleReceive100k(benchmark::State& state)
{
    openConsole();
    ZOR_Form_Commands* form = lpGlobalLib->getFormCommands();
    const int nCap = int(state.range(1));
    form->logModel()->setMaxRows(nCap > 0 ? nCap : ZOR_Model_Log::nDefaultMaxRows);
    for (auto _ : state) {
        form->logModel()->clear();
        const long rssBefore = peakRssKb();
        const double heapBefore = heapBytes();
        const int nBlocksPerTurn = int(state.range(0));
        const double first = deliver(0, kBlocks / 2, nBlocksPerTurn);
        const double second = deliver(kBlocks / 2, kBlocks, nBlocksPerTurn);
        state.SetIterationTime(first + second);
        state.counters["rows_per_s"] = kBlocks / (first + second);
        state.counters["first_50k_s"] = first;
        state.counters["second_50k_s"] = second;
        state.counters["ratio_second_to_first"] = second / first;
        state.counters["bytes_per_row"] = (heapBytes() - heapBefore) / form->logModel()->totalRowCount();
        state.counters["peak_rss_MB"] = peakRssKb() / 1024.0;
        state.counters["rss_growth_MB"] = (peakRssKb() - rssBefore) / 1024.0;
        const ZOR_Model_Log* log = form->logModel();
        if (log->totalRowCount() + log->droppedRowCount() != kBlocks)
            state.SkipWithError("rows lost");
    }
}
// Arguments: blocks delivered per turn of the event loop (1 is a host that
// forwards every read at once; 16 is about what a 115200-baud link hands
// over per 10 ms), and the log's row cap (0: the default).
BENCHMARK(BM_ConsoleReceive100k)
    ->Args({1, 0})
    ->Args({16, 0})
    ->Args({16, 20000})
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// Large replies: 300 blocks of 64 KB into the shown console, each turn of
// the event loop painting the log, as a window on screen does. Reports the
// seconds until the last block is painted.
void BM_ConsoleLargeBlocks(benchmark::State& state)
{
    openConsole();
    ZOR_Form_Commands* form = lpGlobalLib->getFormCommands();
    auto* view = form->findChild<QTableView*>(QStringLiteral("treeWidget"));
    const int nBlockSize = int(state.range(0));
    for (auto _ : state) {
        form->logModel()->clear();
        QElapsedTimer timer;
        timer.start();
        for (int n = 0; n < 300; ++n) {
            QByteArray bytes(nBlockSize, char('0' + n % 10));
            ReceiveMessage(nullptr, ZOR_MSG_DEVICE_DATA, reinterpret_cast<unsigned long>(&bytes), 0);
            QCoreApplication::processEvents();
            view->viewport()->repaint();
        }
        view->viewport()->repaint();
        const double seconds = timer.nsecsElapsed() / 1e9;
        state.SetIterationTime(seconds);
        state.counters["shown_s"] = seconds;
    }
}
BENCHMARK(BM_ConsoleLargeBlocks)
    ->Arg(1024)
    ->Arg(64 * 1024)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// The log alone, 1,000,000 blocks of 64 bytes: the heap it takes per row,
// how fast rows go in, and what is still held (heap and resident) once the
// log is cleared. A week-long session lives on these figures.
void BM_ConsoleLogMemory(benchmark::State& state)
{
    const int nRows = int(state.range(0));
    QVector<QByteArray> blocks;
    for (int n = 0; n < 1024; ++n)
        blocks.append(block(n));
    for (auto _ : state) {
        const double heapBefore = heapBytes();
        const long rssBefore = rssKb();
        auto* log = new ZOR_Model_Log;
        QElapsedTimer timer;
        timer.start();
        for (int n = 0; n < nRows; ++n) {
            // A copy of its own per row, as a link delivers it.
            const QByteArray bytes(blocks[n & 1023].constData(), kBlockSize);
            log->append(n & 1, bytes, 1772000000000 + n);
        }
        const double seconds = timer.nsecsElapsed() / 1e9;
        state.SetIterationTime(seconds);
        const double heapFull = heapBytes();
        const long rssFull = rssKb();
        log->clear();
        const double heapCleared = heapBytes();
        const long rssCleared = rssKb();
        delete log;
        state.counters["rows_per_s"] = nRows / seconds;
        state.counters["bytes_per_row"] = (heapFull - heapBefore) / nRows;
        state.counters["heap_full_MB"] = (heapFull - heapBefore) / 1e6;
        state.counters["heap_after_clear_MB"] = (heapCleared - heapBefore) / 1e6;
        state.counters["rss_full_MB"] = (rssFull - rssBefore) / 1024.0;
        state.counters["rss_after_clear_MB"] = (rssCleared - rssBefore) / 1024.0;
    }
}
BENCHMARK(BM_ConsoleLogMemory)->Arg(1000000)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

// A log at its default cap of 1,000,000 rows that goes on receiving: three
// million rows, the last two million each dropping an old one on average.
// Rows per second of the last million against the first, and the heap per
// row held at the end (the dropped rows' memory must not stay behind).
void BM_ConsoleLogAtItsCap(benchmark::State& state)
{
    const int nRows = 3 * ZOR_Model_Log::nDefaultMaxRows;
    QVector<QByteArray> blocks;
    for (int n = 0; n < 1024; ++n)
        blocks.append(block(n));
    for (auto _ : state) {
        const double heapBefore = heapBytes();
        ZOR_Model_Log log;
        double seconds[3] = {};
        for (int third = 0; third < 3; ++third) {
            QElapsedTimer timer;
            timer.start();
            for (int n = third * nRows / 3; n < (third + 1) * nRows / 3; ++n) {
                const QByteArray bytes(blocks[n & 1023].constData(), kBlockSize);
                log.append(n & 1, bytes, 1772000000000 + n);
            }
            seconds[third] = timer.nsecsElapsed() / 1e9;
        }
        state.SetIterationTime(seconds[0] + seconds[1] + seconds[2]);
        state.counters["rows_per_s"] = nRows / (seconds[0] + seconds[1] + seconds[2]);
        state.counters["ratio_last_to_first"] = seconds[2] / seconds[0];
        state.counters["bytes_per_row"] = (heapBytes() - heapBefore) / log.totalRowCount();
        if (log.totalRowCount() > log.maxRows() || log.totalRowCount() + log.droppedRowCount() != nRows)
            state.SkipWithError("cap not kept");
    }
}
BENCHMARK(BM_ConsoleLogAtItsCap)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

// Find in a log of 1,000,000 rows: one step to the next match, with the
// count of all matches and the place of this one that the find bar shows.
void BM_ConsoleFindInMillionRows(benchmark::State& state)
{
    ZOR_Widget_Log widget;
    ZOR_Model_Log* log = widget.model();
    for (int n = 0; n < 1000000; ++n)
        log->append(n & 1, block(n), 1772000000000 + n);
    log->append(1, "*#NEEDLE", 1772001000000);
    widget.showFindBar();
    auto* find = widget.findChild<QLineEdit*>(QStringLiteral("lineEdit_Find"));
    find->setText(QStringLiteral("needle"));
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        widget.findInLog(true);
        state.SetIterationTime(timer.nsecsElapsed() / 1e9);
    }
}
BENCHMARK(BM_ConsoleFindInMillionRows)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);

// Baseline: the same blocks copied into a vector, no console.
void BM_CopyBlocksBaseline(benchmark::State& state)
{
    for (auto _ : state) {
        QVector<QByteArray> rows;
        for (int n = 0; n < kBlocks; ++n)
            rows.append(block(n));
        benchmark::DoNotOptimize(rows.data());
    }
}
BENCHMARK(BM_CopyBlocksBaseline)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return zorRunBenchmarks(argc, argv);
}
