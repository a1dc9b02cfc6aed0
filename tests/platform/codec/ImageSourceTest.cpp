#include "platform/codec/ImageSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/platform/codec/CodecTestPictures.h"
#include "tests/support/GifWriter.h"

namespace orv::codec {
namespace {

using Bytes = std::vector<uint8_t>;
using orv::test::GifWriter;
using Frame = GifWriter::Frame;
using Indices = GifWriter::Indices;

// Pixels as 0xRRGGBBAA, to read the expectations at a glance.
constexpr uint32_t kRed = 0xFF0000FF, kGreen = 0x00FF00FF, kBlue = 0x0000FFFF, kWhite = 0xFFFFFFFF,
                   kYellow = 0xFFFF00FF, kClear = 0;

ImageSource::Data share(Bytes bytes) {
    return std::make_shared<const Bytes>(std::move(bytes));
}

ImageSource::Data prefix(const Bytes& bytes, size_t n) {
    return share(Bytes(bytes.begin(), bytes.begin() + long(n)));
}

uint32_t pixel(const gfx::Bitmap& b, int x, int y) {
    const uint8_t* p = b.pixel(x, y);
    return uint32_t(p[0]) << 24 | p[1] << 16 | p[2] << 8 | p[3];
}

// Every frame of a complete file, asked in order.
std::vector<gfx::BitmapPtr> allFrames(const Bytes& gif) {
    auto source = ImageSource::createWithData(share(gif));
    std::vector<gfx::BitmapPtr> frames;
    for (size_t i = 0; source && i < source->count(); ++i) {
        frames.push_back(source->createImageAtIndex(i, false));
    }
    return frames;
}

bool samePixels(const gfx::Bitmap& a, const gfx::Bitmap& b) {
    return test::maxDifference(a, b) == 0;
}

// A 4×4 red frame, then a green 2×2 at (1, 1) with the disposal under test, then a blue
// pixel at (0, 0): what the third frame shows at (1, 1) is what the disposal left.
Bytes disposalGif(int disposal) {
    return GifWriter(4, 4)
        .frame({0, 0, 4, 4}, 0)
        .frame({1, 1, 2, 2, disposal}, 1)
        .frame({0, 0, 1, 1}, 2)
        .finish();
}

TEST(ImageSourceTest, EachDisposalLeavesWhatViewersShow) {
    const std::pair<int, uint32_t> cases[] = {{DISPOSAL_UNSPECIFIED, kGreen},
                                              {DISPOSE_DO_NOT, kGreen},
                                              {DISPOSE_BACKGROUND, kClear},
                                              {DISPOSE_PREVIOUS, kRed}};
    for (auto [disposal, left] : cases) {
        SCOPED_TRACE(disposal);
        const auto frames = allFrames(disposalGif(disposal));
        ASSERT_EQ(frames.size(), 3u);
        EXPECT_EQ(pixel(*frames[1], 1, 1), kGreen);
        EXPECT_EQ(pixel(*frames[1], 0, 0), kRed);
        EXPECT_EQ(pixel(*frames[2], 0, 0), kBlue);
        EXPECT_EQ(pixel(*frames[2], 1, 1), left);
        EXPECT_EQ(pixel(*frames[2], 2, 2), left);
        EXPECT_EQ(pixel(*frames[2], 3, 3), kRed);
    }
}

TEST(ImageSourceTest, TransparentIndexShowsWhatLiesBelow) {
    const Bytes gif = GifWriter(2, 1)
                          .frame({0, 0, 2, 1, DISPOSAL_UNSPECIFIED, 1}, {0, 1})
                          .frame({0, 0, 2, 1, DISPOSAL_UNSPECIFIED, 2}, {2, 3})
                          .finish();
    const auto frames = allFrames(gif);
    ASSERT_EQ(frames.size(), 2u);
    EXPECT_EQ(pixel(*frames[0], 0, 0), kRed);
    EXPECT_EQ(pixel(*frames[0], 1, 0), kClear);
    EXPECT_EQ(pixel(*frames[1], 0, 0), kRed);
    EXPECT_EQ(pixel(*frames[1], 1, 0), kWhite);
}

TEST(ImageSourceTest, InterlacedFrameEqualsItsProgressiveTwin) {
    const Frame f{0, 0, 3, 11};
    Indices rows;
    for (int i = 0; i < f.width * f.height; ++i) rows.push_back(uint8_t(i / 3 * 7 % 4));
    Frame interlaced = f;
    interlaced.interlaced = true;
    const auto plain = allFrames(GifWriter(3, 11).frame(f, rows).finish());
    const auto woven = allFrames(GifWriter(3, 11).frame(interlaced, rows).finish());
    ASSERT_EQ(plain.size(), 1u);
    ASSERT_EQ(woven.size(), 1u);
    EXPECT_TRUE(samePixels(*plain[0], *woven[0]));
    EXPECT_EQ(pixel(*woven[0], 0, 1), kWhite);  // row 1 is index 7 % 4 = 3
}

TEST(ImageSourceTest, FramesAreClippedToTheCanvas) {
    const Bytes gif = GifWriter(4, 4)
                          .frame({1, 1, 2, 2}, 0)
                          .frame({3, 2, 4, 4, 0, NO_TRANSPARENT_COLOR, 0, false, true}, 1)
                          .frame({9, 9, 2, 2}, 2)
                          .frame({0, 0, 1, 1}, 2)
                          .finish();
    const auto frames = allFrames(gif);
    ASSERT_EQ(frames.size(), 4u);
    EXPECT_EQ(frames[0]->width(), 4);
    EXPECT_EQ(pixel(*frames[0], 0, 0), kClear);
    EXPECT_EQ(pixel(*frames[0], 2, 2), kRed);
    EXPECT_EQ(pixel(*frames[1], 3, 2), kYellow);  // the local table
    EXPECT_EQ(pixel(*frames[1], 3, 3), kYellow);
    EXPECT_EQ(pixel(*frames[1], 2, 2), kRed);
    EXPECT_TRUE(samePixels(*frames[2], *frames[1]));  // wholly outside: nothing drawn
    EXPECT_EQ(pixel(*frames[3], 0, 0), kBlue);        // back to the global table

    // A screen of 0×0, or one smaller than the first frame, grows to that frame's extent.
    auto grown =
        ImageSource::createWithData(share(GifWriter(0, 0).frame({1, 2, 3, 2}, 3).finish()));
    ASSERT_TRUE(grown);
    EXPECT_EQ(grown->copyPropertiesAtIndex(0)->pixelWidth, 4);
    EXPECT_EQ(grown->copyPropertiesAtIndex(0)->pixelHeight, 4);
    EXPECT_EQ(pixel(*grown->createImageAtIndex(0, false), 3, 3), kWhite);
}

TEST(ImageSourceTest, ReportsLoopCountAndDelays) {
    const Bytes looping = GifWriter(1, 1)
                              .loop(5)
                              .frame({0, 0, 1, 1, 0, -1, 0}, 0)
                              .frame({0, 0, 1, 1, 0, -1, 1}, 0)
                              .frame({0, 0, 1, 1, 0, -1, 2}, 0)
                              .frame({0, 0, 1, 1, 0, -1, 150}, 0)
                              .finish();
    auto source = ImageSource::createWithData(share(looping));
    ASSERT_TRUE(source);
    EXPECT_EQ(source->copyProperties()->loopCount, 5);
    const double unclamped[] = {0, 0.01, 0.02, 1.5};
    const double clamped[] = {0.1, 0.1, 0.02, 1.5};
    for (size_t i = 0; i < 4; ++i) {
        const auto p = source->copyPropertiesAtIndex(i);
        ASSERT_TRUE(p);
        EXPECT_DOUBLE_EQ(*p->unclampedDelayTime, unclamped[i]);
        EXPECT_DOUBLE_EQ(*p->delayTime, clamped[i]);
        EXPECT_FALSE(p->orientation);
    }
    EXPECT_FALSE(source->copyPropertiesAtIndex(4));

    auto forever =
        ImageSource::createWithData(share(GifWriter(1, 1).loop(0).frame({0, 0, 1, 1}, 0).finish()));
    EXPECT_EQ(forever->copyProperties()->loopCount, 0);
    auto once = ImageSource::createWithData(share(GifWriter(1, 1).frame({0, 0, 1, 1}, 0).finish()));
    EXPECT_FALSE(once->copyProperties()->loopCount);
}

// Three frames of noise, so that cutting into a frame's data leaves some rows undecoded.
Bytes noisyGif() {
    GifWriter writer(16, 16);
    for (int f = 0; f < 3; ++f) {
        Indices noise;
        uint32_t state = 12345u + uint32_t(f);
        for (int i = 0; i < 256; ++i) {
            state = state * 1103515245u + 12345u;
            noise.push_back(uint8_t(state >> 16 & 3));
        }
        writer.frame({0, 0, 16, 16}, noise);
    }
    return writer.finish();
}

TEST(ImageSourceTest, GrowingPrefixesRevealFramesAsTheirDataCompletes) {
    const Bytes gif = noisyGif();
    const auto whole = allFrames(gif);
    ASSERT_EQ(whole.size(), 3u);
    auto source = ImageSource::createIncremental();
    source->updateData(prefix(gif, 16), false);
    EXPECT_EQ(source->count(), 0u);
    EXPECT_FALSE(source->createImageAtIndex(0, false));
    source->updateData(prefix(gif, 17), false);
    EXPECT_EQ(source->count(), 0u);

    size_t seen = 0;
    for (size_t n = 18; n < gif.size(); ++n) {
        source->updateData(prefix(gif, n), false);
        const size_t count = source->count();
        ASSERT_GE(count, seen) << n;
        if (count > seen) {
            // A frame is known as soon as its data is, and it is then the whole frame.
            ASSERT_EQ(count, seen + 1) << n;
            EXPECT_TRUE(samePixels(*source->createImageAtIndex(seen, false), *whole[seen]));
            seen = count;
        }
    }
    EXPECT_EQ(seen, 3u);  // the trailer is not needed for the last frame
    source->updateData(share(gif), true);
    EXPECT_EQ(source->count(), 3u);
}

TEST(ImageSourceTest, FinalBufferCutShortShowsTheRowsThatArrived) {
    const Bytes gif = noisyGif();
    const auto whole = allFrames(gif);
    // Halfway into frame 0's data (after the 13-byte screen, its table and the 10-byte descriptor).
    const size_t cut = 13 + 12 + 8 + 10 + 1 + 60;
    auto partial = ImageSource::createIncremental();
    partial->updateData(prefix(gif, cut), false);
    EXPECT_EQ(partial->count(), 0u);
    partial->updateData(prefix(gif, cut), true);
    ASSERT_EQ(partial->count(), 1u);
    const auto frame = partial->createImageAtIndex(0, false);
    ASSERT_TRUE(frame);
    EXPECT_EQ(std::vector<uint8_t>(frame->row(0), frame->row(1)),
              std::vector<uint8_t>(whole[0]->row(0), whole[0]->row(1)));
    EXPECT_EQ(pixel(*frame, 15, 15), kClear);
    // Nothing more is taken after the final buffer.
    partial->updateData(share(gif), true);
    EXPECT_EQ(partial->count(), 1u);

    // The descriptor alone decodes nothing.
    auto bare = ImageSource::createIncremental();
    bare->updateData(prefix(gif, 13 + 12 + 8 + 10 + 1), true);
    EXPECT_FALSE(bare->createImageAtIndex(0, false));
}

// Disposals of every kind and a full-canvas clear, so going back restarts mid-animation.
Bytes mixedGif() {
    return GifWriter(4, 4)
        .frame({0, 0, 4, 4}, 0)
        .frame({1, 0, 2, 3, DISPOSE_PREVIOUS}, 1)
        .frame({0, 0, 4, 4, DISPOSE_BACKGROUND, 0},
               {0, 1, 2, 3, 0, 1, 2, 3, 3, 2, 1, 0, 3, 3, 3, 3})
        .frame({2, 2, 2, 2, DISPOSE_BACKGROUND}, 3)
        .frame({0, 1, 3, 3, DISPOSE_PREVIOUS, 2}, 2)
        .frame({1, 1, 1, 1}, 1)
        .finish();
}

TEST(ImageSourceTest, RandomAccessEqualsPlayingInOrder) {
    const Bytes gif = mixedGif();
    const auto inOrder = allFrames(gif);
    ASSERT_EQ(inOrder.size(), 6u);
    auto source = ImageSource::createWithData(share(gif));
    for (size_t i : {5, 3, 4, 0, 2, 1, 5, 1, 4}) {
        SCOPED_TRACE(i);
        EXPECT_TRUE(samePixels(*source->createImageAtIndex(i, false), *inOrder[i]));
    }
    EXPECT_FALSE(source->createImageAtIndex(6, false));
}

TEST(ImageSourceTest, CachesOnlyTheFramesAskedToBeCached) {
    auto source = ImageSource::createWithData(share(mixedGif()));
    std::weak_ptr<const gfx::Bitmap> cached = source->createImageAtIndex(2, true);
    std::weak_ptr<const gfx::Bitmap> passing = source->createImageAtIndex(3, false);
    EXPECT_FALSE(cached.expired());
    EXPECT_TRUE(passing.expired());
    EXPECT_EQ(source->createImageAtIndex(2, false), cached.lock());
}

TEST(ImageSourceTest, MalformedFilesGiveWhatCanBeDecoded) {
    EXPECT_FALSE(ImageSource::createWithData(share(Bytes(40, 0x89))));
    EXPECT_FALSE(ImageSource::createWithData(nullptr));
    auto notGif = ImageSource::createIncremental();
    notGif->updateData(share(Bytes(40, 0x89)), true);
    EXPECT_FALSE(notGif->copyProperties());
    EXPECT_EQ(notGif->count(), 0u);

    // An absurd screen is refused before anything is allocated.
    Bytes huge = GifWriter(1, 1).frame({0, 0, 1, 1}, 0).finish();
    huge[6] = huge[7] = huge[8] = huge[9] = 0xFF;
    EXPECT_EQ(ImageSource::createWithData(share(huge))->count(), 0u);

    // A bad code in frame 1 leaves the rest of its rows undrawn; the frames around it are whole.
    const Bytes gif = noisyGif();
    const auto whole = allFrames(gif);
    const uint8_t descriptor[] = {0x2C, 0, 0, 0, 0, 16, 0, 16, 0, 0};
    auto frame1 =
        std::search(gif.begin() + 30, gif.end(), std::begin(descriptor), std::end(descriptor));
    frame1 = std::search(frame1 + 1, gif.end(), std::begin(descriptor), std::end(descriptor));
    ASSERT_NE(frame1, gif.end());
    Bytes broken = gif;
    std::fill_n(broken.begin() + (frame1 - gif.begin()) + 40, 20, 0xFF);
    const auto frames = allFrames(broken);
    ASSERT_EQ(frames.size(), 3u);
    EXPECT_TRUE(samePixels(*frames[0], *whole[0]));
    EXPECT_FALSE(samePixels(*frames[1], *whole[1]));
    EXPECT_EQ(pixel(*frames[1], 15, 15), pixel(*whole[0], 15, 15));
    EXPECT_TRUE(samePixels(*frames[2], *whole[2]));

    // No terminator, no trailer: the last frame is still shown once the data is final.
    Bytes cut = gif;
    cut.resize(cut.size() - 2);
    EXPECT_EQ(allFrames(cut).size(), 3u);

    // Every regression input the fuzzer found decodes without harm.
    const std::filesystem::path regressions =
        std::filesystem::path(ORV_SOURCE_RESOURCES) / "../fuzz/gif/regressions";
    if (!std::filesystem::is_directory(regressions)) return;
    for (const auto& entry : std::filesystem::directory_iterator(regressions)) {
        std::ifstream in(entry.path(), std::ios::binary);
        const Bytes bytes{std::istreambuf_iterator<char>(in), {}};
        SCOPED_TRACE(entry.path().filename().string());
        allFrames(bytes);
        auto source = ImageSource::createIncremental();
        for (size_t n = 1; n <= bytes.size(); n += 1 + n / 2) {
            source->updateData(prefix(bytes, n), false);
            if (source->count() > 0) source->createImageAtIndex(source->count() - 1, false);
        }
    }
}

}  // namespace
}  // namespace orv::codec
