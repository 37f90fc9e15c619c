// Settings document round trip (load, read every attribute through cursors,
// save) against a bare QXmlSimpleReader parse of the same bytes, measured
// in the same run. Goals: the round trip through a file within 1.5 times the
// bare parse on the 1 MB and 50 MB documents (BM_StoreToBareRatio/<MB>,
// "ratio" counter); a set on an element of 10k, 50k and 100k children costs
// the same per child (BM_StoreSetOnWideElement, "ns_per_child", and
// "to_bare_per_child": that cost over a bare parse's cost per element).

#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "store/cxmlworkdata.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSaveFile>
#include <QSet>
#include <QTemporaryDir>

#include "zor_bench_support.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <map>
#include <memory>

QT_WARNING_DISABLE_DEPRECATED

namespace {

// CPU time of this thread: what other people's compilations on the same
// cores do not change (the wait for the disk is not in it; the work of the
// write calls is).
qint64 cpuNs()
{
    timespec ts;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return qint64(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

// 220 device nodes (about 1 MB) of 40 rows with six attributes each;
// 10,600 make about 50 MB.
QByteArray makeDocument(int nDevices)
{
    {
        CSerialize doc;
        doc.openData(QByteArray());
        CXMLWorkData root(&doc, QStringLiteral("USRPRMS"));
        root.writeInteger("version", 3);
        root.writeParameters();
        for (int d = 1; d <= nDevices; ++d) {
            std::unique_ptr<CXMLWorkData> dev(root.createNode(QStringLiteral("MDBSPRM%1").arg(d), 0));
            dev->writeInteger("addr", d);
            dev->writeString("name", QStringLiteral("Датчик уровня топлива №%1").arg(d));
            dev->writeParameters();
            for (int r = 0; r < 40; ++r) {
                std::unique_ptr<CXMLWorkData> row(dev->createNode(QStringLiteral("ROW"), 3));
                row->writeInteger("reg", 0x1000 + r);
                row->writeString("type", QStringLiteral("4f"));
                row->writeString("caption", QStringLiteral("Параметр %1 & \"%2\"").arg(r).arg(d));
                row->writeFloat("scale", 0.125f * r);
                row->writeBool("use", r % 2);
                row->writeInteger("period", 1000 + r);
                row->writeParameters();
            }
        }
        return doc.render();
    }
}

int devicesFor(int nMegabytes)
{
    return nMegabytes <= 1 ? 220 : 212 * nMegabytes;
}

const QByteArray& document(int nMegabytes = 1)
{
    static std::map<int, QByteArray> made;
    QByteArray& bytes = made[nMegabytes];
    if (bytes.isEmpty())
        bytes = makeDocument(devicesFor(nMegabytes));
    return bytes;
}

int walk(CXMLWorkData* cursor)
{
    int n = 0;
    QString text;
    CListParameters& list = cursor->parameters();
    for (int i = 0; i < list.count(); ++i) {
        if (list.item(i)->kind == coreSzItem::KindValue) {
            cursor->readString(list.item(i)->name, QString(), text);
            n += text.size();
        }
    }
    const CXmlTagV2* tag = cursor->getTag();
    QStringList names;
    QSet<QString> seen;
    for (int i = 0; i < tag->children().count(); ++i) {
        const QString& name = tag->getNumTag(i)->name();
        if (!seen.contains(name)) {
            seen.insert(name);
            names << name;
        }
    }
    for (const QString& name : names)
        for (CXMLWorkData* child = cursor->getFirstNode(name); child; cursor->moveToNextNode(child))
            n += walk(child);
    return n;
}

QByteArray storeRoundTrip(const QByteArray& bytes)
{
    coreSzMemo memo{bytes.constData(), bytes.size(), nullptr};
    zor_StartSZMemo(&memo);
    CXMLWorkData root(memo.lpSerialize, memo.lpSerialize->root());
    benchmark::DoNotOptimize(walk(&root));
    coreSzMemo out{nullptr, 0, nullptr};
    zor_GetSZMemo(memo.lpSerialize, &out);
    QByteArray rendered(out.lpData, out.nSize);
    zor_StopSZMemo(memo.lpSerialize);
    return rendered;
}

void BM_BareSaxParse(benchmark::State& state)
{
    const QByteArray& bytes = document();
    for (auto _ : state)
        zorBareSaxParse(bytes);
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(BM_BareSaxParse)->Unit(benchmark::kMillisecond);

void BM_StoreRoundTrip(benchmark::State& state)
{
    const QByteArray& bytes = document();
    for (auto _ : state)
        benchmark::DoNotOptimize(storeRoundTrip(bytes));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(BM_StoreRoundTrip)->Unit(benchmark::kMillisecond);

// Through a file: open, read every attribute, save with QSaveFile.
void BM_StoreRoundTripFile(benchmark::State& state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    {
        QSaveFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(document());
        f.commit();
    }
    for (auto _ : state) {
        CXMLWorkData root(path, QStringLiteral("USRPRMS"));
        benchmark::DoNotOptimize(walk(&root));
        root.closeDocument(true);
    }
    state.SetBytesProcessed(state.iterations() * document().size());
}
BENCHMARK(BM_StoreRoundTripFile)->Unit(benchmark::kMillisecond);

// One attribute set on an element of N children of different names (what a
// form does on a wide node): cursor, write, writeParameters. The cost per
// child must stay flat from 10k to 100k children.
void BM_StoreSetOnWideElement(benchmark::State& state)
{
    const int n = int(state.range(0));
    CSerialize doc;
    doc.openData(QByteArray());
    CXmlTagV2* root = doc.topNode(QStringLiteral("ROOT"), true);
    for (int i = 0; i < n; ++i)
        root->addTagNode(QStringLiteral("CHILD%1").arg(i))->addTagValue(QStringLiteral("a"), QString::number(i));
    // The baseline: a bare parse of an element with the same children, per
    // element, timed in this run.
    QByteArray wide = "<ROOT>";
    for (int i = 0; i < n; ++i)
        wide += "<CHILD" + QByteArray::number(i) + " a=\"" + QByteArray::number(i) + "\"/>";
    wide += "</ROOT>";
    qint64 c = cpuNs();
    zorBareSaxParse(wide);
    const double bareNsPerChild = double(cpuNs() - c) / n;
    int value = 0;
    double setNs = 0;
    for (auto _ : state) {
        c = cpuNs();
        CXMLWorkData cursor(&doc, root);
        cursor.writeInteger("x", ++value);
        benchmark::DoNotOptimize(cursor.writeParameters());
        setNs += double(cpuNs() - c);
    }
    state.counters["children"] = n;
    state.counters["ns_per_child"] = benchmark::Counter(
        double(n), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["to_bare_per_child"] = setNs / double(state.iterations()) / n / bareNsPerChild;
}
BENCHMARK(BM_StoreSetOnWideElement)->Arg(10000)->Arg(50000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Both in the same iteration, so the ratio is taken on the same machine
// state: the bare parse of the bytes in memory against the store's open of
// the file, a read of every value through cursors and the save, in CPU
// time (the iteration time shown is the store's).
void BM_StoreToBareRatio(benchmark::State& state)
{
    const int megabytes = int(state.range(0));
    const QByteArray& bytes = document(megabytes);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("cfg.xml"));
    {
        QSaveFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        f.commit();
    }
    double bare = 0, store = 0, storeWall = 0;
    QElapsedTimer t;
    for (auto _ : state) {
        qint64 c = cpuNs();
        zorBareSaxParse(bytes);
        const qint64 b = cpuNs() - c;
        t.start();
        c = cpuNs();
        {
            CXMLWorkData root(path, QStringLiteral("USRPRMS"));
            benchmark::DoNotOptimize(walk(&root));
            root.closeDocument(true);
        }
        const qint64 s = cpuNs() - c;
        storeWall += double(t.nsecsElapsed());
        bare += double(b);
        store += double(s);
        state.SetIterationTime(double(s) / 1e9);
    }
    state.counters["bytes"] = double(bytes.size());
    state.counters["bare_ms"] = bare / 1e6 / double(state.iterations());
    state.counters["ratio"] = store / bare;
    state.counters["store_wall_ms"] = storeWall / 1e6 / double(state.iterations());
}
BENCHMARK(BM_StoreToBareRatio)->Arg(1)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StoreToBareRatio)->Arg(50)->UseManualTime()->Iterations(2)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (storeRoundTrip(document()) != document()) {
        fprintf(stderr, "round trip changed the document\n");
        return 1;
    }
    return zorRunBenchmarks(argc, argv);
}
