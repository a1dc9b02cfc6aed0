#include "platform/codec/JpegSegments.h"

#include <gtest/gtest.h>

#include "platform/codec/JpegCodec.h"
#include "tests/platform/codec/CodecTestPictures.h"

namespace orv::codec {
namespace {

bool hasEnd(const std::vector<uint8_t>& bytes) {
    return JpegSegments::hasEndAfterScan(bytes.data(), bytes.size());
}

TEST(JpegSegmentsTest, FindsTheScanAndTheEndOfTheMainPicture) {
    const std::vector<uint8_t> thumbnail = JpegCodec::encode(*test::gradient(8, 8), 0.5);
    ImageMetadata metadata;
    metadata.setExif(std::vector<uint8_t>{'E', 'x', 'i', 'f', 0, 0});
    // A whole JPEG, start of scan and end marker included, inside an APP1 segment.
    std::vector<uint8_t> exif = metadata.exif();
    exif.insert(exif.end(), thumbnail.begin(), thumbnail.end());
    metadata.setExif(exif);
    const std::vector<uint8_t> good = JpegCodec::encode(*test::gradient(32, 32), 0.8, &metadata);
    std::vector<int> markers;
    const size_t scan = JpegSegments::walk(good.data(), good.size(),
                                           [&](const auto& s) { markers.push_back(s.marker); });
    ASSERT_GT(scan, exif.size());
    EXPECT_EQ(good[scan + 1], 0xDA);
    EXPECT_EQ(markers.front(), 0xE0);
    EXPECT_EQ(markers[1], 0xE1);
    EXPECT_TRUE(hasEnd(good));

    std::vector<uint8_t> trailing = good;
    trailing.insert(trailing.end(), {0, 1, 2, 3});
    EXPECT_TRUE(hasEnd(trailing));
    const std::vector<uint8_t> cut(good.begin(), good.end() - 40);
    EXPECT_FALSE(hasEnd(cut));  // the thumbnail's end marker does not count

    std::vector<uint8_t> stray = good;
    stray.insert(stray.begin() + scan, {0x00, 0x7F});
    EXPECT_EQ(JpegSegments::walk(stray.data(), stray.size()), scan + 2);
    const std::vector<uint8_t> lengthPastEnd(good.begin(), good.begin() + 30);
    EXPECT_EQ(JpegSegments::walk(lengthPastEnd.data(), lengthPastEnd.size()), 0u);
    EXPECT_EQ(JpegSegments::walk(nullptr, 0), 0u);
}

}  // namespace
}  // namespace orv::codec
