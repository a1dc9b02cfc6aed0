#include "orvviews/widgets/OrvResultViewController.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "frameworks/core/OrvStatistics.h"
#include "frameworks/core/OrvTSAssetsManager.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "platform/codec/JpegCodec.h"
#include "tests/support/ScreenFixture.h"
#include "tests/support/TestEnvironment.h"

namespace {

namespace fs = std::filesystem;
using orv::rt::RunLoop;

constexpr long kPipelineIdt = 0x405000;

gfx::ImagePtr solidImage(int width, int height, gfx::ImageOrientation orientation) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        uint8_t* row = bitmap->mutableRow(y);
        for (int x = 0; x < width; ++x) {
            row[4 * x] = 200;
            row[4 * x + 1] = static_cast<uint8_t>(y * 255 / height);
            row[4 * x + 2] = 40;
            row[4 * x + 3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap, 1, orientation);
}

class RecordingController : public OrvResultViewController {
  public:
    std::atomic<int> delivered{0};
    std::atomic<bool> deliveredOnMain{false};
    bool takeOver = false;
    std::shared_ptr<OrvResult> lastResult;
    std::shared_ptr<orv::rt::Error> lastError;

    void setHubShown(bool on) { enableShowHub = on; }

    void notifyProcessingWithResult(const ResultPtr& result) override {
        deliveredOnMain = RunLoop::isMainThread();
        lastResult = result;
        ++delivered;
    }
    bool asyncNotifyProcessingWithResult(const ResultPtr&) override { return takeOver; }
    void notifyError(const std::shared_ptr<orv::rt::Error>& error,
                     const ResultPtr& result) override {
        if (!RunLoop::isMainThread()) return OrvResultViewController::notifyError(error, result);
        lastError = error;
    }
};

class OrvResultViewControllerTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        OrvStatistics::resetForTesting();
        albumRoot = orv::test::TestEnvironment::tempDir() + "/album-" +
                    ::testing::UnitTest::GetInstance()->current_test_info()->name();
        OrvTSAssetsManager::setAlbumRoot(albumRoot);
        controller = orv::rt::make<RecordingController>();
    }
    void TearDown() override {
        OrvTSAssetsManager::setAlbumRoot(std::nullopt);
        ScreenFixture::TearDown();
    }

    // Runs the pipeline as a tool does: from a background thread.
    void processInBackground(const std::shared_ptr<OrvResult>& result) {
        std::thread([&] { controller->asyncProcessingIfNeedSave(result); }).join();
    }
    void waitForOutcome() {
        RunLoop::main().runUntil(
            [&] { return controller->delivered > 0 || controller->lastError; });
        settle(0.2);
    }
    static std::string hubStatus() { return OrvPopupProgress::sharedView()->status().value_or(""); }
    long pipelineCount() { return OrvStatistics::pendingCounts()[kPipelineIdt]; }

    std::string albumRoot;
    std::shared_ptr<RecordingController> controller;
};

TEST_F(OrvResultViewControllerTest, OnTheMainThreadDeliversAtOnceWithoutSavingOrCounting) {
    controller->setSaveToTemp(true);
    auto result = OrvResult::result();
    result->setImage(solidImage(8, 8, gfx::ImageOrientation::Up));
    controller->asyncProcessingIfNeedSave(result);
    EXPECT_EQ(controller->delivered, 1);
    EXPECT_TRUE(result->image());
    EXPECT_FALSE(result->imagePath());
    EXPECT_EQ(pipelineCount(), 0);
}

TEST_F(OrvResultViewControllerTest, TempSaveWinsOverAlbumAndFreesTheBitmapBeforeDelivery) {
    controller->setSaveToTemp(true);
    controller->setSaveToAlbum(true);
    showRoot(controller);
    auto result = OrvResult::result();
    result->setImage(solidImage(64, 48, gfx::ImageOrientation::Right));
    processInBackground(result);
    waitForOutcome();

    ASSERT_EQ(controller->delivered, 1);
    EXPECT_TRUE(controller->deliveredOnMain);
    EXPECT_FALSE(result->image());
    EXPECT_FALSE(result->imageAsset());
    ASSERT_TRUE(result->imagePath());
    EXPECT_TRUE(OrvTSFileManager::isExistFileAtPath(result->imagePath()));
    EXPECT_EQ(hubStatus(), "处理完成");
    EXPECT_EQ(pipelineCount(), 1);
    EXPECT_TRUE(OrvTSAssetsManager::assetsInAlbum(std::nullopt).empty());

    // The file keeps the stored pixels and says how to show them.
    auto bytes = OrvTSFileManager::readDataAtPath(*result->imagePath());
    ASSERT_TRUE(bytes);
    EXPECT_EQ(codec::ImageMetadata::fromJpeg(bytes->data(), bytes->size()).exifOrientation(), 6);
    auto back = result->loadResultImage();
    ASSERT_TRUE(back && back->bitmap());
    EXPECT_EQ(back->bitmap()->width(), 64);
    EXPECT_EQ(back->orientation(), gfx::ImageOrientation::Right);
    OrvTSFileManager::deletePath(result->imagePath());
}

