#include "platform/gfx/BitmapOps.h"

#include <gtest/gtest.h>

#include <string>

namespace orv::gfx {
namespace {

// Stored as    A B C     each pixel's red byte is its letter.
//              D E F
Bitmap letters() {
    Bitmap b(3, 2, PixelFormat::BGRA8888Premultiplied);
    for (int i = 0; i < 6; ++i) b.mutableData()[4 * i] = static_cast<uint8_t>('A' + i);
    return b;
}

// The picture row by row, rows separated by '/'.
std::string spell(const Bitmap& b) {
    std::string s;
    for (int y = 0; y < b.height(); ++y) {
        if (y) s += '/';
        for (int x = 0; x < b.width(); ++x) s += static_cast<char>(b.pixel(x, y)[0]);
    }
    return s;
}

Bitmap filled(int w, int h, uint8_t (*value)(int x, int y)) {
    Bitmap b(w, h);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const uint8_t v = value(x, y);
            uint8_t* p = b.mutableRow(y) + 4 * x;
            p[0] = p[1] = p[2] = v;
            p[3] = 255;
        }
    }
    return b;
}

TEST(BitmapOpsTest, OrientationShowsTheTaggedPictureUpright) {
    const Bitmap src = letters();
    const struct {
        ImageOrientation tag;
        const char* upright;
    } cases[] = {
        {ImageOrientation::Up, "ABC/DEF"},
        {ImageOrientation::Down, "FED/CBA"},
        {ImageOrientation::Left, "CF/BE/AD"},   // turned counter-clockwise
        {ImageOrientation::Right, "DA/EB/FC"},  // turned clockwise, as EXIF orientation 6
        {ImageOrientation::UpMirrored, "CBA/FED"},
        {ImageOrientation::DownMirrored, "DEF/ABC"},
        {ImageOrientation::LeftMirrored, "AD/BE/CF"},
        {ImageOrientation::RightMirrored, "FC/EB/DA"},
    };
    for (const auto& c : cases) {
        const auto out = BitmapOps::oriented(src, c.tag);
        EXPECT_EQ(spell(*out), c.upright) << static_cast<int>(c.tag);
        EXPECT_EQ(out->format(), PixelFormat::BGRA8888Premultiplied);
    }
}

TEST(BitmapOpsTest, CropClipsToTheBitmap) {
    const Bitmap src = letters();
    EXPECT_EQ(spell(*BitmapOps::cropped(src, 1, 0, 5, 1)), "BC");
    EXPECT_EQ(spell(*BitmapOps::cropped(src, -1, -1, 2, 3)), "A/D");
    EXPECT_EQ(BitmapOps::cropped(src, 3, 0, 2, 2), nullptr);
    EXPECT_EQ(BitmapOps::cropped(src, 0, 0, 0, 2), nullptr);
}

TEST(BitmapOpsTest, ReductionAveragesAreasAndKeepsFlatColourExact) {
    const Bitmap checker =
        filled(8, 6, [](int x, int y) -> uint8_t { return (x + y) % 2 ? 255 : 0; });
    const auto half = BitmapOps::resized(checker, 4, 3);
    ASSERT_EQ(half->width(), 4);
    ASSERT_EQ(half->height(), 3);
    for (int i = 0; i < 12; ++i) EXPECT_NEAR(half->data()[4 * i], 128, 1);
    // Each target pixel covers one and a half columns of 0, 255, 0: a third of 255 each.
    const Bitmap stripes = filled(3, 1, [](int x, int) -> uint8_t { return x == 1 ? 255 : 0; });
    const auto two = BitmapOps::resized(stripes, 2, 1);
    EXPECT_NEAR(two->pixel(0, 0)[0], 85, 1);
    EXPECT_NEAR(two->pixel(1, 0)[0], 85, 1);

    const auto flat =
        BitmapOps::resized(filled(1000, 7, [](int, int) -> uint8_t { return 77; }), 333, 11);
    ASSERT_EQ(flat->width(), 333);
    ASSERT_EQ(flat->height(), 11);
    for (size_t i = 0; i < flat->byteCount(); ++i)
        ASSERT_EQ(flat->data()[i], i % 4 == 3 ? 255 : 77);
}

TEST(BitmapOpsTest, EnlargementInterpolatesBetweenCentres) {
    const Bitmap ramp = filled(2, 1, [](int x, int) -> uint8_t { return x ? 200 : 0; });
    const auto wide = BitmapOps::resized(ramp, 4, 3);
    const int expected[] = {0, 50, 150, 200};  // centres at 0, 1/4, 3/4 and 1 of the gap
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x) EXPECT_NEAR(wide->pixel(x, y)[0], expected[x], 1);
    }
    EXPECT_EQ(BitmapOps::resized(ramp, 0, 3), nullptr);
}

TEST(BitmapOpsTest, PremultiplicationRoundsBothWays) {
    uint8_t px[] = {255, 100, 1, 128};
    BitmapOps::premultiplyRow(px, 1);
    EXPECT_EQ(std::string(px, px + 3), std::string({'\x80', 50, 1}));  // 0.502 rounds up
    uint8_t back[] = {50, 1, 200, 128, 9, 9, 9, 0};
    BitmapOps::unpremultiplyRow(back, 2);
    EXPECT_EQ(back[0], 100);  // (50 × 255 + 64) / 128
    EXPECT_EQ(back[1], 2);
    EXPECT_EQ(back[2], 255);  // colour above alpha is clamped
    EXPECT_EQ(back[4], 0);    // nothing to recover under zero alpha
}

}  // namespace
}  // namespace orv::gfx
