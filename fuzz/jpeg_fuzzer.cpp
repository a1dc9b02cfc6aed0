// JPEG decoding at full size and reduced by the DCT, and the metadata segment walk.
#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzSetup.h"
#include "platform/codec/ImageMetadata.h"
#include "platform/codec/JpegCodec.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return orv::fuzz::quietLogs();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace orv::codec;
    const ImageMetadata metadata = ImageMetadata::fromJpeg(data, size);
    metadata.exifOrientation();
    // The last byte picks the reduction, so both the full and the scaled decoders are reached.
    const int minLongSide = size > 0 ? data[size - 1] % 4 * 24 : 0;
    const auto bitmap = JpegCodec::decode(data, size, minLongSide);
    if (bitmap && bitmap->width() <= 64 && bitmap->height() <= 64) {
        ImageMetadata copy = metadata;
        copy.setExifOrientation(6);
        copy.setPixelSize(bitmap->width(), bitmap->height());
        JpegCodec::encode(*bitmap, 0.5, &copy);
    }
    return 0;
}
