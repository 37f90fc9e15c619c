#ifndef ZOR_TMI_TABLE_H
#define ZOR_TMI_TABLE_H

// What the record classes derive from the field table (zor_tmi_fields.def):
// the value blocks, field offsets and widths, the column list with its text
// forms, and the decoding plan of a field set.

#include <QByteArray>
#include <QString>
#include <QtEndian>
#include <QtGlobal>

#include <cstddef>
#include <cstring>
#include <type_traits>

// The decoded values, one member per field in field order, each of the
// field's wire width. Versions 1 and 2 are leading parts of version 3.
#pragma pack(push, 1)
struct szCurrentTMI_KITE3
{
#define ZOR_TMI_FIELD(n, Name, bytes) unsigned char Name[bytes];
#include "telemetry/zor_tmi_fields.def"
};
struct szCurrentTMI_KITE2
{
#define ZOR_TMI_LAST_FIELD 122
#define ZOR_TMI_FIELD(n, Name, bytes) unsigned char Name[bytes];
#include "telemetry/zor_tmi_fields.def"
#undef ZOR_TMI_LAST_FIELD
};
struct szCurrentTMI_KITE1
{
#define ZOR_TMI_LAST_FIELD 69
#define ZOR_TMI_FIELD(n, Name, bytes) unsigned char Name[bytes];
#include "telemetry/zor_tmi_fields.def"
#undef ZOR_TMI_LAST_FIELD
};
#pragma pack(pop)

static_assert(sizeof(szCurrentTMI_KITE3) == 734, "all 255 fields take 734 bytes");
static_assert(sizeof(szCurrentTMI_KITE2) == 404, "fields 1-122 take 404 bytes");
static_assert(sizeof(szCurrentTMI_KITE1) == 146, "fields 1-69 take 146 bytes");

