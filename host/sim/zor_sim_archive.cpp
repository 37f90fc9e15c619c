// zor-sim --archive N [--version 1|2|3] [--mask MASK | --mask-hex HEX64] -o FILE
// writes a made-up telemetry archive for the telemetry window.

#include "zor_sim_archive.h"

#include "zor_tmi_fieldset.h"
#include "zor_tmi_simarchive.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

int fail(const QString& qsWhy)
{
    std::fprintf(stderr, "zor-sim: %s\n", qPrintable(qsWhy));
    return 2;
}

} // namespace

int zorSimArchiveMain(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes N records of a simulated vehicle, back to back, as a terminal's archive."));
    parser.addHelpOption();
    const QCommandLineOption archive(
        QStringLiteral("archive"), QStringLiteral("Number of records."), QStringLiteral("N"));
    const QCommandLineOption version(QStringLiteral("version"),
        QStringLiteral("Protocol version: 1, 2 or 3 (default 3)."), QStringLiteral("1|2|3"), QStringLiteral("3"));
    const QCommandLineOption mask(QStringLiteral("mask"),
        QStringLiteral("Field set as \"1\"/\"0\" characters (default: every field)."), QStringLiteral("MASK"));
    const QCommandLineOption maskHex(
        QStringLiteral("mask-hex"), QStringLiteral("Field set as its 32 bytes in hex."), QStringLiteral("HEX64"));
    const QCommandLineOption out(QStringList{QStringLiteral("o"), QStringLiteral("out")},
        QStringLiteral("Archive file."), QStringLiteral("FILE"));
    parser.addOptions({archive, version, mask, maskHex, out});
    if (!parser.parse(app.arguments()))
        return fail(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    if (!parser.positionalArguments().isEmpty())
        return fail(QStringLiteral("unexpected argument %1").arg(parser.positionalArguments().first()));

    bool bOk = false;
    const qint64 nCount = parser.value(archive).toLongLong(&bOk);
    if (!bOk || nCount < 0)
        return fail(QStringLiteral("--archive needs a record count"));
    const int nVersion = parser.value(version).toInt(&bOk);
    if (!bOk || nVersion < 1 || nVersion > 3)
        return fail(QStringLiteral("--version must be 1, 2 or 3"));
    if (parser.isSet(mask) && parser.isSet(maskHex))
        return fail(QStringLiteral("give either --mask or --mask-hex, not both"));
    if (!parser.isSet(out))
        return fail(QStringLiteral("give the archive file with -o FILE"));

    ZOR_TmiFieldSet fieldSet = ZOR_TmiFieldSet::full(nVersion);
    QString qsError;
    if (parser.isSet(maskHex)) {
        const QString qsHex = parser.value(maskHex);
        if (qsHex.size() != 64 || !fieldSet.parse(qsHex, &qsError))
            return fail(QStringLiteral("--mask-hex needs 64 hex digits"));
    } else if (parser.isSet(mask) && !fieldSet.parse(parser.value(mask), &qsError)) {
        return fail(QStringLiteral("--mask: %1").arg(qsError));
    }
    if (fieldSet.recordSize() == 0 && nCount > 0)
        return fail(QStringLiteral("the field set selects no fields"));
    if (!ZOR_TmiSimArchive::write(parser.value(out), nCount, fieldSet, &qsError))
        return fail(QStringLiteral("cannot write %1: %2").arg(parser.value(out), qsError));
    std::fprintf(stderr, "zor-sim: %lld records of %d bytes (version %d) written to %s\n", nCount,
        fieldSet.recordSize(), nVersion, qPrintable(parser.value(out)));
    return 0;
}
