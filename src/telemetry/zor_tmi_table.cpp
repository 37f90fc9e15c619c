#include "telemetry/zor_tmi_table.h"

#include "module/zor_language.h"

#include <QHash>

#include <ctime>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <limits>
#include <cstring>
#include <vector>

namespace ZorTmi {

namespace {

const Column kColumns[] = {
#define ZOR_TMI_VALUE(n, G, T, off, sh, bits, Text, cap, key) {n, Type_##T, off, sh, bits, Text_##Text, #G, cap, key},
#define ZOR_TMI_PART(n, G, T, off, sh, bits, Text, cap, key) {n, Type_##T, off, sh, bits, Text_##Text, #G, cap, key},
#include "telemetry/zor_tmi_fields.def"
};
static_assert(sizeof(kColumns) / sizeof(kColumns[0]) == ColumnCount, "one column per row");

// The member offsets of the value block are the field offsets: checked here
// once for every field, so the table and the struct cannot drift apart.
constexpr int kWidths[] = {
    0,
#define ZOR_TMI_FIELD(n, Name, bytes) bytes,
#include "telemetry/zor_tmi_fields.def"
};
static_assert(sizeof(kWidths) / sizeof(kWidths[0]) == FieldCount + 1, "fields 1-255, in order");

constexpr int offsetOf(int n)
{
    int sum = 0;
    for (int i = 1; i < n; ++i)
        sum += kWidths[i];
    return sum;
}
#define ZOR_TMI_FIELD(n, Name, bytes)                                                                                  \
    static_assert(offsetof(szCurrentTMI_KITE3, Name) == offsetOf(n), "field " #n " out of order");
#include "telemetry/zor_tmi_fields.def"

const char* const kNames[] = {
    "",
#define ZOR_TMI_FIELD(n, Name, bytes) #Name,
#include "telemetry/zor_tmi_fields.def"
};

struct Tables
{
    FieldInfo fields[FieldCount + 1];
    quint16 csv[ColumnCount];
    int blockSize[FieldCount + 1];
    // A third of all cells are one flag shown as "0" or "1": for those, the
    // byte within the field that holds the bit, and the bit (-1: not such a
    // cell). Their cells are written whole, without the text switch.
    qint8 flagBit[ColumnCount];
    quint8 flagByte[ColumnCount];

    Tables()
    {
        int offset = 0;
        int col = 0;
        int csvCount = 0;
        blockSize[0] = 0;
        fields[0] = FieldInfo{"", 0, 0, 0, 0, 0, 0};
        for (int n = 1; n <= FieldCount; ++n) {
            FieldInfo& f = fields[n];
            f.name = kNames[n];
            f.offset = quint16(offset);
            f.width = quint8(kWidths[n]);
            f.firstColumn = quint16(col);
            f.firstCsv = quint16(csvCount);
            while (col < ColumnCount && kColumns[col].field == n) {
                if (*kColumns[col].caption)
                    csv[csvCount++] = quint16(col);
                ++col;
            }
            f.rowCount = quint16(col - f.firstColumn);
            f.csvCount = quint16(csvCount - f.firstCsv);
            for (int c = f.firstColumn; c < col; ++c) {
                const Column& k = kColumns[c];
                const bool flag = k.bits == 1 && k.text == Text_Dec && k.type != Type_F32 && k.type != Type_U8Tenths
                    && k.shift < 64;
                flagBit[c] = qint8(flag ? k.shift % 8 : -1);
                flagByte[c] = quint8(flag ? k.offset + k.shift / 8 : 0);
            }
            offset += kWidths[n];
            blockSize[n] = offset;
        }
    }
};

const Tables& tables()
{
    static const Tables t;
    return t;
}

const char kNotAvailable[] = "n/a";

// Appends to a QByteArray through a raw cursor: one size check per piece
// instead of a detach check and a possible reallocation per append.
class Sink
{
public:
    explicit Sink(QByteArray& b)
        : buf(b)
        , len(b.size())
    {
    }
    ~Sink() { buf.resize(len); }
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    void append(const char* s, int n)
    {
        if (n <= 0)
            return;
        if (len + n > cap)
            grow(n);
        // Most pieces are a few bytes: a loop beats a call into memcpy.
        if (n <= 16) {
            char* d = base + len;
            for (int i = 0; i < n; ++i)
                d[i] = s[i];
        } else {
            std::memcpy(base + len, s, size_t(n));
        }
        len += n;
    }
    // Room for n bytes at the end; advance() then says how many were used.
    char* room(int n)
    {
        if (len + n > cap)
            grow(n);
        return base + len;
    }
    void advance(int n) { len += n; }
    // Takes back the last n bytes appended.
    void drop(int n) { len -= n; }
    void append(char c)
    {
        if (len + 1 > cap)
            grow(1);
        base[len++] = c;
    }
    void append(const char* s) { append(s, int(std::strlen(s))); }
    void append(const QByteArray& a) { append(a.constData(), a.size()); }

private:
    void grow(int n)
    {
        cap = qMax(cap * 2, len + n + 1024);
        buf.resize(cap);
        base = buf.data();
    }

    QByteArray& buf;
    int len;
    int cap = 0;
    char* base = nullptr;
};

const quint64 kPow10[] = {1ull, 10ull, 100ull, 1000ull, 10000ull, 100000ull, 1000000ull, 10000000ull, 100000000ull,
    1000000000ull, 10000000000ull, 100000000000ull, 1000000000000ull, 10000000000000ull, 100000000000000ull,
    1000000000000000ull, 10000000000000000ull, 100000000000000000ull, 1000000000000000000ull, 10000000000000000000ull};

const char kDigitPairs[] = "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
                           "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
                           "8081828384858687888990919293949596979899";

inline int digitCount32(quint32 v)
{
    if (v < 100000) {
        if (v < 100)
            return v < 10 ? 1 : 2;
        return v < 1000 ? 3 : v < 10000 ? 4 : 5;
    }
    if (v < 10000000)
        return v < 1000000 ? 6 : 7;
    return v < 100000000 ? 8 : v < 1000000000 ? 9 : 10;
}

inline int digitCount(quint64 v)
{
    if (v <= 0xFFFFFFFFull)
        return digitCount32(quint32(v));
    int n = 10; // 2^32 itself has 10 digits
    while (n < 20 && v >= kPow10[n])
        ++n;
    return n;
}

// u / 10^decimals with a constant divisor each (a multiplication, not a
// division instruction).
quint64 wholePart(quint64 u, int decimals)
{
    switch (decimals) {
    case 0: return u;
    case 1: return u / 10;
    case 2: return u / 100;
    case 3: return u / 1000;
    case 4: return u / 10000;
    case 7: return u / 10000000;
    default: return u / kPow10[decimals];
    }
}

// Writes the `count` last decimal digits of v (zero-padded) so that they
// end just before `end`. Two digits per division, and 32-bit divisions as
// soon as the value fits: a 64-bit division per digit was the bulk of the
// cost of a line.
inline void writeDigits32(char* p, quint32 w, char* first)
{
    while (w >= 100 && p - first >= 2) {
        const quint32 q = w / 100;
        p -= 2;
        std::memcpy(p, kDigitPairs + 2 * (w - q * 100), 2);
        w = q;
    }
    while (p > first) {
        *--p = char('0' + w % 10);
        w /= 10;
    }
}

inline void writeDigits(char* end, quint64 v, int count)
{
    char* p = end;
    char* const first = end - count;
    while (v > 0xFFFFFFFFull && p - first >= 2) {
        const quint64 q = v / 100;
        p -= 2;
        std::memcpy(p, kDigitPairs + 2 * (v - q * 100), 2);
        v = q;
    }
    writeDigits32(p, quint32(v), first);
}

// Fixed-point text: `scaled` holds the value times 10^decimals (0-7).
void appendFixed(Sink& out, qint64 scaled, int decimals)
{
    if (decimals == 0 && quint64(scaled) < 10) { // the flags: a third of all columns
        out.append(char('0' + scaled));
        return;
    }
    const bool negative = scaled < 0;
    const quint64 u = negative ? quint64(0) - quint64(scaled) : quint64(scaled);
    const quint64 whole = wholePart(u, decimals);
    const int wholeDigits = digitCount(whole);
    const int size = int(negative) + wholeDigits + (decimals ? decimals + 1 : 0);
    char* p = out.room(size);
    if (negative)
        *p = '-';
    char* end = p + negative + wholeDigits;
    writeDigits(end, whole, wholeDigits);
    if (decimals) {
        *end = '.';
        writeDigits(end + 1 + decimals, u - whole * kPow10[decimals], decimals);
    }
    out.advance(size);
}

void appendUnsigned(Sink& out, quint64 v)
{
    const int n = digitCount(v);
    writeDigits(out.room(n) + n, v, n);
    out.advance(n);
}

// value * mul / div, rounded half away from zero.
qint64 scale(qint64 v, qint64 mul, qint64 div)
{
    const qint64 num = v * mul;
    if (div == 1)
        return num;
    return num >= 0 ? (num * 2 + div) / (2 * div) : -((-num * 2 + div) / (2 * div));
}

// Captions by key, cached per language: a record's texts look up the same
// few units hundreds of times. The public entry points check the language
// once (refreshCaptions), the lookups below only read the cache.
struct CaptionCache
{
    QString language;
    // Changes with the language: what was built from captions (line plans)
    // is rebuilt when it differs.
    quint32 generation = 0;
    // Nodes of a QHash stay where they are when it grows, so `recent` may
    // point into it until it is cleared.
    QHash<quintptr, QByteArray> texts;
    struct Slot
    {
        const char* key;
        const QByteArray* text;
    };
    Slot recent[64] = {};
};

CaptionCache& captionCache()
{
    static CaptionCache cache;
    return cache;
}

void refreshCaptions()
{
    ZOR_Language& lang = ZOR_Language::instance();
    lang.contains(QString()); // makes language() current after a reload
    CaptionCache& cache = captionCache();
    if (lang.language() != cache.language) {
        cache.language = lang.language();
        ++cache.generation;
        cache.texts.clear();
        std::fill(std::begin(cache.recent), std::end(cache.recent), CaptionCache::Slot{nullptr, nullptr});
    }
}

const QByteArray& caption(const char* key)
{
    // The keys are string literals, so their addresses identify them; the
    // few units of a record are looked up hundreds of times per line.
    CaptionCache& cache = captionCache();
    CaptionCache::Slot& slot = cache.recent[(quintptr(key) >> 3) & 63];
    if (slot.key == key)
        return *slot.text;
    auto it = cache.texts.find(quintptr(key));
    if (it == cache.texts.end())
        it = cache.texts.insert(quintptr(key), zorTr(QLatin1String(key)).toUtf8());
    slot = CaptionCache::Slot{key, &*it};
    return *it;
}

void appendUnit(Sink& out, const char* key)
{
    out.append(' ');
    out.append(caption(key));
}

// A float of at least 9e15 in magnitude is an integer, m x 2^e with a
// 24-bit m and e up to 104: it fits 128 bits, and its exact digits are the
// text (as the 'f' format of Qt gives them), followed by zero decimals.
void appendHugeFloat(Sink& out, float f, int decimals)
{
    quint32 bits;
    std::memcpy(&bits, &f, sizeof bits);
    const int exponent = int((bits >> 23) & 0xFF) - 150;
    const unsigned __int128 v = static_cast<unsigned __int128>((bits & 0x7FFFFF) | 0x800000) << exponent;
    char buf[48];
    char* const end = buf + sizeof buf;
    char* p = end;
    unsigned __int128 rest = v;
    while (rest > ~quint64(0)) { // 19 digits at a time until it fits 64 bits
        writeDigits(p, quint64(rest % kPow10[19]), 19);
        p -= 19;
        rest /= kPow10[19];
    }
    const int top = digitCount(quint64(rest));
    writeDigits(p, quint64(rest), top);
    p -= top;
    if (bits >> 31)
        *--p = '-';
    out.append(p, int(end - p));
    if (decimals) {
        out.append('.');
        out.append("000", qBound(0, decimals, 3));
    }
}

void appendFloat(Sink& out, float f, int decimals)
{
    static const double kPow[] = {1.0, 10.0, 100.0, 1000.0};
    const double scaled = double(f) * kPow[decimals];
    if (std::isfinite(scaled) && std::fabs(scaled) < 9.0e18) {
        // Exact: a float times 10^3 needs at most 34 of a double's 53 bits.
        appendFixed(out, std::llround(scaled), decimals);
    } else if (std::isfinite(scaled)) {
        appendHugeFloat(out, f, decimals);
    } else {
        out.append(QByteArray::number(double(f), 'f', decimals));
    }
}

void appendCoordinate(Sink& out, qint64 v, qint64 perDegree, int decimals)
{
    const qint64 degrees = v / perDegree;
    appendFixed(out, degrees, 0);
    out.append(' ');
    appendFixed(out, v - degrees * perDegree, decimals);
    out.append('\'');
}

template <int N>
void appendCaptionByValue(Sink& out, qint64 v, const char* const (&keys)[N])
{
    if (v >= 0 && v < N)
        out.append(caption(keys[v]));
    else
        appendFixed(out, v, 0);
}

const char* const kDispKeys[] = {
    "tmikte_055", "tmikte_056", "tmikte_057", "tmikte_058", "tmikte_059", "tmikte_060", "tmikte_061", "tmikte_062"};
const char* const kFfsModeKeys[] = {"tmikte_093", "tmikte_094", "tmikte_095", "tmikte_096"};
const char* const kFfsPowerKeys[] = {"tmikte_097", "tmikte_098"};
const char* const kRefrEngineKeys[] = {"tmikte_108", "tmikte_109", "tmikte_110"};
const char* const kCanEventKeys[] = {
    "tmikte_113", "tmikte_114", "tmikte_115", "tmikte_116", "tmikte_117", "tmikte_118", "tmikte_119", "tmikte_120"};

char* put2(char* p, int v)
{
    p[0] = char('0' + v / 10);
    p[1] = char('0' + v % 10);
    return p + 2;
}

// Local time as "dd.MM.yyyy H:mm:ss" or "hh:mm:ss dd.MM.yyyy", the texts
// QDateTime gives for these formats, without its cost per call.
void appendLocalTime(Sink& out, quint32 secs, bool dateFirst)
{
    const time_t t = time_t(secs);
    struct tm tm;
    if (!localtime_r(&t, &tm)) {
        appendUnsigned(out, secs);
        return;
    }
    char buf[32];
    char* p = buf;
    auto date = [&] {
        p = put2(p, tm.tm_mday);
        *p++ = '.';
        p = put2(p, tm.tm_mon + 1);
        *p++ = '.';
        const int year = tm.tm_year + 1900;
        p = put2(p, year / 100);
        p = put2(p, year % 100);
    };
    if (dateFirst) {
        date();
        *p++ = ' ';
        if (tm.tm_hour >= 10)
            *p++ = char('0' + tm.tm_hour / 10);
        *p++ = char('0' + tm.tm_hour % 10);
    } else {
        p = put2(p, tm.tm_hour);
    }
    *p++ = ':';
    p = put2(p, tm.tm_min);
    *p++ = ':';
    p = put2(p, tm.tm_sec);
    if (!dateFirst) {
        *p++ = ' ';
        date();
    }
    out.append(buf, int(p - buf));
}

} // namespace

const Column& column(int id)
{
    return kColumns[id];
}

const FieldInfo& field(int n)
{
    return tables().fields[n];
}

int blockSize(int lastField)
{
    return tables().blockSize[qBound(0, lastField, FieldCount)];
}

const quint16* csvColumns()
{
    return tables().csv;
}

namespace {

// Inline here: the exported readInteger would be called through the PLT
// for every column of every line.
inline qint64 readValue(const Column& c, const unsigned char* p)
{
    p += c.offset;
    qint64 v = 0;
    switch (c.type) {
    case Type_U8:
    case Type_U8Tenths: v = *p; break;
    case Type_I8: v = qint8(*p); break;
    case Type_U16: v = qFromLittleEndian<quint16>(p); break;
    case Type_I16: v = qFromLittleEndian<qint16>(p); break;
    case Type_U32: v = qFromLittleEndian<quint32>(p); break;
    case Type_I32: v = qFromLittleEndian<qint32>(p); break;
    case Type_U64:
    case Type_I64: v = qFromLittleEndian<qint64>(p); break;
    case Type_F32: {
        // Truncated toward zero; out of range (and NaN) saturates instead
        // of being undefined.
        const float f = readWire<float>(p);
        if (f != f)
            v = 0;
        else if (f >= 9.2233720e18f)
            v = std::numeric_limits<qint64>::max();
        else if (f <= -9.2233720e18f)
            v = std::numeric_limits<qint64>::min();
        else
            v = qint64(f);
        break;
    }
    }
    if (c.bits)
        v = qint64((quint64(v) >> c.shift) & ((quint64(1) << c.bits) - 1));
    return v;
}

} // namespace

qint64 readInteger(const Column& c, const unsigned char* p)
{
    return readValue(c, p);
}

namespace {

// How a text says "no value".
enum Missing : quint8 {
    Missing_None,
    Missing_NotAvailable, // the raw value `noData` shows "n/a"
    Missing_Empty, // the raw value `noData` shows nothing
    Missing_Negative, // a negative float shows "n/a"
};

// One row per text form. The common forms (`special` false) are all one
// shape: the number is value x mul / div, shown with `decimals` decimals
// (rounded half away from zero), then a blank and the unit when there is
// one. The special forms are texts of their own (times, coordinates,
// captions by value); for them the row gives only the unit and the kind
// of quantity, and formText / specialNumber below do the rest.
struct Form
{
    TextForm form;
    bool special;
    qint32 mul;
    qint32 div;
    quint8 decimals;
    Missing missing;
    qint32 noData;
    const char* unitKey; // caption key of the unit, or null
    const char* unitText; // the unit as it stands, when there is no key
    Quantity quantity;
};

constexpr Form kForms[] = {
    // form                 special mul  div dec missing               noData  unitKey      unitText
    {Text_Dec, false, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_SimNo, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_DateTime, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Time},
    {Text_TimeDate, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Time},
    {Text_Coord4, true, 1, 600000, 0, Missing_None, 0, nullptr, "°", Quantity_Degrees},
    {Text_Coord7, true, 1, 600000000, 0, Missing_None, 0, nullptr, "°", Quantity_Degrees},
    {Text_Decimetres, true, 1, 10, 0, Missing_None, 0, nullptr, "m", Quantity_Number},
    {Text_Gsm, true, 1, 1, 0, Missing_None, 99, nullptr, "%", Quantity_Number},
    {Text_Temp, false, 1, 1, 0, Missing_Empty, -128, "abbr_017", nullptr, Quantity_Number},
    {Text_CelsiusDec, false, 1, 1, 0, Missing_None, 0, "abbr_017", nullptr, Quantity_Number},
    {Text_CanLevel, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_CanLevelPercent, true, 1, 1, 0, Missing_None, 0, nullptr, "%", Quantity_Number},
    {Text_CanLevelLitres, true, 1, 10, 1, Missing_None, 0, "abbr_026", nullptr, Quantity_Number},
    {Text_CanTimeTO, false, 5, 1, 0, Missing_NotAvailable, 0xFFFF, "abbr_023", nullptr, Quantity_Number},
    {Text_CanSpeed, false, 1, 1, 0, Missing_NotAvailable, 255, "abbr_024", nullptr, Quantity_Number},
    {Text_KmhF1, false, 1, 1, 1, Missing_None, 0, "abbr_024", nullptr, Quantity_Number},
    {Text_KmF2, false, 1, 1, 2, Missing_None, 0, "abbr_023", nullptr, Quantity_Number},
    {Text_KmF2NoNeg, false, 1, 1, 2, Missing_Negative, 0, "abbr_023", nullptr, Quantity_Number},
    {Text_LitresF2, false, 1, 1, 2, Missing_Negative, 0, "abbr_026", nullptr, Quantity_Number},
    {Text_F2, false, 1, 1, 2, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_Volts, false, 1, 1, 3, Missing_None, 0, "abbr_012", nullptr, Quantity_Number},
    {Text_VoltsDec, false, 1, 1, 0, Missing_None, 0, "abbr_012", nullptr, Quantity_Number},
    {Text_Amps, false, 1, 1, 0, Missing_None, 0, "abbr_027", nullptr, Quantity_Number},
    {Text_Hours, false, 100, 3600, 2, Missing_None, 0, "abbr_001", nullptr, Quantity_Number},
    {Text_Hours100, false, 1, 1, 2, Missing_None, 0, "abbr_001", nullptr, Quantity_Number},
    {Text_Tonnes, false, 1, 1, 0, Missing_None, 0, "abbr_009", nullptr, Quantity_Number},
    {Text_Percent, false, 1, 1, 0, Missing_None, 0, nullptr, "%", Quantity_Number},
    {Text_Tenths, false, 1, 1, 1, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_Hundredths, false, 1, 1, 2, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_Milli3, false, 1, 1, 3, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_Milli3NoData, false, 1, 1, 3, Missing_NotAvailable, -32768, nullptr, nullptr, Quantity_Number},
    {Text_AccelLinear, false, 1, 1, 3, Missing_NotAvailable, -32768, "tmikte_072", nullptr, Quantity_Number},
    {Text_AccelDelta, false, 1, 1, 2, Missing_None, 0, "tmikte_071", nullptr, Quantity_Number},
    {Text_Quarters, false, 25, 1, 2, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_Roll, false, 15, 1, 1, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_PreciseTemp, false, 5, 1, 2, Missing_NotAvailable, -32768, "abbr_017", nullptr, Quantity_Number},
    {Text_Humidity, false, 5, 1, 1, Missing_None, 0, "abbr_008", nullptr, Quantity_Number},
    {Text_Celsius100, false, 1, 1, 2, Missing_None, 0, "abbr_017", nullptr, Quantity_Number},
    {Text_Rpm, false, 1, 1, 0, Missing_None, 0, "abbr_018", nullptr, Quantity_Number},
    {Text_Dbm, false, 1, 1, 0, Missing_None, 0, nullptr, "dBm", Quantity_Number},
    {Text_TyreTemp, false, 1, 1, 0, Missing_NotAvailable, -127, nullptr, nullptr, Quantity_Number},
    {Text_MiliSec, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Number},
    {Text_Hex, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Code},
    {Text_OnOff, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Flag},
    {Text_TahoMode, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Code},
    {Text_DispState, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Code},
    {Text_FfsMode, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Code},
    {Text_FfsPower, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Code},
    {Text_RefrEngineMode, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Code},
    {Text_ThermoKing, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Code},
    {Text_CanEvent, true, 1, 1, 0, Missing_None, 0, nullptr, nullptr, Quantity_Code},
};

constexpr bool formsInOrder()
{
    for (int i = 0; i < TextFormCount; ++i)
        if (kForms[i].form != i)
            return false;
    return sizeof(kForms) / sizeof(kForms[0]) == TextFormCount;
}
static_assert(formsInOrder(), "one row per text form, in the order of TextForm");

const Form& formOf(const Column& c)
{
    return kForms[c.text < TextFormCount ? c.text : Text_Dec];
}

// The common forms: number, then the unit.
void appendScaled(Sink& out, const Column& c, const Form& f, const unsigned char* p)
{
    if (c.type == Type_F32) {
        const float v = readWire<float>(p + c.offset);
        if (f.missing == Missing_Negative && v < 0) {
            out.append(kNotAvailable);
            return;
        }
        appendFloat(out, v, f.decimals);
    } else {
        const qint64 v = readValue(c, p);
        if (f.missing != Missing_None && v == f.noData) {
            if (f.missing == Missing_NotAvailable)
                out.append(kNotAvailable);
            return;
        }
        if (c.type == Type_U64 && !c.bits)
            appendUnsigned(out, quint64(v));
        else
            appendFixed(out, scale(v, f.mul, f.div), f.decimals);
    }
    if (f.unitKey)
        appendUnit(out, f.unitKey);
    else if (f.unitText) {
        out.append(' ');
        out.append(f.unitText);
    }
}

void appendCanLevel(Sink& out, TextForm form, qint64 v)
{
    const qint64 level = v & 0x7FFF;
    if (level == 0x7FFF) {
        out.append(kNotAvailable);
        return;
    }
    const bool percent = (v & 0x8000) != 0;
    if (percent && form != Text_CanLevelLitres) {
        appendFixed(out, level, 0);
        out.append(" %");
    } else if (!percent && form != Text_CanLevelPercent) {
        appendFixed(out, level, 1);
        appendUnit(out, "abbr_026");
    }
}

void appendHex(Sink& out, qint64 v)
{
    char* p = out.room(10);
    p[0] = '0';
    p[1] = 'x';
    for (int i = 0; i < 8; ++i)
        p[2 + i] = "0123456789ABCDEF"[(quint32(v) >> (28 - 4 * i)) & 0xF];
    out.advance(10);
}

// The special forms: each a text of its own.
void appendSpecial(Sink& out, const Column& c, qint64 v)
{
    switch (c.text) {
    case Text_SimNo: appendFixed(out, v + 1, 0); return;
    case Text_DateTime: appendLocalTime(out, quint32(v), true); return;
    case Text_TimeDate: appendLocalTime(out, quint32(v), false); return;
    case Text_Coord4: appendCoordinate(out, v, 600000, 4); return;
    case Text_Coord7: appendCoordinate(out, v, Q_INT64_C(600000000), 7); return;
    case Text_Decimetres: appendFixed(out, v / 10, 0); return;
    case Text_Gsm:
        if (v == 99)
            out.append(caption("tmikte_027"));
        else
            appendFixed(out, v * 322 / 100, 0);
        return;
    case Text_CanLevel:
    case Text_CanLevelPercent:
    case Text_CanLevelLitres: appendCanLevel(out, c.text, v); return;
    case Text_MiliSec:
        out.append('.');
        appendFixed(out, v, 0);
        return;
    case Text_Hex: appendHex(out, v); return;
    case Text_OnOff: out.append(caption(v ? "wrd_001" : "wrd_002")); return;
    case Text_TahoMode: {
        static const char* const keys[] = {"tmikte_044", "tmikte_045", "tmikte_047", "tmikte_048"};
        out.append(caption(v >= 0 && v < 4 ? keys[v] : "tmikte_014"));
        return;
    }
    case Text_DispState: appendCaptionByValue(out, v, kDispKeys); return;
    case Text_FfsMode: appendCaptionByValue(out, v, kFfsModeKeys); return;
    case Text_FfsPower: appendCaptionByValue(out, v, kFfsPowerKeys); return;
    case Text_RefrEngineMode: appendCaptionByValue(out, v, kRefrEngineKeys); return;
    case Text_CanEvent: appendCaptionByValue(out, v, kCanEventKeys); return;
    case Text_ThermoKing: {
        static const char* const codes[] = {"INVAL", "COOL", "NULL", "HEAT", "DFRST", "SHTDN", "LKCOL", "FACOL"};
        if (v >= 0 && v < 8)
            out.append(codes[v]);
        else
            appendFixed(out, v, 0);
        return;
    }
    default: appendFixed(out, v, 0); return;
    }
}

void appendTo(Sink& out, const Column& c, const unsigned char* p)
{
    const Form& f = formOf(c);
    if (f.special)
        appendSpecial(out, c, readValue(c, p));
    else
        appendScaled(out, c, f, p);
}

const double kNoValue = std::numeric_limits<double>::quiet_NaN();

double specialNumber(const Column& c, const Form& f, qint64 v)
{
    switch (c.text) {
    case Text_SimNo: return double(v + 1);
    case Text_Gsm: return v == f.noData ? kNoValue : double(v * 322 / 100);
    case Text_CanLevel:
    case Text_CanLevelPercent:
    case Text_CanLevelLitres: {
        const qint64 level = v & 0x7FFF;
        const bool percent = (v & 0x8000) != 0;
        if (level == 0x7FFF || (percent && c.text == Text_CanLevelLitres)
            || (!percent && c.text == Text_CanLevelPercent))
            return kNoValue;
        return percent ? double(level) : double(level) / 10.0;
    }
    case Text_OnOff: return v ? 1.0 : 0.0;
    default: return double(v) / double(f.div);
    }
}

} // namespace

double number(const Column& c, const unsigned char* p)
{
    const Form& f = formOf(c);
    if (c.type == Type_F32) {
        const float v = readWire<float>(p + c.offset);
        return f.missing == Missing_Negative && v < 0 ? kNoValue : double(v);
    }
    const qint64 v = readValue(c, p);
    if (f.special)
        return specialNumber(c, f, v);
    if (f.missing != Missing_None && v == f.noData)
        return kNoValue;
    if (c.type == Type_U64 && !c.bits)
        return double(quint64(v));
    static const double kPow[] = {1.0, 10.0, 100.0, 1000.0};
    return double(v) * f.mul / (double(f.div) * kPow[f.decimals]);
}

Quantity quantity(const Column& c)
{
    if (c.bits == 1 && c.text == Text_Dec)
        return Quantity_Flag;
    return formOf(c).quantity;
}

const char* unitKey(const Column& c)
{
    return formOf(c).unitKey;
}

QString unitText(const Column& c)
{
    const Form& f = formOf(c);
    if (f.unitKey) {
        refreshCaptions();
        return QString::fromUtf8(caption(f.unitKey));
    }
    return f.unitText ? QString::fromUtf8(f.unitText) : QString();
}

void appendNumberText(QByteArray& out, const Column& c, const unsigned char* p)
{
    const double v = number(c, p);
    if (std::isnan(v))
        return;
    const Quantity q = quantity(c);
    if (q == Quantity_Time) {
        const time_t t = time_t(v);
        struct tm tm;
        if (gmtime_r(&t, &tm)) {
            char iso[32];
            const int n = std::snprintf(iso, sizeof iso, "%04d-%02d-%02dT%02d:%02d:%02dZ", tm.tm_year + 1900,
                tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
            out.append(iso, n);
            return;
        }
    }
    char buf[64];
    std::to_chars_result r;
    const float asFloat = float(v);
    if (v == std::trunc(v) && std::fabs(v) < 1e15) // most cells: flags, counters, codes
        r = std::to_chars(buf, buf + sizeof buf, qint64(v));
    else if (c.type == Type_F32 && double(asFloat) == v)
        r = std::to_chars(buf, buf + sizeof buf, asFloat, std::chars_format::fixed);
    else
        r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed);
    if (r.ec == std::errc())
        out.append(buf, int(r.ptr - buf));
    else
        out.append(QByteArray::number(v, 'g', 17));
}

void appendText(QByteArray& out, const Column& c, const unsigned char* p)
{
    refreshCaptions();
    Sink sink(out);
    appendTo(sink, c, p);
}

QString text(const Column& c, const unsigned char* p)
{
    QByteArray utf8;
    appendText(utf8, c, p);
    return QString::fromUtf8(utf8.constData(), utf8.size());
}

namespace {

const int kCodeField = 2;
const int kTimeField = 3;

void appendColumnText(Sink& sink, const Column& c, const unsigned char* fieldBytes)
{
    if (fieldBytes)
        appendTo(sink, c, fieldBytes);
    else
        sink.append(kNotAvailable, 3);
}

// The bytes of field n, or null when the record does not carry it.
const unsigned char* presentField(const Tables& t, int n, const unsigned char* block, const Presence& presence)
{
    return presence.has(presenceField(n)) ? block + t.fields[n].offset : nullptr;
}

void appendFieldColumns(Sink& sink, const Tables& t, int n, const unsigned char* block, const Presence& presence,
    const QByteArray& before, const QByteArray& after, const LineOptions* line = nullptr)
{
    const FieldInfo& f = t.fields[n];
    const unsigned char* bytes = presentField(t, n, block, presence);
    const bool codeOverride = line && n == kCodeField && !line->codeText.isEmpty();
    const bool withMiliSec = line && n == kTimeField && line->timeWithMiliSec;
    const bool plain = !codeOverride && !withMiliSec && bytes;
    for (int i = 0; i < f.csvCount; ++i) {
        const int col = t.csv[f.firstCsv + i];
        if (plain && t.flagBit[col] >= 0) {
            const int nb = before.size();
            const int na = after.size();
            char* d = sink.room(nb + 1 + na);
            std::memcpy(d, before.constData(), size_t(nb));
            d[nb] = char('0' + ((bytes[t.flagByte[col]] >> t.flagBit[col]) & 1));
            std::memcpy(d + nb + 1, after.constData(), size_t(na));
            sink.advance(nb + 1 + na);
            continue;
        }
        sink.append(before);
        if (codeOverride)
            sink.append(line->codeText);
        else
            appendColumnText(sink, kColumns[col], bytes);
        if (withMiliSec) {
            const Column& ms = kColumns[Col_MiliSec];
            appendColumnText(sink, ms, presentField(t, ms.field, block, presence));
        }
        sink.append(after);
    }
}

} // namespace

void appendColumns(QByteArray& out, int n, const unsigned char* block, const Presence& presence,
    const QByteArray& before, const QByteArray& after)
{
    refreshCaptions();
    Sink sink(out);
    appendFieldColumns(sink, tables(), n, block, presence, before, after);
}

namespace {

// The cells of a whole line, compiled once per field set, presence, cell
// wrapping and line options, then run for every record of an export. A
// step per cell, and no decision a record cannot change is taken twice:
//  - every cell is followed by the text between two cells (after + before,
//    `";="` in the CSV export), stored with the cell's text in one go;
//  - a cell whose text depends on one byte of the record (flags, small
//    numbers, one-byte values: more than half of all cells) is a lookup
//    into a table of its 16-byte texts, separator included, built by the
//    text code itself so that both paths give the same bytes;
//  - whole decimal values of two and four bytes are written directly;
//  - the cells of absent fields and the event-code override are fixed
//    bytes, consecutive ones joined;
//  - anything else goes through the text switch.
class LinePlan
{
public:
    // Longest text between two cells the plan handles.
    static constexpr int MaxSeparator = 15;

