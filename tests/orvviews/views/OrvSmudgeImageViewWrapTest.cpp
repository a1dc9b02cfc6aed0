#include "orvviews/views/OrvSmudgeImageViewWrap.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "frameworks/core/OrvBrushLocalPackage.h"
#include "platform/ui/EventInjector.h"
#include "tests/support/ScreenFixture.h"

namespace {

// A landscape picture of smooth gradients with a fine checker, so that any loss of resolution
// shows in the checker.
gfx::ImagePtr makePhoto(int width, int height) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint8_t* p = bitmap->mutableRow(y) + 4 * x;
            p[0] = uint8_t(40 + 180 * x / width);
            p[1] = uint8_t(40 + 180 * y / height);
            p[2] = (x + y) % 2 ? 220 : 30;
            p[3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap);
}

struct RecordingDelegate : rt::Object, OrvSmudgeImageViewDelegate {
    ORV_DECLARE_CLASS(RecordingDelegate)
  public:
    std::vector<std::pair<uint64_t, uint64_t>> counts;
    int moves = 0;
    int ends = 0;
    gfx::Point lastViewLocation;
    void onRefreshStepStatesWithHistories(uint64_t undo, uint64_t redo) override {
        counts.emplace_back(undo, redo);
    }
    void onSmudgeActionChanged(gfx::Point, gfx::Point viewLocation, double, double) override {
        ++moves;
        lastViewLocation = viewLocation;
    }
    void onSmudgeActionEnd() override { ++ends; }
};
ORV_DEFINE_CLASS(RecordingDelegate, rt::Object, OrvSmudgeImageViewDelegate)

bool samePixels(const gfx::ImagePtr& a, const gfx::ImagePtr& b) {
    return a && b && a->bitmap()->byteCount() == b->bitmap()->byteCount() &&
           std::memcmp(a->bitmap()->data(), b->bitmap()->data(), a->bitmap()->byteCount()) == 0;
}

class OrvSmudgeImageViewWrapTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        root = rt::make<ui::ViewController>();
        showRoot(root);
        wrap = ui::makeView<OrvSmudgeImageViewWrap>({0, 100, 375, 400});
        root->view()->addSubview(wrap);
        delegate = rt::make<RecordingDelegate>();
        wrap->setDelegate(delegate);
        injector = ui::EventInjector::injectorForWindow(window);
    }
    // A curve across the middle of the picture, in window points.
    void paintCurve(double yOffset = 0) {
        std::vector<gfx::Point> path;
        for (int i = 0; i <= 20; ++i) {
            const double t = i / 20.0;
            path.push_back({40 + 290 * t, 300 + yOffset + 40 * std::sin(t * 6)});
        }
        injector->drag(path, 0.4);
        settle(0.05);
    }

    std::shared_ptr<ui::ViewController> root;
    std::shared_ptr<OrvSmudgeImageViewWrap> wrap;
    std::shared_ptr<RecordingDelegate> delegate;
    std::shared_ptr<ui::EventInjector> injector;
};

TEST(OrvSmudgeImageViewWrapGeometry, FitsThePictureInsideAndCentresIt) {
    // Taller than the view: full height, centred across.
    EXPECT_EQ(OrvSmudgeImageViewWrap::getPreferImageRect({100, 400}, {300, 300}),
              (gfx::Rect{112.5, 0, 75, 300}));
    // Wider, and enlarged: full width, centred down.
    EXPECT_EQ(OrvSmudgeImageViewWrap::getPreferImageRect({40, 20}, {300, 300}),
              (gfx::Rect{0, 75, 300, 150}));
    // Same proportions: the whole view.
    EXPECT_EQ(OrvSmudgeImageViewWrap::getPreferImageRect({600, 800}, {300, 400}),
              (gfx::Rect{0, 0, 300, 400}));
    EXPECT_EQ(OrvSmudgeImageViewWrap::getBrushSizeValue(3), 0.2);
    EXPECT_EQ(OrvSmudgeImageViewWrap::getBrushSizeValue(2), 0.15);
    EXPECT_EQ(OrvSmudgeImageViewWrap::getBrushSizeValue(0), 0.1);
}

