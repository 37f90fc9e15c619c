#include "zor_driveexport.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QXmlStreamWriter>

#include <cmath>

namespace {

QString number(double v, int decimals)
{
    return QString::number(v, 'f', decimals);
}

// Rounded to the decimals a reader needs (7 for degrees: about a centimetre).
QJsonValue rounded(double v, int decimals)
{
    if (std::isnan(v))
        return QJsonValue();
    const double f = std::pow(10.0, decimals);
    return std::round(v * f) / f;
}

QJsonArray position(const ZOR_DrivePoint& p)
{
    return QJsonArray{rounded(p.lon, 7), rounded(p.lat, 7)};
}

} // namespace

ZOR_DriveExport::ZOR_DriveExport(
    const ZOR_DriveTrack& track, const ZOR_DriveSummary& summary, const ZOR_DriveOptions& options)
    : m_track(track)
    , m_summary(summary)
    , m_options(options)
{
}

QString ZOR_DriveExport::isoTime(qint64 utcSeconds)
{
    return QDateTime::fromSecsSinceEpoch(utcSeconds, Qt::UTC).toString(Qt::ISODate);
}

QJsonValue ZOR_DriveExport::timeValue(qint64 utcSeconds) const
{
    return m_summary.hasTime ? QJsonValue(isoTime(utcSeconds)) : QJsonValue();
}

QByteArray ZOR_DriveExport::gpx() const
{
    QByteArray out;
    QXmlStreamWriter w(&out);
    w.setAutoFormatting(true);
    w.writeStartDocument();
    w.writeStartElement(QStringLiteral("gpx"));
    w.writeDefaultNamespace(QStringLiteral("http://www.topografix.com/GPX/1/1"));
    w.writeNamespace(
        QStringLiteral("http://www.garmin.com/xmlschemas/TrackPointExtension/v2"), QStringLiteral("gpxtpx"));
    w.writeAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    w.writeAttribute(QStringLiteral("creator"), QStringLiteral("zor-tool"));
    const QString ext = QStringLiteral("http://www.garmin.com/xmlschemas/TrackPointExtension/v2");
    for (const ZOR_DriveRun& stop : m_summary.stops) {
        if (stop.fixRecord < 0)
            continue;
        const ZOR_DrivePoint& p = m_track.point(stop.fixRecord);
        w.writeStartElement(QStringLiteral("wpt"));
        w.writeAttribute(QStringLiteral("lat"), number(p.lat, 7));
        w.writeAttribute(QStringLiteral("lon"), number(p.lon, 7));
        if (m_summary.hasTime)
            w.writeTextElement(QStringLiteral("time"), isoTime(stop.start));
        w.writeTextElement(QStringLiteral("name"), QStringLiteral("Stop %1 s").arg(stop.end - stop.start));
        w.writeEndElement();
    }
    w.writeStartElement(QStringLiteral("trk"));
    w.writeTextElement(QStringLiteral("name"), QStringLiteral("Track"));
    for (const std::vector<int>& line : ZOR_DriveAnalysis::segments(m_track, m_options)) {
        w.writeStartElement(QStringLiteral("trkseg"));
        for (int i : line) {
            const ZOR_DrivePoint& p = m_track.point(i);
            w.writeStartElement(QStringLiteral("trkpt"));
            w.writeAttribute(QStringLiteral("lat"), number(p.lat, 7));
            w.writeAttribute(QStringLiteral("lon"), number(p.lon, 7));
            if (!std::isnan(p.altitude))
                w.writeTextElement(QStringLiteral("ele"), number(p.altitude, 1));
            if (m_summary.hasTime)
                w.writeTextElement(QStringLiteral("time"), isoTime(p.time));
            if (!std::isnan(p.speed)) {
                w.writeStartElement(QStringLiteral("extensions"));
                w.writeStartElement(ext, QStringLiteral("TrackPointExtension"));
                w.writeTextElement(ext, QStringLiteral("speed"), number(p.speed / 3.6, 2)); // m/s
                w.writeEndElement();
                w.writeEndElement();
            }
            w.writeEndElement();
        }
        w.writeEndElement();
    }
    w.writeEndDocument();
    return out;
}

