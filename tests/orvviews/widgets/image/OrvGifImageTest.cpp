#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "orvviews/widgets/image/OrvGifImage.h"
#include "orvviews/widgets/image/OrvKitImageCoder.h"
#include "platform/rt/Bundle.h"
#include "platform/ui/Screen.h"
#include "tests/orvviews/widgets/image/GifTestFile.h"
#include "tests/platform/rt/RtTestHelpers.h"
#include "tests/support/TestEnvironment.h"

namespace {

using namespace orvtest;
namespace fs = std::filesystem;

// Delays of 0, 0.01 and 0.02 s, looping forever.
std::vector<uint8_t> shortDelays() {
    return GifWriter(2, 2)
        .loop(0)
        .frame({.width = 2, .height = 2}, kRed)
        .frame({.width = 2, .height = 2, .delay = 1}, kGreen)
        .frame({.width = 1, .height = 1, .delay = 2}, kBlue)
        .finish();
}

void writeFile(const fs::path& path, const std::vector<uint8_t>& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

// The resource scales are fixed at their first use in the process: every test here runs on a
// 3x screen, so whichever runs first fixes them the same.
class OrvGifImageTest : public ::testing::Test {
  protected:
    void SetUp() override { ui::Screen::main().setScale(3); }
    void TearDown() override { ui::Screen::resetMain(); }
};

TEST_F(OrvGifImageTest, PlaysFramesWithAFloorForShortDelays) {
    auto image = OrvGifImage::imageWithData(shared(shortDelays()));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->scale(), 1.0);
    EXPECT_TRUE(orvel_isDecodedForDisplay(*image));
    EXPECT_EQ(image->bitmap()->format(), gfx::PixelFormat::BGRA8888Premultiplied);
    EXPECT_EQ(image->bytesPerFrame(), 16u);
    EXPECT_EQ(image->frameCount(), 3u);
    EXPECT_EQ(image->loopCount(), 0u);
    EXPECT_EQ(image->durationAtIndex(0), double(0.1f));
    EXPECT_EQ(image->durationAtIndex(1), double(0.1f));
    EXPECT_DOUBLE_EQ(image->durationAtIndex(2), 0.02);
    EXPECT_DOUBLE_EQ(image->duration(), 0.03);

    auto last = image->imageFrameAtIndex(2);
    ASSERT_TRUE(last);
    EXPECT_TRUE(orvel_isDecodedForDisplay(*last));
    const uint8_t* blue = last->bitmap()->pixel(0, 0);
    const uint8_t* green = last->bitmap()->pixel(1, 1);
    EXPECT_EQ((std::array<int, 3>{blue[0], blue[1], blue[2]}), (std::array<int, 3>{255, 0, 0}));
    EXPECT_EQ((std::array<int, 3>{green[0], green[1], green[2]}), (std::array<int, 3>{0, 255, 0}));
    EXPECT_FALSE(image->imageFrameAtIndex(3));
}

TEST_F(OrvGifImageTest, OneFrameIsAStillImage) {
    auto gif = GifWriter(3, 2).loop(5).frame({.width = 3, .height = 2}, kWhite).finish();
    auto image = OrvGifImage::imageWithData(shared(gif));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (gfx::Size{3, 2}));
    EXPECT_EQ(image->frameCount(), 0u);
    EXPECT_EQ(image->loopCount(), 0u);
    EXPECT_EQ(image->durationAtIndex(0), 0.0);
    EXPECT_EQ(image->duration(), 0.0);
    EXPECT_FALSE(image->imageFrameAtIndex(0));
    EXPECT_FALSE(OrvGifImage::imageWithData(shared({})));
}