TEST_F(OrvSmudgeImageViewWrapTest, PaintsUndoesRedoesAndComparesAtTheDisplayedSize) {
    // Nothing before a picture; after it, undo with no history still tells the delegate.
    wrap->undo();
    EXPECT_TRUE(delegate->counts.empty());
    wrap->setMaxUndoCount(20);
    wrap->setImage(makePhoto(1500, 1000));
    wrap->undo();
    ASSERT_EQ(delegate->counts.size(), 1u);
    EXPECT_EQ(delegate->counts.back(), std::make_pair(uint64_t(0), uint64_t(0)));
    EXPECT_EQ(wrap->smudgeImageView()->frame(), (gfx::Rect{0, 75, 375, 250}));
    // The canvas is the picture at the displayed pixel size.
    auto canvas = wrap->getSmudgeImage();
    ASSERT_TRUE(canvas);
    EXPECT_EQ(canvas->bitmap()->width(), 750);
    EXPECT_EQ(canvas->bitmap()->height(), 500);

    paintCurve();
    EXPECT_GT(delegate->moves, 10);
    EXPECT_EQ(delegate->ends, 1);
    EXPECT_EQ(delegate->counts.back(), std::make_pair(uint64_t(1), uint64_t(0)));
    auto painted = wrap->getSmudgeImage();
    EXPECT_FALSE(samePixels(painted, canvas));
    EXPECT_TRUE(samePixels(wrap->smudgeImageView()->image(), painted));

    // Compare: the picture as it was, then the painting again, with no history entry.
    wrap->showOriginal(true);
    EXPECT_TRUE(samePixels(wrap->smudgeImageView()->image(), canvas));
    wrap->showOriginal(false);
    EXPECT_TRUE(samePixels(wrap->smudgeImageView()->image(), painted));
    EXPECT_EQ(wrap->getUndoCount(), 1u);

    wrap->undo();
    EXPECT_EQ(delegate->counts.back(), std::make_pair(uint64_t(0), uint64_t(1)));
    EXPECT_TRUE(samePixels(wrap->smudgeImageView()->image(), canvas));
    wrap->redo();
    EXPECT_EQ(delegate->counts.back(), std::make_pair(uint64_t(1), uint64_t(0)));
    EXPECT_TRUE(samePixels(wrap->smudgeImageView()->image(), painted));
    wrap->destroy();
}

TEST_F(OrvSmudgeImageViewWrapTest, FullSizeResultKeepsUntouchedDetailAndShowsTheStrokes) {
    wrap->setMaxUndoCount(5);
    auto photo = makePhoto(1500, 1000);
    wrap->setImage(photo);
    paintCurve();
    auto result = wrap->getCanvasImage(photo);
    ASSERT_TRUE(result);
    ASSERT_EQ(result->bitmap()->width(), 1500);
    ASSERT_EQ(result->bitmap()->height(), 1000);
    // Far from the stroke the full-size checker is intact, pixel for pixel.
    for (auto [x, y] : {std::pair{30, 30}, {1470, 970}, {700, 950}}) {
        EXPECT_EQ(0, std::memcmp(result->bitmap()->pixel(x, y), photo->bitmap()->pixel(x, y), 4))
            << x << "," << y;
    }
    // The stroke changed a band across the picture, and only that.
    size_t changed = 0;
    const size_t total = 1500 * 1000;
    for (size_t i = 0; i < total; ++i) {
        changed +=
            std::memcmp(result->bitmap()->data() + 4 * i, photo->bitmap()->data() + 4 * i, 4) != 0;
    }
    EXPECT_GT(changed, total / 20);
    EXPECT_LT(changed, total / 2);
    wrap->destroy();
}

TEST_F(OrvSmudgeImageViewWrapTest, BrushChangesKeepTheProcessorUsableWhenAPictureFailsToLoad) {
    wrap->setBrushCustomSize(0.3);  // before the picture: lost to the preset
    wrap->setImage(makePhoto(400, 300));
    auto processor = wrap->getSmudgeProcessor();
    ASSERT_TRUE(processor->currentBrush());
    EXPECT_EQ(processor->brushSize(), 0.1);
    auto loaded = processor->currentBrush();
    // A brush whose picture is missing: the processor keeps the brush it had.
    auto broken = OrvBrush::brushWithType(OrvBrush::kStamp);
    broken->setCode("broken");
    broken->setImageName("no_such_picture");
    wrap->setBrush(broken);
    EXPECT_EQ(processor->currentBrush(), loaded);
    wrap->setBrush(nullptr);
    wrap->setBrushSize(3);
    EXPECT_EQ(processor->brushSize(), 0.2);
    wrap->destroyHistory();
    EXPECT_EQ(wrap->getOriginalImage(), nullptr);
}

}  // namespace
