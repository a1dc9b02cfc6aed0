#include "orvviews/views/OrvSeekBar.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/ui/EventInjector.h"
#include "platform/ui/Layer.h"
#include "tests/support/ScreenFixture.h"

namespace {

class Recorder : public orv::rt::Object, public OrvSeekBarDelegate {
  public:
    void onOrvKitICSeekBar(OrvSeekBar&, double progress) override { seen.push_back(progress); }
    std::vector<double> seen;
};

// A bar 200 wide at x 20 of the window: the thumb's centre runs from 10 to 190.
class OrvSeekBarTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        window->makeKeyAndVisible();
        bar = ui::makeView<OrvSeekBar>({20, 100, 200, 30});
        window->addSubview(bar);
        bar->setDelegate(recorder);
        injector = ui::EventInjector::injectorForWindow(window);
    }
    static gfx::Point at(double x) { return {20 + x, 115}; }

    std::shared_ptr<OrvSeekBar> bar;
    std::shared_ptr<Recorder> recorder = orv::rt::make<Recorder>();
    std::shared_ptr<ui::EventInjector> injector;
};

TEST_F(OrvSeekBarTest, ProgressIsClampedAndPlacesThumbAndTrackWithoutTellingTheDelegate) {
    EXPECT_EQ(bar->belowView()->frame(), gfx::Rect(5, 14, 190, 2));
    EXPECT_EQ(bar->aboveView()->frame(), gfx::Rect(6, 14, 0, 2));
    EXPECT_EQ(bar->dragView()->frame(), gfx::Rect(0, 5, 20, 20));
    EXPECT_DOUBLE_EQ(bar->starCenterX(), 10);
    EXPECT_DOUBLE_EQ(bar->endCenterX(), 190);

    bar->setProgress(2);
    EXPECT_DOUBLE_EQ(bar->progress(), 1);
    EXPECT_EQ(bar->dragView()->center(), gfx::Point(190, 15));
    EXPECT_DOUBLE_EQ(bar->aboveView()->frame().size.width, bar->aboveViewMaxWidth());
    bar->setProgress(-0.5);
    EXPECT_DOUBLE_EQ(bar->progress(), 0);
    bar->setProgress(0.25);
    EXPECT_EQ(bar->dragView()->center(), gfx::Point(55, 15));
    EXPECT_TRUE(recorder->seen.empty());
}

TEST_F(OrvSeekBarTest, DragMovesByTheWholeWidthGrowsTheThumbAndTellsTheDelegate) {
    injector->touchDown(1, at(50));
    EXPECT_DOUBLE_EQ(bar->progress(), 0.25);
    EXPECT_EQ(bar->dragView()->bounds().size, gfx::Size(24, 24));
    EXPECT_DOUBLE_EQ(bar->dragView()->layer().cornerRadius(), 12);
    injector->touchMove(1, at(150));
    injector->touchMove(1, at(260));  // past the end
    EXPECT_EQ(bar->dragView()->center(), gfx::Point(190, 15));
    injector->touchUp(1);

    EXPECT_EQ(recorder->seen, (std::vector<double>{0.25, 0.75, 1}));
    EXPECT_EQ(bar->dragView()->frame(), gfx::Rect(180, 5, 20, 20));
    EXPECT_DOUBLE_EQ(bar->dragView()->layer().cornerRadius(), 10);
}

TEST_F(OrvSeekBarTest, TheSecondTapOfADoubleTapChangesNothing) {
    injector->tap(at(100));
    ASSERT_EQ(recorder->seen.size(), 1u);
    // Soon after and close by: the tap count is 2, even when the finger then drags.
    injector->touchDown(1, at(104));
    injector->touchMove(1, at(170));
    EXPECT_EQ(bar->dragView()->bounds().size, gfx::Size(20, 20));
    injector->touchUp(1);
    EXPECT_DOUBLE_EQ(bar->progress(), 0.5);
    EXPECT_EQ(recorder->seen.size(), 1u);
}

}  // namespace