QByteArray ZOR_DriveExport::kml() const
{
    QByteArray out;
    QXmlStreamWriter w(&out);
    w.setAutoFormatting(true);
    w.writeStartDocument();
    w.writeStartElement(QStringLiteral("kml"));
    w.writeDefaultNamespace(QStringLiteral("http://www.opengis.net/kml/2.2"));
    w.writeStartElement(QStringLiteral("Document"));
    w.writeTextElement(QStringLiteral("name"), QStringLiteral("Drive"));
    int part = 0;
    for (const std::vector<int>& line : ZOR_DriveAnalysis::segments(m_track, m_options)) {
        if (line.size() < 2)
            continue; // a LineString needs two positions
        w.writeStartElement(QStringLiteral("Placemark"));
        w.writeTextElement(QStringLiteral("name"), QStringLiteral("Track %1").arg(++part));
        w.writeStartElement(QStringLiteral("LineString"));
        w.writeTextElement(QStringLiteral("altitudeMode"), QStringLiteral("clampToGround"));
        QString coordinates;
        for (int i : line) {
            const ZOR_DrivePoint& p = m_track.point(i);
            coordinates += number(p.lon, 7) + QLatin1Char(',') + number(p.lat, 7) + QLatin1Char(',')
                + number(std::isnan(p.altitude) ? 0.0 : double(p.altitude), 1) + QLatin1Char(' ');
        }
        w.writeTextElement(QStringLiteral("coordinates"), coordinates.trimmed());
        w.writeEndElement();
        w.writeEndElement();
    }
    int n = 0;
    for (const ZOR_DriveRun& stop : m_summary.stops) {
        ++n;
        if (stop.fixRecord < 0)
            continue;
        const ZOR_DrivePoint& p = m_track.point(stop.fixRecord);
        w.writeStartElement(QStringLiteral("Placemark"));
        w.writeTextElement(QStringLiteral("name"), QStringLiteral("Stop %1").arg(n));
        w.writeTextElement(QStringLiteral("description"), runLine(stop, true));
        w.writeStartElement(QStringLiteral("Point"));
        w.writeTextElement(QStringLiteral("coordinates"), number(p.lon, 7) + QLatin1Char(',') + number(p.lat, 7));
        w.writeEndElement();
        w.writeEndElement();
    }
    w.writeEndDocument();
    return out;
}

QJsonObject ZOR_DriveExport::stopFeature(const ZOR_DriveRun& stop) const
{
    QJsonValue geometry;
    if (stop.fixRecord >= 0)
        geometry = QJsonObject{{QStringLiteral("type"), QStringLiteral("Point")},
            {QStringLiteral("coordinates"), position(m_track.point(stop.fixRecord))}};
    return QJsonObject{{QStringLiteral("type"), QStringLiteral("Feature")}, {QStringLiteral("geometry"), geometry},
        {QStringLiteral("properties"),
            QJsonObject{{QStringLiteral("kind"), QStringLiteral("stop")},
                {QStringLiteral("first_record"), stop.first + 1}, {QStringLiteral("last_record"), stop.last + 1},
                {QStringLiteral("start"), timeValue(stop.start)}, {QStringLiteral("end"), timeValue(stop.end)},
                {QStringLiteral("duration_s"), m_summary.hasTime ? QJsonValue(stop.end - stop.start) : QJsonValue()}}}};
}

QJsonObject ZOR_DriveExport::fuelFeature(const ZOR_FuelEvent& event) const
{
    int at = -1; // where the vehicle was: the last fix up to the event
    for (int i = event.first; i >= 0 && at < 0; --i)
        if (m_track.point(i).fix)
            at = i;
    QJsonObject feature{{QStringLiteral("type"), QStringLiteral("Feature")}, {QStringLiteral("geometry"), QJsonValue()},
        {QStringLiteral("properties"),
            QJsonObject{{QStringLiteral("kind"), event.refuel ? QStringLiteral("refuel") : QStringLiteral("drain")},
                {QStringLiteral("record"), event.first + 1}, {QStringLiteral("field"), event.field},
                {QStringLiteral("change"), rounded(event.change(), 3)},
                {QStringLiteral("time"), timeValue(m_track.point(event.first).time)}}}};
    if (at >= 0)
        feature.insert(QStringLiteral("geometry"),
            QJsonObject{{QStringLiteral("type"), QStringLiteral("Point")},
                {QStringLiteral("coordinates"), position(m_track.point(at))}});
    return feature;
}

