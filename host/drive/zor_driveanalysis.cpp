#include "zor_driveanalysis.h"

#include <algorithm>
#include <deque>
#include <cmath>

namespace {

// Whether the step from fix `prev` to fix `i` is a gap; *lpKm its length.
bool isGap(const ZOR_DriveTrack& track, int prev, int i, const ZOR_DriveOptions& options, double* lpKm)
{
    const ZOR_DrivePoint& a = track.point(prev);
    const ZOR_DrivePoint& b = track.point(i);
    *lpKm = ZOR_DriveAnalysis::haversineKm(a.lat, a.lon, b.lat, b.lon);
    return (track.hasTime() && b.time < a.time) || *lpKm > options.gapKm;
}

bool active(const ZOR_DrivePoint& p, double movingSpeedKmh)
{
    return p.engine == 1 || (!std::isnan(p.speed) && p.speed > movingSpeedKmh);
}

// The running median of `width` values around each (fewer at the ends).
std::vector<double> runningMedian(const std::vector<double>& v, int width)
{
    const int n = int(v.size());
    const int half = std::max(0, width / 2);
    std::vector<double> out(v.size());
    std::vector<double> w;
    for (int i = 0; i < n; ++i) {
        const int a = std::max(0, i - half);
        const int b = std::min(n - 1, i + half);
        w.assign(v.begin() + a, v.begin() + b + 1);
        std::nth_element(w.begin(), w.begin() + int(w.size()) / 2, w.end());
        out[size_t(i)] = w[w.size() / 2];
    }
    return out;
}

} // namespace

ZOR_DriveAnalysis::ZOR_DriveAnalysis(const ZOR_DriveOptions& options)
    : m_options(options)
{
}

double ZOR_DriveAnalysis::haversineKm(double lat1, double lon1, double lat2, double lon2)
{
    const double rad = M_PI / 180.0;
    const double dLat = (lat2 - lat1) * rad;
    const double dLon = (lon2 - lon1) * rad;
    const double h = std::sin(dLat / 2) * std::sin(dLat / 2)
        + std::cos(lat1 * rad) * std::cos(lat2 * rad) * std::sin(dLon / 2) * std::sin(dLon / 2);
    return 2.0 * 6371.0088 * std::asin(std::min(1.0, std::sqrt(h)));
}

std::vector<std::vector<int>> ZOR_DriveAnalysis::segments(const ZOR_DriveTrack& track, const ZOR_DriveOptions& options)
{
    std::vector<std::vector<int>> lines;
    int prev = -1;
    for (int i = 0; i < track.size(); ++i) {
        if (!track.point(i).fix)
            continue;
        double km = 0;
        if (prev < 0 || isGap(track, prev, i, options, &km))
            lines.emplace_back();
        lines.back().push_back(i);
        prev = i;
    }
    return lines;
}

ZOR_DriveSummary ZOR_DriveAnalysis::analyse(const ZOR_DriveTrack& track) const
{
    ZOR_DriveSummary s;
    s.records = track.size();
    addDistance(track, s);
    addTimes(track, s);
    addRuns(track, s);
    addFuel(track, s);
    return s;
}

QString ZOR_DriveAnalysis::missingText(ZOR_DriveMissing missing)
{
    switch (missing) {
    case ZOR_DriveMissing::Coordinates:
        return QStringLiteral("distance: the records carry no coordinates (Latitude, Longitude, StateNGauge)");
    case ZOR_DriveMissing::Fix: return QStringLiteral("track: no record has a valid fix");
    case ZOR_DriveMissing::Mileage: return QStringLiteral("mileage difference: the records carry no Mileage");
    case ZOR_DriveMissing::Time: return QStringLiteral("time span, moving time, durations: the records carry no Time");
    case ZOR_DriveMissing::Speed: return QStringLiteral("speeds, moving time: the records carry no Speed");
    case ZOR_DriveMissing::EngineHours: return QStringLiteral("engine hours: the records carry no Motochas");
    case ZOR_DriveMissing::Runs: return QStringLiteral("trips and stops: the records carry neither Module1 nor Speed");
    case ZOR_DriveMissing::Fuel: return QStringLiteral("fuel events: the records carry no fuel level field");
    }
    return QString();
}

QStringList ZOR_DriveAnalysis::notComputedText(const ZOR_DriveSummary& s)
{
    QStringList lines;
    for (ZOR_DriveMissing missing : s.missing)
        lines << missingText(missing);
    return lines + s.notComputed;
}