TEST_F(OrvResultViewControllerTest, ATakenOverResultIsNeitherSavedNorDeliveredButCounted) {
    controller->takeOver = true;
    controller->setSaveToTemp(true);
    auto result = OrvResult::result();
    result->setImage(solidImage(8, 8, gfx::ImageOrientation::Up));
    processInBackground(result);
    settle(0.2);
    EXPECT_EQ(controller->delivered, 0);
    EXPECT_TRUE(result->image());
    EXPECT_FALSE(result->imagePath());
    EXPECT_EQ(pipelineCount(), 1);
}

TEST_F(OrvResultViewControllerTest, NoSaveOptionDeliversOnTheMainThreadAndCompressIsClamped) {
    auto result = OrvResult::result();
    processInBackground(result);
    waitForOutcome();
    EXPECT_EQ(controller->delivered, 1);
    EXPECT_TRUE(controller->deliveredOnMain);

    EXPECT_DOUBLE_EQ(controller->outputCompress(), 0.95);
    controller->setOutputCompress(3);
    EXPECT_DOUBLE_EQ(controller->outputCompress(), 1);
    controller->setOutputCompress(-1);
    EXPECT_DOUBLE_EQ(controller->outputCompress(), 0);
}

TEST_F(OrvResultViewControllerTest, ANilImageIsDroppedSilentlyOnTheTempRoad) {
    controller->setSaveToTemp(true);
    processInBackground(OrvResult::result());
    settle(0.2);
    EXPECT_EQ(controller->delivered, 0);
    EXPECT_FALSE(controller->lastError);
    EXPECT_EQ(pipelineCount(), 1);
}

TEST_F(OrvResultViewControllerTest, AFailedTempWriteReports1011AndKeepsThePath) {
    // A temporary folder under a plain file cannot be made.
    const std::string blocker = orv::test::TestEnvironment::tempDir() + "/not-a-folder";
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically({1}, blocker));
    const std::string saved = std::getenv("ORV_TEMP_DIR");
    ::setenv("ORV_TEMP_DIR", (blocker + "/temp").c_str(), 1);

    controller->setSaveToTemp(true);
    showRoot(controller);
    auto result = OrvResult::result();
    result->setImage(solidImage(8, 8, gfx::ImageOrientation::Up));
    processInBackground(result);
    waitForOutcome();
    ::setenv("ORV_TEMP_DIR", saved.c_str(), 1);

    EXPECT_EQ(controller->delivered, 0);
    ASSERT_TRUE(controller->lastError);
    EXPECT_EQ(controller->lastError->code(), 1011);
    EXPECT_EQ(controller->lastError->domain(),
              "CPError " + controller->description() + " (1011): Write to temp file failed.");
    EXPECT_EQ(hubStatus(), "处理失败");
    ASSERT_TRUE(result->imagePath());
    EXPECT_FALSE(OrvTSFileManager::isExistFileAtPath(result->imagePath()));
    EXPECT_FALSE(result->image());
}

TEST_F(OrvResultViewControllerTest, AlbumSaveMakesAnAssetAndDelivers) {
    controller->setSaveToAlbum(true);
    controller->setSaveToAlbumName(std::string("Trips"));
    showRoot(controller);
    ASSERT_TRUE(controller->hasAlbumAccess());

    auto result = OrvResult::result();
    result->setImage(solidImage(32, 24, gfx::ImageOrientation::Up));
    processInBackground(result);
    EXPECT_FALSE(result->image());  // handed over without waiting for the save
    waitForOutcome();

    ASSERT_EQ(controller->delivered, 1);
    ASSERT_TRUE(result->imageAsset());
    EXPECT_EQ(hubStatus(), "保存成功");
    auto saved = OrvTSAssetsManager::assetsInAlbum(std::string("Trips"));
    ASSERT_EQ(saved.size(), 1u);
    EXPECT_EQ(saved[0]->localIdentifier(), result->imageAsset()->localIdentifier());
    auto image = saved[0]->fullResolutionImage();
    ASSERT_TRUE(image && image->bitmap());
    EXPECT_EQ(image->bitmap()->width(), 32);
}

TEST_F(OrvResultViewControllerTest, WithoutAccessTheAlbumRoadAlwaysShowsTheAccessText) {
    // The view loaded with saveToAlbum off: access was never asked for.
    controller->setHubShown(false);
    showRoot(controller);
    controller->setSaveToAlbum(true);
    auto result = OrvResult::result();
    result->setImage(solidImage(8, 8, gfx::ImageOrientation::Up));
    processInBackground(result);
    settle(0.2);
    EXPECT_FALSE(controller->hasAlbumAccess());
    EXPECT_EQ(hubStatus(), OrvTSAssetsManager::accessFailedInfo());
    EXPECT_EQ(controller->delivered, 0);
    EXPECT_FALSE(controller->lastError);
    EXPECT_TRUE(result->image());
}

TEST_F(OrvResultViewControllerTest, AnUnwritableAlbumIsExplainedWhenTheViewLoads) {
    // An album root under a plain file can be neither made nor written, whoever runs the test.
    const std::string blocker = albumRoot + "-file";
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically({1}, blocker));
    OrvTSAssetsManager::setAlbumRoot(blocker + "/album");
    controller->setSaveToAlbum(true);
    showRoot(controller);
    EXPECT_FALSE(controller->hasAlbumAccess());
    EXPECT_TRUE(controller->presentedViewController());
}

}  // namespace
