#ifndef ZOR_BENCH_SUPPORT_H
#define ZOR_BENCH_SUPPORT_H

// What the benchmark programs share: the bare SAX parse that settings
// figures are measured against, and the run of the registered benchmarks
// once a program has built (and checked) what it measures.

#include <QByteArray>
#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

#include <benchmark/benchmark.h>

// The cheapest reading of a document Qt offers: every event, no tree. The
// SAX reader is deprecated, but it is the reader settings are measured by.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
inline void zorBareSaxParse(const QByteArray& bytes)
{
    QXmlInputSource source;
    source.setData(bytes);
    QXmlDefaultHandler handler;
    QXmlSimpleReader reader;
    reader.setContentHandler(&handler);
    reader.parse(&source, false);
}
QT_WARNING_POP

inline int zorRunBenchmarks(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

#endif
