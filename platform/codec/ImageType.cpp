#include "platform/codec/ImageType.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <iterator>

namespace orv::codec {

namespace {

bool startsWith(const uint8_t* head, size_t offset, std::initializer_list<uint8_t> magic) {
    return std::equal(magic.begin(), magic.end(), head + offset);
}

bool isBmp(const uint8_t* head) {
    // The two-letter tags of the bitmap family: BA, IC, CI, PI, BM, CP.
    static constexpr uint8_t kTags[][2] = {{0x42, 0x41}, {0x49, 0x43}, {0x43, 0x49},
                                           {0x50, 0x49}, {0x42, 0x4D}, {0x43, 0x50}};
    return std::any_of(std::begin(kTags), std::end(kTags), [head](const uint8_t* tag) {
        return head[0] == tag[0] && head[1] == tag[1];
    });
}

}  // namespace

ImageType imageTypeOf(const uint8_t* data, size_t size) {
    uint8_t head[16] = {};
    if (data) std::memcpy(head, data, std::min(size, sizeof head));

    if (startsWith(head, 0, {0x47, 0x49, 0x46, 0x38})) return ImageType::GIF;
    // A RIFF container that is not WebP may still be something the later rules know.
    if (startsWith(head, 0, {0x52, 0x49, 0x46, 0x46}) &&
        startsWith(head, 8, {0x57, 0x45, 0x42, 0x50})) {
        return ImageType::WebP;
    }
    if (startsWith(head, 0, {0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A}))
        return ImageType::PNG;
    if (isBmp(head)) return ImageType::BMP;
    if (startsWith(head, 0, {0xFF, 0x4F})) return ImageType::JPEG2000;
    if (startsWith(head, 0, {0xFF, 0xD8, 0xFF})) return ImageType::JPEG;
    if (startsWith(head, 4, {0x6A, 0x50, 0x20, 0x20, 0x0D})) return ImageType::JPEG2000;
    return ImageType::Unknown;
}

const char* imageTypeName(ImageType type) {
    switch (type) {
        case ImageType::JPEG:
            return "jpeg";
        case ImageType::JPEG2000:
            return "jpeg2000";
        case ImageType::BMP:
            return "bmp";
        case ImageType::GIF:
            return "gif";
        case ImageType::PNG:
            return "png";
        case ImageType::WebP:
            return "webp";
        case ImageType::Unknown:
            break;
    }
    return "unknown";
}

}  // namespace orv::codec
