#include "platform/gfx/Image.h"

#include <gtest/gtest.h>

namespace orv::gfx {
namespace {

TEST(ImageTest, SizeFollowsScaleAndOrientation) {
    const BitmapPtr bitmap = std::make_shared<Bitmap>(40, 20);
    EXPECT_EQ(Image::withBitmap(bitmap)->size(), (Size{40, 20}));
    EXPECT_EQ(Image::withBitmap(bitmap, 2)->size(), (Size{20, 10}));
    EXPECT_EQ(Image::withBitmap(bitmap, 2, ImageOrientation::Down)->size(), (Size{20, 10}));
    EXPECT_EQ(Image::withBitmap(bitmap, 2, ImageOrientation::UpMirrored)->size(), (Size{20, 10}));
    for (auto o : {ImageOrientation::Left, ImageOrientation::Right, ImageOrientation::LeftMirrored,
                   ImageOrientation::RightMirrored}) {
        EXPECT_EQ(Image::withBitmap(bitmap, 2, o)->size(), (Size{10, 20}));
    }
}

TEST(ImageTest, EmptyPlaceholderHasNoBitmapAndNoSize) {
    const auto image = Image::empty();
    EXPECT_EQ(image->bitmap(), nullptr);
    EXPECT_EQ(image->size(), (Size{0, 0}));
    EXPECT_EQ(image->scale(), 1);
    EXPECT_TRUE(image->isKindOfClass(Image::staticClass()));
}

}  // namespace
}  // namespace orv::gfx
