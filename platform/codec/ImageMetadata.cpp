#include "platform/codec/ImageMetadata.h"

#include <libexif/exif-data.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>

#include "platform/codec/JpegSegments.h"
#include "platform/rt/Log.h"

namespace orv::codec {

using gfx::ImageOrientation;

namespace {

constexpr auto& kExifHeader = JpegSegments::kExifHeader;
constexpr auto& kIccHeader = JpegSegments::kIccHeader;

template <size_t N>
bool hasPrefix(const uint8_t* data, size_t size, const uint8_t (&prefix)[N]) {
    return size >= N && std::memcmp(data, prefix, N) == 0;
}

// A profile is split over APP2 chunks numbered from 1; all of them must be there.
std::vector<uint8_t> joinIccChunks(const std::map<int, std::vector<uint8_t>>& chunks, int count) {
    if (chunks.empty()) return {};
    if (count <= 0 || static_cast<int>(chunks.size()) != count || chunks.begin()->first != 1 ||
        chunks.rbegin()->first != count) {
        rt::Log::warnf("exif: incomplete ICC profile (%zu of %d chunks) dropped", chunks.size(),
                       count);
        return {};
    }
    std::vector<uint8_t> icc;
    for (const auto& [index, chunk] : chunks) icc.insert(icc.end(), chunk.begin(), chunk.end());
    return icc;
}

// ---- libexif

struct ExifDataDeleter {
    void operator()(ExifData* data) const { exif_data_unref(data); }
};
using ExifPtr = std::unique_ptr<ExifData, ExifDataDeleter>;

// A fresh record that keeps what it is given as it is: no tags added "to follow the standard",
// unknown tags kept, maker notes untouched.
ExifPtr newExifData() {
    ExifPtr data(exif_data_new());
    if (!data) return nullptr;
    exif_data_unset_option(data.get(), EXIF_DATA_OPTION_IGNORE_UNKNOWN_TAGS);
    exif_data_unset_option(data.get(), EXIF_DATA_OPTION_FOLLOW_SPECIFICATION);
    exif_data_set_option(data.get(), EXIF_DATA_OPTION_DONT_CHANGE_MAKER_NOTE);
    return data;
}

// The parsed block, or null when libexif finds nothing in it (no header, no readable IFD).
ExifPtr parseExif(const std::vector<uint8_t>& bytes) {
    if (bytes.empty()) return nullptr;
    ExifPtr data = newExifData();
    if (!data) return nullptr;
    exif_data_load_data(data.get(), bytes.data(), static_cast<unsigned>(bytes.size()));
    const ExifContent* ifd0 = data->ifd[EXIF_IFD_0];
    if (!ifd0 || ifd0->count == 0) return nullptr;
    return data;
}

std::vector<uint8_t> serialize(ExifData* data) {
    unsigned char* bytes = nullptr;
    unsigned int size = 0;
    exif_data_save_data(data, &bytes, &size);
    std::vector<uint8_t> out;
    if (bytes) out.assign(bytes, bytes + size);
    std::free(bytes);  // libexif's default allocator is malloc
    return out;
}

// The entry `tag` of `ifd`, made anew with one component of `format`.
ExifEntry* freshEntry(ExifData* data, ExifIfd ifd, ExifTag tag, ExifFormat format) {
    ExifContent* content = data->ifd[ifd];
    if (ExifEntry* old = exif_content_get_entry(content, tag)) {
        exif_content_remove_entry(content, old);
    }
    ExifEntry* entry = exif_entry_new();
    if (!entry) return nullptr;
    const unsigned size = exif_format_get_size(format);
    entry->data = static_cast<unsigned char*>(std::calloc(1, size));
    if (!entry->data) {
        exif_entry_unref(entry);
        return nullptr;
    }
    entry->tag = tag;
    entry->format = format;
    entry->components = 1;
    entry->size = size;
    exif_content_add_entry(content, entry);
    exif_entry_unref(entry);  // the content holds it now
    return exif_content_get_entry(content, tag);
}

void dropThumbnail(ExifData* data) {
    std::free(data->data);
    data->data = nullptr;
    data->size = 0;
    ExifContent* ifd1 = data->ifd[EXIF_IFD_1];
    while (ifd1 && ifd1->count > 0) exif_content_remove_entry(ifd1, ifd1->entries[0]);
}

}  // namespace

ImageMetadata ImageMetadata::fromJpeg(const uint8_t* data, size_t size) {
    ImageMetadata metadata;
    std::map<int, std::vector<uint8_t>> iccChunks;
    int iccCount = 0;
    JpegSegments::walk(data, size, [&](const JpegSegments::Segment& s) {
        if (s.marker == 0xE1 && metadata.exif_.empty() &&
            hasPrefix(s.payload, s.size, kExifHeader)) {
            metadata.exif_.assign(s.payload, s.payload + s.size);
        } else if (s.marker == 0xE2 && hasPrefix(s.payload, s.size, kIccHeader) &&
                   s.size >= sizeof kIccHeader + 2) {
            const uint8_t* chunk = s.payload + sizeof kIccHeader;
            iccCount = chunk[1];
            iccChunks[chunk[0]].assign(chunk + 2, s.payload + s.size);
        }
    });
    if (!metadata.exif_.empty() && !parseExif(metadata.exif_)) {
        rt::Log::warnf("exif: unreadable EXIF block (%zu bytes) dropped", metadata.exif_.size());
        metadata.exif_.clear();
    }
    metadata.icc_ = joinIccChunks(iccChunks, iccCount);
    return metadata;
}

int ImageMetadata::exifOrientation() const {
    const ExifPtr data = parseExif(exif_);
    if (!data) return 1;
    const ExifEntry* entry = exif_content_get_entry(data->ifd[EXIF_IFD_0], EXIF_TAG_ORIENTATION);
    if (!entry || entry->format != EXIF_FORMAT_SHORT || entry->components < 1 || entry->size < 2) {
        return 1;
    }
    const int value = exif_get_short(entry->data, exif_data_get_byte_order(data.get()));
    return value >= 1 && value <= 8 ? value : 1;
}

void ImageMetadata::setExifOrientation(int value) {
    if (value < 1 || value > 8) value = 1;
    ExifPtr data = parseExif(exif_);
    if (!data) data = newExifData();
    if (!data) return;
    ExifEntry* entry = freshEntry(data.get(), EXIF_IFD_0, EXIF_TAG_ORIENTATION, EXIF_FORMAT_SHORT);
    if (!entry) return;
    exif_set_short(entry->data, exif_data_get_byte_order(data.get()),
                   static_cast<ExifShort>(value));
    exif_ = serialize(data.get());
}

void ImageMetadata::setPixelSize(int width, int height) {
    // Without an EXIF block the JPEG header is the only record of the size.
    ExifPtr data = parseExif(exif_);
    if (!data) return;
    const ExifByteOrder order = exif_data_get_byte_order(data.get());
    const std::pair<ExifTag, int> sizes[] = {{EXIF_TAG_PIXEL_X_DIMENSION, width},
                                             {EXIF_TAG_PIXEL_Y_DIMENSION, height}};
    for (const auto& [tag, value] : sizes) {
        ExifEntry* entry = freshEntry(data.get(), EXIF_IFD_EXIF, tag, EXIF_FORMAT_LONG);
        if (entry) exif_set_long(entry->data, order, static_cast<ExifLong>(std::max(value, 0)));
    }
    dropThumbnail(data.get());
    exif_ = serialize(data.get());
}

ImageOrientation ImageMetadata::orientationFromExif(int value) {
    switch (value) {
        case 2:
            return ImageOrientation::UpMirrored;
        case 3:
            return ImageOrientation::Down;
        case 4:
            return ImageOrientation::DownMirrored;
        case 5:
            return ImageOrientation::LeftMirrored;
        case 6:
            return ImageOrientation::Right;
        case 7:
            return ImageOrientation::RightMirrored;
        case 8:
            return ImageOrientation::Left;
        default:
            return ImageOrientation::Up;
    }
}

int ImageMetadata::exifFromOrientation(ImageOrientation orientation) {
    for (int value = 1; value <= 8; ++value) {
        if (orientationFromExif(value) == orientation) return value;
    }
    return 1;
}

}  // namespace orv::codec
