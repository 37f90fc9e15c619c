#ifndef TMIPAGE_KITE3_H
#define TMIPAGE_KITE3_H

// One telemetry record of protocol KITE 3.0 with its field set: fields
// 1-255 of the field table. Per field isUseParam<Name>(), per value and
// sub-value get<Getter>() (raw, wire type; flags as bool, bit groups as int)
// and getStr<Getter>() ("n/a" when absent); see zor_tmi_fields.def for the
// names and tmipage_base.h for the constructors, decoding, column texts and
// date-times.

#include "telemetry/tmipage_base.h"

class TmiPage_Kite3 : public TmiPage_Base
{
public:
    ZOR_TMI_RECORD_MEMBERS(TmiPage_Kite3, szCurrentTMI_KITE3)
    // An extended record; the format and version type and the record
    // number then come from it.
    explicit TmiPage_Kite3(const szExtTMI_KITE3* ext, QObject* parent = nullptr);

    QString getStrFormatKite3() const { return getStrFormat(); }
    bool IsKite3Ext() const { return isExt(); }
    ZOR_TMI_EXT_MEMBERS

#define ZOR_TMI_LAST_FIELD 255
#include "telemetry/zor_tmi_accessors.inc"
#undef ZOR_TMI_LAST_FIELD
};

#endif
