#include "orvviews/widgets/OrvImageResultController.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "examples/orvdemo/LoopbackHttpServer.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSAsset.h"
#include "frameworks/core/OrvTSAssetsManager.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "platform/codec/JpegCodec.h"
#include "platform/rt/Exception.h"
#include "platform/ui/EventInjector.h"
#include "tests/support/ExifTestPhotos.h"
#include "tests/support/ScreenFixture.h"
#include "tests/support/TestEnvironment.h"

namespace {

using orv::rt::RunLoop;
using Orientation = gfx::ImageOrientation;

gfx::ImagePtr makeImage(int width, int height, Orientation orientation = Orientation::Up) {
    auto bitmap = std::make_shared<gfx::Bitmap>(width, height);
    for (int y = 0; y < height; ++y) {
        uint8_t* row = bitmap->mutableRow(y);
        for (int x = 0; x < width; ++x) {
            row[4 * x] = static_cast<uint8_t>(x * 255 / width);
            row[4 * x + 1] = static_cast<uint8_t>(y * 255 / height);
            row[4 * x + 2] = 90;
            row[4 * x + 3] = 255;
        }
    }
    return gfx::Image::withBitmap(bitmap, 1, orientation);
}

// An album photo whose download the test plays by hand.
class ScriptedAsset : public orv::rt::Object, public OrvTSAssetInterface {
  public:
    gfx::ImagePtr local;
    FullResolutionHandler handler;
    int downloads = 0;
    int cancels = 0;

    gfx::ImagePtr fullResolutionImage() override { return local; }
    void asyncFullResolutionImage(FullResolutionHandler h) override {
        handler = std::move(h);
        ++downloads;
    }
    void cancelLoadFullResolutionImage() override { ++cancels; }
    std::string localIdentifier() const override { return "scripted"; }
};

class InputController : public OrvImageResultController {
  public:
    std::vector<gfx::ImagePtr> loaded;
    bool holdHub = false;

    void viewDidLoad() override {
        OrvImageResultController::viewDidLoad();
        asyncLoadInputImageWithBlock([this] { return inputImage(); });
    }
    void loadedInputImage(const gfx::ImagePtr& image) override { loaded.push_back(image); }
    bool preProcessWithImage(const gfx::ImagePtr&) override { return holdHub; }
    bool isDownloading() const { return downloading; }
    bool fromServer() const { return downloadedFromServer; }
    void setHubShown(bool on) { enableShowHub = on; }
};

class OrvImageResultControllerTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        controller = orv::rt::make<InputController>();
    }

    void waitForLoad(size_t count = 1) {
        RunLoop::main().runUntil([&] { return controller->loaded.size() >= count; });
        settle(0.1);
    }
    static std::string hubStatus() { return OrvPopupProgress::sharedView()->status().value_or(""); }
    static float hubProgress() { return OrvPopupProgress::sharedView()->progress(); }

    std::string writeJpeg(const gfx::ImagePtr& image, const std::string& name) {
        const std::string path = orv::test::TestEnvironment::tempDir() + "/" + name;
        EXPECT_TRUE(
            OrvTSFileManager::writeDataAtomically(orvJpegDataWithCompress(image, 0.9), path));
        return path;
    }

    // Saves the result as a tool does, from a background thread; the metadata of the file.
    codec::ImageMetadata savedMetadata(const std::shared_ptr<OrvResult>& result) {
        controller->setHubShown(false);
        std::thread([&] { controller->saveToTempWithResult(result); }).join();
        settle(0.1);
        EXPECT_TRUE(result->imagePath());
        return orvMetadataWithContentsOfFile(result->imagePath().value_or(""));
    }

    std::shared_ptr<InputController> controller;
};

TEST_F(OrvImageResultControllerTest, AnImageInMemoryReachesTheSubclassAndTheHubCloses) {
    auto image = makeImage(40, 30);
    controller->setInputImage(image);
    showRoot(controller);
    waitForLoad();
    ASSERT_EQ(controller->loaded.size(), 1u);
    EXPECT_EQ(controller->loaded[0], image);
    EXPECT_EQ(controller->loadOrginImage(), image);
    settle();
    EXPECT_EQ(OrvPopupProgress::sharedView()->superview(), nullptr);
}

