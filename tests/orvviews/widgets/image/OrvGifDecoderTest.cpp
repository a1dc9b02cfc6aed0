#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "orvviews/widgets/image/OrvGifDecoder.h"
#include "orvviews/widgets/image/OrvKitImageCoder.h"
#include "tests/orvviews/widgets/image/GifTestFile.h"
#include "tests/platform/rt/RtTestHelpers.h"

namespace {

using namespace orvtest;

// A red 4 × 3 canvas, then a blue square at (1, 1), then the canvas turned green; loops twice.
std::vector<uint8_t> threeFrames() {
    return GifWriter(4, 3)
        .loop(2)
        .frame({.width = 4, .height = 3, .delay = 5}, kRed)
        .frame({.left = 1, .top = 1, .width = 2, .height = 2}, kBlue)
        .frame({.width = 4, .height = 3, .delay = 12}, kGreen)
        .finish();
}

std::shared_ptr<OrvGifDecoder> newDecoder(double scale = 1) {
    return rt::makeWith<OrvGifDecoder>([&](OrvGifDecoder& d) { d.initWithScale(scale); });
}

std::array<uint8_t, 4> pixelAt(const gfx::ImagePtr& image, int x, int y) {
    const uint8_t* p = image->bitmap()->pixel(x, y);
    return {p[0], p[1], p[2], p[3]};
}

TEST(OrvGifDecoderTest, SettlesTheTypeOnlyPastSixteenBytes) {
    const auto gif = threeFrames();
    auto decoder = newDecoder();
    EXPECT_TRUE(decoder->updateData(shared(gif, 16), false));
    EXPECT_EQ(decoder->type(), 0u);
    EXPECT_EQ(decoder->frameCount(), 0u);
    EXPECT_TRUE(decoder->updateData(shared(gif, 17), false));
    EXPECT_EQ(decoder->type(), 4u);
    EXPECT_EQ(decoder->frameCount(), 0u);
    EXPECT_FALSE(decoder->frameAtIndex(0, false));

    rt::test::LogCapture capture;
    EXPECT_FALSE(newDecoder()->updateData(shared(gif, 15), false));
    ASSERT_EQ(capture.lines().size(), 1u);
    EXPECT_NE(capture.lines()[0].find("image type 0 is not supported by GIFImage"),
              std::string::npos);
}

TEST(OrvGifDecoderTest, PartialDataShowsOnlyTheFirstFrame) {
    const auto gif = threeFrames();
    auto decoder = newDecoder();
    // All but the trailer: every frame is there, yet only the first counts.
    ASSERT_TRUE(decoder->updateData(shared(gif, gif.size() - 1), false));
    EXPECT_EQ(decoder->frameCount(), 1u);
    EXPECT_EQ(decoder->loopCount(), 0u);
    EXPECT_EQ(decoder->width(), 4u);
    EXPECT_EQ(decoder->height(), 3u);
    EXPECT_DOUBLE_EQ(decoder->duration(), 0.05);
    EXPECT_TRUE(decoder->frameAtIndex(0, false));
    EXPECT_FALSE(decoder->frameAtIndex(1, false));
    EXPECT_EQ(decoder->frameDurationAtIndex(1), 0);

    // The buffer may only grow, and nothing comes after the last one.
    EXPECT_FALSE(decoder->updateData(shared(gif, 40), false));
    EXPECT_EQ(decoder->frameCount(), 1u);
    ASSERT_TRUE(decoder->updateData(shared(gif), true));
    EXPECT_EQ(decoder->frameCount(), 3u);
    EXPECT_EQ(decoder->loopCount(), 2u);
    EXPECT_FALSE(decoder->updateData(shared(gif), true));
    EXPECT_EQ(decoder->frameCount(), 3u);
}

TEST(OrvGifDecoderTest, KeepsStoredDelays) {
    auto decoder = OrvGifDecoder::decodeData(shared(threeFrames()), 0);
    ASSERT_TRUE(decoder);
    EXPECT_EQ(decoder->scale(), 1.0);
    EXPECT_DOUBLE_EQ(decoder->frameDurationAtIndex(0), 0.05);
    EXPECT_EQ(decoder->frameDurationAtIndex(1), 0.0);
    EXPECT_DOUBLE_EQ(decoder->frameDurationAtIndex(2), 0.12);
    EXPECT_EQ(decoder->frameDurationAtIndex(3), 0.0);
    EXPECT_DOUBLE_EQ(decoder->duration(), 0.17);
}

TEST(OrvGifDecoderTest, RefusesWhatIsNoGif) {
    EXPECT_FALSE(OrvGifDecoder::decodeData(nullptr, 1));
    rt::test::LogCapture capture;
    const std::vector<uint8_t> png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n', 0, 0,
                                      0,    13,  'I', 'H', 'D',  'R',  0,    0,    0, 1};
    EXPECT_FALSE(OrvGifDecoder::decodeData(shared(png), 1));
    ASSERT_EQ(capture.lines().size(), 1u);
    EXPECT_NE(capture.lines()[0].find("image type 5 is not supported by GIFImage"),
              std::string::npos);
}

