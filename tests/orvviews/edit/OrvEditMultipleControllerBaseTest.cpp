#include "orvviews/edit/OrvEditMultipleControllerBase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>
#include <vector>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvRatioType.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "orvviews/widgets/OrvComponentErrorDelegate.h"
#include "orvviews/widgets/OrvEditActionType.h"
#include "platform/rt/Error.h"
#include "tests/support/ScreenFixture.h"
#include "tests/support/TestEnvironment.h"

namespace {

using orv::rt::RunLoop;
using Steps = std::vector<std::string>;

gfx::ImagePtr makePicture(int width, int height, uint8_t low = 0, uint8_t high = 255,
                          gfx::ImageOrientation orientation = gfx::ImageOrientation::Up) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        uint8_t* row = bitmap->mutableRow(y);
        for (int x = 0; x < width; ++x) {
            const int span = high - low;
            row[4 * x] = static_cast<uint8_t>(low + span * x / std::max(1, width - 1));
            row[4 * x + 1] = static_cast<uint8_t>(low + span * y / std::max(1, height - 1));
            row[4 * x + 2] = static_cast<uint8_t>(low + span / 2);
            row[4 * x + 3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap, 1, orientation);
}

std::string writeJpeg(const gfx::ImagePtr& image, const std::string& name) {
    const std::string path = orv::test::TestEnvironment::tempDir() + "/" + name;
    EXPECT_TRUE(OrvTSFileManager::writeDataAtomically(orvJpegDataWithCompress(image, 0.95), path));
    return path;
}

bool exists(const std::string& path) {
    return std::filesystem::exists(path);
}

// An editor as an application writes one: it shows what the session hands it and records the
// hooks.
class Editor : public OrvEditMultipleControllerBase, public OrvComponentErrorDelegate {
  public:
    std::vector<std::pair<size_t, size_t>> states;
    std::vector<bool> autoButton;
    std::vector<gfx::ImagePtr> shown;
    std::vector<std::shared_ptr<OrvResult>> delivered;
    std::vector<std::shared_ptr<orv::rt::Error>> errors;

    void viewDidLoad() override {
        OrvEditMultipleControllerBase::viewDidLoad();
        std::weak_ptr<Editor> weak = self<Editor>();
        asyncLoadInputImageWithBlock([weak] {
            auto me = weak.lock();
            return me ? me->asyncLoadImage() : nullptr;
        });
    }
    void loadedInputImage(const gfx::ImagePtr& image) override { setDisplayImage(image); }
    void setDisplayImage(const gfx::ImagePtr& image) override {
        OrvEditMultipleControllerBase::setDisplayImage(image);
        shown.push_back(image);
    }
    void onRefreshStepStatesWithHistories(size_t h, size_t b) override { states.push_back({h, b}); }
    void onRefreshAutoAdjustButtonEnable(bool on) override { autoButton.push_back(on); }
    void notifyProcessingWithResult(const std::shared_ptr<OrvResult>& result) override {
        delivered.push_back(result);
    }
    void onComponent(const std::shared_ptr<ui::ViewController>&, const std::shared_ptr<OrvResult>&,
                     const std::shared_ptr<orv::rt::Error>& error) override {
        errors.push_back(error);
    }

    Steps undo() const { return histories; }
    Steps redo() const { return brushies; }
};

class OrvEditMultipleControllerBaseTest : public orv::test::ScreenFixture {
  protected:
    std::shared_ptr<Editor> openOn(const std::string& path) {
        auto editor = orv::rt::make<Editor>();
        editor->setInputTempFilePath(path);
        editor->setErrorDelegate(editor);
        showRoot(editor);
        RunLoop::main().runUntil([&] { return !editor->shown.empty() || !editor->errors.empty(); });
        settle();
        return editor;
    }

    std::string toolOutput(const std::string& name, uint8_t shade) {
        return writeJpeg(makePicture(64, 48, shade, shade), name);
    }

    std::shared_ptr<OrvResult> finish(Editor& editor) {
        editor.onImageCompleteAtion();
        RunLoop::main().runUntil([&] { return !editor.delivered.empty(); });
        return editor.delivered.empty() ? nullptr : editor.delivered.back();
    }

