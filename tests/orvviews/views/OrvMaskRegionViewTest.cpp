#include "orvviews/views/OrvMaskRegionView.h"

#include <gtest/gtest.h>

#include "platform/rt/RunLoop.h"
#include "platform/ui/Renderer.h"
#include "platform/ui/Screen.h"

namespace {

class OrvMaskRegionViewTest : public ::testing::Test {
  protected:
    void SetUp() override { ui::Screen::main().setScale(1); }
    void TearDown() override { ui::Screen::resetMain(); }
};

TEST_F(OrvMaskRegionViewTest, RatiosFitTheWindowInTheMiddleOrHideTheMask) {
    auto mask = ui::makeView<OrvMaskRegionView>({0, 0, 300, 200});
    EXPECT_FALSE(mask->isUserInteractionEnabled());
    mask->setRegionRatio(1);
    EXPECT_EQ(mask->regionRect(), (gfx::Rect{50, 0, 200, 200}));
    EXPECT_GE(mask->alpha(), 1);
    mask->setRegionRatio(1.5);  // the bounds' own ratio: the whole view
    EXPECT_EQ(mask->regionRect(), (gfx::Rect{0, 0, 300, 200}));
    for (double bad : {0.0, -2.0, std::nan("")}) {
        mask->setRegionRatio(bad);
        EXPECT_TRUE(gfx::rectIsEmpty(mask->regionRect())) << bad;
        EXPECT_EQ(mask->alpha(), 0) << bad;
    }
    // A new size keeps the ratio.
    mask->setRegionRatio(2);
    mask->setFrame({0, 0, 100, 400});
    mask->needUpdateLayout();
    EXPECT_EQ(mask->regionRect(), (gfx::Rect{0, 175, 100, 50}));
}

TEST_F(OrvMaskRegionViewTest, ChangesEaseFromTheCurrentWindowToTheNewOne) {
    auto mask = ui::makeView<OrvMaskRegionView>({0, 0, 300, 200});
    mask->setRegionRatio(1);
    const gfx::Rect target = mask->changeRegionRatio(0.5);
    EXPECT_EQ(target, (gfx::Rect{100, 0, 100, 200}));
    EXPECT_EQ(mask->regionRect(), (gfx::Rect{50, 0, 200, 200}));  // not moved yet
    // Three or four frames in, whatever the clock's phase: a fifth of the time or a little more.
    rt::RunLoop::main().runFor(0.07);
    const double widthEarly = mask->regionRect().size.width;
    EXPECT_LT(widthEarly, 200);
    EXPECT_GT(widthEarly, 100);
    // Quintic ease-out: well past half way after a fifth of the time.
    EXPECT_LT(widthEarly, 150);
    rt::RunLoop::main().runFor(0.3);
    EXPECT_EQ(mask->regionRect(), target);
    // The same ratio again does nothing and answers the last difference.
    EXPECT_EQ(mask->changeRegionRatio(0.5), (gfx::Rect{50, 0, -100, 0}));
    // From no window at all the new one grows out of the empty rectangle.
    auto fresh = ui::makeView<OrvMaskRegionView>({0, 0, 300, 200});
    fresh->changeRegionRatio(1);
    rt::RunLoop::main().runFor(0.02);
    EXPECT_LT(fresh->regionRect().size.width, 200);
    EXPECT_GT(fresh->regionRect().size.width, 0);
    rt::RunLoop::main().runFor(0.5);
    fresh->viewWillDestory();
}

TEST_F(OrvMaskRegionViewTest, DrawsTheMaskRoundTheWindowAndTheLineInsideIt) {
    auto mask = ui::makeView<OrvMaskRegionView>({0, 0, 120, 90});
    mask->setBackgroundColor(std::nullopt);
    mask->setEdgeMaskColor(gfx::Color::black());
    mask->setEdgeSideColor(gfx::Color::red());
    mask->setEdgeSideWidth(2);
    mask->setRegionRatio(2);  // a window of 120 × 60 at (0, 15)
    const auto pixels = ui::Renderer::renderView(*mask);
    ASSERT_TRUE(pixels);
    const auto alphaAt = [&](int x, int y) { return pixels->pixel(x, y)[3]; };
    const auto redAt = [&](int x, int y) { return pixels->pixel(x, y)[0]; };
    EXPECT_EQ(alphaAt(60, 5), 255);   // mask above
    EXPECT_EQ(alphaAt(60, 85), 255);  // mask below
    EXPECT_EQ(alphaAt(60, 45), 0);    // the window is clear
    // The line's outer edge is the window's edge: rows 15 and 16 are red, 17 is clear.
    EXPECT_EQ(redAt(60, 15), 255);
    EXPECT_EQ(redAt(60, 16), 255);
    EXPECT_EQ(alphaAt(60, 17), 0);
    // Without a width no line is drawn.
    mask->setEdgeSideWidth(0);
    EXPECT_EQ(ui::Renderer::renderView(*mask)->pixel(60, 15)[3], 0);
}

}  // namespace
