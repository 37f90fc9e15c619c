#include "protocol/zor_checksum.h"

#include <array>

namespace {

template <typename T, unsigned Poly>
std::array<T, 256> msbFirstTable()
{
    constexpr unsigned topShift = sizeof(T) * 8 - 8;
    constexpr T topBit = T(1u << (sizeof(T) * 8 - 1));
    std::array<T, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        T c = T(i << topShift);
        for (int k = 0; k < 8; ++k)
            c = (c & topBit) ? T((c << 1) ^ Poly) : T(c << 1);
        table[i] = c;
    }
    return table;
}

const std::array<unsigned char, 256>& crc8Table()
{
    static const auto table = msbFirstTable<unsigned char, 0x31>();
    return table;
}

const std::array<unsigned short, 256>& crc16Table()
{
    static const auto table = msbFirstTable<unsigned short, 0x1021>();
    return table;
}

} // namespace

unsigned char getSumDataToByte(const unsigned char* data, int len)
{
    unsigned char sum = 0;
    for (int i = 0; i < len; ++i)
        sum ^= data[i];
    return sum;
}

unsigned char getSumDataToByte(const char* data, int len)
{
    return getSumDataToByte(reinterpret_cast<const unsigned char*>(data), len);
}

unsigned char SummCRC8(const unsigned char* data, int len)
{
    const auto& table = crc8Table();
    unsigned char crc = 0xFF;
    for (int i = 0; i < len; ++i)
        crc = table[crc ^ data[i]];
    return crc;
}

unsigned short SummPlusCRC16(unsigned short start, const unsigned char* data, int len)
{
    const auto& table = crc16Table();
    unsigned short crc = start;
    for (int i = 0; i < len; ++i)
        crc = static_cast<unsigned short>((crc << 8) ^ table[((crc >> 8) ^ data[i]) & 0xFF]);
    return crc;
}

unsigned short SummCRC16(const unsigned char* data, int len)
{
    return SummPlusCRC16(0xFFFF, data, len);
}

unsigned short eval_crc16(unsigned short start, const unsigned char* data, int len)
{
    return SummPlusCRC16(start, data, len);
}