QByteArray ZOR_DriveExport::geoJson() const
{
    QJsonArray features;
    for (const std::vector<int>& line : ZOR_DriveAnalysis::segments(m_track, m_options)) {
        if (line.size() < 2)
            continue; // a LineString needs two positions
        QJsonArray coordinates;
        for (int i : line)
            coordinates.append(position(m_track.point(i)));
        features.append(QJsonObject{{QStringLiteral("type"), QStringLiteral("Feature")},
            {QStringLiteral("geometry"),
                QJsonObject{{QStringLiteral("type"), QStringLiteral("LineString")},
                    {QStringLiteral("coordinates"), coordinates}}},
            {QStringLiteral("properties"),
                QJsonObject{{QStringLiteral("kind"), QStringLiteral("track")},
                    {QStringLiteral("first_record"), line.front() + 1},
                    {QStringLiteral("last_record"), line.back() + 1}}}});
    }
    for (const ZOR_DriveRun& stop : m_summary.stops)
        if (stop.fixRecord >= 0)
            features.append(stopFeature(stop));
    for (const ZOR_FuelEvent& event : m_summary.fuelEvents)
        features.append(fuelFeature(event));
    const QJsonObject collection{
        {QStringLiteral("type"), QStringLiteral("FeatureCollection")}, {QStringLiteral("features"), features}};
    return QJsonDocument(collection).toJson(QJsonDocument::Compact) + '\n';
}

QJsonObject ZOR_DriveExport::summaryJson() const
{
    const ZOR_DriveSummary& s = m_summary;
    auto orNull = [](bool has, const QJsonValue& v) { return has ? v : QJsonValue(); };
    QJsonArray trips;
    for (const ZOR_DriveRun& t : s.trips)
        trips.append(
            QJsonObject{{QStringLiteral("first_record"), t.first + 1}, {QStringLiteral("last_record"), t.last + 1},
                {QStringLiteral("start"), timeValue(t.start)}, {QStringLiteral("end"), timeValue(t.end)},
                {QStringLiteral("distance_km"), orNull(s.hasDistance, rounded(t.distanceKm, 3))},
                {QStringLiteral("max_speed_kmh"), rounded(t.maxSpeedKmh, 1)}});
    QJsonArray stops;
    for (const ZOR_DriveRun& t : s.stops)
        stops.append(stopFeature(t).value(QStringLiteral("properties")).toObject());
    QJsonArray fuel;
    for (const ZOR_FuelEvent& e : s.fuelEvents) {
        QJsonObject o = fuelFeature(e).value(QStringLiteral("properties")).toObject();
        o.insert(QStringLiteral("last_record"), e.last + 1);
        o.insert(QStringLiteral("level_before"), rounded(e.before, 3));
        o.insert(QStringLiteral("level_after"), rounded(e.after, 3));
        fuel.append(o);
    }
    QJsonArray gaps;
    for (const ZOR_DriveGap& g : s.gaps)
        gaps.append(QJsonObject{{QStringLiteral("record"), g.record + 1},
            {QStringLiteral("kind"), g.backInTime ? QStringLiteral("time_back") : QStringLiteral("jump")},
            {QStringLiteral("km"), rounded(g.km, 3)},
            {QStringLiteral("seconds"), orNull(s.hasTime, double(g.seconds))}});
    return QJsonObject{{QStringLiteral("records"), s.records},
        {QStringLiteral("start"), orNull(s.hasTime, timeValue(s.firstTime))},
        {QStringLiteral("end"), orNull(s.hasTime, timeValue(s.lastTime))}, {QStringLiteral("fixes"), s.fixes},
        {QStringLiteral("distance_km"), orNull(s.hasDistance, rounded(s.distanceKm, 3))},
        {QStringLiteral("mileage_km"), orNull(s.hasMileage, rounded(s.mileageKm, 3))},
        {QStringLiteral("moving_time_s"), orNull(s.hasMovingTime, double(s.movingS))},
        {QStringLiteral("max_speed_kmh"), orNull(s.hasSpeed, rounded(s.maxSpeedKmh, 1))},
        {QStringLiteral("avg_speed_kmh"), rounded(s.avgSpeedKmh, 1)},
        {QStringLiteral("engine_hours"), orNull(s.hasEngineHours, rounded(s.engineHours, 3))},
        {QStringLiteral("trips"), trips}, {QStringLiteral("stops"), stops}, {QStringLiteral("fuel_events"), fuel},
        {QStringLiteral("gaps"), gaps},
        {QStringLiteral("not_computed"), QJsonArray::fromStringList(ZOR_DriveAnalysis::notComputedText(s))}};
}

