#ifndef ZOR_USERPARAMENTRY_H
#define ZOR_USERPARAMENTRY_H

// One value that may be placed in the telemetry record as a user parameter.
// Pages that publish values (Modbus rows, the universal sensor, the
// peripherals) announce exactly these four parts with
// signal_UserParam_Add(qsPrefix, qsMess, qsSuffix, nSize); the catalogue
// of CAN and controller parameters offers its entries in the same shape.
// A value is known by its prefix, label and suffix; nSize is the width in
// bytes (1, 2, 4 or 8; 0 when unknown).
//
//   {"MB", "MB1,  5,  1a", "2 байта, беззнаковое", 2}
//                                        a Modbus row: its type's caption (the
//                                        field-set form stores the code "2u")
//   {"SC", "1", "2u", 2}                 a catalogue entry: its number, whatever
//                                        the language (ZOR_UserParams::getUserParamTitle
//                                        gives the caption of "SC, 1, 2u")

#include <QMetaType>
#include <QString>

struct ZOR_UserParamEntry
{
    QString qsPrefix;
    QString qsMess;
    QString qsSuffix;
    int nSize = 0;

    bool sameValue(const ZOR_UserParamEntry& other) const
    {
        return qsPrefix == other.qsPrefix && qsMess == other.qsMess && qsSuffix == other.qsSuffix;
    }
};

Q_DECLARE_METATYPE(ZOR_UserParamEntry)

#endif
