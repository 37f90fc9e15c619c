// zor-tool track / summary: where a vehicle went, from a telemetry archive.

#include "zor_tool.h"
#include "zor_tool_common.h"
#include "zor_tool_records.h"

#include "zor_driveexport.h"

#include "telemetry/tmipage_base.h"

#include <QJsonDocument>
#include <QSaveFile>

#include <cstdio>

namespace {

// The thresholds of the analysis as options; the defaults are those of
// ZOR_DriveOptions.
struct DriveOptions
{
    struct Number
    {
        QCommandLineOption option;
        double ZOR_DriveOptions::*real;
        int ZOR_DriveOptions::*whole;
    };
    std::vector<Number> numbers;
    QCommandLineOption levels{QStringLiteral("levels"),
        QStringLiteral("Level columns for fuel events, comma-separated (default: the RS-485 "
                       "and RS-232 levels and the CAN levels)."),
        QStringLiteral("NAMES")};

    DriveOptions()
    {
        const ZOR_DriveOptions d;
        auto real = [&](const char* name, const char* help, double ZOR_DriveOptions::*member) {
            numbers.push_back(
                {QCommandLineOption(QLatin1String(name),
                     QStringLiteral("%1 (default %2).").arg(QLatin1String(help)).arg(d.*member), QStringLiteral("N")),
                    member, nullptr});
        };
        auto whole = [&](const char* name, const char* help, int ZOR_DriveOptions::*member) {
            numbers.push_back(
                {QCommandLineOption(QLatin1String(name),
                     QStringLiteral("%1 (default %2).").arg(QLatin1String(help)).arg(d.*member), QStringLiteral("N")),
                    nullptr, member});
        };
        real("moving-speed", "Speed in km/h above which a record moves", &ZOR_DriveOptions::movingSpeedKmh);
        whole("min-stop", "Seconds a stop lasts at least; shorter ones stay inside their trip",
            &ZOR_DriveOptions::minStopS);
        real("gap-km", "Jump in km between consecutive fixes reported as a gap", &ZOR_DriveOptions::gapKm);
        whole("max-interval", "Seconds between records beyond which the interval is not moving time",
            &ZOR_DriveOptions::maxIntervalS);
        real("fuel-threshold", "Level change, in sensor units, of a refuel or drain", &ZOR_DriveOptions::fuelThreshold);
        whole("fuel-window", "Seconds within which that change happens", &ZOR_DriveOptions::fuelWindowS);
        real("fuel-noise", "Sensor noise, in its units", &ZOR_DriveOptions::fuelNoise);
        whole("median", "Records of the running median that smooths a level", &ZOR_DriveOptions::medianRecords);
    }
    void addTo(QCommandLineParser& parser) const
    {
        for (const Number& n : numbers)
            parser.addOption(n.option);
        parser.addOption(levels);
    }
    // 0 or the exit code of a usage error.
    int read(const QCommandLineParser& parser, ZOR_DriveOptions& options, ZOR_DriveTrack& track) const
    {
        for (const Number& n : numbers) {
            if (!parser.isSet(n.option))
                continue;
            bool ok = false;
            const double v = parser.value(n.option).toDouble(&ok);
            if (!ok || v < 0 || v > 1e9)
                return ZorTool::fail(
                    2, QStringLiteral("--%1 must be a number of at least 0").arg(n.option.names().constFirst()));
            if (n.real)
                options.*n.real = v;
            else
                options.*n.whole = int(v);
        }
        QString unknown;
        if (parser.isSet(levels)
            && !track.setLevelNames(parser.value(levels).split(QLatin1Char(','), Qt::SkipEmptyParts), &unknown))
            return ZorTool::fail(2, QStringLiteral("--levels: no column is named %1").arg(unknown));
        return 0;
    }
};

// Reads the archive and the options into track and options. False when the
// command is done already (help shown, or a failure reported: *lpCode).
bool readDrive(const char* command, const QStringList& args, QCommandLineParser& parser, const QString& description,
    const std::function<void(QCommandLineParser&)>& more, ZOR_DriveTrack& track, ZOR_DriveOptions& options,
    QString& partial, int* lpCode)
{
    parser.setApplicationDescription(description);
    ZorTool::ArchiveReader archive(command);
    archive.addTo(parser);
    DriveOptions drive;
    drive.addTo(parser);
    more(parser);
    if (!ZorTool::parse(parser, args, lpCode))
        return false;
    if ((*lpCode = drive.read(parser, options, track)) != 0 || (*lpCode = archive.open(parser)) != 0)
        return false;
    archive.forEach(
        [&track](const TmiPage_Base& record) {
            track.addRecord(record);
            return true;
        },
        true);
    if (archive.partialBytes())
        partial = archive.partialMessage() + QStringLiteral(" (read as far as whole fields reach)");
    return true;
}

int writeOut(const QByteArray& bytes, const QCommandLineParser& parser, const QCommandLineOption& outFile)
{
    if (!parser.isSet(outFile)) {
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        return 0;
    }
    QSaveFile file(parser.value(outFile));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return ZorTool::fail(2, QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString()));
    return 0;
}

} // namespace

