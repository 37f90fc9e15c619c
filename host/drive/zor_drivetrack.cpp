#include "zor_drivetrack.h"

#include "telemetry/tmipage_base.h"

#include <QStringList>

namespace {

// The column's number when the record carries its field, NaN otherwise.
double valueOf(const TmiPage_Base& record, int columnId, bool* lpSeen = nullptr)
{
    const ZorTmi::Column& c = ZorTmi::column(columnId);
    if (!record.isUseParam(ZorTmi::presenceField(c.field)))
        return NAN;
    if (lpSeen)
        *lpSeen = true;
    return ZorTmi::number(c, record.fieldBytes(c.field));
}

int columnByName(const QString& name)
{
    for (int id = 0; id < ZorTmi::ColumnCount; ++id)
        if (name == QLatin1String(ZorTmi::column(id).getter))
            return id;
    return -1;
}

} // namespace

ZOR_DriveTrack::ZOR_DriveTrack()
{
    setLevelNames(defaultLevelNames());
}

QStringList ZOR_DriveTrack::defaultLevelNames()
{
    QStringList names;
    for (int i = 1; i <= 16; ++i)
        names << QStringLiteral("RS485_%1").arg(i);
    names << QStringLiteral("RS232") << QStringLiteral("CanFuelLevelLitres") << QStringLiteral("CanFuelLevelPercent")
          << QStringLiteral("CanLevelFiltrLitres") << QStringLiteral("CanLevelFiltrPercent");
    return names;
}

bool ZOR_DriveTrack::setLevelNames(const QStringList& names, QString* lpError)
{
    std::vector<Level> levels;
    for (const QString& name : names) {
        const int id = columnByName(name);
        if (id < 0) {
            if (lpError)
                *lpError = name;
            return false;
        }
        levels.push_back(Level{id, name, {}});
    }
    m_levels = std::move(levels);
    return true;
}

void ZOR_DriveTrack::addRecord(const TmiPage_Base& record)
{
    ZOR_DrivePoint p;
    bool time = false;
    const double t = valueOf(record, ZorTmi::Col_Time, &time);
    if (time) {
        p.time = qint64(t);
        m_bTime = true;
    }
    const double lat = valueOf(record, ZorTmi::Col_Latitude);
    const double lon = valueOf(record, ZorTmi::Col_Longitude);
    const double valid = valueOf(record, ZorTmi::Col_NGaugeValid);
    if (!std::isnan(lat) && !std::isnan(lon) && !std::isnan(valid)) {
        m_bCoordinates = true;
        // A position off the globe is as good as none.
        p.fix = valid == 1.0 && std::fabs(lat) <= 90.0 && std::fabs(lon) <= 180.0;
        p.lat = lat;
        p.lon = lon;
    }
    p.altitude = float(valueOf(record, ZorTmi::Col_Altitude));
    p.speed = float(valueOf(record, ZorTmi::Col_Speed, &m_bSpeed));
    p.course = float(valueOf(record, ZorTmi::Col_Course));
    p.mileage = valueOf(record, ZorTmi::Col_Mileage, &m_bMileage);
    p.motochas = valueOf(record, ZorTmi::Col_Motochas, &m_bMotochas);
    const double engine = valueOf(record, ZorTmi::Col_EngineWork, &m_bEngine);
    p.engine = std::isnan(engine) ? -1 : qint8(engine);
    if (m_points.empty()) { // one field set per archive: keep the levels its records carry
        std::vector<Level> carried;
        for (Level& level : m_levels)
            if (record.isUseParam(ZorTmi::presenceField(ZorTmi::column(level.column).field)))
                carried.push_back(std::move(level));
        m_levels = std::move(carried);
    }
    m_points.push_back(p);
    for (Level& level : m_levels) {
        const float v = float(valueOf(record, level.column));
        const bool same = level.same == 0 || v == level.first || (std::isnan(v) && std::isnan(level.first));
        if (level.values.empty() && same) {
            level.first = level.same++ ? level.first : v;
            continue;
        }
        if (level.values.empty())
            level.values.assign(size_t(level.same), level.first);
        level.values.push_back(v);
    }
}
