#include "platform/gfx/Bitmap.h"

#include <gtest/gtest.h>

#include <array>

namespace orv::gfx {
namespace {

std::array<uint8_t, 4> at(const Bitmap& b, int x, int y) {
    const uint8_t* p = b.pixel(x, y);
    return {p[0], p[1], p[2], p[3]};
}

// A 2×2 R, G, B, A bitmap with padded rows, each an opaque orange and a half-transparent blue.
Bitmap sample() {
    std::vector<uint8_t> bytes(2 * 12, 0xEE);
    const uint8_t px[8] = {255, 128, 0, 255, 0, 0, 100, 128};
    std::copy(px, px + 8, bytes.begin());
    std::copy(px, px + 8, bytes.begin() + 12);
    return Bitmap(2, 2, PixelFormat::RGBA8888Premultiplied, 12, std::move(bytes));
}

TEST(BitmapTest, NewBitmapIsTransparentWithTightRows) {
    Bitmap b(3, 2);
    EXPECT_EQ(b.rowBytes(), 12u);
    EXPECT_EQ(b.byteCount(), 24u);
    EXPECT_EQ(at(b, 2, 1), (std::array<uint8_t, 4>{0, 0, 0, 0}));
}

TEST(BitmapTest, RedBlueSwapRoundTripsAndTightensRows) {
    const Bitmap src = sample();
    const auto bgra = src.converted(PixelFormat::BGRA8888Premultiplied);
    EXPECT_EQ(bgra->rowBytes(), 8u);
    EXPECT_EQ(at(*bgra, 0, 1), (std::array<uint8_t, 4>{0, 128, 255, 255}));
    EXPECT_EQ(at(*bgra, 1, 0), (std::array<uint8_t, 4>{100, 0, 0, 128}));
    const auto back = bgra->converted(PixelFormat::RGBA8888Premultiplied);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 2; ++x) EXPECT_EQ(at(*back, x, y), at(src, x, y));
    }
}

TEST(BitmapTest, RedBlueSwapHoldsForEveryPixelOfALongRow) {
    // Long rows are converted several pixels a step, then pixel by pixel: 19 takes both paths.
    constexpr int kWidth = 19;
    std::vector<uint8_t> bytes(4 * kWidth);
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 7 + 1);
    const Bitmap src(kWidth, 1, PixelFormat::RGBA8888Premultiplied, 0, bytes);
    const auto bgra = src.converted(PixelFormat::BGRA8888Premultiplied);
    const auto bgrx = src.converted(PixelFormat::BGRX8888);
    for (int x = 0; x < kWidth; ++x) {
        const uint8_t* p = &bytes[4 * x];
        EXPECT_EQ(at(*bgra, x, 0), (std::array<uint8_t, 4>{p[2], p[1], p[0], p[3]})) << x;
        EXPECT_EQ(at(*bgrx, x, 0), (std::array<uint8_t, 4>{p[2], p[1], p[0], 255})) << x;
    }
}

TEST(BitmapTest, OpaqueFormatKeepsPremultipliedColourAndDropsAlpha) {
    const auto bgrx = sample().converted(PixelFormat::BGRX8888);
    EXPECT_EQ(at(*bgrx, 1, 0), (std::array<uint8_t, 4>{100, 0, 0, 255}));
    // Whatever sits in the unused byte, the picture reads back opaque.
    Bitmap x(1, 1, PixelFormat::BGRX8888, 0, {10, 20, 30, 7});
    EXPECT_EQ(at(*x.converted(PixelFormat::RGBA8888Premultiplied), 0, 0),
              (std::array<uint8_t, 4>{30, 20, 10, 255}));
    EXPECT_EQ(at(*x.converted(PixelFormat::BGRA8888Premultiplied), 0, 0),
              (std::array<uint8_t, 4>{10, 20, 30, 255}));
}

TEST(BitmapTest, SameFormatConversionIsAnIndependentCopy) {
    const Bitmap src = sample();
    const auto copy = src.converted(PixelFormat::RGBA8888Premultiplied);
    EXPECT_NE(copy->data(), src.data());
    EXPECT_EQ(at(*copy, 1, 1), at(src, 1, 1));
}

}  // namespace
}  // namespace orv::gfx
