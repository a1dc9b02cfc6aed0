#include "platform/gfx/ImageContext.h"

#include <gtest/gtest.h>

#include <array>

namespace orv::gfx {
namespace {

using Px = std::array<int, 4>;
constexpr Px kRed{255, 0, 0, 255};
constexpr Px kClear{0, 0, 0, 0};

Px at(const BitmapPtr& b, int x, int y) {
    const uint8_t* p = b->pixel(x, y);
    return {p[0], p[1], p[2], p[3]};
}

TEST(ImageContextTest, PointsRunDownFromTheTopLeftAtTheScale) {
    ImageContext c({3, 2.5}, false, 2);
    ASSERT_EQ(c.width(), 6);
    ASSERT_EQ(c.height(), 5);
    c.setFillColor(Color::red());
    c.fillRect({0, 0, 1, 1});
    const ImagePtr image = c.image();
    EXPECT_EQ(image->scale(), 2);
    EXPECT_EQ(image->size(), (Size{3, 2.5}));
    EXPECT_EQ(at(image->bitmap(), 1, 1), kRed);
    EXPECT_EQ(at(image->bitmap(), 2, 0), kClear);
    EXPECT_EQ(at(image->bitmap(), 0, 2), kClear);
    EXPECT_EQ(ImageContext({10, 0.3}, false, 10).height(), 3);  // no extra row from rounding
}

TEST(ImageContextTest, OpaqueStartsBlackAndEndImageHandsThePixelsOver) {
    ImageContext c({2, 2}, true);
    EXPECT_EQ(at(c.image()->bitmap(), 1, 1), (Px{0, 0, 0, 255}));
    const uint8_t* pixels = c.data();
    const ImagePtr image = c.endImage();
    EXPECT_EQ(image->bitmap()->data(), pixels);  // moved, not copied
    EXPECT_EQ(c.width(), 0);
    c.fillRect({0, 0, 2, 2});  // draws nothing, and nowhere
    EXPECT_EQ(at(image->bitmap(), 0, 0), (Px{0, 0, 0, 255}));
}

TEST(ImageContextTest, PicturesDrawUprightAndShadowsFallDown) {
    auto b = std::make_shared<Bitmap>(1, 2);
    b->mutableRow(0)[0] = b->mutableRow(0)[3] = 255;  // red on top
    b->mutableRow(1)[2] = b->mutableRow(1)[3] = 255;  // blue below
    ImageContext c({4, 4});
    c.drawImageInRect(*Image::withBitmap(b), {0, 0, 1, 2});
    c.drawImageInRect(*Image::withBitmap(b, 1, ImageOrientation::Down), {2, 0, 1, 2});
    c.drawImage({3, 0, 1, 2}, *b);  // the platform's bitmap drawing: upside down here
    c.setShadow({1, 1}, 0, Color::black());
    c.fillRect({0, 3, 1, 1});
    const BitmapPtr s = c.image()->bitmap();
    EXPECT_EQ(at(s, 0, 0), kRed);
    EXPECT_EQ(at(s, 2, 1), kRed);
    EXPECT_EQ(at(s, 3, 1), kRed);
    EXPECT_EQ(at(s, 1, 0), kClear);
    EXPECT_EQ(at(s, 0, 3)[3], 255);
    EXPECT_EQ(at(s, 1, 3), kClear);  // the shadow's row 4 is off the picture...
    ImageContext tall({4, 5});
    tall.setShadow({1, 1}, 0, Color::black());
    tall.fillRect({0, 3, 1, 1});
    EXPECT_EQ(at(tall.image()->bitmap(), 1, 4), (Px{0, 0, 0, 255}));  // ...right and down
}

}  // namespace
}  // namespace orv::gfx
