#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <mutex>

#include "examples/orvdemo/LoopbackHttpServer.h"
#include "frameworks/core/OrvTSAlertController.h"
#include "frameworks/core/OrvTSAssetsManager.h"
#include "platform/codec/ImageReader.h"
#include "platform/codec/JpegCodec.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/EventInjector.h"
#include "tests/support/ScreenFixture.h"
#include "tests/support/TestEnvironment.h"

namespace fs = std::filesystem;
using orvdemo::LoopbackHttpServer;

namespace {

gfx::BitmapPtr grey(int width, int height) {
    std::vector<uint8_t> pixels(static_cast<size_t>(width) * height * 4, 0xff);
    for (size_t i = 0; i < pixels.size(); i += 4) pixels[i] = static_cast<uint8_t>(i / 4 % 256);
    return std::make_shared<gfx::Bitmap>(width, height, gfx::PixelFormat::RGBA8888Premultiplied, 0,
                                         std::move(pixels));
}

std::vector<std::string> hiddenFiles(const std::string& dir) {
    std::vector<std::string> hidden;
    for (const auto& entry : fs::directory_iterator(dir)) {
        const std::string name = entry.path().filename().string();
        if (name[0] == '.') hidden.push_back(name);
    }
    return hidden;
}

// What an asset's handler heard, from any thread.
struct Heard {
    std::mutex mutex;
    int progressCalls = 0;
    gfx::ImagePtr image;
    double lastProgress = -1;
    std::shared_ptr<rt::Error> error;
    std::atomic<bool> finished{false};

    OrvTSAssetInterface::FullResolutionHandler handler() {
        return [this](gfx::ImagePtr image, double progress, std::shared_ptr<rt::Error> error) {
            {
                std::lock_guard lock(mutex);
                lastProgress = progress;
                if (!image && !error) {
                    EXPECT_LT(progress, 1.0);
                    ++progressCalls;
                    return;
                }
                this->image = std::move(image);
                this->error = std::move(error);
            }
            finished = true;  // last: the test may end the moment it sees this
        };
    }
};

class OrvTSAssetsManagerTest : public ::testing::Test {
  protected:
    void SetUp() override {
        root = orv::test::TestEnvironment::tempDir() + "/album-" +
               ::testing::UnitTest::GetInstance()->current_test_info()->name();
        OrvTSAssetsManager::setAlbumRoot(root);
    }
    void TearDown() override { OrvTSAssetsManager::setAlbumRoot(std::nullopt); }

    std::string root;
};

TEST_F(OrvTSAssetsManagerTest, AccessNeedsAFolderThatCanReallyBeWritten) {
    std::shared_ptr<rt::Error> error = rt::Error::errorWithDomain("unset", 0);
    OrvTSAssetsManager::testLibraryAuthor([&](auto e) { error = e; });
    EXPECT_EQ(error, nullptr);
    EXPECT_TRUE(fs::is_directory(root));  // made on demand

    ::chmod(root.c_str(), 0555);
    OrvTSAssetsManager::testLibraryAuthor([&](auto e) { error = e; });
    const bool probeWorked = ::access(root.c_str(), W_OK) == 0 && ::geteuid() == 0 && !error;
    ::chmod(root.c_str(), 0755);
    if (probeWorked) GTEST_SKIP() << "root writes into read-only folders";
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->domain(), "OrvTSAssetsManager");
    EXPECT_EQ(error->code(), OrvTSAssetsManager::kNoAccess);
    EXPECT_TRUE(hiddenFiles(root).empty());  // no probe left behind
}

TEST_F(OrvTSAssetsManagerTest, SaveWritesAJpegWithTheOrientationIntoANamedAlbum) {
    auto image = gfx::Image::withBitmap(grey(40, 30), 1, gfx::ImageOrientation::Right);
    std::atomic<int> saved{0};
    std::vector<std::shared_ptr<OrvTSAssetInterface>> assets(2);
    std::string albumFolder;
    for (int i = 0; i < 2; ++i) {
        OrvTSAssetsManager::saveWithImage(
            image, 7.0, {}, std::string("Trips"),
            [&, i](auto asset, auto error) {
                EXPECT_EQ(error, nullptr);
                EXPECT_FALSE(rt::RunLoop::isMainThread());
                EXPECT_EQ(albumFolder, root + "/Trips");  // the album hears first
                assets[i] = asset;
                ++saved;
            },
            [&](std::string folder, auto error) {
                EXPECT_EQ(error, nullptr);
                albumFolder = folder;
            });
        ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return saved == i + 1; }));
    }
    ASSERT_TRUE(assets[0] && assets[1]);
    const std::string path = assets[0]->localIdentifier();
    EXPECT_NE(path, assets[1]->localIdentifier());  // same second, still two files
    EXPECT_EQ(fs::path(path).parent_path(), fs::path(root + "/Trips"));
    EXPECT_EQ(fs::path(path).filename().string().rfind("IMG_", 0), 0u);
    const auto decoded = codec::ImageReader::readFile(path);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->type, codec::ImageType::JPEG);
    EXPECT_EQ(decoded->bitmap->width(), 40);
    EXPECT_EQ(decoded->orientation, gfx::ImageOrientation::Right);
    EXPECT_EQ(OrvTSAssetsManager::albumNames(), std::vector<std::string>{"Trips"});
    EXPECT_EQ(OrvTSAssetsManager::assetsInAlbum("Trips").size(), 2u);
    EXPECT_TRUE(hiddenFiles(root + "/Trips").empty());
}