    bool matches(const unsigned char* columnMask, int lastField, const Presence& presence, const QByteArray& before,
        const QByteArray& after, const LineOptions& line, quint32 generation) const
    {
        return bBuilt && nGeneration == generation && nLastField == lastField && nPresenceLast == presence.lastField
            && nCutField == presence.cutField && bTimeWithMiliSec == line.timeWithMiliSec
            && std::memcmp(arrColumns, columnMask, MaskBytes) == 0
            && std::memcmp(arrPresence, presence.mask, MaskBytes) == 0 && baBefore == before && baAfter == after
            && baCodeText == line.codeText;
    }

    void build(const unsigned char* columnMask, int lastField, const Presence& presence, const QByteArray& before,
        const QByteArray& after, const LineOptions& line, quint32 generation);

    void run(Sink& sink, const unsigned char* block) const;

private:
    enum Kind : quint8 { Table, DecU16, DecI16, DecU32, DecI32, Literal, Cell, CellWithMiliSec };
    static constexpr quint32 Absent = 0xFFFFFFFFu;
    struct Step
    {
        Kind kind;
        quint8 shift; // Table: of the cell's bits in the byte
        quint8 mask; // Table: of the cell's bits, after the shift
        quint16 column; // Cell, CellWithMiliSec
        quint32 at; // the byte, the value or the field in the block; Literal: in baLiterals
        quint32 extra; // Table: the table in baTables; Literal: its size; CellWithMiliSec: the
            // milliseconds field in the block
    };
    struct TableKey
    {
        quint8 type;
        quint8 bits;
        quint8 text;
        int at; // -1: a text longer than an entry
    };

