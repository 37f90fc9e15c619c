// CRC-32 throughput on 64 KiB buffers against zlib's crc32() measured in the
// same run. The goal is at least half of zlib's speed: the printed
// "speed_vs_zlib" counter is zlib's time divided by ours (1.0 = as fast).

#include "protocol/crc32.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <chrono>
#include <random>
#include <vector>

namespace {

constexpr int kBufferSize = 64 * 1024;

const std::vector<unsigned char>& buffer()
{
    static const std::vector<unsigned char> data = [] {
        std::vector<unsigned char> d(kBufferSize);
        std::mt19937 rng(42);
        for (auto& b : d)
            b = static_cast<unsigned char>(rng());
        return d;
    }();
    return data;
}

uint32_t zorCrc(const std::vector<unsigned char>& d)
{
    class crc32 c; // "class": zlib has a function of the same name
    c.ProcessCRC(d.data(), static_cast<int>(d.size()));
    return c.value();
}

uint32_t zlibCrc(const std::vector<unsigned char>& d)
{
    return static_cast<uint32_t>(::crc32(0L, d.data(), static_cast<uInt>(d.size())));
}

template <uint32_t (*Fn)(const std::vector<unsigned char>&)>
void BM_Crc32(benchmark::State& state)
{
    const auto& d = buffer();
    for (auto _ : state)
        benchmark::DoNotOptimize(Fn(d));
    state.SetBytesProcessed(state.iterations() * kBufferSize);
}
BENCHMARK_TEMPLATE(BM_Crc32, zorCrc)->Name("BM_Crc32_Zor_64KiB");
BENCHMARK_TEMPLATE(BM_Crc32, zlibCrc)->Name("BM_Crc32_Zlib_64KiB");

// Both in one loop, alternating, so that the ratio is not skewed by
// frequency changes or by another process between two separate runs.
void BM_Crc32SpeedVsZlib(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    const auto& d = buffer();
    double zor = 0;
    double zlib = 0;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        benchmark::DoNotOptimize(zorCrc(d));
        const auto t1 = Clock::now();
        benchmark::DoNotOptimize(zlibCrc(d));
        const auto t2 = Clock::now();
        zor += std::chrono::duration<double>(t1 - t0).count();
        zlib += std::chrono::duration<double>(t2 - t1).count();
    }
    if (zorCrc(d) != zlibCrc(d))
        state.SkipWithError("crc32 differs from zlib");
    state.counters["speed_vs_zlib"] = zor > 0 ? zlib / zor : 0;
    state.SetBytesProcessed(state.iterations() * kBufferSize * 2);
}
BENCHMARK(BM_Crc32SpeedVsZlib)->MinTime(0.5);

} // namespace

BENCHMARK_MAIN();