TEST_F(OrvImageResultControllerTest, AFileIsReducedForTheScreenButTheOriginalIsFullSize) {
    const auto path = writeJpeg(makeImage(3000, 1000, Orientation::Right), "wide.jpg");
    controller->setInputTempFilePath(path);
    controller->setInputImage(nullptr);
    showRoot(controller);
    waitForLoad();
    ASSERT_EQ(controller->loaded.size(), 1u);
    const auto& shown = controller->loaded[0];
    ASSERT_TRUE(shown && shown->bitmap());
    EXPECT_EQ(shown->bitmap()->width(), orvFullScreenPixelLimit());
    EXPECT_EQ(shown->orientation(), Orientation::Right);
    auto original = controller->loadOrginImage();
    ASSERT_TRUE(original && original->bitmap());
    EXPECT_EQ(original->bitmap()->width(), 3000);
}

TEST_F(OrvImageResultControllerTest, TheHubStaysOverAPreProcessUntilPostProcess) {
    controller->holdHub = true;
    controller->setInputImage(makeImage(10, 10));
    showRoot(controller);
    waitForLoad();
    EXPECT_EQ(hubStatus(), "读取图片...");
    EXPECT_NE(OrvPopupProgress::sharedView()->superview(), nullptr);
    controller->postProcessWithImage(controller->loaded[0]);
    settle();
    EXPECT_EQ(OrvPopupProgress::sharedView()->superview(), nullptr);
}

TEST_F(OrvImageResultControllerTest, NoInputAtAllRaises) {
    controller->setInputTempFilePath(std::string("/no/such/file.jpg"));
    try {
        showRoot(controller);
        RunLoop::main().runUntil([] { return false; }, 2);
        FAIL() << "no exception";
    } catch (const orv::rt::Exception& e) {
        EXPECT_STREQ(e.what(), "Did not find inputImage!");
    }
}

TEST_F(OrvImageResultControllerTest, ACloudPlaceholderDownloadsWithProgressThenDeliversOnce) {
    auto asset = orv::rt::make<ScriptedAsset>();
    controller->setInputAsset(asset);
    showRoot(controller);
    RunLoop::main().runUntil([&] { return asset->downloads > 0; });
    settle(0.1);
    EXPECT_TRUE(controller->isDownloading());
    EXPECT_EQ(hubStatus(), "从iCloud下载图片...");
    EXPECT_TRUE(controller->loaded.empty());

    asset->handler(nullptr, 0.5, nullptr);
    settle(0.1);
    EXPECT_FLOAT_EQ(hubProgress(), 0.5f);
    // A full progress without a picture is still only progress.
    asset->handler(nullptr, 1.0, nullptr);
    settle(0.1);
    EXPECT_TRUE(controller->loaded.empty());

    auto full = makeImage(2000, 1500);
    asset->handler(full, 1.0, nullptr);
    waitForLoad();
    ASSERT_EQ(controller->loaded.size(), 1u);
    EXPECT_EQ(controller->loaded[0]->bitmap()->width(), orvFullScreenPixelLimit());
    EXPECT_TRUE(controller->fromServer());
    EXPECT_FALSE(controller->isDownloading());
    // The field keeps the placeholder; only the subclass saw the download.
    EXPECT_EQ(controller->inputImage()->size().width, 0);
}

TEST_F(OrvImageResultControllerTest, ACloudPhotoOfTheAlbumComesOverHttp) {
    orvdemo::LoopbackHttpServer server;
    ASSERT_TRUE(server.start());
    server.addFile("/photo.jpg", orvJpegDataWithCompress(makeImage(900, 600), 0.9), "image/jpeg",
                   {.chunkSize = 4096, .delay = std::chrono::milliseconds(2), .failAfter = {}});
    auto asset = OrvTSAssetsManager::addCloudAsset(server.url("/photo.jpg"), std::nullopt);
    ASSERT_TRUE(asset && asset->isInCloud());

    std::vector<float> progress;
    controller->setInputAsset(asset);
    showRoot(controller);
    RunLoop::main().runUntil([&] {
        if (progress.empty() || progress.back() != hubProgress()) progress.push_back(hubProgress());
        return !controller->loaded.empty();
    });
    ASSERT_EQ(controller->loaded.size(), 1u);
    EXPECT_EQ(controller->loaded[0]->bitmap()->width(), 900);
    EXPECT_TRUE(controller->fromServer());
    EXPECT_GT(progress.size(), 2u);
    EXPECT_FALSE(asset->isInCloud());
    EXPECT_EQ(server.requestCount("/photo.jpg"), 1);
}

