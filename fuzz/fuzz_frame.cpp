// Arbitrary bytes as a received frame: the check must never read past the
// bytes, and a frame it accepts must carry the length, data checksum and data
// of the frame the builder makes of its data part (the address fields are
// not checked on receipt). The same bytes check the CRC-32 fast paths against a
// plain bitwise CRC, fed in two pieces split where the input says.

#include "protocol/commonfunctions.h"
#include "protocol/crc32.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

uint32_t bitwiseCrc32(const uint8_t* data, size_t size)
{
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < size; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // A deep copy, so that a read past the end is a read past this buffer.
    const QByteArray frame(reinterpret_cast<const char*>(data), int(size));
    const commonFunctions functions;
    QByteArray payload;
    if (functions.checkFrame(frame, &payload) == commonFunctions::FrameOk) {
        const QByteArray rebuilt = functions.getUsbArrCommandToDevice(payload);
        if (rebuilt.size() != frame.size() || rebuilt.mid(12, 3) != frame.mid(12, 3)
            || rebuilt.mid(commonFunctions::HeaderSize) != frame.mid(commonFunctions::HeaderSize))
            abort();
    }

    const size_t split = size ? data[0] % (size + 1) : 0;
    class crc32 crc;
    crc.ProcessCRC(data, int(split));
    crc.ProcessCRC(data + split, int(size - split));
    if (crc.value() != bitwiseCrc32(data, size))
        abort();
    return 0;
}
