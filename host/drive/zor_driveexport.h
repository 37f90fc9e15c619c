#ifndef ZOR_DRIVEEXPORT_H
#define ZOR_DRIVEEXPORT_H

// A drive as files for other programs: the track as GPX 1.1 (time,
// elevation, speed in the Garmin TrackPointExtension), KML 2.2 (a
// LineString per unbroken part, a placemark per stop) and GeoJSON
// (RFC 7946: [longitude, latitude], LineString features for the track,
// Point features for stops and fuel events); the summary as JSON and as
// text. A track breaks at every gap; records without a fix are left out.
// Record numbers are 1-based, times ISO 8601 UTC.

#include "zor_driveanalysis.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

class ZOR_DriveExport
{
public:
    ZOR_DriveExport(const ZOR_DriveTrack& track, const ZOR_DriveSummary& summary,
        const ZOR_DriveOptions& options = ZOR_DriveOptions());

    QByteArray gpx() const;
    QByteArray kml() const;
    QByteArray geoJson() const;
    QJsonObject summaryJson() const;
    QString summaryText() const;

    // "2024-05-01T06:30:00Z"
    static QString isoTime(qint64 utcSeconds);

private:
    QJsonObject stopFeature(const ZOR_DriveRun& stop) const;
    QJsonObject fuelFeature(const ZOR_FuelEvent& event) const;
    // The time of record i as ISO text, null without times.
    QJsonValue timeValue(qint64 utcSeconds) const;
    QString runLine(const ZOR_DriveRun& run, bool isStop) const;

    const ZOR_DriveTrack& m_track;
    const ZOR_DriveSummary& m_summary;
    ZOR_DriveOptions m_options;
};

#endif
