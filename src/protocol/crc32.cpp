#include "protocol/crc32.h"

#include <QtGlobal>

#include <cstring>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define ZOR_CRC32_CLMUL 1
#include <immintrin.h>
#endif

// Eight tables (slicing by eight), and carry-less multiplication where the
// processor has it: one table lookup per byte would be the textbook step, but
// the settings files and firmware images checked with this class are large
// enough for the speed to matter.
namespace {

struct Tables
{
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

#ifdef ZOR_CRC32_CLMUL
// Carry-less multiplication folding (the method of Intel's "Fast CRC
// Computation for Generic Polynomials Using PCLMULQDQ"), 64 bytes per step.
// Takes and returns the complemented running value; len >= 64, a multiple
// of 16.
#define ZOR_CLMUL_TARGET __attribute__((target("pclmul,sse4.1")))

ZOR_CLMUL_TARGET inline __m128i load(const unsigned char* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

// x times the folding constants, plus the next block.
ZOR_CLMUL_TARGET inline __m128i fold(__m128i x, __m128i k, __m128i next)
{
    return _mm_xor_si128(_mm_xor_si128(_mm_clmulepi64_si128(x, k, 0x00), _mm_clmulepi64_si128(x, k, 0x11)), next);
}

ZOR_CLMUL_TARGET uint32_t foldClmul(const unsigned char* buf, size_t len, uint32_t crc)
{
    // x^(4*128+64) mod P, x^(4*128) mod P (bit-reflected, shifted), and so on.
    const __m128i k1k2 = _mm_set_epi64x(0x01c6e41596, 0x0154442bd4);
    const __m128i k3k4 = _mm_set_epi64x(0x00ccaa009e, 0x01751997d0);
    const __m128i k5k0 = _mm_set_epi64x(0, 0x0163cd6124);
    const __m128i poly = _mm_set_epi64x(0x01f7011641, 0x01db710641);
    const __m128i low32 = _mm_setr_epi32(~0, 0, ~0, 0);

    __m128i x1 = _mm_xor_si128(load(buf), _mm_cvtsi32_si128(static_cast<int>(crc)));
    __m128i x2 = load(buf + 16);
    __m128i x3 = load(buf + 32);
    __m128i x4 = load(buf + 48);
    buf += 64;
    len -= 64;
    while (len >= 64) {
        x1 = fold(x1, k1k2, load(buf));
        x2 = fold(x2, k1k2, load(buf + 16));
        x3 = fold(x3, k1k2, load(buf + 32));
        x4 = fold(x4, k1k2, load(buf + 48));
        buf += 64;
        len -= 64;
    }
    x1 = fold(x1, k3k4, x2);
    x1 = fold(x1, k3k4, x3);
    x1 = fold(x1, k3k4, x4);
    while (len >= 16) {
        x1 = fold(x1, k3k4, load(buf));
        buf += 16;
        len -= 16;
    }
    // 128 -> 64 bits.
    __m128i x = _mm_xor_si128(_mm_srli_si128(x1, 8), _mm_clmulepi64_si128(x1, k3k4, 0x10));
    x = _mm_xor_si128(_mm_clmulepi64_si128(_mm_and_si128(x, low32), k5k0, 0x00), _mm_srli_si128(x, 4));
    // Barrett reduction to 32 bits.
    __m128i t = _mm_clmulepi64_si128(_mm_and_si128(x, low32), poly, 0x10);
    t = _mm_clmulepi64_si128(_mm_and_si128(t, low32), poly, 0x00);
    return static_cast<uint32_t>(_mm_extract_epi32(_mm_xor_si128(x, t), 1));
}

bool haveClmul()
{
    static const bool have = __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");
    return have;
}
#endif

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
#ifdef ZOR_CRC32_CLMUL
    if (n >= 64 && haveClmul()) {
        const size_t run = n & ~size_t(15);
        c = foldClmul(data, run, c);
        data += run;
        n -= run;
    }
#endif
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    while (n >= 8) {
        uint32_t lo, hi;
        std::memcpy(&lo, data, 4);
        std::memcpy(&hi, data + 4, 4);
        lo ^= c;
        c = t[7][lo & 0xFF] ^ t[6][(lo >> 8) & 0xFF] ^ t[5][(lo >> 16) & 0xFF] ^ t[4][lo >> 24] ^ t[3][hi & 0xFF]
            ^ t[2][(hi >> 8) & 0xFF] ^ t[1][(hi >> 16) & 0xFF] ^ t[0][hi >> 24];
        data += 8;
        n -= 8;
    }
#endif
    while (n--)
        c = t[0][(c ^ *data++) & 0xFF] ^ (c >> 8);
    m_value = ~c;
}
