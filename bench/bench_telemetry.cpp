// Telemetry: decoding a full 734-byte record against memcpy of the same
// bytes (the offset plan built once and reused), and CSV lines of a full
// record per second, with random bytes (junk floats, all text paths) and
// with zeros.

#include "module/zor_language.h"
#include "telemetry/tmipage_kite3.h"
#include "telemetry/zor_tmicsvwriter.h"

#include <benchmark/benchmark.h>

#include <QIODevice>
#include <QString>
#include <QTextStream>

#include <chrono>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr int kRecordSize = int(sizeof(szCurrentTMI_KITE3));
constexpr int kRecords = 64;  // distinct records, cycled through

const QString& fullFormat()
{
    static const QString s(ZorTmi::FieldCount, QLatin1Char('1'));
    return s;
}

// kRecords full records back to back: random bytes or zeros.
const std::vector<unsigned char>& records(bool random)
{
    static const std::vector<unsigned char> zeros(size_t(kRecordSize) * kRecords, 0);
    static const std::vector<unsigned char> noise = [] {
        std::vector<unsigned char> v(size_t(kRecordSize) * kRecords);
        std::mt19937 gen(20261123);
        for (auto& b : v)
            b = static_cast<unsigned char>(gen());
        return v;
    }();
    return random ? noise : zeros;
}

const unsigned char* recordAt(const std::vector<unsigned char>& v, int i)
{
    return v.data() + size_t(i % kRecords) * kRecordSize;
}

void useKeys()
{
    static const bool loaded = ZOR_Language::instance().load(QStringLiteral("keys"));
    (void)loaded;
}

// Takes the CSV bytes and drops them, so that the disk is not measured.
class NullDevice : public QIODevice
{
protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 len) override { return len; }
};

void BM_Memcpy734(benchmark::State& state)
{
    const auto& src = records(true);
    unsigned char dst[kRecordSize];
    int i = 0;
    for (auto _ : state) {
        std::memcpy(dst, recordAt(src, i++), kRecordSize);
        benchmark::DoNotOptimize(dst);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * kRecordSize);
}
BENCHMARK(BM_Memcpy734);

void BM_Decode734(benchmark::State& state)
{
    const auto& src = records(true);
    TmiPage_Kite3 page(fullFormat());
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(page.setCurrentTMI(recordAt(src, i++), kRecordSize));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * kRecordSize);
}
BENCHMARK(BM_Decode734);

// Both in one loop, in alternating batches, so that the ratio is not skewed
// by frequency changes or another process between two separate runs.
void BM_DecodeVsMemcpy(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    constexpr int kBatch = 512;
    const auto& src = records(true);
    TmiPage_Kite3 page(fullFormat());
    unsigned char dst[kRecordSize];
    double copy = 0;
    double decode = 0;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        for (int i = 0; i < kBatch; ++i) {
            std::memcpy(dst, recordAt(src, i), kRecordSize);
            benchmark::DoNotOptimize(dst);
            benchmark::ClobberMemory();
        }
        const auto t1 = Clock::now();
        for (int i = 0; i < kBatch; ++i) {
            benchmark::DoNotOptimize(page.setCurrentTMI(recordAt(src, i), kRecordSize));
            benchmark::ClobberMemory();
        }
        const auto t2 = Clock::now();
        copy += std::chrono::duration<double>(t1 - t0).count();
        decode += std::chrono::duration<double>(t2 - t1).count();
    }
    if (std::memcmp(page.valueBlock(), recordAt(src, kBatch - 1), kRecordSize) != 0)
        state.SkipWithError("decoded block differs from the record");
    // Throughput of decoding as a share of memcpy's (target >= 0.5).
    state.counters["decode_vs_memcpy"] = decode > 0 ? copy / decode : 0;
    state.counters["decode_ns"] = decode * 1e9 / double(state.iterations() * kBatch);
    state.counters["memcpy_ns"] = copy * 1e9 / double(state.iterations() * kBatch);
}
BENCHMARK(BM_DecodeVsMemcpy);

// Decode and one CSV line per record through the block writer.
void BM_CsvLines(benchmark::State& state)
{
    useKeys();
    const auto& src = records(state.range(0) != 0);
    TmiPage_Kite3 columns(fullFormat());
    TmiPage_Kite3 record(fullFormat());
    NullDevice sink;
    sink.open(QIODevice::WriteOnly);
    ZOR_TmiCsvWriter csv(columns);
    csv.open(&sink);
    csv.writeHeader();
    int i = 0;
    for (auto _ : state) {
        record.setCurrentTMI(recordAt(src, i++), kRecordSize);
        csv.writeRecord(&record);
    }
    csv.commit();
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(state.range(0) ? "random bytes, lines/s = items/s" : "zeros, lines/s = items/s");
}
BENCHMARK(BM_CsvLines)->Arg(1)->Arg(0);

// The baseline: the same lines through setExcelData and a QTextStream.
void BM_CsvLinesTextStream(benchmark::State& state)
{
    useKeys();
    const auto& src = records(true);
    TmiPage_Kite3 columns(fullFormat());
    TmiPage_Kite3 record(fullFormat());
    NullDevice sink;
    sink.open(QIODevice::WriteOnly);
    QTextStream stream(&sink);
    stream.setCodec("UTF-8");
    int i = 0;
    for (auto _ : state) {
        record.setCurrentTMI(recordAt(src, i++), kRecordSize);
        columns.setExcelData(stream, &record, QString());
    }
    stream.flush();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CsvLinesTextStream);

} // namespace

BENCHMARK_MAIN();
