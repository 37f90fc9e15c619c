#ifndef TMIPAGE_KITE2_H
#define TMIPAGE_KITE2_H

// One telemetry record of protocol KITE 2.0 with its field set: fields
// 1-122 of the field table. Per field isUseParam<Name>(), per value and
// sub-value get<Getter>() (raw, wire type; flags as bool, bit groups as int)
// and getStr<Getter>() ("n/a" when absent); see zor_tmi_fields.def for the
// names and tmipage_base.h for decoding, column texts and date-times.

#include "telemetry/tmipage_base.h"

class TmiPage_Kite2 : public TmiPage_Base
{
public:
    // Field set from its text form; values zero, format and version type 0.
    // The flag is kept for the CSV export (its extra column).
    explicit TmiPage_Kite2(const QString& format, bool flag = false, QObject* parent = nullptr);
    TmiPage_Kite2(int formatType, int versionType, const QString& format, const szCurrentTMI_KITE2* tmi,
                  QObject* parent = nullptr);
    // An already decoded value block; the field set is empty.
    explicit TmiPage_Kite2(const szCurrentTMI_KITE2* tmi, QObject* parent = nullptr);
    // An extended record; the format and version type and the record
    // number then come from it.
    explicit TmiPage_Kite2(const szExtTMI_KITE2* ext, QObject* parent = nullptr);

    QString getStrFormatKite2() const { return getStrFormat(); }
    szCurrentTMI_KITE2 getCurrentTMI() const;
    bool IsKite2Ext() const { return isExt(); }
    ZOR_TMI_EXT_MEMBERS

#define ZOR_TMI_LAST_FIELD 122
#include "telemetry/zor_tmi_accessors.inc"
#undef ZOR_TMI_LAST_FIELD
};

#endif
