#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <thread>

#include "frameworks/core/OrvTSFileManager.h"
#include "tests/support/TestEnvironment.h"

namespace fs = std::filesystem;

namespace {

std::string freshDir(const std::string& name) {
    const std::string dir = orv::test::TestEnvironment::tempDir() + "/files-" + name;
    fs::remove_all(dir);
    fs::create_directories(dir);
    return dir;
}

size_t entryCount(const std::string& dir) {
    return static_cast<size_t>(std::distance(fs::directory_iterator(dir), {}));
}

TEST(OrvTSFileManager, AtomicWriteReplacesTheFileAndLeavesNothingElse) {
    const std::string dir = freshDir("write");
    const std::string path = dir + "/photo.jpg";
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically({1, 2, 3}, path));
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically({9, 8}, path));
    EXPECT_EQ(OrvTSFileManager::readDataAtPath(path), (std::vector<uint8_t>{9, 8}));
    EXPECT_EQ(entryCount(dir), 1u);
}

TEST(OrvTSFileManager, FailedAtomicWriteLeavesNoTemporaryFile) {
    const std::string dir = freshDir("fail");
    EXPECT_FALSE(OrvTSFileManager::writeDataAtomically({1}, dir + "/missing/photo.jpg"));
    // A folder in place of the target: the data is written, but the rename must fail.
    fs::create_directory(dir + "/taken");
    fs::create_directory(dir + "/taken/inner");
    EXPECT_FALSE(OrvTSFileManager::writeDataAtomically({1}, dir + "/taken"));
    EXPECT_EQ(entryCount(dir), 1u);  // only "taken": "missing" was never made
    EXPECT_EQ(entryCount(dir + "/taken"), 1u);

    const std::string locked = dir + "/locked";
    fs::create_directory(locked);
    ::chmod(locked.c_str(), 0555);
    const bool wrote = OrvTSFileManager::writeDataAtomically({1}, locked + "/photo.jpg");
    ::chmod(locked.c_str(), 0755);
    if (wrote && ::geteuid() == 0) GTEST_SKIP() << "root writes into read-only folders";
    EXPECT_FALSE(wrote);
    EXPECT_EQ(entryCount(locked), 0u);
}

TEST(OrvTSFileManager, DeleteIsHarmlessForNothingAndRecursiveForFolders) {
    EXPECT_TRUE(OrvTSFileManager::deletePath(std::nullopt));
    EXPECT_TRUE(OrvTSFileManager::deletePath(std::string()));
    const std::string dir = freshDir("delete");
    EXPECT_TRUE(OrvTSFileManager::deletePath(dir + "/nothing-here"));
    ASSERT_TRUE(OrvTSFileManager::createDirectoryAtPath(dir + "/a/b/c"));
    ASSERT_TRUE(OrvTSFileManager::writeDataAtomically({1}, dir + "/a/b/c/x"));
    EXPECT_TRUE(OrvTSFileManager::deletePath(dir + "/a"));
    EXPECT_FALSE(OrvTSFileManager::isExistFileAtPath(dir + "/a"));
    EXPECT_FALSE(OrvTSFileManager::isExistFileAtPath(std::nullopt));
}

TEST(OrvTSFileManager, TemporaryPathsAreUniqueAcrossThreads) {
    const std::string dir = OrvTSFileManager::temporaryDirectory();
    std::vector<std::string> paths[4];
    std::vector<std::thread> threads;
    for (auto& list : paths) {
        threads.emplace_back([&list] {
            for (int i = 0; i < 100; ++i)
                list.push_back(OrvTSFileManager::newTemporaryPath(".jpg"));
        });
    }
    for (auto& thread : threads) thread.join();
    std::set<std::string> unique;
    for (const auto& list : paths) unique.insert(list.begin(), list.end());
    EXPECT_EQ(unique.size(), 400u);
    for (const auto& path : unique) {
        EXPECT_EQ(fs::path(path).parent_path(), fs::path(dir));
        EXPECT_EQ(fs::path(path).extension(), ".jpg");
    }
}

}  // namespace
