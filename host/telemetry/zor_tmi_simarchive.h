#ifndef ZOR_TMI_SIMARCHIVE_H
#define ZOR_TMI_SIMARCHIVE_H

// A made-up archive to try the telemetry window without a terminal: a
// vehicle driving loops around a town - position, speed, course, mileage,
// supply voltage, inputs, engine hours, fuel level and temperatures, one
// record every 10 s. The same record number always gives the same bytes.

#include "zor_tmi_fieldset.h"

#include <QByteArray>
#include <QString>

namespace ZOR_TmiSimArchive {

// All 255 fields of record nIndex (0-based) as a version-3 value block.
QByteArray valueBlock(qint64 nIndex);
// The record as the terminal sends it: the fields of the set, in order.
QByteArray record(qint64 nIndex, const ZOR_TmiFieldSet& fieldSet);
// Writes nCount records to the file (atomically); false with the reason.
bool write(const QString& qsFileName, qint64 nCount, const ZOR_TmiFieldSet& fieldSet, QString* lpError = nullptr);

} // namespace ZOR_TmiSimArchive

#endif