TEST_F(OrvTSAssetsManagerTest, SavingNothingIsAnError) {
    std::shared_ptr<rt::Error> error;
    std::atomic<bool> done{false};
    OrvTSAssetsManager::saveWithImage(
        nullptr, 0.9, {}, std::nullopt,
        [&](auto asset, auto e) {
            EXPECT_EQ(asset, nullptr);
            error = e;
            done = true;
        },
        nullptr);
    ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return done.load(); }));
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->code(), OrvTSAssetsManager::kNoImage);
}

class OrvTSCloudAssetTest : public OrvTSAssetsManagerTest {
  protected:
    void SetUp() override {
        OrvTSAssetsManagerTest::SetUp();
        ASSERT_TRUE(server.start());
        jpeg = codec::JpegCodec::encode(*grey(120, 90), 0.9);
    }
    std::string album() const { return root + "/Camera Roll"; }

    LoopbackHttpServer server;
    std::vector<uint8_t> jpeg;
};

TEST_F(OrvTSCloudAssetTest, DownloadReplacesTheCloudFileWithThePicture) {
    server.addFile("/p.jpg", jpeg, "image/jpeg", {256, std::chrono::milliseconds(1), {}});
    auto asset = OrvTSAssetsManager::addCloudAsset(server.url("/p.jpg"), std::nullopt);
    ASSERT_TRUE(asset && asset->isInCloud());
    EXPECT_EQ(asset->cloudUrl(), server.url("/p.jpg"));
    EXPECT_EQ(asset->fullResolutionImage(), nullptr);
    const std::string cloudFile = asset->path();

    Heard heard;
    asset->asyncFullResolutionImage(heard.handler());
    ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return heard.finished.load(); }));
    EXPECT_EQ(heard.error, nullptr);
    ASSERT_NE(heard.image, nullptr);
    EXPECT_EQ(heard.image->size().width, 120);
    EXPECT_EQ(heard.lastProgress, 1.0);
    EXPECT_GE(heard.progressCalls, 5);
    EXPECT_FALSE(asset->isInCloud());
    EXPECT_FALSE(fs::exists(cloudFile));
    EXPECT_EQ(fs::path(asset->path()).extension(), ".jpg");
    EXPECT_EQ(asset->localIdentifier(), cloudFile);
    EXPECT_NE(asset->fullResolutionImage(), nullptr);
    EXPECT_TRUE(hiddenFiles(album()).empty());
}

TEST_F(OrvTSCloudAssetTest, FailedDownloadsReportAnErrorAndKeepTheCloudFile) {
    server.addFile("/cut.jpg", jpeg, "image/jpeg", {256, {}, jpeg.size() / 2});
    server.addFile("/text.jpg", {'h', 'e', 'l', 'l', 'o'}, "image/jpeg");
    for (const char* path : {"/cut.jpg", "/text.jpg", "/missing.jpg"}) {
        SCOPED_TRACE(path);
        auto asset = OrvTSAssetsManager::addCloudAsset(server.url(path), std::nullopt);
        Heard heard;
        asset->asyncFullResolutionImage(heard.handler());
        ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return heard.finished.load(); }));
        ASSERT_NE(heard.error, nullptr);
        EXPECT_EQ(heard.image, nullptr);
        EXPECT_TRUE(asset->isInCloud());
        EXPECT_TRUE(fs::exists(asset->path()));
    }
    EXPECT_TRUE(hiddenFiles(album()).empty());
    EXPECT_EQ(std::distance(fs::directory_iterator(album()), {}), 3);  // the three .cloud files
}

TEST_F(OrvTSCloudAssetTest, CancelledDownloadLeavesTheHandlerSilent) {
    server.addFile("/slow.jpg", jpeg, "image/jpeg", {128, std::chrono::milliseconds(5), {}});
    auto asset = OrvTSAssetsManager::addCloudAsset(server.url("/slow.jpg"), std::nullopt);
    std::atomic<int> callsAfterCancel{0};
    std::atomic<bool> cancelled{false};
    asset->asyncFullResolutionImage([&](gfx::ImagePtr, double progress, auto) {
        if (cancelled) ++callsAfterCancel;
        if (progress > 0 && !cancelled.exchange(true)) asset->cancelLoadFullResolutionImage();
    });
    ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return cancelled.load(); }));
    // The transfer's hidden file goes only when its thread is done with the download.
    ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return hiddenFiles(album()).empty(); }));
    EXPECT_EQ(callsAfterCancel, 0);
    EXPECT_TRUE(asset->isInCloud());
    EXPECT_EQ(std::distance(fs::directory_iterator(album()), {}), 1);
}

class OrvTSAlertTest : public orv::test::ScreenFixture {};

TEST_F(OrvTSAlertTest, AccessAlertShowsTheReasonAndClosesWithItsButton) {
    auto root = rt::make<ui::ViewController>();
    showRoot(root);
    auto error = rt::Error::errorWithDomain("OrvTSAssetsManager", 1);
    OrvTSAssetsManager::showAlertWithController(root, error);
    settle();
    auto alert = std::dynamic_pointer_cast<OrvTSAlertController>(root->presentedViewController());
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->titleLabel()->text(), "无法访问相册，请检查相册文件夹的权限");
    EXPECT_EQ(alert->messageLabel()->text(), error->description());
    EXPECT_EQ(alert->okButton()->currentTitle(), "好的");

    const auto& button = *alert->okButton();
    const gfx::Point centre = button.convertPointToView(
        {button.bounds().size.width / 2, button.bounds().size.height / 2}, nullptr);
    ui::EventInjector::injectorForWindow(window)->tap(centre);
    settle();
    EXPECT_EQ(root->presentedViewController(), nullptr);
}

}  // namespace
