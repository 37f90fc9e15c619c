#include "protocol/crc32.h"

#include <QtGlobal>

#include <cstring>

// Eight tables (slicing by eight): one table lookup per byte would be the
// textbook step, but the settings files and firmware images checked with this
// class are large enough for the factor of four to matter.
namespace {

struct Tables {
    uint32_t t[8][256];
    Tables()
    {
        for (uint32_t i = 0; i < 256; ++i) {
            uint32_t c = i;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? (c >> 1) ^ 0xEDB88320u : c >> 1;
            t[0][i] = c;
        }
        for (uint32_t i = 0; i < 256; ++i)
            for (int s = 1; s < 8; ++s)
                t[s][i] = (t[s - 1][i] >> 8) ^ t[0][t[s - 1][i] & 0xFF];
    }
};

const Tables& tables()
{
    static const Tables instance;
    return instance;
}

} // namespace

crc32::crc32()
{
    tables();
}

void crc32::ProcessCRC(const unsigned char* data, int len)
{
    if (len < 1)
        return;
    const auto& t = tables().t;
    // The running value is kept uncomplemented; complementing once around
    // the whole run is the same as doing it around every byte.
    uint32_t c = ~m_value;
    size_t n = static_cast<size_t>(len);
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    while (n >= 8) {
        uint32_t lo, hi;
        std::memcpy(&lo, data, 4);
        std::memcpy(&hi, data + 4, 4);
        lo ^= c;
        c = t[7][lo & 0xFF] ^ t[6][(lo >> 8) & 0xFF] ^ t[5][(lo >> 16) & 0xFF] ^ t[4][lo >> 24]
            ^ t[3][hi & 0xFF] ^ t[2][(hi >> 8) & 0xFF] ^ t[1][(hi >> 16) & 0xFF] ^ t[0][hi >> 24];
        data += 8;
        n -= 8;
    }
#endif
    while (n--)
        c = t[0][(c ^ *data++) & 0xFF] ^ (c >> 8);
    m_value = ~c;
}
