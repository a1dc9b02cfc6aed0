#include "orvviews/widgets/OrvFilterResultController.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/strand/ORPFPDisplayView.h"
#include "frameworks/strand/ORPFPImage.h"
#include "orvviews/edit/OrvEditHDRControllerBase.h"
#include "orvviews/edit/OrvEditHolyLightControllerBase.h"
#include "orvviews/edit/OrvEditSharpnessControllerBase.h"
#include "orvviews/edit/OrvEditVignetteControllerBase.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "orvviews/shower/OrvImageShowerImpl.h"
#include "orvviews/widgets/OrvComponentErrorDelegate.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/rt/Error.h"
#include "tests/support/ScreenFixture.h"
#include "tests/support/TestEnvironment.h"

namespace {

using orv::rt::RunLoop;

// A photo-like picture: gradients, a bright disc and fine stripes, so that every tool changes
// something visible.
gfx::ImagePtr makePicture(int width, int height) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        uint8_t* row = bitmap->mutableRow(y);
        for (int x = 0; x < width; ++x) {
            const double u = double(x) / width, v = double(y) / height;
            const double disc = std::hypot(u - 0.6, v - 0.4) < 0.15 ? 90 : 0;
            const double stripes = (x * 16 / width) % 2 ? 20 : 0;
            row[4 * x] = static_cast<uint8_t>(std::min(255.0, 60 + 120 * u + disc));
            row[4 * x + 1] = static_cast<uint8_t>(std::min(255.0, 50 + 100 * v + disc + stripes));
            row[4 * x + 2] = static_cast<uint8_t>(std::min(255.0, 90 + disc));
            row[4 * x + 3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap);
}

class RecordingConfigView : public ui::View, public OrvParameterConfigViewInterface {
    ORV_DECLARE_CLASS(RecordingConfigView)
  public:
    std::weak_ptr<OrvParameterConfigDelegate> delegate;
    std::vector<std::vector<std::string>> bound;
    std::vector<double> seeks;

    void setDelegate(std::weak_ptr<OrvParameterConfigDelegate> d) override { delegate = d; }
    void setParams(const std::vector<std::string>& keys, unsigned long) override {
        bound.push_back(keys);
    }
    void seekWithProgress(double progress) override { seeks.push_back(progress); }
};
ORV_DEFINE_CLASS(RecordingConfigView, ui::View, OrvParameterConfigViewInterface)

class ToolView : public ui::View, public OrvFilterResultViewInterface {
    ORV_DECLARE_CLASS(ToolView)
  public:
    void initWithFrame(const gfx::Rect& frame) override {
        ui::View::initWithFrame(frame);
        surface = ui::makeView<ui::View>({0, 0, 300, 300});
        config = ui::makeView<RecordingConfigView>({0, 300, 300, 100});
        addSubview(surface);
        addSubview(config);
    }
    std::shared_ptr<ui::View> imageView() const override { return surface; }
    std::shared_ptr<OrvParameterConfigViewInterface> configView() const override { return config; }
    std::shared_ptr<ui::View> surface;
    std::shared_ptr<RecordingConfigView> config;
};
ORV_DEFINE_CLASS(ToolView, ui::View, OrvFilterResultViewInterface)

class Receiver : public orv::rt::Object,
                 public OrvFilterResultControllerDelegate,
                 public OrvComponentErrorDelegate {
  public:
    std::vector<std::shared_ptr<OrvResult>> results;
    std::vector<std::shared_ptr<orv::rt::Error>> errors;
    void onComponent(const std::shared_ptr<ui::ViewController>&, const std::shared_ptr<OrvResult>&,
                     const std::shared_ptr<orv::rt::Error>& error) override {
        errors.push_back(error);
    }
    void onOrvKitFilterResult(OrvFilterResultController&,
                              const std::shared_ptr<OrvResult>& result) override {
        results.push_back(result);
    }
};

class OrvFilterResultControllerTest : public orv::test::ScreenFixture {
  protected:
    template <class Tool>
    std::shared_ptr<Tool> open(const gfx::ImagePtr& input, const orv::rt::Class* viewClass) {
        auto tool = orv::rt::make<Tool>();
        tool->setViewClazz(viewClass);
        tool->setInputImage(input);
        tool->setDelegate(receiver);
        showRoot(tool);
        // Loading runs on a thread of its own: wait for the first render.
        RunLoop::main().runUntil([&] { return !tool->defaultStyleView() || preview(*tool); }, 60);
        settle();
        return tool;
    }

