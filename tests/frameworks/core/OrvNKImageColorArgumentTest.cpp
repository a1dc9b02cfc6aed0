#include "frameworks/core/OrvNKImageColorArgument.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(OrvNKImageColorArgument, ReadsPercentilesOfTheColourBehindAlpha) {
    // 200 opaque pixels with red 0 to 199, green 50 and blue 255 − red, then transparent ones.
    auto bitmap = std::make_shared<gfx::Bitmap>(250, 1);
    for (int x = 0; x < 200; ++x) {
        uint8_t* p = bitmap->mutableRow(0) + 4 * x;
        p[0] = static_cast<uint8_t>(x);
        p[1] = 50;
        p[2] = static_cast<uint8_t>(255 - x);
        p[3] = 255;
    }
    auto a = OrvNKImageColorArgument::analysisWithImage(gfx::Image::withBitmap(bitmap));
    ASSERT_TRUE(a);
    EXPECT_EQ(a->minR(), 0);  // 0.5% of 200 is the darkest pixel
    EXPECT_EQ(a->maxR(), 198);
    EXPECT_EQ(a->midR(), 99);
    EXPECT_EQ(a->maxB(), 254);  // the brightest 0.5% left out
    EXPECT_EQ(a->minY(), 58);   // 0.587 × 50 + 0.114 × 255 at red 0
    EXPECT_EQ(a->maxY(), 95);   // at red 198

    // A half-transparent pixel counts with its colour, not its premultiplied bytes.
    auto half = std::make_shared<gfx::Bitmap>(1, 1);
    const uint8_t pixel[] = {64, 32, 0, 128};
    std::copy(pixel, pixel + 4, half->mutableData());
    a = OrvNKImageColorArgument::analysisWithImage(gfx::Image::withBitmap(half));
    ASSERT_TRUE(a);
    EXPECT_EQ(a->maxR(), 128);
    EXPECT_EQ(a->midG(), 64);

    EXPECT_EQ(OrvNKImageColorArgument::analysisWithImage(
                  gfx::Image::withBitmap(std::make_shared<gfx::Bitmap>(3, 3))),
              nullptr);
}

}  // namespace
