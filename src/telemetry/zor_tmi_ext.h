#ifndef ZOR_TMI_EXT_H
#define ZOR_TMI_EXT_H

// The extended record of versions 2 and 3: a fixed part with the values a
// terminal always reports, then a visible and a hidden data block, each
// with its own version and size byte. Little-endian, packed, 314 bytes.
//
//   off  size  member          meaning
//     0     1  FormatType
//     1     1  VersionType
//     2     4  NumPage         record number
//     6     2  Code            event code
//     8     4  Time            seconds since 1970 UTC
//    12     1  NaviState       bit 0 receiver on, 1 valid, 2-7 satellites
//    13     4  LastTime        time of the last valid coordinates
//    17     4  Latitude        1/10000 angular minute (as field 10)
//    21     4  Longitude       1/10000 angular minute (as field 11)
//    25     4  Altitude        decimetres (as field 12)
//    29     2  Speed           km/h x 10
//    31     2  Course          degrees
//    33     4  Mileage         metres
//    37     2  State           state bits (field 4 in the low byte, field 5 high)
//    39     2  Outputs         outputs 1-16, bit 0 = output 1
//    41     4  Imp1, 45 4 Imp2 pulse counters of inputs 1 and 2
//    49     4  Motochas        engine hours, seconds
//    53     1  Spare
//    54     1  VisibleVersion, 55 1 VisibleSize (at most 128)
//    56   128  Visible         data block shown to the user
//   184     1  HiddenVersion, 185 1 HiddenSize (at most 128)
//   186   128  Hidden          service data block

#include <QtGlobal>

#pragma pack(push, 1)
struct szExtTMI_KITE3
{
    quint8 FormatType;
    quint8 VersionType;
    quint32 NumPage;
    quint16 Code;
    quint32 Time;
    quint8 NaviState;
    quint32 LastTime;
    qint32 Latitude;
    qint32 Longitude;
    qint32 Altitude;
    quint16 Speed;
    quint16 Course;
    quint32 Mileage;
    quint16 State;
    quint16 Outputs;
    quint32 Imp1;
    quint32 Imp2;
    quint32 Motochas;
    quint8 Spare;
    quint8 VisibleVersion;
    quint8 VisibleSize;
    quint8 Visible[128];
    quint8 HiddenVersion;
    quint8 HiddenSize;
    quint8 Hidden[128];
};
#pragma pack(pop)

static_assert(sizeof(szExtTMI_KITE3) == 314, "extended record is 314 bytes");

// Version 2 carries the same extended record.
using szExtTMI_KITE2 = szExtTMI_KITE3;

#endif
