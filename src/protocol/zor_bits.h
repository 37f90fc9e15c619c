#ifndef ZOR_BITS_H
#define ZOR_BITS_H

// Byte order and bit helpers used by the settings forms and records.

#include <QString>

#include <cstdint>

// Byte order of htonl32 / htonl64, one process-wide mode each:
// 0 (initial, becomes 1 on first use) and 1 reverse the bytes, 2 leaves the
// value as it is (for callers that already hold network order).
enum ZOR_ByteOrderMode { ZOR_ByteOrderUnset = 0, ZOR_ByteOrderSwap = 1, ZOR_ByteOrderKeep = 2 };

uint32_t htonl32(uint32_t value);
uint64_t htonl64(uint64_t value);
int htonl32Mode();
int htonl64Mode();
void setHtonl32Mode(int mode);
void setHtonl64Mode(int mode);

// Bit n (0..7) of a byte as 0 or 1; any other n gives 0.
int getBitFromByte(unsigned char byte, int n);
// Sets bit n (0..7) to 1 when bit is non-zero, else to 0; other n change nothing.
void setBitToByte(unsigned char& byte, int n, int bit);
// Bits n and n+1 (n 0..6) as a value 0..3, bit n the low one; other n give 0.
int get2BitFromByte(unsigned char byte, int n);
// The byte written as decimal text in settings documents ("0".."255";
// "0x.." accepted): bit n of it, 0 when the text is not a number.
int getBitFromStrByte(const QString& text, int n);
// Decimal text of the byte with only bit n set ("0" for n outside 0..7).
QString getStrByteFromBit(int n);

// Value of one hexadecimal digit (either case), -1 for any other character.
int zorHexDigitValue(QChar c);
// The lower-case digit of the low four bits.
inline char zorHexDigit(int nValue)
{
    return "0123456789abcdef"[nValue & 0xf];
}

#endif
