#ifndef ZOR_DRIVETRACK_H
#define ZOR_DRIVETRACK_H

// The values of a telemetry archive that say where a vehicle went: one
// point per record (time, fix, position, speed, mileage, engine), and the
// series of every fuel level field the records carry. Filled record by
// record from decoded records; the analysis and the exports read it.
//
//   ZOR_DriveTrack track;
//   for (each record) track.addRecord(record);
//   ZOR_DriveAnalysis(track, options).summary() ...

#include <QString>
#include <QVector>

#include <cmath>
#include <vector>

class TmiPage_Base;

struct ZOR_DrivePoint
{
    qint64 time = 0; // UTC seconds (ZOR_DriveTrack::hasTime)
    double lat = 0; // decimal degrees, when fix
    double lon = 0;
    double mileage = NAN; // km
    double motochas = NAN; // engine hours
    float altitude = NAN; // metres
    float speed = NAN; // km/h
    float course = NAN; // degrees
    qint8 engine = -1; // 1 working, 0 not, -1 unknown
    bool fix = false; // StateNGauge bit 1, both coordinates present and on the globe
};

class ZOR_DriveTrack
{
public:
    ZOR_DriveTrack();

    // Adds the next record of the archive.
    void addRecord(const TmiPage_Base& record);

    int size() const { return int(m_points.size()); }
    const ZOR_DrivePoint& point(int i) const { return m_points[size_t(i)]; }

    // Whether any record carried the field.
    bool hasTime() const { return m_bTime; }
    bool hasCoordinates() const { return m_bCoordinates; }
    bool hasSpeed() const { return m_bSpeed; }
    bool hasEngine() const { return m_bEngine; }
    bool hasMileage() const { return m_bMileage; }
    bool hasMotochas() const { return m_bMotochas; }

    // The fuel level series: one per level column the first record carries,
    // NaN where a record has no value. A level that never changes (a sensor
    // that is not fitted reads 0 throughout) keeps no values: `values` stays
    // empty while every record has the value of the first.
    struct Level
    {
        int column; // ZorTmi column id
        QString name; // its getter name ("RS485_1", "CanFuelLevelLitres")
        std::vector<float> values;
        float first = 0; // while values is empty: the value of the
        int same = 0; // first `same` records
    };
    const std::vector<Level>& levels() const { return m_levels; }

    // The level columns looked at: the RS-485 and RS-232 fuel sensors and
    // the CAN levels, unless set otherwise (column getter names).
    static QStringList defaultLevelNames();
    // False (and the unknown name in *lpError) when a name is no column.
    bool setLevelNames(const QStringList& names, QString* lpError = nullptr);

private:
    std::vector<ZOR_DrivePoint> m_points;
    std::vector<Level> m_levels;
    bool m_bTime = false;
    bool m_bCoordinates = false;
    bool m_bSpeed = false;
    bool m_bEngine = false;
    bool m_bMileage = false;
    bool m_bMotochas = false;
};

#endif
