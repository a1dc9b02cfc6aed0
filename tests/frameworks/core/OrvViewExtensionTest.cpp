#include "frameworks/core/OrvViewExtension.h"

#include <gtest/gtest.h>

#include "frameworks/core/OrvViewGeometry.h"

namespace {

void expectTransformNear(const gfx::AffineTransform& t, const gfx::AffineTransform& expected) {
    EXPECT_NEAR(t.a, expected.a, 1e-12);
    EXPECT_NEAR(t.b, expected.b, 1e-12);
    EXPECT_NEAR(t.c, expected.c, 1e-12);
    EXPECT_NEAR(t.d, expected.d, 1e-12);
    EXPECT_EQ(t.tx, 0);
    EXPECT_EQ(t.ty, 0);
}

TEST(OrvViewExtension, RotationIsAbsoluteAndAboutTheCentre) {
    auto view = ui::makeView<ui::View>(gfx::Rect{10, 20, 100, 50});
    rotationWithDegrees(*view, 30);
    rotationWithDegrees(*view, 30);
    expectTransformNear(view->transform(), gfx::AffineTransform::rotation(M_PI / 6));

    rotationWithDegrees(*view, 90);
    EXPECT_EQ(view->center(), (gfx::Point{60, 45}));
    EXPECT_NEAR(orvGetSizeWidth(*view), 50, 1e-9);
    EXPECT_NEAR(orvGetSizeHeight(*view), 100, 1e-9);

    rotationWithDegrees(*view, 0);
    expectTransformNear(view->transform(), gfx::AffineTransform::identity());
}

TEST(OrvViewExtension, MultipleTextSizesTheLabelWithinTheMaximum) {
    auto label = ui::makeView<ui::Label>();
    initWithFrame(*label, {7, 9, 10, 10}, 17, gfx::Color::whiteColor(), gfx::TextAlignment::Center);
    const gfx::Size maxSize{120, 200};

    setMultipleText(*label, "Hi", maxSize);
    const gfx::Size oneLine = orvGetSize(*label);
    EXPECT_GT(oneLine.width, 0);
    EXPECT_LT(oneLine.width, maxSize.width);
    EXPECT_EQ(orvGetOrigin(*label), (gfx::Point{7, 9}));

    setMultipleText(*label, "a sentence long enough to wrap over several lines", maxSize);
    EXPECT_LE(orvGetSizeWidth(*label), maxSize.width);
    EXPECT_GE(orvGetSizeHeight(*label), 2 * oneLine.height);
    EXPECT_LE(orvGetSizeHeight(*label), maxSize.height);
    EXPECT_EQ(orvGetOrigin(*label), (gfx::Point{7, 9}));

    std::string longText;
    for (int i = 0; i < 60; ++i) longText += "word ";
    setMultipleText(*label, longText, {60, 40});
    EXPECT_LE(orvGetSizeWidth(*label), 60);
    EXPECT_EQ(orvGetSizeHeight(*label), 40);
}

TEST(OrvViewExtension, ButtonShowsTheNamedStyleImage) {
    auto button = buttonWithFrame({5, 6, 36, 36}, "style_default_edit_drag_cancel");
    EXPECT_EQ(button->frame(), (gfx::Rect{5, 6, 36, 36}));
    ASSERT_NE(button->currentImage(), nullptr);
    EXPECT_EQ(button->currentImage()->size(), (gfx::Size{36, 36}));

    EXPECT_EQ(buttonWithFrame({}, "style_default_no_such_image")->currentImage(), nullptr);
}

}  // namespace
