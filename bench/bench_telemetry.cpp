// Telemetry: decoding a full 734-byte record against memcpy of the same
// bytes (the offset plan built once and reused; goal 0.8x memcpy), CSV lines
// of a full record per second with random bytes (junk floats, all text
// paths), with zeros and with realistic values, against an idiomatic Qt
// converter of identical output (goals: 100,000 random and 130,000
// realistic lines/s on one core), and a whole export from file to file
// against reading the input and writing as many bytes (goal: 60,000
// records/s).

#include "module/zor_language.h"
#include "telemetry/tmipage_kite3.h"
#include "telemetry/zor_tmi_table.h"
#include "telemetry/zor_tmicsvwriter.h"

#include <benchmark/benchmark.h>

#include <QIODevice>
#include <QString>
#include <QBuffer>
#include <QDateTime>
#include <QTemporaryDir>
#include <QTextStream>
#include <QFile>

#include <chrono>
#include <ctime>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr int kRecordSize = int(sizeof(szCurrentTMI_KITE3));
constexpr int kRecords = 64; // distinct records, cycled through

const QString& fullFormat()
{
    static const QString s(ZorTmi::FieldCount, QLatin1Char('1'));
    return s;
}

enum Values { Zeros = 0, Random = 1, Realistic = 2 };

template <typename T>
void put(unsigned char* p, T v)
{
    std::memcpy(p, &v, sizeof v);
}

// Records as a vehicle sends them: a clock that advances, coordinates
// around one city, speeds and fuel in a plausible range, temperatures,
// small counters, and flags that are mostly clear.
std::vector<unsigned char> realisticRecords()
{
    std::vector<unsigned char> v(size_t(kRecordSize) * kRecords, 0);
    std::mt19937 gen(20261124);
    const auto in = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(gen); };
    for (int r = 0; r < kRecords; ++r) {
        unsigned char* block = v.data() + size_t(r) * kRecordSize;
        for (int id = 0; id < ZorTmi::ColumnCount; ++id) {
            const ZorTmi::Column& c = ZorTmi::column(id);
            unsigned char* p = block + ZorTmi::field(c.field).offset + c.offset;
            if (c.bits > 0) {
                const unsigned value = in(0, 9) == 0 ? unsigned(in(0, (1 << qMin(int(c.bits), 8)) - 1)) : 0u;
                p[c.shift / 8] |= static_cast<unsigned char>((value << (c.shift % 8)) & 0xFF);
                continue;
            }
            switch (c.type) {
            case ZorTmi::Type_U8: put<quint8>(p, quint8(in(0, 100))); break;
            case ZorTmi::Type_U8Tenths: put<quint8>(p, quint8(in(0, 250))); break;
            case ZorTmi::Type_I8: put<qint8>(p, qint8(in(-25, 40))); break;
            case ZorTmi::Type_U16: put<quint16>(p, quint16(in(0, 4000))); break;
            case ZorTmi::Type_I16: put<qint16>(p, qint16(in(-300, 900))); break;
            case ZorTmi::Type_U32:
                if (c.text == ZorTmi::Text_DateTime || c.text == ZorTmi::Text_TimeDate)
                    put<quint32>(p, quint32(1763900000 + r * 30 + in(0, 5)));
                else
                    put<quint32>(p, quint32(in(0, 250000)));
                break;
            case ZorTmi::Type_I32: put<qint32>(p, qint32(in(90000, 250000))); break;
            case ZorTmi::Type_U64: put<quint64>(p, quint64(in(0, 1000000))); break;
            case ZorTmi::Type_I64: // latitude then longitude, 1/10^7 minute
                put<qint64>(p, qint64(c.offset == 0 ? 55 : 37) * 600000000 + in(0, 300000000));
                break;
            case ZorTmi::Type_F32: put<float>(p, float(in(0, 13000)) / 100.0f); break;
            }
        }
    }
    return v;
}

