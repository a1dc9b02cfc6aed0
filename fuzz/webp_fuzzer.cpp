// WebP decoding, lossy and lossless, with and without alpha.
#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzSetup.h"
#include "platform/codec/WebpCodec.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return orv::fuzz::quietLogs();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    orv::codec::WebpCodec::decode(data, size);
    return 0;
}
