#include "platform/codec/JpegCodec.h"

#include <gtest/gtest.h>
#include <turbojpeg.h>

#include "tests/platform/codec/CodecTestPictures.h"

namespace orv::codec {
namespace {

using gfx::Bitmap;
using gfx::BitmapPtr;
using gfx::PixelFormat;
using test::gradient;
using test::maxDifference;

BitmapPtr decode(const std::vector<uint8_t>& bytes, int minLongSide = 0) {
    return JpegCodec::decode(bytes.data(), bytes.size(), minLongSide);
}

// The offset of the first `marker` segment (its 0xFF byte), or 0.
size_t findMarker(const std::vector<uint8_t>& jpeg, uint8_t marker) {
    for (size_t i = 2; i + 1 < jpeg.size(); ++i) {
        if (jpeg[i] == 0xFF && jpeg[i + 1] == marker) return i;
    }
    return 0;
}

TEST(JpegCodecTest, RoundTripsEveryPixelFormatWithinTolerance) {
    const BitmapPtr original = gradient(64, 48);
    for (PixelFormat format : {PixelFormat::RGBA8888Premultiplied,
                               PixelFormat::BGRA8888Premultiplied, PixelFormat::BGRX8888}) {
        const std::vector<uint8_t> jpeg = JpegCodec::encode(*original->converted(format), 0.95);
        const BitmapPtr back = decode(jpeg);
        ASSERT_TRUE(back) << int(format);
        EXPECT_EQ(back->format(), PixelFormat::RGBA8888Premultiplied);
        EXPECT_LE(maxDifference(*back, *original), 8) << int(format);
        int w = 0, h = 0;
        EXPECT_TRUE(JpegCodec::readSize(jpeg.data(), jpeg.size(), &w, &h));
        EXPECT_EQ(w * 1000 + h, 64048);
    }
    // Quality is clamped, and a lower one gives a smaller file.
    EXPECT_LT(JpegCodec::encode(*original, -3).size(), JpegCodec::encode(*original, 0.5).size());
    EXPECT_EQ(JpegCodec::encode(*original, 7), JpegCodec::encode(*original, 1));
    EXPECT_TRUE(JpegCodec::encode(Bitmap(0, 0), 0.9).empty());
}

TEST(JpegCodecTest, DctScalingPicksTheSmallestScaleThatStillCoversTheLongSide) {
    const std::vector<uint8_t> jpeg = JpegCodec::encode(*gradient(400, 300), 0.9);
    const struct {
        int minLongSide, width, height;
    } cases[] = {{0, 400, 300}, {1000, 400, 300}, {400, 400, 300}, {100, 100, 75},
                 {90, 100, 75}, {101, 150, 113},  {399, 400, 300}, {1, 50, 38}};
    for (const auto& c : cases) {
        const BitmapPtr b = decode(jpeg, c.minLongSide);
        ASSERT_TRUE(b) << c.minLongSide;
        EXPECT_EQ(b->width(), c.width) << c.minLongSide;
        EXPECT_EQ(b->height(), c.height) << c.minLongSide;
    }
    // The reduced picture is still the same picture.
    const BitmapPtr quarter = decode(jpeg, 100);
    const uint8_t* corner = quarter->pixel(99, 74);
    EXPECT_NEAR(corner[0], 255, 12);
    EXPECT_NEAR(corner[1], 255, 12);
    EXPECT_EQ(corner[3], 255);
}

// Colour layouts our encoder never writes: grey, and four-channel (inverted C, M, Y, K).
TEST(JpegCodecTest, DecodesGrayAndCmyk) {
    tjhandle handle = tjInitCompress();
    const auto compress = [&](const std::vector<uint8_t>& pixels, int format, int samp) {
        unsigned char* out = nullptr;
        unsigned long size = 0;
        EXPECT_EQ(tjCompress2(handle, pixels.data(), 16, 0, 16, format, &out, &size, samp, 100, 0),
                  0);
        std::vector<uint8_t> bytes(out, out + size);
        tjFree(out);
        return bytes;
    };
    const BitmapPtr gray = decode(compress(std::vector<uint8_t>(256, 77), TJPF_GRAY, TJSAMP_GRAY));
    ASSERT_TRUE(gray);
    EXPECT_NEAR(gray->pixel(5, 5)[0], 77, 1);
    EXPECT_NEAR(gray->pixel(5, 5)[2], 77, 1);
    EXPECT_EQ(gray->pixel(5, 5)[3], 255);

    std::vector<uint8_t> cmyk;
    for (int i = 0; i < 256; ++i) {
        const bool left = (i % 16) < 8;
        const uint8_t px[] = {uint8_t(left ? 200 : 255), uint8_t(left ? 100 : 255),
                              uint8_t(left ? 50 : 255), uint8_t(left ? 255 : 128)};
        cmyk.insert(cmyk.end(), px, px + 4);
    }
    const BitmapPtr colour = decode(compress(cmyk, TJPF_CMYK, TJSAMP_444));
    tjDestroy(handle);
    ASSERT_TRUE(colour);
    const uint8_t* l = colour->pixel(2, 8);
    const uint8_t* r = colour->pixel(13, 8);
    EXPECT_NEAR(l[0], 200, 3);
    EXPECT_NEAR(l[1], 100, 3);
    EXPECT_NEAR(l[2], 50, 3);
    EXPECT_NEAR(r[0], 128, 3);
    EXPECT_NEAR(r[2], 128, 3);
    EXPECT_EQ(r[3], 255);
}

TEST(JpegCodecTest, TruncatedCorruptOrAbsurdDataGivesNothing) {
    const std::vector<uint8_t> good = JpegCodec::encode(*gradient(64, 48), 0.9);
    ASSERT_TRUE(decode(good));
    test::LogCapture log;
    for (size_t n :
         {size_t{0}, size_t{1}, size_t{3}, size_t{100}, good.size() / 2, good.size() - 2}) {
        EXPECT_EQ(JpegCodec::decode(good.data(), n), nullptr) << n << " bytes";
    }
    EXPECT_NE(log.text().find("jpeg:"), std::string::npos);
    EXPECT_EQ(JpegCodec::decode(nullptr, 10), nullptr);

    // An unsupported sample precision in the frame header.
    std::vector<uint8_t> corrupt = good;
    const size_t sof = findMarker(corrupt, 0xC0);
    ASSERT_NE(sof, 0u);
    corrupt[sof + 4] = 3;
    EXPECT_EQ(decode(corrupt), nullptr);

    // 40000 × 40000 in the frame header: refused before any pixel is allocated.
    std::vector<uint8_t> huge = good;
    for (int i : {5, 7}) huge[sof + i] = 0x9C, huge[sof + i + 1] = 0x40;
    EXPECT_EQ(decode(huge), nullptr);
    EXPECT_NE(log.text().find("refusing a picture of 40000x40000"), std::string::npos);

    // Stray bytes between two header segments only earn a warning: the picture is intact.
    std::vector<uint8_t> stray = good;
    const size_t dqt = findMarker(stray, 0xDB);
    stray.insert(stray.begin() + dqt, {0x00, 0x11, 0x22});
    const BitmapPtr strayed = decode(stray);
    ASSERT_TRUE(strayed);
    EXPECT_EQ(maxDifference(*strayed, *decode(good)), 0);

    // A few bytes claiming a large picture fail at once, not after filling it in.
    std::vector<uint8_t> tall = good;
    tall.resize(good.size() / 3);
    tall[sof + 5] = 0x40;  // 16384 rows
    EXPECT_EQ(decode(tall), nullptr);

    // Found by fuzzing: a harmless warning (a stray byte) first, then no data at all for a
    // 26128 × 9990 picture. It must not come back as a grey picture.
    const std::vector<uint8_t> strayThenNothing = {
        0xFF, 0xD8, 0xFF, 0xC0, 0x00, 0x14, 0x08, 0x27, 0x06, 0x66, 0x10, 0x04, 0x01,
        0x22, 0x00, 0x02, 0x11, 0x01, 0x03, 0x11, 0x00, 0x04, 0x22, 0x00, 0x01, 0xFF,
        0xDA, 0x00, 0x0E, 0x04, 0x01, 0x00, 0x02, 0x11, 0x03, 0x11, 0x04, 0x00};
    EXPECT_EQ(decode(strayThenNothing), nullptr);

    const std::vector<uint8_t> png = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A, 0, 0, 0, 0};
    EXPECT_EQ(decode(png), nullptr);
    int w = 0, h = 0;
    EXPECT_FALSE(JpegCodec::readSize(png.data(), png.size(), &w, &h));
}

TEST(JpegCodecTest, WritesMetadataAfterTheJfifHeader) {
    ImageMetadata metadata;
    metadata.setExifOrientation(6);
    std::vector<uint8_t> icc(150000);  // three APP2 chunks
    for (size_t i = 0; i < icc.size(); ++i) icc[i] = uint8_t(i * 7 + i / 251);
    metadata.setIccProfile(icc);
    const std::vector<uint8_t> jpeg = JpegCodec::encode(*gradient(32, 32), 0.8, &metadata);

    ASSERT_GE(jpeg.size(), 24u);
    EXPECT_EQ(jpeg[3], 0xE0);  // JFIF first
    const size_t app1 = 4 + (jpeg[4] << 8 | jpeg[5]);
    EXPECT_EQ(jpeg[app1 + 1], 0xE1);
    EXPECT_EQ(findMarker(jpeg, 0xE1), app1);
    EXPECT_LT(findMarker(jpeg, 0xE1), findMarker(jpeg, 0xE2));

    const ImageMetadata back = ImageMetadata::fromJpeg(jpeg.data(), jpeg.size());
    EXPECT_EQ(back.exifOrientation(), 6);
    EXPECT_EQ(back.exif(), metadata.exif());
    EXPECT_EQ(back.iccProfile(), icc);
    EXPECT_TRUE(decode(jpeg));
}

}  // namespace
}  // namespace orv::codec
