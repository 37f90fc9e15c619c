#include "zor_tmi_simarchive.h"

#include "telemetry/zor_tmi_table.h"

#include <QSaveFile>
#include <QtEndian>

#include <cmath>
#include <cstddef>

namespace {

template <typename T>
void put(QByteArray& block, std::size_t nOffset, T value)
{
    if constexpr (std::is_same<T, float>::value) {
        quint32 bits;
        std::memcpy(&bits, &value, sizeof bits);
        qToLittleEndian<quint32>(bits, block.data() + nOffset);
    } else {
        qToLittleEndian<T>(value, block.data() + nOffset);
    }
}

#define ZOR_PUT(Name, Type, value) put<Type>(block, offsetof(szCurrentTMI_KITE3, Name), Type(value))

constexpr quint32 kStartTime = 1717200000; // 2024-06-01 00:00 UTC
constexpr int kStep = 10; // seconds between records
constexpr double kPi = 3.14159265358979323846;

} // namespace

namespace ZOR_TmiSimArchive {

QByteArray valueBlock(qint64 nIndex)
{
    QByteArray block(int(sizeof(szCurrentTMI_KITE3)), '\0');
    // One loop of 20 km around the town centre takes an hour; the vehicle
    // stands still for the first five minutes of every second hour.
    const qint64 nSeconds = nIndex * kStep;
    const bool bParked = (nSeconds / 3600) % 2 == 1 && nSeconds % 3600 < 300;
    const double dPhase = 2 * kPi * double(nSeconds % 3600) / 3600.0;
    const double dSpeed = bParked ? 0.0 : 40.0 + 25.0 * std::sin(3 * dPhase) * std::sin(3 * dPhase);
    const double dKm = double(nIndex) * 20.0 / 360.0;
    // 55°45' N 37°37' E in 1/10000 angular minute, a 3 km circle.
    const qint32 nLat = qint32(33450000 + 16000 * std::sin(dPhase));
    const qint32 nLon = qint32(22570000 + 28000 * std::cos(dPhase));
    const quint32 nTime = kStartTime + quint32(nSeconds);
    const int nCourse = (int(dPhase * 180 / kPi) + 90) % 360;

    ZOR_PUT(NumPage, quint32, nIndex + 1);
    ZOR_PUT(Code, quint16, bParked ? 3 : nIndex % 30 == 0 ? 2 : 1);
    ZOR_PUT(Time, quint32, nTime);
    ZOR_PUT(State, quint8, 0x08); // guard on
    ZOR_PUT(Module1, quint8, 0x01 | 0x08 | 0x20 | (bParked ? 0 : 0x80));
    ZOR_PUT(Module2, quint8, 0x08 | 0x10);
    ZOR_PUT(GSM, quint8, 18 + nIndex % 7);
    ZOR_PUT(StateNGauge, quint8, 0x03 | ((9 + nIndex % 5) << 2));
    ZOR_PUT(LastTime, quint32, nTime);
    ZOR_PUT(Latitude, qint32, nLat);
    ZOR_PUT(Longitude, qint32, nLon);
    ZOR_PUT(Altitude, qint32, 1560 + qint32(40 * std::sin(dPhase)));
    ZOR_PUT(Speed, float, float(dSpeed));
    ZOR_PUT(Course, quint16, nCourse);
    ZOR_PUT(Mileage, float, float(12500.0 + dKm));
    ZOR_PUT(Distance, float, float(bParked ? 0.0 : dSpeed * kStep / 3600.0));
    ZOR_PUT(Seconds, quint16, kStep);
    ZOR_PUT(SecondsLast, quint16, kStep);
    ZOR_PUT(Power, quint16, bParked ? 12400 : 13900 + nIndex % 11 * 10);
    ZOR_PUT(Reserv, quint16, 4100);
    ZOR_PUT(StateU_Ain1, quint16, 2500 + nIndex % 50);
    ZOR_PUT(In1, quint8, bParked ? 0x00 : 0x01); // ignition on input 1
    ZOR_PUT(Out1, quint8, 0x00);
    ZOR_PUT(In_Imp1, quint32, nIndex * 3);
    ZOR_PUT(Motochas, quint32, 360000 + nSeconds);
    // Fuel: 400 litres (level 4000 of the sensor) burnt at 25 l/100 km,
    // refilled when it gets low.
    const qint64 nLevel = 4000 - qint64(dKm * 2.5) % 3200;
    ZOR_PUT(RS485_1, quint16, nLevel);
    ZOR_PUT(Temp1, qint8, 21 + nIndex % 3);
    ZOR_PUT(Temp2, qint8, -128); // no sensor
    ZOR_PUT(CanFuelLevel, quint16, nLevel / 10); // litres x 10 with bit 15 clear
    ZOR_PUT(CanFuelConsumption, float, float(3100.0 + dKm * 0.25));
    ZOR_PUT(CanEngineTurns, quint16, bParked ? 650 : 1400 + int(dSpeed) * 10);
    ZOR_PUT(CanTemp, qint8, 88);
    ZOR_PUT(CanSpeed, quint8, int(dSpeed));
    ZOR_PUT(MiliSec, quint16, (nIndex * 37) % 1000);
    return block;
}

QByteArray record(qint64 nIndex, const ZOR_TmiFieldSet& fieldSet)
{
    const QByteArray block = valueBlock(nIndex);
    QByteArray out;
    out.reserve(fieldSet.recordSize());
    for (int n = 1; n <= fieldSet.lastField(); ++n) {
        if (fieldSet.has(n)) {
            const ZorTmi::FieldInfo& info = ZorTmi::field(n);
            out.append(block.constData() + info.offset, info.width);
        }
    }
    return out;
}

bool write(const QString& qsFileName, qint64 nCount, const ZOR_TmiFieldSet& fieldSet, QString* lpError)
{
    QSaveFile file(qsFileName);
    if (!file.open(QIODevice::WriteOnly)) {
        if (lpError)
            *lpError = file.errorString();
        return false;
    }
    QByteArray buffer;
    for (qint64 i = 0; i < nCount; ++i) {
        buffer.append(record(i, fieldSet));
        if (buffer.size() >= (1 << 20) || i + 1 == nCount) {
            if (file.write(buffer) != buffer.size())
                break;
            buffer.clear();
        }
    }
    if (!file.commit()) {
        if (lpError)
            *lpError = file.errorString();
        return false;
    }
    return true;
}

} // namespace ZOR_TmiSimArchive