QString ZOR_DriveExport::runLine(const ZOR_DriveRun& run, bool isStop) const
{
    QString line = QStringLiteral("records %1-%2").arg(run.first + 1).arg(run.last + 1);
    if (m_summary.hasTime)
        line += QStringLiteral(", %1 - %2 (%3 s)").arg(isoTime(run.start), isoTime(run.end)).arg(run.end - run.start);
    if (!isStop && m_summary.hasDistance)
        line += QStringLiteral(", %1 km").arg(number(run.distanceKm, 2));
    if (!isStop && !std::isnan(run.maxSpeedKmh))
        line += QStringLiteral(", max %1 km/h").arg(number(run.maxSpeedKmh, 1));
    return line;
}

QString ZOR_DriveExport::summaryText() const
{
    const ZOR_DriveSummary& s = m_summary;
    QString t;
    auto line = [&t](const QString& name, const QString& value) { t += name + QStringLiteral(": ") + value + '\n'; };
    line(QStringLiteral("Records"), QString::number(s.records));
    if (s.hasTime)
        line(QStringLiteral("Time"),
            QStringLiteral("%1 - %2 (%3 s)")
                .arg(isoTime(s.firstTime), isoTime(s.lastTime))
                .arg(s.lastTime - s.firstTime));
    if (s.hasDistance)
        line(QStringLiteral("Distance"), QStringLiteral("%1 km (%2 fixes)").arg(number(s.distanceKm, 2)).arg(s.fixes));
    if (s.hasMileage)
        line(QStringLiteral("Mileage difference"), QStringLiteral("%1 km").arg(number(s.mileageKm, 2)));
    if (s.hasMovingTime)
        line(QStringLiteral("Moving time"), QStringLiteral("%1 s").arg(s.movingS));
    if (s.hasSpeed)
        line(QStringLiteral("Maximum speed"), QStringLiteral("%1 km/h").arg(number(s.maxSpeedKmh, 1)));
    if (!std::isnan(s.avgSpeedKmh))
        line(QStringLiteral("Average speed"), QStringLiteral("%1 km/h").arg(number(s.avgSpeedKmh, 1)));
    if (s.hasEngineHours)
        line(QStringLiteral("Engine hours"), QStringLiteral("%1 h").arg(number(s.engineHours, 2)));
    for (const ZOR_DriveGap& g : s.gaps)
        line(QStringLiteral("Gap"),
            QStringLiteral("before record %1: %2, %3 km")
                .arg(g.record + 1)
                .arg(g.backInTime ? QStringLiteral("time goes back") : QStringLiteral("jump"))
                .arg(number(g.km, 1)));
    for (const ZOR_DriveRun& r : s.trips)
        line(QStringLiteral("Trip"), runLine(r, false));
    for (const ZOR_DriveRun& r : s.stops)
        line(QStringLiteral("Stop"), runLine(r, true));
    for (const ZOR_FuelEvent& e : s.fuelEvents)
        line(e.refuel ? QStringLiteral("Refuel") : QStringLiteral("Drain"),
            QStringLiteral("%1 at record %2: %3 (%4 to %5)")
                .arg(e.field)
                .arg(e.first + 1)
                .arg(number(e.change(), 1), number(e.before, 1), number(e.after, 1)));
    for (const QString& why : ZOR_DriveAnalysis::notComputedText(s))
        line(QStringLiteral("Not computed"), why);
    return t;
}
