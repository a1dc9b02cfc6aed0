#include "platform/ui/ScrollView.h"

#include <algorithm>

#include "platform/rt/RunLoop.h"
#include "tests/platform/ui/TouchTestSupport.h"

namespace orv::ui::test {
namespace {

using Strings = std::vector<std::string>;

// Logs the calls into the touch log; the offsets didScroll saw are kept apart.
class ScrollRecorder : public rt::Object, public ScrollViewDelegate {
  public:
    void scrollViewDidScroll(ScrollView& view) override { offsets.push_back(view.contentOffset()); }
    void scrollViewWillBeginDragging(ScrollView&) override { log->push_back("willBeginDragging"); }
    void scrollViewDidEndDragging(ScrollView&, bool decelerate) override {
        log->push_back(decelerate ? "didEndDragging decelerating" : "didEndDragging");
    }
    void scrollViewDidEndDecelerating(ScrollView&) override {
        log->push_back("didEndDecelerating");
    }
    void scrollViewDidEndScrollingAnimation(ScrollView&) override { log->push_back("animated"); }

    TouchLog log;
    std::vector<gfx::Point> offsets;
};

// A 200 × 200 scroll view at the window's origin over a 200 × 1000 content.
class ScrollViewTest : public TouchTest {
  protected:
    void SetUp() override {
        TouchTest::SetUp();
        scroll = makeView<ScrollView>({0, 0, 200, 200});
        scroll->setContentSize({200, 1000});
        window->addSubview(scroll);
        recorder->log = log;
        scroll->setDelegate(recorder);
    }
    void drag(double fromY, double toY) { injector->drag({{100, fromY}, {100, toY}}, 0.2); }
    bool logged(const std::string& what) {
        const Strings taken = takeLog();
        return std::find(taken.begin(), taken.end(), what) != taken.end();
    }
    static void runFor(double seconds) { rt::RunLoop::main().runFor(seconds); }

    std::shared_ptr<ScrollView> scroll;
    std::shared_ptr<ScrollRecorder> recorder = rt::make<ScrollRecorder>();
};

TEST_F(ScrollViewTest, DragMovesTheContentWithTheFingerAndWithoutBouncesStaysInRange) {
    drag(150, 30);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 120));
    EXPECT_EQ(takeLog(), (Strings{"willBeginDragging", "didEndDragging"}));
    EXPECT_EQ(recorder->offsets.back(), gfx::Point(0, 120));
    EXPECT_EQ(scroll->convertPointToView({0, 120}, window.get()), gfx::Point(0, 0));

    scroll->setBounces(false);
    scroll->setContentOffset({0, 750});
    drag(150, 50);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 800));
    for (gfx::Point seen : recorder->offsets) EXPECT_LE(seen.y, 800);
    EXPECT_FALSE(scroll->isSettling());
}

TEST_F(ScrollViewTest, ReleasedPastTheEndItSpringsBackInsideTheInsets) {
    EXPECT_TRUE(scroll->clipsToBounds());
    scroll->setContentInset({10, 0, 0, 0});
    drag(100, 180);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, -80));
    EXPECT_EQ(takeLog(), (Strings{"willBeginDragging", "didEndDragging decelerating"}));
    runFor(ScrollView::kSettleSeconds / 2);
    EXPECT_GT(scroll->contentOffset().y, -80);
    EXPECT_LT(scroll->contentOffset().y, -10);
    runFor(ScrollView::kSettleSeconds);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, -10));
    EXPECT_EQ(takeLog(), (Strings{"didEndDecelerating"}));
}

TEST_F(ScrollViewTest, AnimatedOffsetArrivesOverTheSettleTimeUnlessSetAgain) {
    scroll->setContentOffset({0, 300}, true);
    runFor(ScrollView::kSettleSeconds / 2);
    EXPECT_NEAR(scroll->contentOffset().y, 150, 40);  // within a frame of halfway
    runFor(ScrollView::kSettleSeconds);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 300));
    EXPECT_EQ(takeLog(), (Strings{"animated"}));

    scroll->setContentOffset({0, 0}, true);
    runFor(0.1);
    scroll->setContentOffset({0, 500});
    runFor(1);
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 500));
    EXPECT_TRUE(takeLog().empty());
}

// A subview's touch is cancelled when the content moves, and kept when it cannot.
TEST_F(ScrollViewTest, NothingToScrollLetsTheDragThrough) {
    addRecordingView({0, 0, 200, 50}, "row", scroll.get());
    scroll->setContentSize({200, 150});
    drag(25, 150);
    EXPECT_TRUE(logged("row ended"));
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, 0));

    scroll->setAlwaysBounceVertical(true);
    drag(25, 75);
    EXPECT_TRUE(logged("row cancelled"));
    EXPECT_EQ(scroll->contentOffset(), gfx::Point(0, -50));
}

}  // namespace
}  // namespace orv::ui::test
