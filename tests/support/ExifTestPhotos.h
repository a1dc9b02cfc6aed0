#pragma once
// Camera photos for the tests of metadata travel: JPEGs whose EXIF holds a date, make, model,
// GPS position and thumbnail, stored in any of the eight EXIF orientations, and whose upright
// picture is four coloured quadrants.

#include <gtest/gtest.h>
#include <libexif/exif-data.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "frameworks/core/OrvTSFileManager.h"
#include "platform/codec/ImageMetadata.h"
#include "platform/codec/JpegCodec.h"
#include "platform/gfx/Bitmap.h"

namespace orv::test {

// Whole JPEG blocks per quadrant. Red, green, blue and yellow from the top left, row by row.
constexpr int kPhotoWidth = 64, kPhotoHeight = 48;
constexpr int kQuadrantColours[4][3] = {
    {220, 40, 40}, {40, 200, 40}, {40, 40, 220}, {230, 220, 40}};

// Where the upright pixel (x, y) is stored under an EXIF orientation, from what each value says
// of the stored rows and columns (not from the code under test): 5 to 8 exchange the axes, and
// some values run an axis backwards.
inline std::pair<int, int> storedPosition(int exif, int x, int y) {
    const bool swap = exif >= 5;
    int column = swap ? y : x, row = swap ? x : y;
    if (exif == 2 || exif == 3 || exif == 7 || exif == 8)
        column = (swap ? kPhotoHeight : kPhotoWidth) - 1 - column;
    if (exif == 3 || exif == 4 || exif == 6 || exif == 7)
        row = (swap ? kPhotoWidth : kPhotoHeight) - 1 - row;
    return {column, row};
}

inline gfx::BitmapPtr storedQuadrants(int exif) {
    auto bitmap = std::make_shared<gfx::Bitmap>(exif >= 5 ? kPhotoHeight : kPhotoWidth,
                                                exif >= 5 ? kPhotoWidth : kPhotoHeight);
    for (int y = 0; y < kPhotoHeight; ++y) {
        for (int x = 0; x < kPhotoWidth; ++x) {
            const int* colour =
                kQuadrantColours[(y >= kPhotoHeight / 2) * 2 + (x >= kPhotoWidth / 2)];
            const auto [sx, sy] = storedPosition(exif, x, y);
            uint8_t* p = bitmap->mutableRow(sy) + 4 * sx;
            for (int c = 0; c < 3; ++c) p[c] = static_cast<uint8_t>(colour[c]);
            p[3] = 255;
        }
    }
    return bitmap;
}

// The upright size, and each quadrant's centre bright in the channels of its colour: a test that
// JPEG and a levels stretch both pass.
inline ::testing::AssertionResult showsQuadrantsUpright(const gfx::Bitmap& b) {
    if (b.width() != kPhotoWidth || b.height() != kPhotoHeight)
        return ::testing::AssertionFailure() << b.width() << "x" << b.height();
    for (int q = 0; q < 4; ++q) {
        const uint8_t* p =
            b.pixel((q % 2 * 2 + 1) * kPhotoWidth / 4, (q / 2 * 2 + 1) * kPhotoHeight / 4);
        for (int c = 0; c < 3; ++c) {
            if ((p[c] > 128) != (kQuadrantColours[q][c] > 128))
                return ::testing::AssertionFailure() << "quadrant " << q << " channel " << c;
        }
    }
    return ::testing::AssertionSuccess();
}

using ExifDataPtr = std::unique_ptr<ExifData, decltype(&exif_data_unref)>;

inline void putEntry(ExifData* data, ExifIfd ifd, int tag, ExifFormat format, unsigned count,
                     const void* bytes) {
    ExifEntry* entry = exif_entry_new();
    entry->tag = static_cast<ExifTag>(tag);
    entry->format = format;
    entry->components = count;
    entry->size = exif_format_get_size(format) * count;
    entry->data = static_cast<unsigned char*>(std::malloc(entry->size));
    std::memcpy(entry->data, bytes, entry->size);
    exif_content_add_entry(data->ifd[ifd], entry);
    exif_entry_unref(entry);
}

inline void putText(ExifData* data, ExifIfd ifd, int tag, const std::string& text) {
    putEntry(data, ifd, tag, EXIF_FORMAT_ASCII, static_cast<unsigned>(text.size() + 1),
             text.c_str());
}

// A GPS coordinate as degrees, minutes and hundredths of seconds, with its reference letter.
inline void putPlace(ExifData* data, int refTag, const char* ref, int tag,
                     const ExifLong (&dms)[3]) {
    unsigned char bytes[24];
    for (int i = 0; i < 3; ++i)
        exif_set_rational(bytes + 8 * i, exif_data_get_byte_order(data),
                          {dms[i], i == 2 ? 100u : 1u});
    putText(data, EXIF_IFD_GPS, refTag, ref);
    putEntry(data, EXIF_IFD_GPS, tag, EXIF_FORMAT_RATIONAL, 3, bytes);
}

inline codec::ImageMetadata cameraMetadata(int exif) {
    ExifDataPtr data(exif_data_new(), exif_data_unref);
    putText(data.get(), EXIF_IFD_0, EXIF_TAG_MAKE, "OrvCam");
    putText(data.get(), EXIF_IFD_0, EXIF_TAG_MODEL, "OrvCam X1");
    putText(data.get(), EXIF_IFD_EXIF, EXIF_TAG_DATE_TIME_ORIGINAL, "2021:06:15 10:30:00");
    putPlace(data.get(), EXIF_TAG_GPS_LATITUDE_REF, "N", EXIF_TAG_GPS_LATITUDE, {48, 51, 2988});
    putPlace(data.get(), EXIF_TAG_GPS_LONGITUDE_REF, "E", EXIF_TAG_GPS_LONGITUDE, {2, 17, 4020});
    const auto thumb = codec::JpegCodec::encode(*storedQuadrants(exif), 0.5);
    data->data = static_cast<unsigned char*>(std::malloc(thumb.size()));
    std::memcpy(data->data, thumb.data(), thumb.size());
    data->size = static_cast<unsigned>(thumb.size());
    unsigned char* raw = nullptr;
    unsigned size = 0;
    exif_data_save_data(data.get(), &raw, &size);
    codec::ImageMetadata metadata;
    metadata.setExif(std::vector<uint8_t>(raw, raw + size));
    std::free(raw);
    metadata.setExifOrientation(exif);
    return metadata;
}

// The path, or empty when it could not be written.
inline std::string writeCameraJpeg(int exif, const std::string& path) {
    const codec::ImageMetadata metadata = cameraMetadata(exif);
    const auto bytes = codec::JpegCodec::encode(*storedQuadrants(exif), 0.95, &metadata);
    return OrvTSFileManager::writeDataAtomically(bytes, path) ? path : std::string();
}

inline ExifDataPtr parsedExif(const codec::ImageMetadata& metadata) {
    ExifDataPtr data(exif_data_new(), exif_data_unref);
    exif_data_load_data(data.get(), metadata.exif().data(),
                        static_cast<unsigned>(metadata.exif().size()));
    return data;
}

inline bool hasThumbnail(const codec::ImageMetadata& metadata) {
    return parsedExif(metadata)->size > 0;
}

// When, with what and where the photo was taken, as text.
struct CameraTags {
    std::string date, make, model, latitude, longitude;
    bool operator==(const CameraTags&) const = default;
    friend std::ostream& operator<<(std::ostream& os, const CameraTags& t) {
        return os << t.date << "|" << t.make << "|" << t.model << "|" << t.latitude << "|"
                  << t.longitude;
    }
};

inline CameraTags cameraTags(const codec::ImageMetadata& metadata) {
    const ExifDataPtr data = parsedExif(metadata);
    const auto text = [&](ExifIfd ifd, int tag) {
        char value[256] = "";
        ExifEntry* entry = exif_content_get_entry(data->ifd[ifd], static_cast<ExifTag>(tag));
        return std::string(entry ? exif_entry_get_value(entry, value, sizeof value) : "");
    };
    return {
        text(EXIF_IFD_EXIF, EXIF_TAG_DATE_TIME_ORIGINAL), text(EXIF_IFD_0, EXIF_TAG_MAKE),
        text(EXIF_IFD_0, EXIF_TAG_MODEL),
        text(EXIF_IFD_GPS, EXIF_TAG_GPS_LATITUDE) + text(EXIF_IFD_GPS, EXIF_TAG_GPS_LATITUDE_REF),
        text(EXIF_IFD_GPS, EXIF_TAG_GPS_LONGITUDE) +
            text(EXIF_IFD_GPS, EXIF_TAG_GPS_LONGITUDE_REF)};
}

}  // namespace orv::test
