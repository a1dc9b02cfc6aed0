#pragma once
// The marker segments at the head of a JPEG (everything before its first scan), walked with
// every length checked against the data. Shared by the decoder and the metadata reader.

#include <cstddef>
#include <cstdint>
#include <functional>

namespace orv::codec {

class JpegSegments {
  public:
    JpegSegments() = delete;

    // What the metadata segments start with: APP1 EXIF, and APP2 ICC (then the chunk's number
    // from 1 and the chunk count, one byte each).
    static constexpr uint8_t kExifHeader[] = {'E', 'x', 'i', 'f', 0, 0};
    static constexpr uint8_t kIccHeader[] = {'I', 'C', 'C', '_', 'P', 'R',
                                             'O', 'F', 'I', 'L', 'E', 0};

    struct Segment {
        uint8_t marker;          // the byte after 0xFF: 0xE1 for APP1, ...
        const uint8_t* payload;  // after the two length bytes
        size_t size;
    };

    // Calls `visit` for each segment before the first scan and returns the offset of the
    // start-of-scan marker; 0 when the walk ends without one (not a JPEG, a length running past
    // the end, or an end-of-image marker first). Stray bytes between segments are skipped, as
    // decoders do.
    static size_t walk(const uint8_t* data, size_t size,
                       const std::function<void(const Segment&)>& visit = nullptr);

    // True when the data has an end-of-image marker after its first scan: a file that was cut
    // short has none. Inside scan data 0xFF is always followed by 0x00 or a restart marker, so
    // 0xFF 0xD9 there is the real end.
    static bool hasEndAfterScan(const uint8_t* data, size_t size);
};

}  // namespace orv::codec