int toolTrack(const QStringList& args)
{
    QCommandLineParser parser;
    const QCommandLineOption format(QStringLiteral("format"),
        QStringLiteral("gpx (GPX 1.1), kml (KML 2.2) or geojson."), QStringLiteral("gpx|kml|geojson"));
    const QCommandLineOption outFile(
        QStringLiteral("out"), QStringLiteral("File (default: standard output)."), QStringLiteral("FILE"));
    ZOR_DriveTrack track;
    ZOR_DriveOptions options;
    QString partial;
    int code = 0;
    const bool ready = readDrive(
        "track", args, parser,
        QStringLiteral("Writes the track of an archive (records of one field set, back to back): the positions of "
                       "the records with a valid fix, broken at gaps (a jump back in time or of more than --gap-km). "
                       "GPX has time, elevation and speed per point and the stops as waypoints; KML a LineString "
                       "and a placemark per stop; GeoJSON [longitude, latitude] LineStrings and Point features for "
                       "stops and fuel events."),
        [&](QCommandLineParser& p) {
            p.addOption(format);
            p.addOption(outFile);
        },
        track, options, partial, &code);
    if (!ready)
        return code;
    const QString kind = parser.value(format);
    if (kind != QLatin1String("gpx") && kind != QLatin1String("kml") && kind != QLatin1String("geojson"))
        return ZorTool::fail(2, QStringLiteral("--format must be gpx, kml or geojson"));
    if (!partial.isEmpty())
        ZorTool::err() << "zor-tool: " << partial << '\n';
    const ZOR_DriveSummary summary = ZOR_DriveAnalysis(options).analyse(track);
    const ZOR_DriveExport exporter(track, summary, options);
    const QByteArray bytes = kind == QLatin1String("gpx") ? exporter.gpx()
        : kind == QLatin1String("kml")                    ? exporter.kml()
                                                          : exporter.geoJson();
    return writeOut(bytes, parser, outFile);
}

int toolSummary(const QStringList& args)
{
    QCommandLineParser parser;
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Print the summary as a JSON object."));
    const QCommandLineOption outFile(
        QStringLiteral("out"), QStringLiteral("File (default: standard output)."), QStringLiteral("FILE"));
    ZOR_DriveTrack track;
    ZOR_DriveOptions options;
    QString partial;
    int code = 0;
    const bool ready = readDrive(
        "summary", args, parser,
        QStringLiteral("Summarises the drive of an archive: records, time span, distance (haversine between "
                       "consecutive valid fixes, gaps left out) with the Mileage difference, moving time, maximum "
                       "and average speed, engine hours (Motochas difference), trips and stops (a trip: engine "
                       "working or speed above --moving-speed; stops shorter than --min-stop stay in their trip), "
                       "refuels and drains per level field, and what it could not compute. Record numbers are "
                       "1-based, times ISO 8601 UTC."),
        [&](QCommandLineParser& p) {
            p.addOption(json);
            p.addOption(outFile);
        },
        track, options, partial, &code);
    if (!ready)
        return code;
    ZOR_DriveSummary summary = ZOR_DriveAnalysis(options).analyse(track);
    if (!partial.isEmpty())
        summary.notComputed << partial;
    const ZOR_DriveExport exporter(track, summary, options);
    const QByteArray bytes = parser.isSet(json) ? QJsonDocument(exporter.summaryJson()).toJson(QJsonDocument::Indented)
                                                : exporter.summaryText().toUtf8();
    return writeOut(bytes, parser, outFile);
}