TEST_F(OrvGifImageTest, FindsResourcesAtThePreferredScales) {
    EXPECT_EQ(OrvImage::getBundlePreferredScales(), (std::vector<double>{3, 2, 1}));
    const fs::path root = fs::path(orv::test::TestEnvironment::tempDir()) / "gif-resources";
    fs::remove_all(root);
    fs::create_directories(root);
    writeFile(root / "a@2x.gif", shortDelays());
    writeFile(root / "b.webp", shortDelays());  // the extension list is tried, not the bytes
    auto env = std::make_unique<rt::test::ScopedEnv>("ORV_RESOURCES", root.c_str());
    rt::Bundle::main().reloadForTesting();

    auto a = std::dynamic_pointer_cast<OrvGifImage>(OrvGifImage::imageNamed("a.gif"));
    ASSERT_TRUE(a);
    EXPECT_EQ(a->scale(), 2.0);
    EXPECT_EQ(a->frameCount(), 3u);
    ASSERT_TRUE(OrvGifImage::imageNamed("a"));
    ASSERT_TRUE(OrvGifImage::imageNamed("b"));
    EXPECT_EQ(OrvGifImage::imageNamed("b")->scale(), 1.0);
    EXPECT_FALSE(OrvGifImage::imageNamed("a.png"));
    EXPECT_FALSE(OrvGifImage::imageNamed("c"));
    EXPECT_FALSE(OrvGifImage::imageNamed("a/"));

    auto file = OrvGifImage::imageWithContentsOfFile((root / "a@2x.gif").string());
    ASSERT_TRUE(file);
    EXPECT_EQ(file->scale(), 2.0);
    env.reset();
    rt::Bundle::main().reloadForTesting();
}

TEST(OrvKitImageCoderTest, DecodedCopiesInBothModes) {
    // Premultiplied R, G, B, A: opaque orange, then half-transparent blue.
    auto rgba =
        std::make_shared<gfx::Bitmap>(2, 1, gfx::PixelFormat::RGBA8888Premultiplied, 0,
                                      std::vector<uint8_t>{200, 100, 0, 255, 0, 0, 128, 128});
    auto bgra = orvelCGImageCreateDecodedCopy(rgba, true);
    ASSERT_TRUE(bgra);
    EXPECT_EQ(bgra->format(), gfx::PixelFormat::BGRA8888Premultiplied);
    EXPECT_EQ(std::vector<uint8_t>(bgra->data(), bgra->data() + 8),
              (std::vector<uint8_t>{0, 100, 200, 255, 128, 0, 0, 128}));

    // Without alpha the copy is B, G, R and a spare byte.
    auto bgrx = orvelCGImageCreateDecodedCopy(rgba->converted(gfx::PixelFormat::BGRX8888), true);
    ASSERT_TRUE(bgrx);
    EXPECT_EQ(bgrx->format(), gfx::PixelFormat::BGRX8888);
    EXPECT_EQ(std::vector<uint8_t>(bgrx->data(), bgrx->data() + 3),
              (std::vector<uint8_t>{0, 100, 200}));

    auto copy = orvelCGImageCreateDecodedCopy(rgba, false);
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->format(), gfx::PixelFormat::RGBA8888Premultiplied);
    EXPECT_NE(copy->data(), rgba->data());
    EXPECT_EQ(std::vector<uint8_t>(copy->data(), copy->data() + 8),
              std::vector<uint8_t>(rgba->data(), rgba->data() + 8));

    EXPECT_FALSE(orvelCGImageCreateDecodedCopy(nullptr, true));
    EXPECT_FALSE(orvelCGImageCreateDecodedCopy(std::make_shared<gfx::Bitmap>(0, 3), false));
    EXPECT_EQ(orvelCGColorSpaceGetDeviceRGB(), orvelCGColorSpaceGetDeviceRGB());
}

TEST(OrvKitImageCoderTest, ImageByDecodedMarksANewImageOnce) {
    auto rgba = std::make_shared<gfx::Bitmap>(1, 2);
    auto image = gfx::Image::withBitmap(rgba, 2, gfx::ImageOrientation::Left);
    EXPECT_FALSE(orvel_isDecodedForDisplay(*image));

    auto decoded = orvelImageByDecoded(image);
    ASSERT_NE(decoded, image);
    EXPECT_EQ(decoded->getClass(), gfx::Image::staticClass());
    EXPECT_TRUE(orvel_isDecodedForDisplay(*decoded));
    EXPECT_FALSE(orvel_isDecodedForDisplay(*image));
    EXPECT_EQ(decoded->scale(), 2.0);
    EXPECT_EQ(decoded->orientation(), gfx::ImageOrientation::Left);
    EXPECT_EQ(decoded->bitmap()->format(), gfx::PixelFormat::BGRA8888Premultiplied);
    EXPECT_EQ(orvelImageByDecoded(decoded), decoded);

    // No pixels to decode: the image itself, unmarked.
    auto empty = gfx::Image::empty();
    EXPECT_EQ(orvelImageByDecoded(empty), empty);
    EXPECT_FALSE(orvel_isDecodedForDisplay(*empty));
}

}  // namespace