    std::shared_ptr<OrvResult> finish(OrvFilterResultController& tool) {
        const size_t before = receiver->results.size();
        tool.onImageCompleteAtion();
        RunLoop::main().runUntil([&] { return receiver->results.size() > before; }, 60);
        return receiver->results.size() > before ? receiver->results.back() : nullptr;
    }

    static ToolView& viewOf(OrvFilterResultController& tool) {
        return static_cast<ToolView&>(*tool.defaultStyleView());
    }

    static gfx::BitmapPtr preview(OrvFilterResultController& tool) {
        auto shower = std::dynamic_pointer_cast<OrvImageShowerImpl>(tool.imageShower());
        auto shown = shower ? shower->displayView()->image() : nullptr;
        return shown ? shown->bitmap() : nullptr;
    }

    std::shared_ptr<Receiver> receiver = orv::rt::make<Receiver>();
};

double meanDifference(const gfx::Bitmap& a, const gfx::Bitmap& b) {
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        const uint8_t* ra = a.row(y);
        const uint8_t* rb = b.row(y);
        for (int x = 0; x < 4 * a.width(); ++x) sum += std::abs(ra[x] - rb[x]);
    }
    return sum / (4.0 * a.width() * a.height());
}

TEST_F(OrvFilterResultControllerTest, AClassWithoutTheViewInterfaceGivesAToolThatCannotFinish) {
    auto tool = open<OrvEditVignetteControllerBase>(makePicture(60, 40),
                                                    RecordingConfigView::staticClass());
    EXPECT_EQ(tool->viewClazz(), nullptr);
    EXPECT_EQ(tool->defaultStyleView(), nullptr);
    EXPECT_EQ(tool->imageShower(), nullptr);
    tool->onImageCompleteAtion();
    settle(0.5);
    EXPECT_TRUE(receiver->results.empty());
}

TEST_F(OrvFilterResultControllerTest, TheSlidersMoveTheObjectThePreviewListensTo) {
    auto tool = orv::rt::make<OrvEditSharpnessControllerBase>();
    auto given = VimraParameters::parameterWithCode("_IEBSharpen", 14);
    tool->setFilterParams(given);
    EXPECT_EQ(tool->filterParams(), given) << "without a preview the set is kept as given";

    tool = open<OrvEditSharpnessControllerBase>(makePicture(80, 60), ToolView::staticClass());
    auto params = tool->filterParams();
    ASSERT_TRUE(params && params->isInited());
    ToolView& view = viewOf(*tool);
    ASSERT_EQ(view.config->bound.size(), 1u);
    EXPECT_EQ(view.config->bound[0], std::vector<std::string>{"sharpness"});
    EXPECT_EQ(view.config->delegate.lock().get(), tool.get());

    const auto before = preview(*tool);
    tool->onOrvKitCPParameterConfigChangeWithIndex(view, 0, 1.0);
    EXPECT_DOUBLE_EQ(tool->onOrvKitCPParameterConfigValueWithIndex(view, 0), 1.0);
    EXPECT_DOUBLE_EQ(tool->onOrvKitCPParameterConfigValueWithKey(view, "sharpness"),
                     params->args()[0]->value());
    EXPECT_NE(preview(*tool), before) << "a slider move renders the preview again";

    // Out of range or unknown: quiet, and a value of 0.
    tool->onOrvKitCPParameterConfigChangeWithIndex(view, 1, 0.2);
    EXPECT_EQ(tool->onOrvKitCPParameterConfigValueWithIndex(view, 1), 0);
    EXPECT_EQ(tool->onOrvKitCPParameterConfigValueWithKey(view, "nothing"), 0);
    tool->onOrvKitCPParameterConfigResetWithIndex(view, 0);
    ASSERT_EQ(view.config->seeks.size(), 1u);
    EXPECT_DOUBLE_EQ(view.config->seeks[0], params->args()[0]->precent());

    tool->setSkinFilterParams(VimraParameters::parameterWithCode("_IEBSharpen", 14));
    EXPECT_EQ(tool->onOrvKitCPParameterConfigValueWithIndex(view, 0), 0)
        << "a set without arguments answers nothing";
}