void ZOR_DriveAnalysis::addDistance(const ZOR_DriveTrack& track, ZOR_DriveSummary& s) const
{
    if (!track.hasCoordinates()) {
        s.missing.push_back(ZOR_DriveMissing::Coordinates);
    } else {
        s.hasDistance = true;
        int prev = -1;
        for (int i = 0; i < track.size(); ++i) {
            const ZOR_DrivePoint& p = track.point(i);
            if (!p.fix)
                continue;
            ++s.fixes;
            double km = 0;
            if (prev >= 0 && isGap(track, prev, i, m_options, &km))
                s.gaps.push_back(ZOR_DriveGap{
                    i, track.hasTime() && p.time < track.point(prev).time, km, p.time - track.point(prev).time});
            else if (prev >= 0)
                s.distanceKm += km;
            prev = i;
        }
        if (s.fixes == 0)
            s.missing.push_back(ZOR_DriveMissing::Fix);
    }
    if (!track.hasMileage()) {
        s.missing.push_back(ZOR_DriveMissing::Mileage);
    } else {
        double first = NAN;
        double last = NAN;
        for (int i = 0; i < track.size(); ++i)
            if (!std::isnan(track.point(i).mileage)) {
                last = track.point(i).mileage;
                if (std::isnan(first))
                    first = last;
            }
        s.hasMileage = true;
        s.mileageKm = last - first;
    }
}

void ZOR_DriveAnalysis::addTimes(const ZOR_DriveTrack& track, ZOR_DriveSummary& s) const
{
    const int n = track.size();
    double firstHours = NAN;
    double lastHours = NAN;
    for (int i = 0; i < n; ++i) {
        const ZOR_DrivePoint& p = track.point(i);
        if (!std::isnan(p.speed)) {
            s.maxSpeedKmh = s.hasSpeed ? std::max(s.maxSpeedKmh, double(p.speed)) : double(p.speed);
            s.hasSpeed = true;
        }
        if (!std::isnan(p.motochas)) {
            lastHours = p.motochas;
            if (std::isnan(firstHours))
                firstHours = lastHours;
        }
        if (i > 0 && track.hasTime() && track.hasSpeed()) {
            const qint64 dt = p.time - track.point(i - 1).time;
            if (dt > 0 && dt <= m_options.maxIntervalS && track.point(i - 1).speed > m_options.movingSpeedKmh)
                s.movingS += dt;
        }
    }
    s.hasTime = track.hasTime() && n > 0;
    if (s.hasTime) {
        s.firstTime = track.point(0).time;
        s.lastTime = track.point(n - 1).time;
    } else {
        s.missing.push_back(ZOR_DriveMissing::Time);
    }
    if (!track.hasSpeed())
        s.missing.push_back(ZOR_DriveMissing::Speed);
    s.hasMovingTime = s.hasTime && track.hasSpeed();
    if (s.hasMovingTime && s.hasDistance && s.movingS > 0)
        s.avgSpeedKmh = s.distanceKm / (double(s.movingS) / 3600.0);
    s.hasEngineHours = track.hasMotochas();
    if (s.hasEngineHours)
        s.engineHours = lastHours - firstHours;
    else
        s.missing.push_back(ZOR_DriveMissing::EngineHours);
}

namespace {

struct RawRun
{
    bool active;
    int first;
    int last;
};

std::vector<RawRun> rawRuns(const ZOR_DriveTrack& track, double movingSpeedKmh)
{
    std::vector<RawRun> runs;
    for (int i = 0; i < track.size(); ++i) {
        const bool a = active(track.point(i), movingSpeedKmh);
        if (runs.empty() || runs.back().active != a)
            runs.push_back(RawRun{a, i, i});
        else
            runs.back().last = i;
    }
    return runs;
}

// Times, distance, top speed and a position of the records first..last.
// A step between two fixes belongs to the run of its later record: the
// drive to the first record of a trip is part of the trip.
void fillRun(const ZOR_DriveTrack& track, const ZOR_DriveOptions& options, ZOR_DriveRun& run, bool isStop)
{
    const ZOR_DrivePoint& a = track.point(run.first);
    run.start = a.time;
    run.end = isStop && run.last + 1 < track.size() ? track.point(run.last + 1).time : track.point(run.last).time;
    int prev = -1; // the last fix before the run
    for (int i = run.first - 1; i >= 0 && prev < 0 && track.hasCoordinates(); --i)
        if (track.point(i).fix)
            prev = i;
    for (int i = run.first; i <= run.last; ++i) {
        const ZOR_DrivePoint& p = track.point(i);
        if (!std::isnan(p.speed))
            run.maxSpeedKmh = std::isnan(run.maxSpeedKmh) ? p.speed : std::max(run.maxSpeedKmh, double(p.speed));
        if (!p.fix)
            continue;
        if (run.fixRecord < 0)
            run.fixRecord = i;
        double km = 0;
        if (prev >= 0 && !isGap(track, prev, i, options, &km))
            run.distanceKm += km;
        prev = i;
    }
    if (run.fixRecord < 0 && prev >= 0) // a stop without a fix of its own: where the vehicle was last seen
        run.fixRecord = prev;
}

} // namespace

