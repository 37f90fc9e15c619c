#ifndef ZOR_CP1251_H
#define ZOR_CP1251_H

// The Windows-1251 text rule used for everything that goes to the terminal
// or into settings documents:
//  - characters below 128 are themselves;
//  - others are found by reverse lookup in the upper half of the Windows-1251
//    table; a character without a byte becomes '_' (0x5F), and so does a
//    character outside the Basic Multilingual Plane, whose surrogate pair is
//    one character, so one '_';
//  - byte 0x98 (undefined in the code page) maps to U+0098 and back.
// Qt's own codec differs on these points, so every encoder and decoder of
// the module goes through this class.

#include <QByteArray>
#include <QChar>
#include <QString>

class ZOR_Cp1251
{
public:
    static QByteArray encode(const QString& text);
    static void encodeAppend(const QChar* text, int length, QByteArray& out);
    static QString decode(const QByteArray& bytes);
    static QString decode(const char* bytes, int length);

    // One UTF-16 unit / one byte. encodeChar returns '_' for unmappable input.
    static char encodeChar(QChar c);
    // The byte of the character that starts at text[i]; when that character
    // is a surrogate pair, i is left on its second half, so a loop's ++i
    // steps past the whole character.
    static char encodeAt(const QChar* text, int& i, int length)
    {
        if (text[i].isHighSurrogate() && i + 1 < length && text[i + 1].isLowSurrogate()) {
            ++i;
            return '_';
        }
        return encodeChar(text[i]);
    }
    static QChar decodeByte(unsigned char b) { return b < 0x80 ? QChar(b) : QChar(upperHalf()[b - 0x80]); }
    // True when the character has a byte of its own (so not replaced by '_').
    static bool canEncode(QChar c);

    // The 128 code points of bytes 0x80..0xFF.
    static const char16_t* upperHalf();
};

#endif
