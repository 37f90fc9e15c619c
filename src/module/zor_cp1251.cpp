#include "module/zor_cp1251.h"

#include <array>

namespace {

const char16_t kUpper[128] = {
    0x0402,
    0x0403,
    0x201A,
    0x0453,
    0x201E,
    0x2026,
    0x2020,
    0x2021,
    0x20AC,
    0x2030,
    0x0409,
    0x2039,
    0x040A,
    0x040C,
    0x040B,
    0x040F,
    0x0452,
    0x2018,
    0x2019,
    0x201C,
    0x201D,
    0x2022,
    0x2013,
    0x2014,
    0x0098,
    0x2122,
    0x0459,
    0x203A,
    0x045A,
    0x045C,
    0x045B,
    0x045F,
    0x00A0,
    0x040E,
    0x045E,
    0x0408,
    0x00A4,
    0x0490,
    0x00A6,
    0x00A7,
    0x0401,
    0x00A9,
    0x0404,
    0x00AB,
    0x00AC,
    0x00AD,
    0x00AE,
    0x0407,
    0x00B0,
    0x00B1,
    0x0406,
    0x0456,
    0x0491,
    0x00B5,
    0x00B6,
    0x00B7,
    0x0451,
    0x2116,
    0x0454,
    0x00BB,
    0x0458,
    0x0405,
    0x0455,
    0x0457,
    0x0410,
    0x0411,
    0x0412,
    0x0413,
    0x0414,
    0x0415,
    0x0416,
    0x0417,
    0x0418,
    0x0419,
    0x041A,
    0x041B,
    0x041C,
    0x041D,
    0x041E,
    0x041F,
    0x0420,
    0x0421,
    0x0422,
    0x0423,
    0x0424,
    0x0425,
    0x0426,
    0x0427,
    0x0428,
    0x0429,
    0x042A,
    0x042B,
    0x042C,
    0x042D,
    0x042E,
    0x042F,
    0x0430,
    0x0431,
    0x0432,
    0x0433,
    0x0434,
    0x0435,
    0x0436,
    0x0437,
    0x0438,
    0x0439,
    0x043A,
    0x043B,
    0x043C,
    0x043D,
    0x043E,
    0x043F,
    0x0440,
    0x0441,
    0x0442,
    0x0443,
    0x0444,
    0x0445,
    0x0446,
    0x0447,
    0x0448,
    0x0449,
    0x044A,
    0x044B,
    0x044C,
    0x044D,
    0x044E,
    0x044F,
};

// Reverse lookup of the upper half: a direct table over U+0000..U+2122
// would be large, so the two dense ranges are tabled and the rest searched.
struct Reverse
{
    std::array<unsigned char, 0x100> latin{}; // U+0080..U+00FF
    std::array<unsigned char, 0x60> cyrillic{}; // U+0400..U+045F
    Reverse()
    {
        for (int i = 0; i < 128; ++i) {
            const char16_t u = kUpper[i];
            if (u >= 0x80 && u < 0x100)
                latin[u] = static_cast<unsigned char>(0x80 + i);
            else if (u >= 0x400 && u < 0x460)
                cyrillic[u - 0x400] = static_cast<unsigned char>(0x80 + i);
        }
    }
};

const Reverse& reverse()
{
    static const Reverse r;
    return r;
}

inline unsigned char lookup(char16_t u)
{
    if (u < 0x80)
        return static_cast<unsigned char>(u);
    const Reverse& r = reverse();
    if (u < 0x100)
        return r.latin[u];
    if (u >= 0x400 && u < 0x460)
        return r.cyrillic[u - 0x400];
    if (u == 0x0490)
        return 0xA5;
    if (u == 0x0491)
        return 0xB4;
    for (int i = 0; i < 128; ++i)
        if (kUpper[i] == u)
            return static_cast<unsigned char>(0x80 + i);
    return 0;
}

} // namespace

const char16_t* ZOR_Cp1251::upperHalf()
{
    return kUpper;
}

char ZOR_Cp1251::encodeChar(QChar c)
{
    const unsigned char b = lookup(c.unicode());
    if (b == 0 && c.unicode() != 0)
        return '_';
    return static_cast<char>(b);
}

bool ZOR_Cp1251::canEncode(QChar c)
{
    return c.unicode() == 0 || lookup(c.unicode()) != 0;
}

void ZOR_Cp1251::encodeAppend(const QChar* text, int length, QByteArray& out)
{
    const int start = out.size();
    out.resize(start + length);
    char* const begin = out.data() + start;
    char* dst = begin;
    for (int i = 0; i < length; ++i)
        *dst++ = encodeAt(text, i, length);
    out.resize(start + int(dst - begin));
}

QByteArray ZOR_Cp1251::encode(const QString& text)
{
    QByteArray out;
    encodeAppend(text.constData(), text.size(), out);
    return out;
}

QString ZOR_Cp1251::decode(const char* bytes, int length)
{
    QString out(length, Qt::Uninitialized);
    QChar* dst = out.data();
    for (int i = 0; i < length; ++i)
        dst[i] = decodeByte(static_cast<unsigned char>(bytes[i]));
    return out;
}

QString ZOR_Cp1251::decode(const QByteArray& bytes)
{
    return decode(bytes.constData(), bytes.size());
}