    static std::string hubStatus() { return OrvPopupProgress::sharedView()->status().value_or(""); }
};

TEST_F(OrvEditMultipleControllerBaseTest, TheFirstStepIsTheInputReducedAndUpright) {
    // Stored turned a quarter, tagged to be shown upright: 3000 wide on disk, 1000 upright.
    const auto input =
        writeJpeg(makePicture(3000, 1000, 0, 255, gfx::ImageOrientation::Right), "turned.jpg");
    auto editor = openOn(input);
    ASSERT_EQ(editor->undo().size(), 1u);
    EXPECT_TRUE(editor->states.empty()) << "the first step does not report the stacks";
    auto step = imageWithContentsOfFile(editor->undo()[0]);
    ASSERT_TRUE(step);
    EXPECT_EQ(step->orientation(), gfx::ImageOrientation::Up);
    EXPECT_EQ(step->size().height, editor->limitSize());
    EXPECT_NEAR(step->size().width, editor->limitSize() / 3, 1);
    ASSERT_EQ(editor->shown.size(), 1u);
    EXPECT_EQ(editor->displayImage(), editor->shown[0]);
    EXPECT_TRUE(exists(input)) << "the application's file stays";
}

TEST_F(OrvEditMultipleControllerBaseTest, UndoAndRedoExchangePathsAndANewStepDropsTheRedoFiles) {
    auto editor = openOn(writeJpeg(makePicture(200, 100), "input.jpg"));
    const auto first = editor->undo()[0];
    const auto a = toolOutput("a.jpg", 60), b = toolOutput("b.jpg", 120);
    editor->appendHistory(a);
    editor->appendHistory(b);
    editor->appendHistory(orv::test::TestEnvironment::tempDir() + "/missing.jpg");
    EXPECT_EQ(editor->undo(), (Steps{first, a, b}));

    editor->onStepPreviewAction();
    editor->onStepPreviewAction();
    editor->onStepNextAction();
    EXPECT_EQ(editor->undo(), (Steps{first, a}));
    EXPECT_EQ(editor->redo(), (Steps{b}));
    EXPECT_EQ(editor->lastStepTemp(), a);
    EXPECT_TRUE(exists(first) && exists(a) && exists(b)) << "undo deletes nothing";
    RunLoop::main().runUntil([&] { return editor->shown.size() >= 4; });
    EXPECT_EQ(editor->shown.size(), 4u) << "every move shows the new top step";

    const auto c = toolOutput("c.jpg", 200);
    editor->appendHistory(c);
    EXPECT_EQ(editor->undo(), (Steps{first, a, c}));
    EXPECT_TRUE(editor->redo().empty());
    EXPECT_FALSE(exists(b));
    const std::vector<std::pair<size_t, size_t>> expected{{2, 0}, {3, 0}, {2, 1},
                                                          {1, 2}, {2, 1}, {3, 0}};
    EXPECT_EQ(editor->states, expected);
}

TEST_F(OrvEditMultipleControllerBaseTest, UndoingEverythingLeavesNothingToFinishUntilRedo) {
    auto editor = openOn(writeJpeg(makePicture(120, 90), "input.jpg"));
    const auto shownBefore = editor->displayImage();
    editor->onStepPreviewAction();
    EXPECT_EQ(editor->undo().size(), 0u);
    EXPECT_EQ(editor->lastStepTemp(), std::nullopt);
    settle();
    EXPECT_EQ(editor->displayImage(), shownBefore) << "nothing to show: the old image stays";
    editor->onImageCompleteAtion();
    settle(0.5);
    EXPECT_TRUE(editor->delivered.empty());
    editor->onStepPreviewAction();  // nothing left to undo: quiet

    editor->onStepNextAction();
    auto result = finish(*editor);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->imagePath(), editor->lastStepTemp())
        << "without saveToTemp the delivered file is the top step itself";
    ASSERT_TRUE(result->image());
    EXPECT_EQ(result->image()->size().width, 120);
}

TEST_F(OrvEditMultipleControllerBaseTest, WithoutStepsSavedOnlyTheLatestStepLives) {
    auto editor = orv::rt::make<Editor>();
    editor->setDisableStepsSave(true);
    editor->setInputTempFilePath(writeJpeg(makePicture(80, 60), "input.jpg"));
    showRoot(editor);
    RunLoop::main().runUntil([&] { return !editor->shown.empty(); });
    const auto first = editor->undo().at(0);
    const auto a = toolOutput("a.jpg", 60), b = toolOutput("b.jpg", 120);
    editor->appendHistory(a);
    editor->appendHistory(b);
    EXPECT_EQ(editor->undo(), (Steps{b}));
    EXPECT_FALSE(exists(first) || exists(a));
    EXPECT_TRUE(editor->states.empty());
}

