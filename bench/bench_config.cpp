// The configuration window's work without the window: building every
// settings form of zorConfigPages() once, and loading a full configuration
// into all of them and saving it, against a bare QXmlSimpleReader parse of
// the same document; and `zor-tool config check`'s load of a file with
// thousands of problems and of a 50 MB file.
// Goals: load + save under 50 ms, and under 10 times the bare parse ("ratio").
// The files lie in memory (/dev/shm) where there is one, so the figures are
// the program's work; BM_LoadAndSaveOnDisk shows what the atomic save adds
// when it waits for a real disk.

#include "config/zor_configdocument.h"
#include "config/zor_form_config_set_kite3.h"
#include "config/zor_form_config_set_kite3_tab_user.h"
#include "config/zor_userparamentry.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "zor_bench_support.h"

#include <benchmark/benchmark.h>

QT_WARNING_DISABLE_DEPRECATED

namespace {

QTemporaryDir& workDir()
{
    static QTemporaryDir dir(QDir(QStringLiteral("/dev/shm")).exists()
            ? QStringLiteral("/dev/shm/zor-bench-XXXXXX")
            : QDir::tempPath() + QStringLiteral("/zor-bench-XXXXXX"));
    return dir;
}

QTemporaryDir& diskDir()
{
    static QTemporaryDir dir;
    return dir;
}

// Every page's settings, the field-set form with every field and a value in
// every user-parameter slot (catalogue entries where the width has them,
// values of a Modbus page otherwise).
const QByteArray& document()
{
    static const QByteArray bytes = [] {
        ZOR_ConfigDocument doc;
        doc.createForms();
        if (auto* lpForm = qobject_cast<ZOR_Form_Config_Set_Kite3*>(doc.form(QStringLiteral("protocol")))) {
            lpForm->setStrFormat(QString(255, QLatin1Char('1')));
            ZOR_Form_Config_Set_Kite3_Tab_User* lpUser = lpForm->userTab();
            int nField = 207;
            for (const int nWidth : {1, 2, 4, 8}) {
                const QVector<ZOR_UserParamEntry> listed = lpUser->listedParams(nWidth);
                const int nSlots = nWidth == 1 ? 16 : nWidth == 8 ? 3 : 15;
                for (int i = 0; i < nSlots; ++i, ++nField) {
                    const ZOR_UserParamEntry entry = i < listed.size()
                        ? listed[i]
                        : ZOR_UserParamEntry{QStringLiteral("MB"), QStringLiteral("MB%1,  5,  1a").arg(nField),
                            QStringLiteral("%1u").arg(nWidth), nWidth};
                    lpUser->setUserParam(nField, entry);
                }
            }
        }
        return doc.render();
    }();
    return bytes;
}

QString documentFile()
{
    static const QString path = [] {
        const QString p = workDir().filePath(QStringLiteral("full.xml"));
        QFile f(p);
        if (f.open(QIODevice::WriteOnly))
            f.write(document());
        return p;
    }();
    return path;
}

ZOR_ConfigDocument& formsBuilt()
{
    static ZOR_ConfigDocument* lpDoc = [] {
        auto* doc = new ZOR_ConfigDocument;
        doc->createForms();
        return doc;
    }();
    return *lpDoc;
}

bool loadAndSave(ZOR_ConfigDocument& doc, QTemporaryDir& dir = workDir())
{
    return doc.load(documentFile()) && doc.save(dir.filePath(QStringLiteral("saved.xml")));
}

void BM_BuildEveryForm(benchmark::State& state)
{
    for (auto _ : state) {
        ZOR_ConfigDocument doc;
        doc.createForms();
        benchmark::DoNotOptimize(doc.forms().size());
    }
    state.counters["forms"] = double(formsBuilt().forms().size());
}
BENCHMARK(BM_BuildEveryForm)->Unit(benchmark::kMillisecond)->Iterations(20);

void BM_BareParse(benchmark::State& state)
{
    const QByteArray& bytes = document();
    for (auto _ : state)
        zorBareSaxParse(bytes);
    state.counters["bytes"] = double(bytes.size());
}
BENCHMARK(BM_BareParse)->Unit(benchmark::kMillisecond);

void BM_LoadAndSaveEveryForm(benchmark::State& state)
{
    ZOR_ConfigDocument& doc = formsBuilt();
    for (auto _ : state)
        benchmark::DoNotOptimize(loadAndSave(doc));
}
BENCHMARK(BM_LoadAndSaveEveryForm)->Unit(benchmark::kMillisecond);

void BM_LoadAndSaveOnDisk(benchmark::State& state)
{
    ZOR_ConfigDocument& doc = formsBuilt();
    for (auto _ : state)
        benchmark::DoNotOptimize(loadAndSave(doc, diskDir()));
}
BENCHMARK(BM_LoadAndSaveOnDisk)->Unit(benchmark::kMillisecond)->Iterations(100);

// Both in the same iteration, so the ratio is taken on the same machine state.
void BM_LoadSaveToBareRatio(benchmark::State& state)
{
    ZOR_ConfigDocument& doc = formsBuilt();
    const QByteArray& bytes = document();
    double bare = 0, full = 0;
    QElapsedTimer t;
    for (auto _ : state) {
        t.start();
        zorBareSaxParse(bytes);
        const qint64 b = t.nsecsElapsed();
        t.start();
        benchmark::DoNotOptimize(loadAndSave(doc));
        const qint64 f = t.nsecsElapsed();
        bare += double(b);
        full += double(f);
        state.SetIterationTime(double(f) / 1e9);
    }
    state.counters["ratio"] = full / bare;
}
BENCHMARK(BM_LoadSaveToBareRatio)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

// What `zor-tool config check` does: a load into every form and the list
// of what the forms would not keep. Goals: thousands of problems well under
// a second, a 50 MB configuration under 2 s (no path quadratic in the
// number of nodes or problems).
QString checkFile(const char* lpName, int nTargetBytes, bool bFaulty)
{
    const QString path = workDir().filePath(QLatin1String(lpName));
    QByteArray bytes = document();
    const int nEnd = bytes.lastIndexOf("</CONFIG>");
    QByteArray body;
    for (int i = 0; body.size() + bytes.size() < nTargetBytes; ++i)
        body += bFaulty ? QByteArray("    <JUNK") + QByteArray::number(i) + " a=\"" + QByteArray::number(i) + "\" />\n"
                        : QByteArray("    <LOG") + QByteArray::number(i % 100) + " t=\"2026-11-25 17:00:00\" v=\""
                + QByteArray::number(i) + "\">\n        <E a=\"1\" b=\"2\" />\n    </LOG" + QByteArray::number(i % 100)
                + ">\n";
    bytes.insert(nEnd, body);
    QFile f(path);
    if (f.open(QIODevice::WriteOnly))
        f.write(bytes);
    return path;
}

void BM_CheckFiveThousandProblems(benchmark::State& state)
{
    ZOR_ConfigDocument& doc = formsBuilt();
    const QString path = checkFile("problems.xml", 5000 * 28 + document().size(), true);
    for (auto _ : state) {
        doc.load(path);
        state.counters["problems"] = doc.problems().size();
    }
}
BENCHMARK(BM_CheckFiveThousandProblems)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_Check50MB(benchmark::State& state)
{
    ZOR_ConfigDocument& doc = formsBuilt();
    const QString path = checkFile("big.xml", 50 * 1024 * 1024, false);
    for (auto _ : state) {
        doc.load(path);
        state.counters["problems"] = doc.problems().size();
    }
}
BENCHMARK(BM_Check50MB)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QFile saved(workDir().filePath(QStringLiteral("saved.xml")));
    if (!loadAndSave(formsBuilt()) || !saved.open(QIODevice::ReadOnly) || saved.readAll() != document()) {
        fprintf(stderr, "load and save changed the full configuration\n");
        return 1;
    }
    return zorRunBenchmarks(argc, argv);
}
