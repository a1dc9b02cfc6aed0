#include "orvviews/widgets/image/OrvImageDecoder.h"

#include <algorithm>

#include "platform/codec/ImageType.h"

ORV_DEFINE_CLASS(OrvImageDecoder, rt::Object)

uint64_t OrvImageDecoder::getImageType(const uint8_t* bytes) const {
    return static_cast<uint64_t>(codec::imageTypeOf(bytes, 16));
}

bool OrvImageDecoder::validImageType(uint64_t type) const {
    const auto types = supportedTypes();
    return std::find(types.begin(), types.end(), type) != types.end();
}