TEST_F(OrvEditMultipleControllerBaseTest, TheEndRemovesRedoStepsAndUndoStepsOnlyWhenAsked) {
    for (bool autoRemove : {false, true}) {
        SCOPED_TRACE(autoRemove);
        auto editor = openOn(writeJpeg(makePicture(80, 60), "input.jpg"));
        editor->setIsAutoRemoveTemp(autoRemove);
        editor->appendHistory(toolOutput("a.jpg", 60));
        editor->appendHistory(toolOutput("b.jpg", 90));
        editor->onStepPreviewAction();
        const auto kept = editor->undo(), undone = editor->redo();
        window->setRootViewController(nullptr);
        editor->controllerWillDestory();
        for (const auto& path : kept) EXPECT_EQ(exists(path), !autoRemove) << path;
        for (const auto& path : undone) EXPECT_FALSE(exists(path)) << path;
    }
}

TEST_F(OrvEditMultipleControllerBaseTest, ModulesRatiosAndLimitsFollowTheirSettings) {
    auto editor = orv::rt::make<Editor>();
    editor->setModules({5, 99, 1, 0, 16});
    EXPECT_EQ(editor->modules(), (std::vector<long>{5, 1, 16}));
    editor->setModules({});
    EXPECT_EQ(editor->modules(), OrvEditActionType::multipleActionTypes());
    EXPECT_EQ(editor->modules().size(), 14u);

    EXPECT_EQ(editor->ratioType(), 31);
    EXPECT_EQ(editor->getRatioTypes(), OrvRatioType::ratioTypes(31));
    editor->setRatioType(0);
    EXPECT_EQ(editor->getRatioTypes(), OrvRatioType::orvOrvKitRatioDefaultTypes());
    editor->setRatioTypeList({2, 999, 8});
    EXPECT_EQ(editor->getRatioTypes(), (std::vector<long>{2, 8}));

    EXPECT_EQ(editor->limitSize(), 1334) << "the screen's long side in pixels";
    editor->setLimitSideSize(4000);
    EXPECT_EQ(editor->limitSize(), 4000);
}

TEST_F(OrvEditMultipleControllerBaseTest, AFirstRatioCropsTheFirstStep) {
    auto editor = orv::rt::make<Editor>();
    editor->setRatioTypeList({2});  // square
    editor->setInputTempFilePath(writeJpeg(makePicture(300, 200), "wide.jpg"));
    showRoot(editor);
    RunLoop::main().runUntil([&] { return !editor->shown.empty(); });
    auto step = imageWithContentsOfFile(editor->undo().at(0));
    ASSERT_TRUE(step);
    EXPECT_EQ(step->size().width, 200);
    EXPECT_EQ(step->size().height, 200);
}

// A dull picture (levels 70 to 170) is stretched towards the full range; the screen shows the
// corrected input while the new step is the corrected current step.
TEST_F(OrvEditMultipleControllerBaseTest, AutoAdjustAddsACorrectedStep) {
    auto editor = openOn(writeJpeg(makePicture(160, 120, 70, 170), "dull.jpg"));
    editor->onAutoAdjustAction();
    RunLoop::main().runUntil([&] { return editor->undo().size() == 2; });
    ASSERT_EQ(editor->undo().size(), 2u);
    EXPECT_EQ(editor->autoButton, std::vector<bool>{false}) << "stays off after a success";
    auto step = imageWithContentsOfFile(editor->undo()[1]);
    ASSERT_TRUE(step);
    const gfx::Bitmap& pixels = *step->bitmap();
    EXPECT_LT(pixels.row(0)[0], 30);
    EXPECT_GT(pixels.row(0)[4 * (pixels.width() - 1)], 225);
    ASSERT_GE(editor->shown.size(), 2u);
    EXPECT_LT(editor->shown[1]->bitmap()->row(0)[0], 30);
}

TEST_F(OrvEditMultipleControllerBaseTest, AutoAdjustOnAVanishedStepEndsOnTheHub) {
    auto editor = openOn(writeJpeg(makePicture(160, 120, 70, 170), "dull.jpg"));
    std::filesystem::remove(*editor->lastStepTemp());
    editor->onAutoAdjustAction();
    RunLoop::main().runUntil([&] { return editor->autoButton.size() == 2; });
    EXPECT_EQ(editor->autoButton, (std::vector<bool>{false, true}));
    EXPECT_EQ(hubStatus(), "设备未联网，无法使用自动校色功能");
    EXPECT_EQ(editor->undo().size(), 1u);
}

