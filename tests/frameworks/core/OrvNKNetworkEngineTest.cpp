#include <gtest/gtest.h>

#include <filesystem>
#include <mutex>

#include "examples/orvdemo/LoopbackHttpServer.h"
#include "frameworks/core/OrvNKNetworkEngine.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "platform/rt/RunLoop.h"
#include "tests/support/TestEnvironment.h"

namespace fs = std::filesystem;
using orvdemo::LoopbackHttpServer;

namespace {

std::vector<uint8_t> patternBytes(size_t size) {
    std::vector<uint8_t> bytes(size);
    for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(i * 31 + i / 251);
    return bytes;
}

// What a download reported, from its own thread.
struct Recorder {
    std::mutex mutex;
    std::vector<double> progress;
    std::shared_ptr<rt::Error> error;
    std::atomic<int> completions{0};

    OrvNKNetworkEngine::Progress onProgress() {
        return [this](double p) {
            std::lock_guard lock(mutex);
            progress.push_back(p);
        };
    }
    OrvNKNetworkEngine::Completion onCompletion() {
        return [this](std::shared_ptr<rt::Error> e) {
            {
                std::lock_guard lock(mutex);
                error = std::move(e);
            }
            ++completions;  // last: the test may end the moment it sees this
        };
    }
    bool waitForCompletion() {
        return rt::RunLoop::main().runUntil([this] { return completions > 0; });
    }
};

class OrvNKNetworkEngineTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(server.start());
        dir = orv::test::TestEnvironment::tempDir() + "/net-" +
              ::testing::UnitTest::GetInstance()->current_test_info()->name();
        fs::create_directories(dir);
    }
    std::shared_ptr<OrvNKDownloadTask> download(const std::string& path, Recorder& recorder) {
        return OrvNKNetworkEngine::sharedEngine()->downloadWithUrl(
            server.url(path), dir + "/out.bin", recorder.onProgress(), recorder.onCompletion());
    }
    bool folderIsEmpty() const { return fs::is_empty(dir); }

    LoopbackHttpServer server;
    std::string dir;
};

TEST_F(OrvNKNetworkEngineTest, DownloadsWithProgressIntoPlace) {
    const auto bytes = patternBytes(300 * 1024);
    server.addFile("/big.bin", bytes, "application/octet-stream",
                   {8 * 1024, std::chrono::milliseconds(1), {}});
    Recorder recorder;
    download("/big.bin", recorder);
    ASSERT_TRUE(recorder.waitForCompletion());
    EXPECT_EQ(recorder.error, nullptr);
    EXPECT_GE(recorder.progress.size(), 10u);
    EXPECT_EQ(recorder.progress.back(), 1.0);
    EXPECT_TRUE(std::is_sorted(recorder.progress.begin(), recorder.progress.end()));
    EXPECT_EQ(OrvTSFileManager::readDataAtPath(dir + "/out.bin"), bytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), {}), 1);  // no partial file left
    EXPECT_EQ(server.requestCount("/big.bin"), 1);
}

TEST_F(OrvNKNetworkEngineTest, FailuresReportTheirCodeAndLeaveNoFile) {
    Recorder missing;
    download("/missing.bin", missing);
    ASSERT_TRUE(missing.waitForCompletion());
    ASSERT_NE(missing.error, nullptr);
    EXPECT_EQ(missing.error->domain(), "OrvNKNetworkEngine");
    EXPECT_EQ(missing.error->code(), 404);
    EXPECT_TRUE(folderIsEmpty());

    server.addFile("/cut.bin", patternBytes(100 * 1024), "application/octet-stream",
                   {4096, {}, 40 * 1024});
    Recorder cut;
    download("/cut.bin", cut);
    ASSERT_TRUE(cut.waitForCompletion());
    ASSERT_NE(cut.error, nullptr);
    EXPECT_LT(cut.error->code(), 0);
    EXPECT_TRUE(folderIsEmpty());
    EXPECT_NE(cut.progress.empty() ? 1.0 : cut.progress.back(), 1.0);
}

TEST_F(OrvNKNetworkEngineTest, CancelledDownloadGoesQuietAndLeavesNoFile) {
    server.addFile("/slow.bin", patternBytes(256 * 1024), "application/octet-stream",
                   {4096, std::chrono::milliseconds(5), {}});
    Recorder recorder;
    std::shared_ptr<OrvNKDownloadTask> task;
    std::atomic<int> progressAfterCancel{0};
    std::mutex taskMutex;
    {
        std::lock_guard lock(taskMutex);
        task = OrvNKNetworkEngine::sharedEngine()->downloadWithUrl(
            server.url("/slow.bin"), dir + "/out.bin",
            [&](double p) {
                std::lock_guard lock(taskMutex);
                if (task->isCancelled()) ++progressAfterCancel;
                if (p > 0) task->cancel();
            },
            recorder.onCompletion());
    }
    ASSERT_TRUE(rt::RunLoop::main().runUntil([&] { return task->isFinished(); }));
    EXPECT_TRUE(task->isCancelled());
    EXPECT_EQ(recorder.completions, 0);
    EXPECT_EQ(progressAfterCancel, 0);
    EXPECT_TRUE(folderIsEmpty());
}

}  // namespace
