#ifndef CRC32_H
#define CRC32_H

// The standard CRC-32 (IEEE 802.3, reflected polynomial 0xEDB88320; the same
// values as zlib's crc32()) kept as a running value. The value starts at 0
// and after any sequence of ProcessCRC calls equals the CRC-32 of all bytes
// fed so far, however they were split.

#include <cstdint>

class crc32
{
public:
    crc32();

    void ProcessCRC(const unsigned char* data, int len);
    void ProcessCRC(const char* data, int len) { ProcessCRC(reinterpret_cast<const unsigned char*>(data), len); }
    void ClearCRC() { m_value = 0; }

    uint32_t value() const { return m_value; }

private:
    uint32_t m_value = 0;
};

#endif
