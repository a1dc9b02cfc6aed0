#include "orvviews/edit/OrvEditCuterControllerBase.h"

#include <gtest/gtest.h>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvRatioType.h"
#include "frameworks/core/OrvStatistics.h"
#include "orvviews/edit/OrvEditTurnAndCutViewControllerBase.h"
#include "platform/gfx/BitmapOps.h"
#include "tests/support/ExifTestPhotos.h"
#include "tests/support/ScreenFixture.h"

namespace {

// A stand-in for the zoomable image: it reports what a test tells it.
class FakeTouchImage : public ui::View, public OrvTouchImageViewInterface {
    ORV_DECLARE_CLASS(FakeTouchImage)
  public:
    gfx::Rect cut;
    gfx::ImageOrientation orientation = gfx::ImageOrientation::Up;
    double zoom = 1;
    bool animating = false;
    std::shared_ptr<ui::ImageView> picture = ui::makeView<ui::ImageView>();

    void needUpdateLayout() override {}
    void setImage(const gfx::ImagePtr& image) override { picture->setImage(image); }
    void changeImage(long) override {}
    void changeRegionRatio(double) override {}
    gfx::Rect countImageCutRect() override { return cut; }
    bool inActioning() override { return animating; }
    void restoreWithZoomRect(const gfx::Rect&, double) override {}
    std::weak_ptr<OrvTouchImageViewDelegate> delegate() const override { return {}; }
    void setDelegate(std::weak_ptr<OrvTouchImageViewDelegate>) override {}
    std::shared_ptr<ui::ImageView> imageView() const override { return picture; }
    bool isInAniming() const override { return animating; }
    double regionRatio() const override { return 0; }
    void setRegionRatio(double) override {}
    gfx::ImageOrientation imageOrientation() const override { return orientation; }
    double zoomScale() const override { return zoom; }
};
ORV_DEFINE_CLASS(FakeTouchImage, ui::View, OrvTouchImageViewInterface)

template <class Base>
class Tool : public Base {
  public:
    std::shared_ptr<FakeTouchImage> touch = ui::makeView<FakeTouchImage>();
    std::shared_ptr<OrvResult> delivered;
    std::shared_ptr<ui::View> imageView() const override { return touch; }
    void notifyProcessingWithResult(const std::shared_ptr<OrvResult>& result) override {
        delivered = result;
    }
};
class CuterTool : public Tool<OrvEditCuterControllerBase> {
    ORV_DECLARE_CLASS(CuterTool)
};
ORV_DEFINE_CLASS(CuterTool, OrvEditCuterControllerBase)
class TurnCutTool : public Tool<OrvEditTurnAndCutViewControllerBase> {
    ORV_DECLARE_CLASS(TurnCutTool)
};
ORV_DEFINE_CLASS(TurnCutTool, OrvEditTurnAndCutViewControllerBase)

// Stored 4 × 2, every pixel its own red value: 10, 20, ... row by row.
gfx::ImagePtr makeNumbered(gfx::ImageOrientation orientation) {
    auto bitmap = std::make_shared<gfx::Bitmap>(4, 2);
    for (int i = 0; i < 8; ++i) {
        bitmap->mutableData()[4 * i] = uint8_t(10 * (i + 1));
        bitmap->mutableData()[4 * i + 3] = 255;
    }
    return gfx::Image::withBitmap(bitmap, 1, orientation);
}

std::vector<int> reds(const gfx::ImagePtr& image) {
    std::vector<int> out;
    const auto& b = *image->bitmap();
    for (int y = 0; y < b.height(); ++y)
        for (int x = 0; x < b.width(); ++x) out.push_back(b.pixel(x, y)[0]);
    return out;
}

class CropToolsTest : public orv::test::ScreenFixture {
  protected:
    template <class T>
    std::shared_ptr<T> open(const gfx::ImagePtr& input) {
        auto tool = rt::make<T>();
        tool->setInputImage(input);
        showRoot(tool);
        return tool;
    }
    template <class T>
    static bool waitForResult(T& tool) {
        return rt::RunLoop::main().runUntil([&] { return tool.delivered != nullptr; }, 20);
    }
};

TEST_F(CropToolsTest, RatioTypesFallBackToTheDefaultsAndTheFirstIsChosenOnRead) {
    OrvStatistics::resetForTesting();
    auto tool = rt::make<CuterTool>();
    tool->setRatioTypeList({});
    tool->setRatioType(0);
    EXPECT_EQ(tool->getRatioTypes(), OrvRatioType::orvOrvKitRatioDefaultTypes());
    tool->setRatioType(8 | 128);
    EXPECT_EQ(tool->getRatioTypes(), (std::vector<long>{8, 128}));
    tool->setRatioTypeList({3, 64, 2});  // 3 is no type
    EXPECT_EQ(tool->getRatioTypes(), (std::vector<long>{64, 2}));
    EXPECT_EQ(tool->currentRatioType(), 64);
    EXPECT_DOUBLE_EQ(tool->currentRatio(), double(4.0f / 3.0f));
    EXPECT_EQ(OrvStatistics::pendingCounts()[OrvStatistics::componentTypeWithRatioType(64)], 1);
    tool->setZoomScale(-1);
    EXPECT_EQ(tool->zoomScale(), 1.0);
    // An earlier result's settings come back.
    auto earlier = OrvResult::result();
    earlier->setCutRect({0.1, 0.2, 0.5, 0.5});
    earlier->setCutScale(2);
    earlier->setCutRatioType(2);
    tool->setCuterResult(earlier);
    tool->setCuterResult(nullptr);
    EXPECT_EQ(tool->zoomRect(), (gfx::Rect{0.1, 0.2, 0.5, 0.5}));
    EXPECT_EQ(tool->zoomScale(), 2);
    EXPECT_EQ(tool->currentRatioType(), 2);
}

TEST_F(CropToolsTest, CropsTheTurnedOriginalUprightOrOnlyReturnsTheSettings) {
    auto tool = open<CuterTool>(makeNumbered(gfx::ImageOrientation::Up));
    tool->setCurrentRatioType(2);                             // 1:1
    tool->touch->orientation = gfx::ImageOrientation::Right;  // shown 2 wide, 4 high
    tool->touch->cut = {0, 0.5, 1, 0.5};                      // its lower half
    tool->touch->zoom = 1.5;
    tool->touch->animating = true;
    tool->onImageCompleteAtion();  // dropped mid-animation
    settle(0.1);
    EXPECT_EQ(tool->delivered, nullptr);
    tool->touch->animating = false;
    tool->onImageCompleteAtion();
    ASSERT_TRUE(waitForResult(*tool));
    const auto& result = *tool->delivered;
    EXPECT_EQ(result.cutScale(), 1.5);
    EXPECT_EQ(result.cutRatioType(), 2);
    // Turned right, the stored rows become columns read upwards: the lower half of what the
    // user saw is the stored columns 2 and 3.
    const auto expected = reds(orvImageCorpWithPrecentRect(
        orvChangeOrientation(makeNumbered(gfx::ImageOrientation::Up), gfx::ImageOrientation::Right),
        {0, 0.5, 1, 0.5}));
    EXPECT_EQ(reds(result.image()), expected);
    EXPECT_EQ(result.image()->orientation(), gfx::ImageOrientation::Up);
    EXPECT_EQ(expected, (std::vector<int>{70, 30, 80, 40}));

    auto settings = open<CuterTool>(makeNumbered(gfx::ImageOrientation::Up));
    settings->setOnlyReturnCuter(true);
    settings->onImageCompleteAtion();  // ratio 0 by default here: no cut rectangle
    ASSERT_TRUE(waitForResult(*settings));
    EXPECT_EQ(settings->delivered->image(), nullptr);
    EXPECT_TRUE(gfx::rectIsEmpty(settings->delivered->cutRect()));
}

// A camera's file under each EXIF orientation: the quadrant the window framed comes out upright,
// whatever the stored pixels' order.
TEST_F(CropToolsTest, CropsCameraFilesUprightUnderEveryExifOrientation) {
    const gfx::ImageOrientation tagOfExif[9] = {
        gfx::ImageOrientation::Up,           gfx::ImageOrientation::Up,
        gfx::ImageOrientation::UpMirrored,   gfx::ImageOrientation::Down,
        gfx::ImageOrientation::DownMirrored, gfx::ImageOrientation::LeftMirrored,
        gfx::ImageOrientation::Right,        gfx::ImageOrientation::RightMirrored,
        gfx::ImageOrientation::Left};
    for (int exif = 1; exif <= 8; ++exif) {
        SCOPED_TRACE(exif);
        const std::string path =
            orv::test::writeCameraJpeg(exif, OrvTSFileManager::newTemporaryPath(".jpg"));
        ASSERT_FALSE(path.empty());
        auto tool = rt::make<CuterTool>();
        tool->setInputTempFilePath(path);
        showRoot(tool);
        tool->setCurrentRatioType(64);  // 4:3, the photo's own
        tool->touch->orientation = tagOfExif[exif];
        tool->touch->cut = {0.5, 0.5, 0.5, 0.5};  // the yellow quadrant, bottom right
        tool->onImageCompleteAtion();
        ASSERT_TRUE(waitForResult(*tool));
        const auto& image = tool->delivered->image();
        ASSERT_TRUE(image);
        EXPECT_EQ(image->orientation(), gfx::ImageOrientation::Up);
        ASSERT_EQ(image->bitmap()->width(), orv::test::kPhotoWidth / 2);
        ASSERT_EQ(image->bitmap()->height(), orv::test::kPhotoHeight / 2);
        const uint8_t* middle = image->bitmap()->pixel(16, 12);
        EXPECT_NEAR(middle[0], 230, 12);
        EXPECT_NEAR(middle[1], 220, 12);
        EXPECT_NEAR(middle[2], 40, 12);
        OrvTSFileManager::deletePath(path);
    }
}

TEST_F(CropToolsTest, CombinedToolTurnsThenCropsToItsSizeThenAppliesTheLook) {
    auto tool = open<TurnCutTool>(makeNumbered(gfx::ImageOrientation::Up));
    tool->touch->orientation = gfx::ImageOrientation::Left;
    tool->touch->cut = {0, 0, 1, 0.5};
    tool->setCutSize({6, 4});
    EXPECT_TRUE(tool->onSelectedFilterCode("Normal"));
    EXPECT_FALSE(tool->onSelectedFilterCode("Normal"));  // the same look runs once
    ASSERT_TRUE(
        rt::RunLoop::main().runUntil([&] { return tool->touch->picture->image() != nullptr; }));
    tool->onImageCompleteAtion();
    ASSERT_TRUE(waitForResult(*tool));
    const auto& image = tool->delivered->image();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->bitmap()->width(), 6);
    EXPECT_EQ(image->bitmap()->height(), 4);
    EXPECT_EQ(tool->delivered->filterCode(), std::optional<std::string>("Normal"));

    // No size: no crop, only the turn.
    auto uncut = open<TurnCutTool>(makeNumbered(gfx::ImageOrientation::Up));
    uncut->touch->orientation = gfx::ImageOrientation::Left;
    uncut->touch->cut = {0, 0, 1, 0.5};
    uncut->onImageCompleteAtion();
    ASSERT_TRUE(waitForResult(*uncut));
    const auto& turned = uncut->delivered->image();
    EXPECT_EQ(turned->size(), (gfx::Size{2, 4}));
}

}  // namespace
