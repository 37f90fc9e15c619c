// Settings document round trip (load, read every attribute through cursors,
// render) against a bare QXmlSimpleReader parse of the same bytes.
// Goal: the round trip within 1.5 times the bare parse ("ratio" counter).

#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "store/cxmlworkdata.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

#include <benchmark/benchmark.h>

#include <memory>

QT_WARNING_DISABLE_DEPRECATED

namespace {

// About 1 MB: 220 device nodes of 40 rows with six attributes each.
const QByteArray& document()
{
    static const QByteArray bytes = [] {
        CSerialize doc;
        doc.openData(QByteArray());
        CXMLWorkData root(&doc, QStringLiteral("USRPRMS"));
        root.writeInteger("version", 3);
        root.writeParameters();
        for (int d = 1; d <= 220; ++d) {
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
    }();
    return bytes;
}

void bareParse(const QByteArray& bytes)
{
    QXmlInputSource source;
    source.setData(bytes);
    QXmlDefaultHandler handler;
    QXmlSimpleReader reader;
    reader.setContentHandler(&handler);
    reader.parse(&source, false);
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
    for (int i = 0; i < tag->children().count(); ++i)
        if (!names.contains(tag->getNumTag(i)->name()))
            names << tag->getNumTag(i)->name();
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
        bareParse(bytes);
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
    int value = 0;
    for (auto _ : state) {
        CXMLWorkData cursor(&doc, root);
        cursor.writeInteger("x", ++value);
        benchmark::DoNotOptimize(cursor.writeParameters());
    }
    state.counters["children"] = n;
    state.counters["ns_per_child"] =
        benchmark::Counter(double(n), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_StoreSetOnWideElement)->Arg(10000)->Arg(50000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Both in the same iteration, so the ratio is taken on the same machine state.
void BM_StoreToBareRatio(benchmark::State& state)
{
    const QByteArray& bytes = document();
    double bare = 0, store = 0;
    QElapsedTimer t;
    for (auto _ : state) {
        t.start();
        bareParse(bytes);
        const qint64 b = t.nsecsElapsed();
        t.start();
        benchmark::DoNotOptimize(storeRoundTrip(bytes));
        const qint64 s = t.nsecsElapsed();
        bare += double(b);
        store += double(s);
        state.SetIterationTime(double(s) / 1e9);
    }
    state.counters["bytes"] = double(bytes.size());
    state.counters["ratio"] = store / bare;
}
BENCHMARK(BM_StoreToBareRatio)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (storeRoundTrip(document()) != document()) {
        fprintf(stderr, "round trip changed the document\n");
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
