#include "platform/ui/ImageView.h"

#include <gtest/gtest.h>

#include "tests/platform/ui/ViewTestSupport.h"

namespace orv::ui::test {
namespace {

TEST(ImageViewPlacement, ContentModesPlaceThePictureInTheBounds) {
    const gfx::Rect bounds{10, 20, 100, 50};
    const gfx::Size wide{40, 10}, tall{10, 100};
    EXPECT_EQ(ImageView::imageRect(ContentMode::ScaleToFill, bounds, wide), bounds);
    EXPECT_EQ(ImageView::imageRect(ContentMode::ScaleAspectFit, bounds, wide),
              gfx::Rect(10, 32.5, 100, 25));
    EXPECT_EQ(ImageView::imageRect(ContentMode::ScaleAspectFit, bounds, tall),
              gfx::Rect(57.5, 20, 5, 50));
    EXPECT_EQ(ImageView::imageRect(ContentMode::ScaleAspectFill, bounds, tall),
              gfx::Rect(10, -455, 100, 1000));
    EXPECT_EQ(ImageView::imageRect(ContentMode::Center, bounds, tall), gfx::Rect(55, -5, 10, 100));
    EXPECT_EQ(ImageView::imageRect(ContentMode::TopRight, bounds, wide), gfx::Rect(70, 20, 40, 10));
    EXPECT_EQ(ImageView::imageRect(ContentMode::Bottom, bounds, wide), gfx::Rect(40, 60, 40, 10));
    // A picture with no size cannot be fitted: it fills.
    EXPECT_EQ(ImageView::imageRect(ContentMode::ScaleAspectFit, bounds, {}), bounds);
}

TEST_F(ViewTest, AnImageViewSizesToItsPicture) {
    auto bitmap = std::make_shared<gfx::Bitmap>(60, 40);
    auto view = ImageView::withImage(gfx::Image::withBitmap(bitmap, 2));
    EXPECT_EQ(view->frame(), gfx::Rect(0, 0, 30, 20));
    view->setImage(nullptr);
    EXPECT_EQ(view->sizeThatFits({100, 100}), gfx::Size(0, 0));
}

}  // namespace
}  // namespace orv::ui::test