// kRecords full records back to back.
const std::vector<unsigned char>& records(int values)
{
    static const std::vector<unsigned char> realistic = realisticRecords();
    if (values == Realistic)
        return realistic;
    const bool random = values == Random;
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

// The baseline a Qt developer would write first: every cell through
// QString::number / arg and QDateTime::toString, captions looked up per
// cell, the line streamed with QTextStream <<. Its output must equal ours
// byte for byte (checked before the timing), so the ratio compares the
// same work.
namespace Idiomatic {

using namespace ZorTmi;

QString unit(const char* key)
{
    return QLatin1Char(' ') + zorTr(QLatin1String(key));
}

QString fixed(qint64 scaled, int decimals)
{
    if (decimals == 0)
        return QString::number(scaled);
    static const double kPow[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000};
    const qint64 p = qint64(kPow[decimals]);
    const QString frac = QStringLiteral("%1").arg(qAbs(scaled % p), decimals, 10, QLatin1Char('0'));
    return QStringLiteral("%1%2.%3").arg(scaled < 0 ? QStringLiteral("-") : QString()).arg(qAbs(scaled / p)).arg(frac);
}

// A float with the decimals asked for; what rounds to zero shows no sign.
QString number(float f, int decimals)
{
    const QString s = QString::number(double(f), 'f', decimals);
    return s.startsWith(QLatin1Char('-')) && s.toDouble() == 0 ? s.mid(1) : s;
}

QString caption(qint64 v, std::initializer_list<const char*> keys)
{
    if (v >= 0 && v < qint64(keys.size()))
        return zorTr(QLatin1String(keys.begin()[v]));
    return QString::number(v);
}

QString cellText(const Column& c, const unsigned char* p)
{
    const QString na = QStringLiteral("n/a");
    if (c.type == Type_F32) {
        float f;
        std::memcpy(&f, p + c.offset, sizeof f);
        switch (c.text) {
        case Text_KmhF1: return number(f, 1) + unit("abbr_024");
        case Text_KmF2NoNeg:
        case Text_LitresF2:
            if (f < 0)
                return na;
            return number(f, 2) + unit(c.text == Text_LitresF2 ? "abbr_026" : "abbr_023");
        case Text_KmF2: return number(f, 2) + unit("abbr_023");
        default: return number(f, 2);
        }
    }
    const qint64 v = readInteger(c, p);
    switch (c.text) {
    case Text_SimNo: return QString::number(v + 1);
    case Text_DateTime: return QDateTime::fromSecsSinceEpoch(quint32(v)).toString(QStringLiteral("dd.MM.yyyy H:mm:ss"));
    case Text_TimeDate:
        return QDateTime::fromSecsSinceEpoch(quint32(v)).toString(QStringLiteral("hh:mm:ss dd.MM.yyyy"));
    case Text_Coord4: return QStringLiteral("%1 %2'").arg(v / 600000).arg(fixed(v % 600000, 4));
    case Text_Coord7: return QStringLiteral("%1 %2'").arg(v / 600000000).arg(fixed(v % 600000000, 7));
    case Text_Decimetres: return QString::number(v / 10);
    case Text_Gsm: return v == 99 ? zorTr(QStringLiteral("tmikte_027")) : QString::number(v * 322 / 100);
    case Text_Temp: return v == -128 ? QString() : QString::number(v) + unit("abbr_017");
    case Text_CelsiusDec: return QString::number(v) + unit("abbr_017");
    case Text_CanLevel:
    case Text_CanLevelPercent:
    case Text_CanLevelLitres: {
        const qint64 level = v & 0x7FFF;
        if (level == 0x7FFF)
            return na;
        if (v & 0x8000)
            return c.text != Text_CanLevelLitres ? QStringLiteral("%1 %").arg(level) : QString();
        return c.text != Text_CanLevelPercent ? fixed(level, 1) + unit("abbr_026") : QString();
    }
    case Text_CanTimeTO: return v == 0xFFFF ? na : QString::number(v * 5) + unit("abbr_023");
    case Text_CanSpeed: return v == 255 ? na : QString::number(v) + unit("abbr_024");
    case Text_Volts: return fixed(v, 3) + unit("abbr_012");
    case Text_VoltsDec: return QString::number(v) + unit("abbr_012");
    case Text_Amps: return QString::number(v) + unit("abbr_027");
    case Text_Hours: return fixed(qRound64(double(v) * 100.0 / 3600.0), 2) + unit("abbr_001");
    case Text_Hours100: return fixed(v, 2) + unit("abbr_001");
    case Text_Tonnes: return QString::number(v) + unit("abbr_009");
    case Text_Percent: return QStringLiteral("%1 %").arg(v);
    case Text_Tenths: return fixed(v, 1);
    case Text_Hundredths: return fixed(v, 2);
    case Text_Milli3: return fixed(v, 3);
    case Text_Milli3NoData: return v == -32768 ? na : fixed(v, 3);
    case Text_AccelLinear: return v == -32768 ? na : fixed(v, 3) + unit("tmikte_072");
    case Text_AccelDelta: return fixed(v, 2) + unit("tmikte_071");
    case Text_Quarters: return fixed(v * 25, 2);
    case Text_Roll: return fixed(v * 15, 1);
    case Text_PreciseTemp: return v == -32768 ? na : fixed(v * 5, 2) + unit("abbr_017");
    case Text_Humidity: return fixed(v * 5, 1) + unit("abbr_008");
    case Text_Celsius100: return fixed(v, 2) + unit("abbr_017");
    case Text_Rpm: return QString::number(v) + unit("abbr_018");
    case Text_Dbm: return QStringLiteral("%1 dBm").arg(v);
    case Text_TyreTemp: return v == qint8(0x81) ? na : QString::number(v);
    case Text_MiliSec: return QStringLiteral(".%1").arg(v);
    case Text_Hex: return QStringLiteral("0x%1").arg(QString::number(quint32(v), 16).toUpper(), 8, QLatin1Char('0'));
    case Text_OnOff: return zorTr(QLatin1String(v ? "wrd_001" : "wrd_002"));
    case Text_TahoMode:
        return v >= 0 && v < 4 ? caption(v, {"tmikte_044", "tmikte_045", "tmikte_047", "tmikte_048"})
                               : zorTr(QStringLiteral("tmikte_014"));
    case Text_DispState:
        return caption(v,
            {"tmikte_055", "tmikte_056", "tmikte_057", "tmikte_058", "tmikte_059", "tmikte_060", "tmikte_061",
                "tmikte_062"});
    case Text_FfsMode: return caption(v, {"tmikte_093", "tmikte_094", "tmikte_095", "tmikte_096"});
    case Text_FfsPower: return caption(v, {"tmikte_097", "tmikte_098"});
    case Text_RefrEngineMode: return caption(v, {"tmikte_108", "tmikte_109", "tmikte_110"});
    case Text_CanEvent:
        return caption(v,
            {"tmikte_113", "tmikte_114", "tmikte_115", "tmikte_116", "tmikte_117", "tmikte_118", "tmikte_119",
                "tmikte_120"});
    case Text_ThermoKing: {
        static const char* const codes[] = {"INVAL", "COOL", "NULL", "HEAT", "DFRST", "SHTDN", "LKCOL", "FACOL"};
        return v >= 0 && v < 8 ? QString::fromLatin1(codes[v]) : QString::number(v);
    }
    default: return c.type == Type_U64 && !c.bits ? QString::number(quint64(v)) : QString::number(v);
    }
}

// One line of a full record (every field present).
void writeLine(QTextStream& out, const unsigned char* block)
{
    const quint16* csv = csvColumns();
    for (int n = 1; n <= FieldCount; ++n) {
        const FieldInfo& f = field(n);
        const unsigned char* bytes = block + f.offset;
        for (int i = 0; i < f.csvCount; ++i) {
            out << "=\"" << cellText(column(csv[f.firstCsv + i]), bytes);
            if (n == 3)
                out << cellText(column(Col_MiliSec), block + field(column(Col_MiliSec).field).offset);
            out << "\";";
        }
    }
    out << "\r\n";
}

} // namespace Idiomatic

void BM_Memcpy734(benchmark::State& state)
{
    const auto& src = records(Random);
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
    const auto& src = records(Random);
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
    const auto& src = records(Random);
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
    // Throughput of decoding as a share of memcpy's (goal >= 0.8).
    state.counters["decode_vs_memcpy"] = decode > 0 ? copy / decode : 0;
    state.counters["goal"] = 0.8;
    state.counters["decode_ns"] = decode * 1e9 / double(state.iterations() * kBatch);
    state.counters["memcpy_ns"] = copy * 1e9 / double(state.iterations() * kBatch);
}
BENCHMARK(BM_DecodeVsMemcpy);

// Decode and one CSV line per record through the block writer.
void BM_CsvLines(benchmark::State& state)
{
    useKeys();
    const auto& src = records(int(state.range(0)));
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
    static const char* const kLabels[] = {
        "zeros, lines/s = items/s", "random bytes, lines/s = items/s", "realistic values, lines/s = items/s"};
    state.SetLabel(kLabels[state.range(0)]);
}
BENCHMARK(BM_CsvLines)->Arg(Random)->Arg(Zeros)->Arg(Realistic);

// The baseline: the same lines through setExcelData and a QTextStream.
void BM_CsvLinesTextStream(benchmark::State& state)
{
    useKeys();
    const auto& src = records(Random);
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

// Empty when the idiomatic lines equal ours for every record of the set,
// else where they first differ.
QByteArray idiomaticDiffers(int values)
{
    const auto& src = records(values);
    TmiPage_Kite3 columns(fullFormat());
    TmiPage_Kite3 record(fullFormat());
    for (int i = 0; i < kRecords; ++i) {
        record.setCurrentTMI(recordAt(src, i), kRecordSize);
        QByteArray ours;
        columns.appendExcelData(ours, &record, QByteArray());
        QByteArray theirs;
        QBuffer buffer(&theirs);
        buffer.open(QIODevice::WriteOnly);
        QTextStream stream(&buffer);
        stream.setCodec("UTF-8");
        Idiomatic::writeLine(stream, record.valueBlock());
        stream.flush();
        if (ours != theirs) {
            int at = 0;
            while (at < ours.size() && at < theirs.size() && ours.at(at) == theirs.at(at))
                ++at;
            return "record " + QByteArray::number(i) + ": ours \"" + ours.mid(qMax(0, at - 40), 80) + "\" vs \""
                + theirs.mid(qMax(0, at - 40), 80) + "\"";
        }
    }
    return QByteArray();
}

// Our CSV lines against the idiomatic converter, in alternating batches in
// one loop; "ratio" is how many times faster ours is.
void BM_CsvVsIdiomatic(benchmark::State& state)
{
    // Processor time of this thread: on a shared machine, wall time
    // measures the neighbours as much as the code.
    const auto now = [] {
        timespec ts;
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
        return double(ts.tv_sec) + double(ts.tv_nsec) * 1e-9;
    };
    useKeys();
    const int values = int(state.range(0));
    const QByteArray differs = idiomaticDiffers(values);
    if (!differs.isEmpty()) {
        state.SkipWithError(differs.constData());
        return;
    }
    // Batches long enough that each side runs warm, as an export does.
    constexpr int kBatch = 256;
    const auto& src = records(values);
    TmiPage_Kite3 columns(fullFormat());
    TmiPage_Kite3 record(fullFormat());
    NullDevice sink;
    sink.open(QIODevice::WriteOnly);
    ZOR_TmiCsvWriter csv(columns);
    csv.open(&sink);
    NullDevice sink2;
    sink2.open(QIODevice::WriteOnly);
    QTextStream stream(&sink2);
    stream.setCodec("UTF-8");
    double ours = 0;
    double theirs = 0;
    for (auto _ : state) {
        const double t0 = now();
        for (int i = 0; i < kBatch; ++i) {
            record.setCurrentTMI(recordAt(src, i), kRecordSize);
            csv.writeRecord(&record);
        }
        const double t1 = now();
        for (int i = 0; i < kBatch; ++i) {
            record.setCurrentTMI(recordAt(src, i), kRecordSize);
            Idiomatic::writeLine(stream, record.valueBlock());
        }
        const double t2 = now();
        ours += t1 - t0;
        theirs += t2 - t1;
    }
    csv.commit();
    stream.flush();
    const double lines = double(state.iterations()) * kBatch;
    state.counters["ours_lines_per_s"] = lines / ours;
    state.counters["idiomatic_lines_per_s"] = lines / theirs;
    state.counters["ratio"] = theirs / ours;
    state.counters["goal_lines_per_s"] = values == Realistic ? 130000 : 100000;
    state.SetLabel(values == Realistic ? "realistic values" : "random bytes");
}
BENCHMARK(BM_CsvVsIdiomatic)->Arg(Random)->Arg(Realistic)->Iterations(20);

// End to end, as `zor-tool csv` does it: records read from a file in
// chunks, decoded, formatted and written to another file by the writer (its
// writing thread included), against reading the same input and writing as
// many bytes (goal: 60,000 records/s). Wall time, since the overlap of
// formatting and writing is what is measured; the two run in turn.
void BM_CsvExportVsCopy(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    constexpr int kFileRecords = 20000;
    constexpr int kChunkRecords = 4096;
    useKeys();
    const auto& src = records(Realistic);
    QTemporaryDir dir;
    const QString inPath = dir.filePath(QStringLiteral("in.bin"));
    const QString outPath = dir.filePath(QStringLiteral("out.csv"));
    const QString copyPath = dir.filePath(QStringLiteral("copy.bin"));
    {
        QFile in(inPath);
        if (!in.open(QIODevice::WriteOnly)) {
            state.SkipWithError("cannot write the input file");
            return;
        }
        for (int i = 0; i < kFileRecords; ++i)
            in.write(reinterpret_cast<const char*>(recordAt(src, i)), kRecordSize);
    }
    TmiPage_Kite3 columns(fullFormat());
    TmiPage_Kite3 record(fullFormat());
    QByteArray chunk(kChunkRecords * kRecordSize, '\0');
    const QByteArray block(1 << 20, 'x');
    qint64 outBytes = 0;
    double ours = 0;
    double theirs = 0;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        {
            QFile in(inPath);
            QFile out(outPath);
            in.open(QIODevice::ReadOnly);
            out.open(QIODevice::WriteOnly);
            ZOR_TmiCsvWriter csv(columns);
            csv.open(&out);
            csv.writeHeader();
            qint64 n;
            while ((n = in.read(chunk.data(), chunk.size())) > 0) {
                const auto* p = reinterpret_cast<const unsigned char*>(chunk.constData());
                for (qint64 pos = 0; pos + kRecordSize <= n; pos += kRecordSize) {
                    record.setCurrentTMI(p + pos, kRecordSize);
                    csv.writeRecord(&record);
                }
            }
            csv.commit();
            outBytes = out.size();
        }
        const auto t1 = Clock::now();
        {
            QFile in(inPath);
            QFile out(copyPath);
            in.open(QIODevice::ReadOnly);
            out.open(QIODevice::WriteOnly);
            while (in.read(chunk.data(), chunk.size()) > 0)
                benchmark::DoNotOptimize(chunk.data());
            for (qint64 left = outBytes; left > 0; left -= block.size())
                out.write(block.constData(), qMin<qint64>(left, block.size()));
        }
        const auto t2 = Clock::now();
        ours += std::chrono::duration<double>(t1 - t0).count();
        theirs += std::chrono::duration<double>(t2 - t1).count();
    }
    const double total = double(state.iterations()) * kFileRecords;
    state.counters["records_per_s"] = total / ours;
    state.counters["copy_records_per_s"] = total / theirs;
    state.counters["time_vs_copy"] = ours / theirs;
    state.counters["goal_records_per_s"] = 60000;
    state.counters["MB_out"] = double(outBytes) / 1e6;
}
BENCHMARK(BM_CsvExportVsCopy)->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
