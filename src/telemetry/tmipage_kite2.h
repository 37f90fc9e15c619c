#ifndef TMIPAGE_KITE2_H
#define TMIPAGE_KITE2_H

// One telemetry record of protocol KITE 2.0 with its field set: fields
// 1-122 of the field table. Per field isUseParam<Name>(), per value and
// sub-value get<Getter>() (raw, wire type; flags as bool, bit groups as int)
// and getStr<Getter>() ("n/a" when absent); see zor_tmi_fields.def for the
// names and tmipage_base.h for the constructors, decoding, column texts and
// date-times.

#include "telemetry/tmipage_base.h"

class TmiPage_Kite2 : public TmiPage_Base
{
public:
    ZOR_TMI_RECORD_MEMBERS(TmiPage_Kite2, szCurrentTMI_KITE2)
    // An extended record; the format and version type and the record
    // number then come from it.
    explicit TmiPage_Kite2(const szExtTMI_KITE2* ext, QObject* parent = nullptr);

    QString getStrFormatKite2() const { return getStrFormat(); }
    bool IsKite2Ext() const { return isExt(); }
    ZOR_TMI_EXT_MEMBERS

#define ZOR_TMI_LAST_FIELD 122
#include "telemetry/zor_tmi_accessors.inc"
#undef ZOR_TMI_LAST_FIELD
};

#endif