TEST_F(OrvImageResultControllerTest, ALocalAssetNeedsNoDownload) {
    auto asset = orv::rt::make<ScriptedAsset>();
    asset->local = makeImage(60, 40);
    controller->setInputAsset(asset);
    showRoot(controller);
    waitForLoad();
    EXPECT_EQ(asset->downloads, 0);
    EXPECT_FALSE(controller->fromServer());
    EXPECT_EQ(controller->loaded[0]->bitmap()->width(), 60);
}

TEST_F(OrvImageResultControllerTest, LeavingCancelsTheDownloadAndLateCallbacksAreDropped) {
    auto asset = orv::rt::make<ScriptedAsset>();
    controller->setInputAsset(asset);
    showRoot(controller);
    RunLoop::main().runUntil([&] { return asset->downloads > 0; });
    settle(0.1);

    controller->viewWillDisappear(false);
    controller->viewWillDisappear(false);
    settle();
    EXPECT_EQ(asset->cancels, 1);
    asset->handler(nullptr, 0.7, nullptr);
    asset->handler(makeImage(10, 10), 1.0, nullptr);
    settle();
    EXPECT_TRUE(controller->loaded.empty());
    EXPECT_EQ(OrvPopupProgress::sharedView()->superview(), nullptr);
}

TEST_F(OrvImageResultControllerTest, AFailedDownloadRaises) {
    auto asset = orv::rt::make<ScriptedAsset>();
    controller->setInputAsset(asset);
    showRoot(controller);
    RunLoop::main().runUntil([&] { return asset->downloads > 0; });
    settle(0.1);
    auto error = orv::rt::Error::errorWithDomain("OrvNKNetworkEngine", 500);
    try {
        asset->handler(nullptr, 0.3, error);
        FAIL() << "no exception";
    } catch (const orv::rt::Exception& e) {
        EXPECT_EQ(std::string(e.what()), "Error on downloading image:" + error->description());
    }
    EXPECT_FALSE(controller->isDownloading());
}

TEST_F(OrvImageResultControllerTest, APresetImageIsShownWhileTheOriginalComesFromTheAsset) {
    auto asset = orv::rt::make<ScriptedAsset>();
    asset->local = makeImage(300, 200);
    auto preset = makeImage(30, 20);
    controller->setInputAsset(asset);
    controller->setInputImage(preset);
    showRoot(controller);
    waitForLoad();
    EXPECT_EQ(controller->loaded[0], preset);
    EXPECT_EQ(controller->loadOrginImage(), asset->local);
}

TEST_F(OrvImageResultControllerTest, TheCropperPrefersTheRectangleAndAlwaysEndsUpright) {
    auto image = makeImage(200, 100);
    auto byRect = controller->cuterImage(image, {0, 0, 0.5, 0.5}, Orientation::Up, 1.0);
    ASSERT_TRUE(byRect && byRect->bitmap());
    EXPECT_EQ(byRect->bitmap()->width(), 100);
    EXPECT_EQ(byRect->bitmap()->height(), 50);

    auto byRatio = controller->cuterImage(image, {}, Orientation::Up, 1.0);
    EXPECT_EQ(byRatio->bitmap()->width(), 100);
    EXPECT_EQ(byRatio->bitmap()->height(), 100);

    auto turned = controller->cuterImage(image, {}, Orientation::Right);
    EXPECT_EQ(turned->orientation(), Orientation::Up);
    EXPECT_EQ(turned->bitmap()->width(), 100);
    EXPECT_EQ(turned->bitmap()->height(), 200);
    EXPECT_EQ(controller->cuterImage(nullptr, {}, Orientation::Up), nullptr);
}