    int tableFor(const Column& c);
    void addLiteral(const char* text, int size);
    void addDecimal(Sink& sink, quint32 magnitude, bool negative) const;

    bool bBuilt = false;
    quint32 nGeneration = 0;
    unsigned char arrColumns[MaskBytes] = {};
    unsigned char arrPresence[MaskBytes] = {};
    int nLastField = 0;
    int nPresenceLast = 0;
    int nCutField = 0;
    bool bTimeWithMiliSec = false;
    QByteArray baBefore;
    QByteArray baAfter;
    QByteArray baCodeText;

    char arrSeparator[16] = {};
    int nSeparator = 0;
    std::vector<Step> steps;
    QByteArray baLiterals;
    QByteArray baTables; // 16-byte entries: text and separator, their length in the last byte
    std::vector<TableKey> tableKeys;
};

// The one-byte cells: a whole byte of a one-byte type, or up to 8 bits within
// one byte.
bool fromOneByte(const Column& c)
{
    if (c.type == Type_F32 || c.type == Type_U64 || c.type == Type_I64)
        return false;
    if (c.bits == 0)
        return c.type == Type_U8 || c.type == Type_I8 || c.type == Type_U8Tenths;
    return c.bits <= 8 && c.shift % 8 + c.bits <= 8;
}

int LinePlan::tableFor(const Column& c)
{
    for (const TableKey& k : tableKeys)
        if (k.type == c.type && k.bits == c.bits && k.text == c.text)
            return k.at;
    const int count = c.bits ? 1 << c.bits : 256;
    Column k = c;
    k.offset = 0;
    QByteArray entries(count * 16, '\0');
    QByteArray text;
    bool fits = true;
    for (int v = 0; v < count && fits; ++v) {
        unsigned char raw[8] = {};
        raw[c.shift / 8] = static_cast<unsigned char>(v << (c.shift % 8));
        text.resize(0);
        {
            Sink out(text);
            appendTo(out, k, raw);
        }
        fits = text.size() + nSeparator <= 15;
        if (fits) {
            char* e = entries.data() + v * 16;
            std::memcpy(e, text.constData(), size_t(text.size()));
            std::memcpy(e + text.size(), arrSeparator, size_t(nSeparator));
            e[15] = char(text.size() + nSeparator);
        }
    }
    const int at = fits ? baTables.size() : -1;
    if (fits)
        baTables.append(entries);
    tableKeys.push_back(TableKey{quint8(c.type), c.bits, quint8(c.text), at});
    return at;
}

void LinePlan::addLiteral(const char* text, int size)
{
    if (!steps.empty() && steps.back().kind == Literal) {
        steps.back().extra += quint32(size + nSeparator);
    } else {
        steps.push_back(Step{Literal, 0, 0, 0, quint32(baLiterals.size()), quint32(size + nSeparator)});
    }
    baLiterals.append(text, size);
    baLiterals.append(arrSeparator, nSeparator);
}

void LinePlan::build(const unsigned char* columnMask, int lastField, const Presence& presence, const QByteArray& before,
    const QByteArray& after, const LineOptions& line, quint32 generation)
{
    const Tables& t = tables();
    bBuilt = true;
    nGeneration = generation;
    std::memcpy(arrColumns, columnMask, MaskBytes);
    std::memcpy(arrPresence, presence.mask, MaskBytes);
    nLastField = lastField;
    nPresenceLast = presence.lastField;
    nCutField = presence.cutField;
    bTimeWithMiliSec = line.timeWithMiliSec;
    baBefore = before;
    baAfter = after;
    baCodeText = line.codeText;

    const QByteArray separator = after + before;
    Q_ASSERT(separator.size() <= MaxSeparator);
    std::memset(arrSeparator, 0, sizeof arrSeparator);
    std::memcpy(arrSeparator, separator.constData(), size_t(separator.size()));
    nSeparator = separator.size();
    steps.clear();
    baLiterals.clear();
    baTables.clear();
    tableKeys.clear();

    const Presence own{arrPresence, nPresenceLast, nCutField};
    const Column& ms = kColumns[Col_MiliSec];
    const quint32 msAt = own.has(presenceField(ms.field)) ? t.fields[ms.field].offset : Absent;
    for (int n = 1; n <= lastField; ++n) {
        if (!maskBit(arrColumns, n))
            continue;
        const FieldInfo& f = t.fields[n];
        const bool present = own.has(presenceField(n));
        for (int i = 0; i < f.csvCount; ++i) {
            const quint16 col = t.csv[f.firstCsv + i];
            const Column& c = kColumns[col];
            if (n == kCodeField && !line.codeText.isEmpty()) {
                addLiteral(line.codeText.constData(), line.codeText.size());
            } else if (n == kTimeField && line.timeWithMiliSec) {
                steps.push_back(Step{CellWithMiliSec, 0, 0, col, present ? f.offset : Absent, msAt});
            } else if (!present) {
                addLiteral(kNotAvailable, 3);
            } else if (const int table = fromOneByte(c) ? tableFor(c) : -1; table >= 0) {
                steps.push_back(Step{Table, quint8(c.shift % 8), quint8(c.bits ? (1 << c.bits) - 1 : 0xFF), col,
                    quint32(f.offset + c.offset + c.shift / 8), quint32(table)});
            } else if (c.text == Text_Dec && c.bits == 0
                && (c.type == Type_U16 || c.type == Type_I16 || c.type == Type_U32 || c.type == Type_I32)) {
                const Kind kind = c.type == Type_U16 ? DecU16
                    : c.type == Type_I16             ? DecI16
                    : c.type == Type_U32             ? DecU32
                                                     : DecI32;
                steps.push_back(Step{kind, 0, 0, col, quint32(f.offset + c.offset), 0});
            } else {
                steps.push_back(Step{Cell, 0, 0, col, f.offset, 0});
            }
        }
    }
}

inline void LinePlan::addDecimal(Sink& sink, quint32 magnitude, bool negative) const
{
    char* d = sink.room(12 + 16);
    *d = '-';
    const int digits = digitCount32(magnitude);
    char* end = d + int(negative) + digits;
    writeDigits32(end, magnitude, end - digits);
    std::memcpy(end, arrSeparator, 16);
    sink.advance(int(negative) + digits + nSeparator);
}

void LinePlan::run(Sink& sink, const unsigned char* block) const
{
    sink.append(baBefore);
    const char* const literals = baLiterals.constData();
    const char* const tables = baTables.constData();
    for (const Step& s : steps) {
        switch (s.kind) {
        case Table: {
            const char* e = tables + s.extra + 16 * ((block[s.at] >> s.shift) & s.mask);
            char* d = sink.room(16);
            std::memcpy(d, e, 16);
            sink.advance(quint8(e[15]));
            break;
        }
        case DecU16: addDecimal(sink, qFromLittleEndian<quint16>(block + s.at), false); break;
        case DecI16: {
            const qint16 v = qFromLittleEndian<qint16>(block + s.at);
            addDecimal(sink, v < 0 ? quint32(-qint32(v)) : quint32(v), v < 0);
            break;
        }
        case DecU32: addDecimal(sink, qFromLittleEndian<quint32>(block + s.at), false); break;
        case DecI32: {
            const qint32 v = qFromLittleEndian<qint32>(block + s.at);
            addDecimal(sink, v < 0 ? quint32(0) - quint32(v) : quint32(v), v < 0);
            break;
        }
        case Literal: sink.append(literals + s.at, int(s.extra)); break;
        case Cell:
            appendTo(sink, kColumns[s.column], block + s.at);
            sink.append(arrSeparator, nSeparator);
            break;
        case CellWithMiliSec:
            appendColumnText(sink, kColumns[s.column], s.at == Absent ? nullptr : block + s.at);
            appendColumnText(sink, kColumns[Col_MiliSec], s.extra == Absent ? nullptr : block + s.extra);
            sink.append(arrSeparator, nSeparator);
            break;
        }
    }
    // The last cell ends with `after` alone.
    sink.drop(baBefore.size());
}

// A few plans per thread: an export of plain and extended records (which
// differ in presence) alternates between two.
struct PlanCache
{
    LinePlan plans[4];
    int next = 0;
};

} // namespace

void appendColumns(QByteArray& out, const unsigned char* columnMask, int lastField, const unsigned char* block,
    const Presence& presence, const QByteArray& before, const QByteArray& after, const LineOptions& line)
{
    refreshCaptions();
    Sink sink(out);
    if (after.size() + before.size() > LinePlan::MaxSeparator) {
        const Tables& t = tables();
        for (int n = 1; n <= lastField; ++n)
            if (maskBit(columnMask, n))
                appendFieldColumns(sink, t, n, block, presence, before, after, &line);
        return;
    }
    thread_local PlanCache cache;
    const quint32 generation = captionCache().generation;
    LinePlan* plan = nullptr;
    for (LinePlan& p : cache.plans)
        if (p.matches(columnMask, lastField, presence, before, after, line, generation)) {
            plan = &p;
            break;
        }
    if (!plan) {
        plan = &cache.plans[cache.next];
        cache.next = (cache.next + 1) % int(std::size(cache.plans));
        plan->build(columnMask, lastField, presence, before, after, line, generation);
    }
    plan->run(sink, block);
}

} // namespace ZorTmi
