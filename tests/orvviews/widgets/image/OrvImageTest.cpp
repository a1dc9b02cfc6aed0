#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "orvviews/widgets/image/OrvGifDecoder.h"
#include "orvviews/widgets/image/OrvImage.h"
#include "orvviews/widgets/image/OrvImageDecoderFrame.h"
#include "tests/platform/rt/RtTestHelpers.h"

namespace {

uint64_t typeOf(const char* head, size_t length) {
    std::array<uint8_t, 16> bytes{};
    std::memcpy(bytes.data(), head, length);
    return rt::make<OrvImageDecoder>()->getImageType(bytes.data());
}

// The full table is the codec's; here, that the decoder reads it through the same rules.
TEST(OrvImageDecoderTest, TellsTypesByMagicBytesInOrder) {
    EXPECT_EQ(typeOf("GIF89a", 6), 4u);
    EXPECT_EQ(typeOf("RIFF\0\0\0\0WEBPVP8 ", 16), 6u);
    // A RIFF container of something else goes on to the later rules.
    EXPECT_EQ(typeOf("RIFF\0\0\0\0AVI ", 12), 0u);
    EXPECT_EQ(typeOf("RIFFjP  \rxxxxxxx", 16), 2u);
}

TEST(OrvImageDecoderTest, ValidTypesAreTheSupportedOnes) {
    EXPECT_FALSE(rt::make<OrvImageDecoder>()->validImageType(4));
    auto gif = rt::make<OrvGifDecoder>();
    EXPECT_TRUE(gif->validImageType(4));
    EXPECT_FALSE(gif->validImageType(5));
    EXPECT_FALSE(gif->validImageType(0));
}

TEST(OrvImageTest, ReadsTheScaleOfAFileName) {
    EXPECT_EQ(OrvImage::getScaleFromFilename("icon@2x.png"), 2.0);
    EXPECT_EQ(OrvImage::getScaleFromFilename("icon@2x"), 2.0);
    EXPECT_EQ(OrvImage::getScaleFromFilename("dir/icon@3x.gif"), 3.0);
    EXPECT_EQ(OrvImage::getScaleFromFilename("icon@1.5x.png"), 1.5);
    EXPECT_EQ(OrvImage::getScaleFromFilename("icon@3.x.png"), 3.0);
    EXPECT_EQ(OrvImage::getScaleFromFilename("icon@x.png"), 1.0);
    EXPECT_EQ(OrvImage::getScaleFromFilename("icon@2x.png/"), 1.0);
    EXPECT_EQ(OrvImage::getScaleFromFilename("icon@2xy.png"), 1.0);
    EXPECT_EQ(OrvImage::getScaleFromFilename(""), 1.0);
}

TEST(OrvImageTest, AddsTheScaleSuffix) {
    EXPECT_EQ(OrvImage::getResFilename("a", 2.0), "a@2x");
    EXPECT_EQ(OrvImage::getResFilename("a", 1.5), "a@1.5x");
    EXPECT_EQ(OrvImage::getResFilename("dir/a", 3.0), "dir/a@3x");
    EXPECT_EQ(OrvImage::getResFilename("a", 1.0), "a");
    EXPECT_EQ(OrvImage::getResFilename("a", 1.0000001), "a");
    EXPECT_EQ(OrvImage::getResFilename("dir/", 2.0), "dir/");
    EXPECT_EQ(OrvImage::getResFilename("", 2.0), "");
    EXPECT_EQ(OrvImage::getResFilename(std::nullopt, 2.0), std::nullopt);
}

TEST(OrvImageTest, MapsExifOrientations) {
    using O = gfx::ImageOrientation;
    const O expected[] = {O::Up,           O::Up,    O::UpMirrored,    O::Down, O::DownMirrored,
                          O::LeftMirrored, O::Right, O::RightMirrored, O::Left, O::Up};
    for (long value = 0; value <= 9; ++value)
        EXPECT_EQ(OrvImage::UIImageOrientationFromEXIFValue(value), expected[value]) << value;
}

TEST(OrvImageTest, AbstractInitialisersLogAndFail) {
    const auto previous = rt::Log::minimumLevel();
    rt::Log::setMinimumLevel(rt::Log::Level::Debug);
    std::vector<std::string> lines;
    {
        rt::test::LogCapture capture;
        auto image = rt::make<OrvImage>();
        auto data = std::make_shared<const std::vector<uint8_t>>(20, 0);
        EXPECT_FALSE(image->initWithContentsOfFile("/nowhere.gif"));
        EXPECT_FALSE(image->initWithData(data));
        EXPECT_FALSE(image->initWithData(data, 2));
        lines = capture.lines();
    }
    rt::Log::setMinimumLevel(previous);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_NE(lines[0].find("you need overwrite - (instancetype)initWithContentsOfFile:"
                            "(NSString *)path;"),
              std::string::npos);
    EXPECT_NE(lines[2].find("initWithData:(NSData *)data scale:(CGFloat)scale;"),
              std::string::npos);
}

TEST(OrvImageFrameTest, CopyKeepsClassAndEveryField) {
    auto image = gfx::Image::withBitmap(std::make_shared<gfx::Bitmap>(1, 1));
    auto frame = rt::make<OrvImageDecoderFrame>();
    frame->setIndex(3);
    frame->setOffsetY(7);
    frame->setDuration(0.5);
    frame->setBlend(2);
    frame->setImage(image);
    frame->setHasAlpha(true);
    frame->setBlendFromIndex(2);
    auto copy = std::dynamic_pointer_cast<OrvImageDecoderFrame>(frame->copy());
    ASSERT_TRUE(copy);
    EXPECT_NE(copy, frame);
    EXPECT_EQ(copy->index(), 3u);
    EXPECT_EQ(copy->offsetY(), 7u);
    EXPECT_EQ(copy->duration(), 0.5);
    EXPECT_EQ(copy->blend(), 2u);
    EXPECT_EQ(copy->image(), image);
    EXPECT_TRUE(copy->hasAlpha());
    EXPECT_EQ(copy->blendFromIndex(), 2u);
    EXPECT_EQ(OrvImageFrame::frameWithImage(image)->copy()->getClass(),
              OrvImageFrame::staticClass());
}

}  // namespace