TEST(OrvGifDecoderTest, DecodedFramesAreCanvasSizedBgra) {
    auto decoder = OrvGifDecoder::decodeData(shared(threeFrames()), 2);
    ASSERT_TRUE(decoder);

    auto plain = decoder->frameAtIndex(1, false);
    ASSERT_TRUE(plain && plain->image());
    EXPECT_FALSE(orvel_isDecodedForDisplay(*plain->image()));
    EXPECT_EQ(plain->image()->bitmap()->format(), gfx::PixelFormat::RGBA8888Premultiplied);
    EXPECT_EQ(pixelAt(plain->image(), 1, 1), (std::array<uint8_t, 4>{0, 0, 255, 255}));

    auto decoded = decoder->frameAtIndex(1, true);
    ASSERT_TRUE(decoded && decoded->image());
    EXPECT_TRUE(orvel_isDecodedForDisplay(*decoded->image()));
    EXPECT_EQ(decoded->image()->scale(), 2.0);
    EXPECT_EQ(decoded->index(), 1u);
    EXPECT_TRUE(decoded->isFullSize());
    const auto& bitmap = *decoded->image()->bitmap();
    EXPECT_EQ(bitmap.format(), gfx::PixelFormat::BGRA8888Premultiplied);
    EXPECT_EQ(bitmap.width(), 4);
    EXPECT_EQ(bitmap.height(), 3);
    // The blue square over the red canvas the first frame left.
    EXPECT_EQ(pixelAt(decoded->image(), 2, 2), (std::array<uint8_t, 4>{255, 0, 0, 255}));
    EXPECT_EQ(pixelAt(decoded->image(), 0, 0), (std::array<uint8_t, 4>{0, 0, 255, 255}));
    EXPECT_FALSE(decoder->frameAtIndex(3, true));
}

TEST(OrvGifDecoderTest, ExtendsASmallFrameToTheCanvasTopLeft) {
    // A 2 × 1 frame, R, G, B, A: red, then half-transparent green.
    const gfx::Bitmap frame(2, 1, gfx::PixelFormat::RGBA8888Premultiplied, 0,
                            {255, 0, 0, 255, 0, 128, 0, 128});
    auto canvas = OrvGifDecoder::extendedToCanvas(frame, 3, 2);
    ASSERT_TRUE(canvas);
    EXPECT_EQ(canvas->format(), gfx::PixelFormat::BGRA8888Premultiplied);
    ASSERT_EQ(canvas->width(), 3);
    ASSERT_EQ(canvas->height(), 2);
    const std::vector<uint8_t> expected = {0, 0, 255, 255, 0, 128, 0, 128, 0, 0, 0, 0,
                                           0, 0, 0,   0,   0, 0,   0, 0,   0, 0, 0, 0};
    EXPECT_EQ(std::vector<uint8_t>(canvas->data(), canvas->data() + 24), expected);
    EXPECT_FALSE(OrvGifDecoder::extendedToCanvas(frame, 0, 2));
}

// Run under ThreadSanitizer too: a player reads durations and the count while data streams in.
TEST(OrvGifDecoderTest, DurationsCanBeReadWhileDataArrives) {
    GifWriter writer(4, 4);
    for (int i = 0; i < 8; ++i) writer.frame({.width = 4, .height = 4, .delay = 3}, i % 4);
    const auto gif = writer.finish();
    auto decoder = newDecoder();
    std::atomic<bool> done{false};

    std::thread reader([&] {
        while (!done.load()) {
            for (uint64_t i = 0; i < 9; ++i) {
                const double d = decoder->frameDurationAtIndex(i);
                EXPECT_TRUE(d == 0 || d == 0.03) << d;
            }
            EXPECT_LE(decoder->frameCount(), 8u);
        }
    });
    for (size_t n = 17; n <= gif.size(); n += 7) decoder->updateData(shared(gif, n), false);
    decoder->updateData(shared(gif), true);
    done = true;
    reader.join();
    EXPECT_EQ(decoder->frameCount(), 8u);
    EXPECT_TRUE(decoder->frameAtIndex(7, true));
}

}  // namespace
