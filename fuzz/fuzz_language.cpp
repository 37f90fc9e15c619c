// Arbitrary bytes as a language file.

#include "module/zor_language.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    ZOR_Language::parse(QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size)));
    return 0;
}