TEST_F(OrvImageResultControllerTest, TheInputFileIsRemovedAtDestructionOnlyWhenAsked) {
    const auto kept = writeJpeg(makeImage(8, 8), "kept.jpg");
    const auto removed = writeJpeg(makeImage(8, 8), "removed.jpg");
    for (const auto& [path, remove] : {std::pair{kept, false}, std::pair{removed, true}}) {
        auto c = orv::rt::make<InputController>();
        c->setInputTempFilePath(path);
        c->setIsAutoRemoveTemp(remove);
    }
    settle();
    EXPECT_TRUE(OrvTSFileManager::isExistFileAtPath(kept));
    EXPECT_FALSE(OrvTSFileManager::isExistFileAtPath(removed));

    auto nilPath = orv::rt::make<InputController>();
    nilPath->setIsAutoRemoveTemp(true);
    nilPath.reset();  // deleting nil is harmless
    settle();
}

TEST_F(OrvImageResultControllerTest, ThePreviewFadesInWithTheResultAndOutOnTap) {
    controller->setInputImage(makeImage(10, 10));
    showRoot(controller);
    waitForLoad();
    auto result = OrvResult::result();
    result->setImage(makeImage(50, 80));
    EXPECT_FALSE(controller->showResultPreview(result));

    controller->setShowResultPreview(true);
    EXPECT_FALSE(controller->showResultPreview(nullptr));
    EXPECT_TRUE(controller->showResultPreview(result));
    settle(0.4);
    auto preview = controller->preview();
    EXPECT_FALSE(preview->isHidden());
    EXPECT_DOUBLE_EQ(preview->alpha(), 1);
    EXPECT_EQ(preview->imageForState(ui::ControlStateNormal), result->image());
    EXPECT_EQ(preview->frame(), controller->view()->bounds());

    auto injector = ui::EventInjector::injectorForWindow(window);
    injector->tap({100, 300});
    settle(0.4);
    EXPECT_TRUE(preview->isHidden());
    EXPECT_DOUBLE_EQ(preview->alpha(), 0);
}

class OrvImageResultControllerExifTest : public OrvImageResultControllerTest,
                                         public ::testing::WithParamInterface<int> {};

TEST_P(OrvImageResultControllerExifTest, AnUprightResultCarriesTheExifOfTheInputFile) {
    using namespace orv::test;
    const auto input = writeCameraJpeg(GetParam(), TestEnvironment::tempDir() + "/input.jpg");
    controller->setInputTempFilePath(input);
    auto result = OrvResult::result();
    result->setImage(orvImageRotatedToUp(controller->loadOrginImage()));
    const auto metadata = savedMetadata(result);
    EXPECT_EQ(metadata.exifOrientation(), 1);
    EXPECT_EQ(cameraTags(metadata), cameraTags(orvMetadataWithContentsOfFile(input)));
    EXPECT_FALSE(hasThumbnail(metadata));
    const auto saved = imageWithContentsOfFile(result->imagePath().value_or(""));
    ASSERT_TRUE(saved && saved->bitmap());
    EXPECT_TRUE(showsQuadrantsUpright(*saved->bitmap()));
}

INSTANTIATE_TEST_SUITE_P(EightOrientations, OrvImageResultControllerExifTest,
                         ::testing::Range(1, 9));

TEST_F(OrvImageResultControllerTest, AnAlbumPhotosExifTravelsUnlessTheResultHasItsOwn) {
    using namespace orv::test;
    const auto file = writeCameraJpeg(8, TestEnvironment::tempDir() + "/album-photo.jpg");
    controller->setInputAsset(OrvTSAsset::assetWithPath(file));
    auto result = OrvResult::result();
    result->setImage(makeImage(32, 32));
    EXPECT_EQ(cameraTags(savedMetadata(result)).make, "OrvCam");

    codec::ImageMetadata own;
    own.setExifOrientation(1);
    result->setImage(makeImage(32, 32));
    result->setMetadata(own);
    EXPECT_EQ(cameraTags(savedMetadata(result)).make, "");
}

}  // namespace
