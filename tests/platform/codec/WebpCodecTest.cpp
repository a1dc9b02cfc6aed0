#include "platform/codec/WebpCodec.h"

#include <gtest/gtest.h>

#include "tests/platform/codec/CodecTestPictures.h"

namespace orv::codec {
namespace {

using gfx::BitmapPtr;
using gfx::PixelFormat;
using test::gradient;
using test::maxDifference;

BitmapPtr decode(const std::vector<uint8_t>& bytes) {
    return WebpCodec::decode(bytes.data(), bytes.size());
}

TEST(WebpCodecTest, LosslessRoundTripIsExactAndLossyIsClose) {
    const BitmapPtr opaque = gradient(40, 30);
    const std::vector<uint8_t> lossless = WebpCodec::encode(*opaque, 1);
    const BitmapPtr back = decode(lossless);
    ASSERT_TRUE(back);
    EXPECT_EQ(maxDifference(*back, *opaque), 0);
    int w = 0, h = 0;
    EXPECT_TRUE(WebpCodec::readSize(lossless.data(), lossless.size(), &w, &h));
    EXPECT_EQ(w * 100 + h, 4030);
    // Another pixel format of the same picture encodes the same.
    EXPECT_EQ(WebpCodec::encode(*opaque->converted(PixelFormat::BGRX8888), 1), lossless);

    const std::vector<uint8_t> lossy = WebpCodec::encode(*opaque, 0.9);
    const BitmapPtr near = decode(lossy);
    ASSERT_TRUE(near);
    EXPECT_LE(maxDifference(*near, *opaque), 16);
    EXPECT_LT(WebpCodec::encode(*opaque, 0.1).size(), lossy.size());
}

TEST(WebpCodecTest, KeepsAlphaPremultiplied) {
    const BitmapPtr translucent = gradient(40, 30, true);
    // Straight alpha in the file: premultiplied → straight → premultiplied may move a
    // component by one step.
    const BitmapPtr back = decode(WebpCodec::encode(*translucent, 1));
    ASSERT_TRUE(back);
    EXPECT_LE(maxDifference(*back, *translucent), 1);
    EXPECT_EQ(back->pixel(0, 29)[3], 55);
    const BitmapPtr lossy = decode(WebpCodec::encode(*translucent, 0.8));
    ASSERT_TRUE(lossy);
    EXPECT_NEAR(lossy->pixel(20, 29)[3], 55, 4);
    EXPECT_LE(lossy->pixel(20, 29)[0], lossy->pixel(20, 29)[3]);  // still premultiplied
}

TEST(WebpCodecTest, TruncatedOrCorruptDataGivesNothing) {
    const std::vector<uint8_t> good = WebpCodec::encode(*gradient(40, 30), 0.7);
    test::LogCapture log;
    for (size_t n : {size_t{0}, size_t{12}, size_t{30}, good.size() / 2, good.size() - 1}) {
        EXPECT_EQ(WebpCodec::decode(good.data(), n), nullptr) << n << " bytes";
    }
    std::vector<uint8_t> corrupt = good;
    for (size_t i = 20; i < 40 && i < corrupt.size(); ++i) corrupt[i] = 0xFF;  // VP8 frame header
    EXPECT_EQ(decode(corrupt), nullptr);
    EXPECT_EQ(WebpCodec::decode(nullptr, 5), nullptr);
    EXPECT_NE(log.text().find("webp:"), std::string::npos);
}

}  // namespace
}  // namespace orv::codec
