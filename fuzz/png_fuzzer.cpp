// PNG decoding of every colour type, depth and interlacing.
#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzSetup.h"
#include "platform/codec/PngCodec.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return orv::fuzz::quietLogs();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    orv::codec::PngCodec::decode(data, size);
    return 0;
}