void ZOR_DriveAnalysis::addRuns(const ZOR_DriveTrack& track, ZOR_DriveSummary& s) const
{
    if (!track.hasEngine() && !track.hasSpeed()) {
        s.missing.push_back(ZOR_DriveMissing::Runs);
        return;
    }
    bool joinNext = false; // a short stop after the last trip: the next trip continues it
    for (const RawRun& r : rawRuns(track, m_options.movingSpeedKmh)) {
        ZOR_DriveRun run;
        run.first = r.first;
        run.last = r.last;
        if (r.active) {
            if (joinNext)
                s.trips.back().last = r.last;
            else
                s.trips.push_back(run);
            joinNext = false;
            continue;
        }
        fillRun(track, m_options, run, true);
        if (!track.hasTime() || run.end - run.start >= m_options.minStopS) {
            s.stops.push_back(run);
            joinNext = false;
        } else {
            joinNext = !s.trips.empty();
        }
    }
    for (ZOR_DriveRun& trip : s.trips)
        fillRun(track, m_options, trip, false);
}

void ZOR_DriveAnalysis::addFuel(const ZOR_DriveTrack& track, ZOR_DriveSummary& s) const
{
    if (track.levels().empty())
        s.missing.push_back(ZOR_DriveMissing::Fuel);
    for (const ZOR_DriveTrack::Level& level : track.levels())
        findEvents(track, level, s);
    std::stable_sort(s.fuelEvents.begin(), s.fuelEvents.end(),
        [](const ZOR_FuelEvent& a, const ZOR_FuelEvent& b) { return a.first < b.first; });
}

void ZOR_DriveAnalysis::findEvents(
    const ZOR_DriveTrack& track, const ZOR_DriveTrack::Level& level, ZOR_DriveSummary& s) const
{
    std::vector<int> at; // records with a value
    std::vector<double> raw;
    for (int i = 0; i < int(level.values.size()); ++i)
        if (!std::isnan(level.values[size_t(i)])) {
            at.push_back(i);
            raw.push_back(level.values[size_t(i)]);
        }
    const std::vector<double> v = runningMedian(raw, m_options.medianRecords);
    const int m = int(v.size());
    const bool timed = track.hasTime();
    auto when = [&](int k) { return timed ? double(track.point(at[size_t(k)]).time) : double(k); };
    const double window = timed ? m_options.fuelWindowS : m_options.fuelWindowS / 60.0;
    const double noise = m_options.fuelNoise;
    // The highest and lowest level of the records (i, r] in monotone
    // queues: most records are checked in constant time, the exact search
    // below runs only where the window holds a large enough change.
    std::deque<int> high;
    std::deque<int> low;
    int r = 0;
    for (int i = 0; i < m;) {
        for (r = std::max(r, i); r + 1 < m && when(r + 1) - when(i) <= window;) {
            ++r;
            while (!high.empty() && v[size_t(high.back())] <= v[size_t(r)])
                high.pop_back();
            while (!low.empty() && v[size_t(low.back())] >= v[size_t(r)])
                low.pop_back();
            high.push_back(r);
            low.push_back(r);
        }
        while (!high.empty() && high.front() <= i)
            high.pop_front();
        while (!low.empty() && low.front() <= i)
            low.pop_front();
        const double vi = v[size_t(i)];
        if ((high.empty() || v[size_t(high.front())] - vi < m_options.fuelThreshold)
            && (low.empty() || vi - v[size_t(low.front())] < m_options.fuelThreshold)) {
            ++i;
            continue;
        }
        int found = -1;
        for (int j = i + 1; j < m && when(j) - when(i) <= window && found < 0; ++j)
            if (std::fabs(v[size_t(j)] - v[size_t(i)]) >= m_options.fuelThreshold)
                found = j;
        if (found < 0) {
            ++i;
            continue;
        }
        const double sign = v[size_t(found)] > v[size_t(i)] ? 1.0 : -1.0;
        int start = i;
        for (int k = i; k <= found; ++k)
            if (sign * (v[size_t(k)] - v[size_t(i)]) <= noise)
                start = k;
        double best = v[size_t(found)];
        for (int k = found; k < m && when(k) - when(start) <= window; ++k)
            best = sign * v[size_t(k)] > sign * best ? v[size_t(k)] : best;
        int end = found;
        while (sign * v[size_t(end)] < sign * best - noise)
            ++end;
        // The event's first record is the first one past the old level.
        const int first = at[size_t(std::min(start + 1, end))];
        s.fuelEvents.push_back(
            ZOR_FuelEvent{sign > 0, first, at[size_t(end)], level.name, v[size_t(start)], v[size_t(end)]});
        i = end + 1;
    }
}
