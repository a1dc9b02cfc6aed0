#include "platform/codec/ImageMetadata.h"

#include <gtest/gtest.h>
#include <libexif/exif-data.h>

#include <cstdlib>
#include <cstring>

#include "platform/codec/ImageReader.h"
#include "platform/codec/JpegCodec.h"
#include "platform/codec/JpegSegments.h"
#include "tests/platform/codec/CodecTestPictures.h"

namespace orv::codec {
namespace {

using gfx::ImageOrientation;

std::vector<uint8_t> segment(uint8_t marker, const std::vector<uint8_t>& payload) {
    std::vector<uint8_t> s = {0xFF, marker, uint8_t((payload.size() + 2) >> 8),
                              uint8_t((payload.size() + 2) & 0xFF)};
    s.insert(s.end(), payload.begin(), payload.end());
    return s;
}

std::vector<uint8_t> bytes(const char* text, size_t n) {
    return std::vector<uint8_t>(text, text + n);
}

TEST(ImageMetadataTest, OrientationTableAndItsInverse) {
    const ImageOrientation expected[] = {ImageOrientation::Up,
                                         ImageOrientation::UpMirrored,
                                         ImageOrientation::Down,
                                         ImageOrientation::DownMirrored,
                                         ImageOrientation::LeftMirrored,
                                         ImageOrientation::Right,
                                         ImageOrientation::RightMirrored,
                                         ImageOrientation::Left};
    for (int v = 1; v <= 8; ++v) {
        EXPECT_EQ(ImageMetadata::orientationFromExif(v), expected[v - 1]) << v;
        EXPECT_EQ(ImageMetadata::exifFromOrientation(expected[v - 1]), v);
    }
    for (int v : {0, 9, -1, 1000})
        EXPECT_EQ(ImageMetadata::orientationFromExif(v), ImageOrientation::Up);
}

TEST(ImageMetadataTest, OrientationIsWrittenIntoANewOrExistingBlock) {
    ImageMetadata m;
    EXPECT_TRUE(m.empty());
    EXPECT_EQ(m.exifOrientation(), 1);
    m.setExifOrientation(8);
    ASSERT_FALSE(m.empty());
    EXPECT_EQ(std::memcmp(m.exif().data(), "Exif\0\0", 6), 0);
    EXPECT_EQ(m.exifOrientation(), 8);
    m.setExifOrientation(3);  // replaces, does not add a second entry
    EXPECT_EQ(m.exifOrientation(), 3);
    m.setExifOrientation(42);
    EXPECT_EQ(m.exifOrientation(), 1);
}

TEST(ImageMetadataTest, PixelSizeIsRecordedAndTheThumbnailDropped) {
    // A block with a camera tag and a thumbnail, as a camera would write it.
    ExifData* data = exif_data_new();
    ExifEntry* make = exif_entry_new();
    exif_content_add_entry(data->ifd[EXIF_IFD_0], make);
    exif_entry_initialize(make, EXIF_TAG_X_RESOLUTION);
    exif_entry_unref(make);
    const std::vector<uint8_t> thumb = JpegCodec::encode(*test::gradient(16, 16), 0.5);
    data->data = static_cast<unsigned char*>(std::malloc(thumb.size()));
    std::memcpy(data->data, thumb.data(), thumb.size());
    data->size = static_cast<unsigned>(thumb.size());
    unsigned char* raw = nullptr;
    unsigned rawSize = 0;
    exif_data_save_data(data, &raw, &rawSize);
    exif_data_unref(data);
    ImageMetadata m;
    m.setExif(std::vector<uint8_t>(raw, raw + rawSize));
    std::free(raw);

    m.setExifOrientation(6);
    m.setPixelSize(4000, 3000);
    EXPECT_EQ(m.exifOrientation(), 6);
    EXPECT_LT(m.exif().size(), thumb.size());
    ExifData* back = exif_data_new_from_data(m.exif().data(), unsigned(m.exif().size()));
    const ExifByteOrder order = exif_data_get_byte_order(back);
    ExifEntry* x = exif_content_get_entry(back->ifd[EXIF_IFD_EXIF], EXIF_TAG_PIXEL_X_DIMENSION);
    ExifEntry* y = exif_content_get_entry(back->ifd[EXIF_IFD_EXIF], EXIF_TAG_PIXEL_Y_DIMENSION);
    ASSERT_TRUE(x && y);
    EXPECT_EQ(exif_get_long(x->data, order), 4000u);
    EXPECT_EQ(exif_get_long(y->data, order), 3000u);
    EXPECT_EQ(back->size, 0u);
    EXPECT_NE(exif_content_get_entry(back->ifd[EXIF_IFD_0], EXIF_TAG_X_RESOLUTION), nullptr);
    exif_data_unref(back);
}

TEST(ImageMetadataTest, ReadsSegmentsAndSurvivesBrokenOnes) {
    ImageMetadata source;
    source.setExifOrientation(5);
    const std::vector<uint8_t> jpeg = JpegCodec::encode(*test::gradient(24, 16), 0.8, &source);
    // A JPEG whose EXIF block libexif cannot read: the picture still decodes, upright.
    ImageMetadata garbage;
    garbage.setExif(bytes("Exif\0\0XY\0\x2a\0\0\0\x08junk", 18));
    const std::vector<uint8_t> broken = JpegCodec::encode(*test::gradient(24, 16), 0.8, &garbage);
    test::LogCapture log;
    EXPECT_TRUE(ImageMetadata::fromJpeg(broken.data(), broken.size()).empty());
    const auto decoded = ImageReader::decode(broken.data(), broken.size());
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->orientation, ImageOrientation::Up);
    EXPECT_EQ(decoded->metadata.exifOrientation(), 1);
    EXPECT_NE(log.text().find("EXIF"), std::string::npos);

    // Segment lengths running past the end, and an ICC profile missing a chunk, give nothing.
    const size_t app1 = 4 + (jpeg[4] << 8 | jpeg[5]);
    std::vector<uint8_t> cut(jpeg.begin(), jpeg.begin() + app1 + 10);
    EXPECT_TRUE(ImageMetadata::fromJpeg(cut.data(), cut.size()).empty());
    std::vector<uint8_t> partial = {0xFF, 0xD8};
    std::vector<uint8_t> secondOfTwo(std::begin(JpegSegments::kIccHeader),
                                     std::end(JpegSegments::kIccHeader));
    secondOfTwo.insert(secondOfTwo.end(), {2, 2, 'a', 'b', 'c'});
    const auto chunk = segment(0xE2, secondOfTwo);
    partial.insert(partial.end(), chunk.begin(), chunk.end());
    EXPECT_TRUE(ImageMetadata::fromJpeg(partial.data(), partial.size()).iccProfile().empty());
    EXPECT_TRUE(ImageMetadata::fromJpeg(nullptr, 0).empty());
    EXPECT_EQ(ImageMetadata::fromJpeg(jpeg.data(), jpeg.size()).exifOrientation(), 5);
}

}  // namespace
}  // namespace orv::codec
