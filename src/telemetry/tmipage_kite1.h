#ifndef TMIPAGE_KITE1_H
#define TMIPAGE_KITE1_H

// One telemetry record of protocol KITE 1.0 with its field set: fields 1-69
// of the field table (named members as in TmiPage_Kite3, no extended
// record). It also reads the older fixed 128-byte "F8" record and turns it
// into a version-1 record.

#include "telemetry/tmipage_base.h"

class TmiPage_Kite1 : public TmiPage_Base
{
public:
    // Size of an F8 record; shorter input reads as zero-filled.
    static constexpr int F8RecordSize = 128;
    // What a converted F8 record is marked with.
    static constexpr int F8FormatType = 176;
    static constexpr int F8VersionType = 10;

    ZOR_TMI_RECORD_MEMBERS(TmiPage_Kite1, szCurrentTMI_KITE1)
    // A record built from an F8 record.
    TmiPage_Kite1(const unsigned char* data, int length, QObject* parent = nullptr);

    QString getStrFormatKite1() const { return getStrFormat(); }

    // Fills the value block, the type bytes and the fixed field set of a
    // converted F8 record (fields 1-69 less those the F8 record lacks).
    void setCurrentTMI_From_F8(const unsigned char* data, int length);
    // Converts the F8 record (when data is not null) and makes the stored
    // packet the version-1 record of the current values: every present
    // field in ascending order, nothing else.
    void setCurrentPacketF8ToKite(const unsigned char* data, int length);
    // The fixed field set of a converted F8 record (32 bytes).
    static QByteArray f8Format();

#define ZOR_TMI_LAST_FIELD 69
#include "telemetry/zor_tmi_accessors.inc"
#undef ZOR_TMI_LAST_FIELD
};

#endif
