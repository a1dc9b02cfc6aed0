#include "orvviews/edit/OrvEditSmudgeControllerBase.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "frameworks/core/OrvStatistics.h"
#include "orvviews/views/OrvSmudgeImageViewWrap.h"
#include "platform/ui/EventInjector.h"
#include "platform/ui/NavigationController.h"
#include "tests/support/ScreenFixture.h"

namespace {

// A photo twice the screen's size: a sky gradient over a checker, so that painted strokes and
// any blurring of untouched parts both show.
gfx::ImagePtr makePhoto() {
    auto bitmap = std::make_shared<gfx::Bitmap>(1500, 1000);
    for (int y = 0; y < 1000; ++y) {
        for (int x = 0; x < 1500; ++x) {
            uint8_t* p = bitmap->mutableRow(y) + 4 * x;
            const bool dark = ((x / 3) + (y / 3)) % 2;
            p[0] = dark ? 20 : 230;
            p[1] = uint8_t(y * 255 / 1000);
            p[2] = uint8_t(x * 255 / 1500);
            p[3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap);
}

// The least a screen needs: the canvas filling the view, and the result kept.
class Tool : public OrvEditSmudgeControllerBase {
    ORV_DECLARE_CLASS(Tool)
  public:
    std::shared_ptr<OrvSmudgeImageViewWrap> wrap;
    ResultPtr delivered;
    int refreshes = 0;

    void viewDidLoad() override {
        OrvEditSmudgeControllerBase::viewDidLoad();
        wrap = ui::makeView<OrvSmudgeImageViewWrap>(view()->bounds());
        wrap->setDelegate(std::static_pointer_cast<OrvSmudgeImageViewDelegate>(self<Tool>()));
        wrap->setMaxUndoCount(10);
        view()->addSubview(wrap);
        asyncLoadInputImageWithBlock([this] { return inputImage(); });
    }
    void loadedInputImage(const gfx::ImagePtr& image) override { wrap->setImage(image); }
    std::shared_ptr<ui::View> smudgeView() const override { return wrap; }
    void onRefreshStepStatesWithHistories(uint64_t, uint64_t) override { ++refreshes; }
    void notifyProcessingWithResult(const ResultPtr& result) override {
        dismissHub();
        delivered = result;
    }
};
ORV_DEFINE_CLASS(Tool, OrvEditSmudgeControllerBase)

class OrvEditSmudgeControllerBaseTest : public orv::test::ScreenFixture {};

TEST_F(OrvEditSmudgeControllerBaseTest, PaintsWithChosenBrushesAndDeliversTheFullSizePhoto) {
    OrvStatistics::resetForTesting();
    auto tool = rt::make<Tool>();
    auto photo = makePhoto();
    tool->setInputImage(photo);
    showRoot(tool);
    ASSERT_TRUE(
        rt::RunLoop::main().runUntil([&] { return tool->wrap->getSmudgeImage() != nullptr; }));
    EXPECT_EQ(OrvStatistics::pendingCounts()[OrvEditSmudgeControllerBase::kStatisticsIdt], 1);

    EXPECT_FALSE(tool->selectBrushCode("no_such_brush"));
    ASSERT_TRUE(tool->selectBrushCode("mosaic"));
    auto injector = ui::EventInjector::injectorForWindow(window);
    std::vector<gfx::Point> wave;
    for (int i = 0; i <= 24; ++i) wave.push_back({40 + 12.0 * i, 330 + 30 * std::sin(i / 4.0)});
    injector->drag(wave, 0.5);
    settle(0.1);
    EXPECT_EQ(tool->wrap->getUndoCount(), 1u);
    tool->onUndoAction();
    EXPECT_EQ(tool->wrap->getRedoCount(), 1u);
    tool->onRedoAction();
    EXPECT_EQ(tool->wrap->getUndoCount(), 1u);
    EXPECT_GE(tool->refreshes, 3);
    // Compare while held, then back to the painting.
    auto painted = tool->wrap->smudgeImageView()->image();
    tool->onOriginalActionStart();
    EXPECT_NE(tool->wrap->smudgeImageView()->image(), painted);
    tool->onOriginalActionEnd();

    tool->onImageCompleteAction();
    ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return tool->delivered != nullptr; }, 30));
    const auto& result = tool->delivered->image();
    ASSERT_TRUE(result);
    ASSERT_EQ(result->bitmap()->width(), 1500);
    ASSERT_EQ(result->bitmap()->height(), 1000);
    // The mosaic crossed every column the finger crossed (window x 40 to 328, four photo
    // pixels a point); the corners kept every pixel of the photo.
    int columns = 0, crossed = 0;
    for (int x = 200; x < 1280; x += 20, ++columns) {
        bool changed = false;
        for (int y = 300; y < 700 && !changed; y += 2) {
            changed = std::memcmp(result->bitmap()->pixel(x, y), photo->bitmap()->pixel(x, y), 4);
        }
        crossed += changed;
    }
    EXPECT_EQ(crossed, columns);
    for (auto [x, y] : {std::pair{5, 5}, {1494, 994}, {1494, 5}}) {
        EXPECT_EQ(0, std::memcmp(result->bitmap()->pixel(x, y), photo->bitmap()->pixel(x, y), 4));
    }
}

TEST_F(OrvEditSmudgeControllerBaseTest, WithoutACanvasFinishingGoesBack) {
    auto nav = rt::make<ui::NavigationController>();
    auto home = rt::make<ui::ViewController>();
    nav->setViewControllers({home}, false);
    showRoot(nav);
    auto bare = rt::make<OrvEditSmudgeControllerBase>();
    nav->pushViewController(bare, false);
    settle();
    bare->onImageCompleteAction();
    settle();
    EXPECT_EQ(nav->topViewController(), home);
    // The buttons do nothing without a canvas.
    bare->onUndoAction();
    EXPECT_FALSE(bare->selectBrushCode("no_such_brush"));
}

}  // namespace
