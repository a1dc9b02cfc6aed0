#include "platform/codec/ImageReader.h"

#include <gtest/gtest.h>

#include <fstream>

#include "platform/codec/JpegCodec.h"
#include "platform/codec/PngCodec.h"
#include "platform/codec/WebpCodec.h"
#include "tests/platform/codec/CodecTestPictures.h"
#include "tests/support/TestEnvironment.h"

namespace orv::codec {
namespace {

using gfx::ImageOrientation;
using test::gradient;

std::optional<DecodedImage> decode(const std::vector<uint8_t>& bytes, int maxLongSide = 0) {
    return ImageReader::decode(bytes.data(), bytes.size(), maxLongSide);
}

TEST(ImageReaderTest, DispatchesByTypeAndFitsTheLongSide) {
    ImageMetadata metadata;
    metadata.setExifOrientation(6);
    const std::vector<uint8_t> files[] = {JpegCodec::encode(*gradient(400, 300), 0.9, &metadata),
                                          PngCodec::encode(*gradient(300, 400)),
                                          WebpCodec::encode(*gradient(400, 300), 1)};
    const ImageType types[] = {ImageType::JPEG, ImageType::PNG, ImageType::WebP};
    for (int i = 0; i < 3; ++i) {
        const auto full = decode(files[i]);
        ASSERT_TRUE(full) << i;
        EXPECT_EQ(full->type, types[i]);
        EXPECT_EQ(std::max(full->bitmap->width(), full->bitmap->height()), 400);

        const auto fitted = decode(files[i], 120);  // 1/4 by the DCT for the JPEG, then 100 → 120
        ASSERT_TRUE(fitted) << i;
        const int w = fitted->bitmap->width(), h = fitted->bitmap->height();
        EXPECT_EQ(std::max(w, h), 120) << i;
        EXPECT_EQ(std::min(w, h), 90) << i;
        // The bottom right corner of the gradient stays bright red and green.
        const uint8_t* corner = fitted->bitmap->pixel(w - 1, h - 1);
        EXPECT_GT(corner[0], 220) << i;
        EXPECT_GT(corner[1], 220) << i;

        const auto small = decode(files[i], 1000);  // never enlarged
        ASSERT_TRUE(small);
        EXPECT_EQ(std::max(small->bitmap->width(), small->bitmap->height()), 400);
    }
    const auto jpeg = decode(files[0], 200);
    EXPECT_EQ(jpeg->orientation, ImageOrientation::Right);
    EXPECT_EQ(jpeg->metadata.exifOrientation(), 6);
    EXPECT_EQ(decode(files[1])->orientation, ImageOrientation::Up);
}

TEST(ImageReaderTest, UnsupportedEmptyAndBrokenDataGiveNothing) {
    test::LogCapture log;
    const std::vector<uint8_t> gif = {'G', 'I', 'F', '8', '9', 'a', 1, 0, 1, 0};
    EXPECT_FALSE(decode(gif));
    EXPECT_NE(log.text().find("unsupported image type gif"), std::string::npos);
    EXPECT_FALSE(decode({}));
    EXPECT_FALSE(ImageReader::decode(nullptr, 0));
    const std::vector<uint8_t> png = PngCodec::encode(*gradient(8, 8));
    EXPECT_FALSE(decode(std::vector<uint8_t>(png.begin(), png.end() - 20)));
}

TEST(ImageReaderTest, ReadsFiles) {
    const std::string path = orv::test::TestEnvironment::tempDir() + "/reader.jpg";
    const std::vector<uint8_t> jpeg = JpegCodec::encode(*gradient(40, 20), 0.9);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(jpeg.data()), std::streamsize(jpeg.size()));
    EXPECT_EQ(ImageReader::readAll(path), jpeg);
    const auto image = ImageReader::readFile(path, 10);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->bitmap->width(), 10);
    EXPECT_EQ(image->bitmap->height(), 5);
    EXPECT_FALSE(ImageReader::readAll("/nonexistent-dir/x.jpg"));
    EXPECT_FALSE(ImageReader::readFile(orv::test::TestEnvironment::tempDir()));  // a folder
    const std::string empty = orv::test::TestEnvironment::tempDir() + "/empty.jpg";
    std::ofstream{empty};
    EXPECT_FALSE(ImageReader::readFile(empty));
}

}  // namespace
}  // namespace orv::codec