TEST_F(OrvEditMultipleControllerBaseTest, BadInputEndsOnTheHubAndLosesNoStep) {
    // An input that is no picture: a hub error and the error road, no exception.
    const std::string broken = orv::test::TestEnvironment::tempDir() + "/broken.jpg";
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically({0xff, 0xd8, 0xff, 0xe0, 1, 2, 3}, broken));
    auto editor = openOn(broken);
    ASSERT_EQ(editor->errors.size(), 1u);
    EXPECT_EQ(hubStatus(), "无法读取这张图片");
    EXPECT_TRUE(editor->undo().empty());

    // A one-pixel photo is a photo.
    auto tiny = openOn(writeJpeg(makePicture(1, 1), "tiny.jpg"));
    EXPECT_EQ(tiny->undo().size(), 1u);
    EXPECT_TRUE(finish(*tiny));

    // A step file removed behind the session's back: undo shows nothing new, finishing on it
    // does nothing, and the steps before it are still there.
    auto editor2 = openOn(writeJpeg(makePicture(80, 60), "input.jpg"));
    const auto a = toolOutput("a.jpg", 60), b = toolOutput("b.jpg", 120);
    editor2->appendHistory(a);
    editor2->appendHistory(b);
    std::filesystem::remove(a);
    editor2->onStepPreviewAction();
    settle();
    EXPECT_EQ(editor2->shown.size(), 1u);
    editor2->onImageCompleteAtion();
    settle(0.5);
    EXPECT_TRUE(editor2->delivered.empty());
    editor2->onStepNextAction();
    EXPECT_TRUE(finish(*editor2));
    EXPECT_TRUE(exists(editor2->undo()[0]));
}

}  // namespace

// The temporary folder turns unwritable (here: its path runs through a plain file): nothing is
// written, the hub says so where the session speaks, and no step already made goes.
TEST_F(OrvEditMultipleControllerBaseTest, AnUnwritableTemporaryFolderLosesNoStep) {
    const std::string blocker = orv::test::TestEnvironment::tempDir() + "/blocker";
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically({1}, blocker));
    const std::string good = getenv("ORV_TEMP_DIR") ? getenv("ORV_TEMP_DIR") : "";
    const std::string input = writeJpeg(makePicture(160, 120, 70, 170), "dull.jpg");

    setenv("ORV_TEMP_DIR", (blocker + "/temp").c_str(), 1);
    auto unsaved = openOn(input);
    EXPECT_TRUE(unsaved->undo().empty()) << "the first step could not be written";
    EXPECT_TRUE(unsaved->displayImage()) << "the photo still shows";
    unsaved->onImageCompleteAtion();
    settle(0.5);
    EXPECT_TRUE(unsaved->delivered.empty());
    setenv("ORV_TEMP_DIR", good.c_str(), 1);

    auto editor = openOn(input);
    const auto steps = editor->undo();
    ASSERT_EQ(steps.size(), 1u);
    setenv("ORV_TEMP_DIR", (blocker + "/temp").c_str(), 1);
    editor->onAutoAdjustAction();
    RunLoop::main().runUntil([&] { return editor->autoButton.size() == 2; });
    setenv("ORV_TEMP_DIR", good.c_str(), 1);
    EXPECT_EQ(editor->autoButton, (std::vector<bool>{false, true}));
    EXPECT_EQ(editor->undo(), steps);
    EXPECT_TRUE(exists(steps[0]));
}

// An album photo that lies in the cloud, whose download the test plays by hand.
class CloudAsset : public orv::rt::Object, public OrvTSAssetInterface {
  public:
    FullResolutionHandler handler;
    gfx::ImagePtr fullResolutionImage() override { return nullptr; }
    void asyncFullResolutionImage(FullResolutionHandler h) override { handler = std::move(h); }
    void cancelLoadFullResolutionImage() override {}
    std::string localIdentifier() const override { return "cloud"; }
};

TEST_F(OrvEditMultipleControllerBaseTest, ACloudPhotoBecomesTheFirstStepOnceDownloaded) {
    auto asset = orv::rt::make<CloudAsset>();
    auto editor = orv::rt::make<Editor>();
    editor->setInputAsset(asset);
    showRoot(editor);
    RunLoop::main().runUntil([&] { return asset->handler != nullptr; });
    ASSERT_TRUE(asset->handler) << "the placeholder starts the download";
    editor->onImageCompleteAtion();  // during the download: nothing happens
    asset->handler(nullptr, 0.5, nullptr);
    settle();
    EXPECT_TRUE(editor->undo().empty());
    asset->handler(makePicture(300, 200), 1.0, nullptr);
    RunLoop::main().runUntil([&] { return !editor->shown.empty(); });
    ASSERT_EQ(editor->undo().size(), 1u);
    EXPECT_EQ(imageWithContentsOfFile(editor->undo()[0])->size().width, 300);
    EXPECT_TRUE(finish(*editor)) << "finishing works after the download";
}
