// The drive summary against the CSV export of the same archive: 100,000
// full records of the simulated drive (73 MB), each read and decoded, then
// either added to the drive track and summarised (goal: less CPU than the
// export) or written as CSV lines to /dev/null. The archive is written once
// to a temporary directory and removed.

#include "telemetry/tmipage_base.h"
#include "telemetry/zor_tmicsvwriter.h"
#include "zor_driveexport.h"
#include "zor_tmi_simarchive.h"

#include <QFile>
#include <QTemporaryDir>

#include "zor_bench_support.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>

namespace {

constexpr int kRecords = 100000;

const QByteArray& archive()
{
    static QByteArray bytes;
    if (bytes.isEmpty()) {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("archive.bin"));
        ZOR_TmiSimArchive::write(path, kRecords, ZOR_TmiFieldSet());
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            bytes = file.readAll();
    }
    return bytes;
}

// Decodes every record of the archive into one record object.
void forEachRecord(const std::function<void(const TmiPage_Base&)>& each)
{
    const std::unique_ptr<TmiPage_Base> record = ZOR_TmiFieldSet().makeRecord();
    const int size = record->recordSize();
    const QByteArray& bytes = archive();
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.constData());
    for (int at = 0; at + size <= bytes.size(); at += size) {
        record->setCurrentTMI(p + at, size);
        each(*record);
    }
}

void BM_Summary(benchmark::State& state)
{
    for (auto _ : state) {
        ZOR_DriveTrack track;
        forEachRecord([&track](const TmiPage_Base& record) { track.addRecord(record); });
        const ZOR_DriveSummary summary = ZOR_DriveAnalysis().analyse(track);
        benchmark::DoNotOptimize(ZOR_DriveExport(track, summary).summaryJson());
    }
    state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(BM_Summary)->Unit(benchmark::kMillisecond);

void BM_CsvExport(benchmark::State& state)
{
    const std::unique_ptr<TmiPage_Base> columns = ZOR_TmiFieldSet().makeRecord();
    for (auto _ : state) {
        QFile sink(QStringLiteral("/dev/null"));
        ZOR_TmiCsvWriter csv(*columns);
        if (!sink.open(QIODevice::WriteOnly) || !csv.open(&sink) || !csv.writeHeader()) {
            state.SkipWithError("cannot write to /dev/null");
            return;
        }
        forEachRecord([&csv](const TmiPage_Base& record) { csv.writeRecord(&record); });
        csv.commit();
    }
    state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(BM_CsvExport)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (archive().isEmpty()) {
        std::fprintf(stderr, "bench_drive: cannot write the archive\n");
        return 1;
    }
    return zorRunBenchmarks(argc, argv);
}
