#include "platform/codec/JpegSegments.h"

namespace orv::codec {

namespace {

constexpr uint8_t kStartOfScan = 0xDA;
constexpr uint8_t kEndOfImage = 0xD9;

// Markers that stand alone, with no length: TEM, RST0 to RST7 and SOI.
bool hasNoLength(uint8_t marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

}  // namespace

size_t JpegSegments::walk(const uint8_t* data, size_t size,
                          const std::function<void(const Segment&)>& visit) {
    if (!data || size < 4 || data[0] != 0xFF || data[1] != 0xD8) return 0;
    size_t pos = 2;
    while (pos < size) {
        while (pos < size && data[pos] != 0xFF) ++pos;  // stray bytes
        while (pos < size && data[pos] == 0xFF) ++pos;  // fill bytes
        if (pos >= size) return 0;
        const uint8_t marker = data[pos++];
        if (marker == kStartOfScan) return pos - 2;
        if (marker == kEndOfImage) return 0;
        if (marker == 0x00 || hasNoLength(marker)) continue;
        if (size - pos < 2) return 0;
        const size_t length = size_t{data[pos]} << 8 | data[pos + 1];
        if (length < 2 || length > size - pos) return 0;
        if (visit) visit(Segment{marker, data + pos + 2, length - 2});
        pos += length;
    }
    return 0;
}

bool JpegSegments::hasEndAfterScan(const uint8_t* data, size_t size) {
    const size_t scan = walk(data, size);
    if (scan == 0) return false;
    // From the back: the end marker is almost always the last two bytes.
    for (size_t i = size - 2; i > scan; --i) {
        if (data[i] == 0xFF && data[i + 1] == kEndOfImage) return true;
    }
    return false;
}

}  // namespace orv::codec
