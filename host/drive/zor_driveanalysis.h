#ifndef ZOR_DRIVEANALYSIS_H
#define ZOR_DRIVEANALYSIS_H

// What a drive archive says: distance, moving time, speeds, engine hours,
// trips and stops, refuels and drains. Record numbers here are 0-based
// positions in the archive (the outputs show them 1-based).
//
// The rules:
// - Distance: great-circle (haversine, mean Earth radius 6371.0088 km)
//   between consecutive records with a valid fix (StateNGauge bit 1);
//   records without a fix are skipped, never taken as 0,0. A fix whose time
//   is before the previous one's, or more than gapKm from it, starts a gap:
//   reported, not added, and the track is broken there.
// - The Mileage difference is the last minus the first Mileage value.
// - Moving time: the sum of the intervals between consecutive records whose
//   earlier record has a speed above movingSpeedKmh; intervals over
//   maxIntervalS (missing data) and backward ones do not count. Average
//   speed = distance / moving time.
// - Engine hours: last minus first Motochas value.
// - A record is active when its engine works (Module1 bit 7) or its speed
//   is above movingSpeedKmh. A trip is a run of active records; a stop is a
//   run of inactive ones, lasting from its first record's time to the time
//   of the record after it (or of its own last record at the end of the
//   archive). A stop shorter than minStopS is not a stop: between two trips
//   it joins them into one, before the first or after the last trip it is
//   dropped. Without times every run of inactive records is a stop. A
//   trip's distance is that of the steps between fixes that end at its
//   records (the drive to its first record included).
// - Fuel: each level series is smoothed by a running median of
//   medianRecords records (noise of a few units and single spikes go). A
//   refuel (drain) is found at the first record from which the smoothed
//   level rises (falls) by at least fuelThreshold within fuelWindowS
//   seconds (fuelWindowS / 60 records when the archive has no times). It
//   starts at the last record still within fuelNoise of that level, ends at
//   the first record within fuelNoise of the highest (lowest) level of the
//   window, and its change is the difference of the smoothed levels there,
//   in the sensor's units.

#include "zor_drivetrack.h"

#include <QString>
#include <QStringList>

#include <vector>

struct ZOR_DriveOptions
{
    double movingSpeedKmh = 5.0;
    int minStopS = 300;
    double gapKm = 100.0;
    int maxIntervalS = 600;
    double fuelThreshold = 20.0;
    int fuelWindowS = 600;
    double fuelNoise = 5.0;
    int medianRecords = 5;
};

struct ZOR_DriveRun
{
    int first = 0; // records
    int last = 0;
    qint64 start = 0; // UTC seconds
    qint64 end = 0;
    double distanceKm = 0;
    double maxSpeedKmh = NAN;
    int fixRecord = -1; // a record with a fix, for the position; -1 none
};

struct ZOR_FuelEvent
{
    bool refuel = true;
    int first = 0; // records: the first past the old level, the one at the new level
    int last = 0;
    QString field; // level column name
    double before = 0;
    double after = 0;
    double change() const { return after - before; }
};

struct ZOR_DriveGap
{
    int record = 0; // the fix after the gap
    bool backInTime = false;
    double km = 0;
    qint64 seconds = 0; // time from the fix before (negative: back)
};

// What the summary could not compute for want of fields in the records.
enum class ZOR_DriveMissing {
    Coordinates,
    Fix,
    Mileage,
    Time,
    Speed,
    EngineHours,
    Runs,
    Fuel,
};

struct ZOR_DriveSummary
{
    int records = 0;
    bool hasTime = false;
    qint64 firstTime = 0;
    qint64 lastTime = 0;
    bool hasDistance = false;
    double distanceKm = 0;
    int fixes = 0;
    bool hasMileage = false;
    double mileageKm = 0;
    bool hasMovingTime = false;
    qint64 movingS = 0;
    bool hasSpeed = false;
    double maxSpeedKmh = 0;
    double avgSpeedKmh = NAN;
    bool hasEngineHours = false;
    double engineHours = 0;
    std::vector<ZOR_DriveRun> trips;
    std::vector<ZOR_DriveRun> stops;
    std::vector<ZOR_FuelEvent> fuelEvents;
    std::vector<ZOR_DriveGap> gaps;
    // What could not be computed, in the order found; the caller says it in
    // its own words (ZOR_DriveAnalysis::missingText: English).
    std::vector<ZOR_DriveMissing> missing;
    // Other reasons, as text (an archive read only in part).
    QStringList notComputed;
};

class ZOR_DriveAnalysis
{
public:
    explicit ZOR_DriveAnalysis(const ZOR_DriveOptions& options = ZOR_DriveOptions());

    ZOR_DriveSummary analyse(const ZOR_DriveTrack& track) const;

    // A missing item in English, what it is and why ("engine hours: ...").
    static QString missingText(ZOR_DriveMissing missing);
    // Every missing item in English, then the other reasons.
    static QStringList notComputedText(const ZOR_DriveSummary& s);

    // Great-circle distance in km.
    static double haversineKm(double lat1, double lon1, double lat2, double lon2);
    // The fixes of the track as lines: a new line after every gap.
    static std::vector<std::vector<int>> segments(const ZOR_DriveTrack& track, const ZOR_DriveOptions& options);

private:
    void addDistance(const ZOR_DriveTrack& track, ZOR_DriveSummary& s) const;
    void addTimes(const ZOR_DriveTrack& track, ZOR_DriveSummary& s) const;
    void addRuns(const ZOR_DriveTrack& track, ZOR_DriveSummary& s) const;
    void addFuel(const ZOR_DriveTrack& track, ZOR_DriveSummary& s) const;
    void findEvents(const ZOR_DriveTrack& track, const ZOR_DriveTrack::Level& level, ZOR_DriveSummary& s) const;

    ZOR_DriveOptions m_options;
};

#endif