TEST_F(OrvFilterResultControllerTest, HdrMakesItsSetOnlyOnceThePictureIsThere) {
    auto tool = orv::rt::make<OrvEditHDRControllerBase>();
    tool->setViewClazz(ToolView::staticClass());
    tool->setInputImage(makePicture(80, 60));
    window->setRootViewController(tool);
    window->makeKeyAndVisible();
    EXPECT_EQ(tool->filterParams(), nullptr);
    RunLoop::main().runUntil([&] { return tool->filterParams() != nullptr; });
    settle();
    ASSERT_TRUE(tool->filterParams());
    EXPECT_EQ(tool->filterParams()->argKeys(), std::vector<std::string>{"mixied"});
    EXPECT_EQ(viewOf(*tool).config->bound.size(), 1u) << "filled once, by the post step";
}

// The full-size result is the preview's look at another size: the same parameter set, applied
// to the full-size input, scaled down, matches what the screen showed.
TEST_F(OrvFilterResultControllerTest, EachToolsFullSizeResultMatchesItsPreview) {
    const auto full = makePicture(1200, 900);
    const auto small = orvImageLimit(full, 400);
    auto check = [&](auto tool, double progress) {
        SCOPED_TRACE(tool->className());
        ToolView& view = viewOf(*tool);
        tool->onOrvKitCPParameterConfigChangeWithIndex(view, 0, progress);
        auto shown = preview(*tool);
        ASSERT_TRUE(shown);
        EXPECT_GT(meanDifference(*shown, *small->bitmap()), 0.3) << "the look must show";
        // The full-size input comes from the file; the preview from the reduced picture.
        auto result = finish(*tool);
        ASSERT_TRUE(result && result->image());
        EXPECT_EQ(result->image()->bitmap()->width(), 1200);
        auto reduced =
            gfx::BitmapOps::resized(*result->image()->bitmap(), shown->width(), shown->height());
        EXPECT_LT(meanDifference(*reduced, *shown), 4.0);
    };
    const std::string path = orv::test::TestEnvironment::tempDir() + "/full.png";
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically(orvPngData(full), path));
    auto withFile = [&](auto tool) {
        tool->setInputTempFilePath(path);
        return tool;
    };
    check(withFile(open<OrvEditVignetteControllerBase>(small, ToolView::staticClass())), 0.2);
    check(withFile(open<OrvEditSharpnessControllerBase>(small, ToolView::staticClass())), 1.0);
    check(withFile(open<OrvEditHolyLightControllerBase>(small, ToolView::staticClass())), 0.9);
    check(withFile(open<OrvEditHDRControllerBase>(small, ToolView::staticClass())), 0.9);
}

TEST_F(OrvFilterResultControllerTest, APreviewOfTheResultKeepsItFromTheDelegate) {
    auto tool = open<OrvEditVignetteControllerBase>(makePicture(80, 60), ToolView::staticClass());
    tool->setShowResultPreview(true);
    tool->onImageCompleteAtion();
    RunLoop::main().runUntil([&] { return !tool->preview()->isHidden(); });
    settle(0.5);
    EXPECT_FALSE(tool->preview()->isHidden());
    EXPECT_TRUE(receiver->results.empty());
    const auto keys = viewOf(*tool).config->bound;
    tool->onPreviewClose();
    settle(0.5);
    EXPECT_TRUE(tool->preview()->isHidden());
    EXPECT_EQ(viewOf(*tool).config->bound, keys) << "the sliders stay as they were";
}

// One object hears both roads: a save that cannot be written reaches it as an error, with the
// hub's message, and no result.
TEST_F(OrvFilterResultControllerTest, AFailedSaveReachesTheDelegateAsAnError) {
    auto tool = open<OrvEditSharpnessControllerBase>(makePicture(80, 60), ToolView::staticClass());
    tool->setSaveToTemp(true);
    const std::string blocker = orv::test::TestEnvironment::tempDir() + "/blocker";
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically({1}, blocker));
    const std::string good = getenv("ORV_TEMP_DIR");
    setenv("ORV_TEMP_DIR", (blocker + "/temp").c_str(), 1);
    tool->onImageCompleteAtion();
    RunLoop::main().runUntil([&] { return !receiver->errors.empty(); });
    setenv("ORV_TEMP_DIR", good.c_str(), 1);
    ASSERT_EQ(receiver->errors.size(), 1u);
    EXPECT_EQ(receiver->errors[0]->code(), 1011);
    EXPECT_TRUE(receiver->results.empty());
    EXPECT_EQ(OrvPopupProgress::sharedView()->status().value_or(""), "处理失败");
}

}  // namespace