namespace ZorTmi {

constexpr int FieldCount = 255;
constexpr int LastFieldKite1 = 69;
constexpr int LastFieldKite2 = 122;
constexpr int MaskBytes = 32;

// Wire types of values; the traits give the raw type on the wire and the
// type a raw getter returns.
enum ValueType : quint8 {
    Type_U8,
    Type_I8,
    Type_U16,
    Type_I16,
    Type_U32,
    Type_I32,
    Type_U64,
    Type_I64,
    Type_F32,
    Type_U8Tenths
};

template <typename Wire, typename Result = Wire>
struct Scalar
{
    using wire = Wire;
    using result = Result;
    static result cook(wire v) { return result(v); }
};
struct T_U8 : Scalar<quint8>
{
};
struct T_I8 : Scalar<qint8>
{
};
struct T_U16 : Scalar<quint16>
{
};
struct T_I16 : Scalar<qint16>
{
};
struct T_U32 : Scalar<quint32>
{
};
struct T_I32 : Scalar<qint32>
{
};
struct T_U64 : Scalar<quint64>
{
};
struct T_I64 : Scalar<qint64>
{
};
struct T_F32 : Scalar<float>
{
};
struct T_U8Tenths : Scalar<quint8, float>
{
    static float cook(quint8 v) { return float(v) / 10.0f; }
};

template <typename W>
inline W readWire(const unsigned char* p)
{
    if constexpr (std::is_same<W, float>::value) {
        const quint32 bits = qFromLittleEndian<quint32>(p);
        float f;
        std::memcpy(&f, &bits, sizeof f);
        return f;
    } else {
        return qFromLittleEndian<W>(p);
    }
}

// Result of a raw getter: the whole value, a flag (one bit) or a small
// number (several bits).
template <typename T, int Bits>
using PartResult = std::conditional_t<Bits == 0, typename T::result, std::conditional_t<Bits == 1, bool, int>>;

template <typename T, int Shift, int Bits>
inline PartResult<T, Bits> readPart(const unsigned char* p)
{
    const auto v = readWire<typename T::wire>(p);
    if constexpr (Bits == 0) {
        return T::cook(v);
    } else {
        const quint64 u = quint64(v) >> Shift;
        if constexpr (Bits == 1)
            return (u & 1u) != 0;
        else
            return int(u & ((quint64(1) << Bits) - 1));
    }
}

// Text forms of the table. Each names one way of turning a value into text;
// the parameters of the numeric ones are in zor_tmi_table.cpp.
enum TextForm : quint8 {
    Text_Dec, // decimal
    Text_SimNo, // "1" when the bit is clear, "2" when set
    Text_DateTime, // local "dd.MM.yyyy H:mm:ss"
    Text_TimeDate, // local "hh:mm:ss dd.MM.yyyy"
    Text_Coord4, // 1/10000 angular minute: "55 45.1234'"
    Text_Coord7, // 1/10^7 angular minute: 7 decimals
    Text_Decimetres, // whole metres, truncated toward zero
    Text_Gsm, // 0-31 scaled to percent, 99 unknown
    Text_Temp, // "%1 %2" degrees; -128 = no sensor, empty text
    Text_CelsiusDec, // decimal + degrees
    Text_CanLevel, // bit 15 set: percent, clear: litres x 10;
    // all ones in bits 0-14: no data
    Text_CanLevelPercent, // the percent of CanLevel, empty for litres
    Text_CanLevelLitres, // the litres of CanLevel, empty for percent
    Text_CanTimeTO, // x 5 + km; 0xFFFF no data
    Text_CanSpeed, // + km/h; 255 no data
    Text_KmhF1, // f32, 1 decimal + km/h
    Text_KmF2, // f32, 2 decimals + km
    Text_KmF2NoNeg, // as KmF2, negative = no data
    Text_LitresF2, // f32, 2 decimals + litres, negative = no data
    Text_F2, // f32, 2 decimals
    Text_Volts, // millivolts as volts, 3 decimals + V
    Text_VoltsDec, // decimal + V
    Text_Amps, // decimal + A
    Text_Hours, // seconds as hours, 2 decimals + h
    Text_Hours100, // 1/100 hours, 2 decimals + h
    Text_Tonnes, // decimal + axle-load unit
    Text_Percent, // "%1 %"
    Text_Tenths, // value / 10, 1 decimal
    Text_Hundredths, // value / 100, 2 decimals
    Text_Milli3, // value / 1000, 3 decimals
    Text_Milli3NoData, // as Milli3, -32768 = no data
    Text_AccelLinear, // as Milli3NoData + its caption
    Text_AccelDelta, // value / 100, 2 decimals + its caption
    Text_Quarters, // value x 0.25, 2 decimals
    Text_Roll, // value x 1.5, 1 decimal
    Text_PreciseTemp, // 1/20 degree, 2 decimals + degrees; 0x8000 no data
    Text_Humidity, // 1/2 percent, 1 decimal + percent unit
    Text_Celsius100, // 1/100 degree, 2 decimals + degrees
    Text_Rpm, // decimal + rpm
    Text_Dbm, // "%1 dBm"
    Text_TyreTemp, // decimal; 0x81 = no data
    Text_MiliSec, // ".%1"
    Text_Hex, // "0x%1", 8 upper-case digits
    Text_OnOff, // caption "wrd_001" when set, "wrd_002" when clear
    Text_TahoMode, // captions by value
    Text_DispState,
    Text_FfsMode,
    Text_FfsPower,
    Text_RefrEngineMode,
    Text_ThermoKing, // ThermoKing mode codes
    Text_CanEvent,
    TextFormCount
};

struct Column
{
    quint8 field;
    ValueType type;
    quint8 offset; // within the field
    quint8 shift;
    quint8 bits;
    TextForm text;
    const char* getter;
    const char* caption; // empty: not a CSV column
    const char* captionKey;
};

// Every VALUE and PART row of the table, in table order.
enum ColumnId : quint16 {
#define ZOR_TMI_VALUE(n, G, T, off, sh, bits, Text, cap, key) Col_##G,
#define ZOR_TMI_PART(n, G, T, off, sh, bits, Text, cap, key) Col_##G,
#include "telemetry/zor_tmi_fields.def"
    ColumnCount
};

const Column& column(int id);

struct FieldInfo
{
    const char* name;
    quint16 offset; // in the value block
    quint8 width;
    quint16 firstColumn; // index of the field's first VALUE / PART row
    quint16 rowCount; // its VALUE and PART rows
    quint16 firstCsv; // its CSV columns: indexes into csvColumns()
    quint16 csvCount;
};

// Field n, 1..255.
const FieldInfo& field(int n);
// Sum of the widths of fields 1..lastField.
int blockSize(int lastField);
// Column ids of the CSV columns, in CSV order (all fields).
const quint16* csvColumns();

// Field-set bit of field n (1-based): byte (n - 1) / 8, bit 7 - (n - 1) % 8.
inline bool maskBit(const unsigned char* mask, int n)
{
    return (mask[(n - 1) >> 3] >> (7 - ((n - 1) & 7))) & 1;
}
inline void setMaskBit(unsigned char* mask, int n, bool on)
{
    const unsigned char bit = static_cast<unsigned char>(0x80u >> ((n - 1) & 7));
    if (on)
        mask[(n - 1) >> 3] |= bit;
    else
        mask[(n - 1) >> 3] &= static_cast<unsigned char>(~bit);
}

// Appends the text of column c of a present field whose bytes start at p,
// UTF-8 encoded. Absence ("n/a") is the caller's business.
void appendText(QByteArray& out, const Column& c, const unsigned char* p);
QString text(const Column& c, const unsigned char* p);

// Which fields a record carries: set in the field set, within the
// version's fields, and before the first field a short record cut off.
struct Presence
{
    const unsigned char* mask;
    int lastField;
    int cutField;
    bool has(int n) const { return n >= 1 && n <= lastField && n < cutField && maskBit(mask, n); }
};

// The field whose presence decides whether a column of field n is shown:
// n itself, except that the level fields RS485_1..6 (38-43) decide for the
// temperatures TempRS485_1..6 (78-83) - older firmware sent the temperature
// only together with the level, and the texts have always followed that.
inline int presenceField(int n)
{
    return (n >= 78 && n <= 83) ? n - 40 : n;
}

// Appends the texts of the CSV columns of field n (UTF-8), each as
// before + text + after; "n/a" for a field the record does not carry.
void appendColumns(QByteArray& out, int n, const unsigned char* block, const Presence& presence,
    const QByteArray& before, const QByteArray& after);
// What a whole line may show differently from the plain column texts.
struct LineOptions
{
    // Replaces the text of the event-code column (field 2) when not empty.
    QByteArray codeText;
    // The time column (field 3) followed directly by the milliseconds text
    // of field 200 (".45", or "n/a" when the record lacks it).
    bool timeWithMiliSec = false;
};

// The same for every field 1..lastField set in columnMask, in field order.
void appendColumns(QByteArray& out, const unsigned char* columnMask, int lastField, const unsigned char* block,
    const Presence& presence, const QByteArray& before, const QByteArray& after,
    const LineOptions& line = LineOptions());

// Reads a column as a number (float columns are truncated); used by the
// writer of test records and by texts that need the number.
qint64 readInteger(const Column& c, const unsigned char* p);

// Values as numbers. Every column has a numeric value in the unit its text
// uses, taken from the same text form that makes the text: volts for
// millivolt fields shown as volts, hours for engine seconds shown as hours,
// decimal degrees for coordinates, UTC seconds since 1970 for times, 0/1
// for flags, the code itself for values shown by caption. Not rounded to
// the decimals of the text.
enum Quantity : quint8 {
    Quantity_Number, // a measured or counted value
    Quantity_Flag, // 0 or 1
    Quantity_Code, // a state or mode shown by caption
    Quantity_Time, // UTC seconds since 1970-01-01
    Quantity_Degrees, // decimal degrees (latitude, longitude)
};

// The value of column c of a present field whose bytes start at p (as for
// text()); NaN where the text says there is no value ("n/a", empty text).
double number(const Column& c, const unsigned char* p);
Quantity quantity(const Column& c);
// The unit as a caption key ("abbr_024"), null when the unit is not a key.
const char* unitKey(const Column& c);
// The unit as the texts show it, in the current language ("km/h", "%",
// "°"); empty for none.
QString unitText(const Column& c);
// The value as a cell of a CSV for analysis (UTF-8): "." decimals and no
// digit grouping, times as ISO 8601 UTC ("2024-05-01T06:30:00Z"), floats
// of the wire with the digits that tell them apart; nothing when there is
// no value.
void appendNumberText(QByteArray& out, const Column& c, const unsigned char* p);

} // namespace ZorTmi

#endif
