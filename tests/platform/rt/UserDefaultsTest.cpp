#include "platform/rt/UserDefaults.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/platform/rt/RtTestHelpers.h"
#include "tests/support/TestEnvironment.h"

namespace orv::rt {
namespace {

namespace fs = std::filesystem;

class UserDefaultsTest : public ::testing::Test {
  protected:
    fs::path dir;

    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir = fs::path(orv::test::TestEnvironment::tempDir()) / "defaults" / info->name();
        fs::remove_all(dir);
        fs::create_directories(dir);
    }

    std::string file(const std::string& name) const { return (dir / name).string(); }

    static std::string read(const fs::path& path) {
        std::ifstream in(path);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    std::vector<fs::path> filesInDir() const {
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(dir)) files.push_back(entry.path());
        return files;
    }
};

TEST_F(UserDefaultsTest, ValuesSurviveANewInstanceAndNullRemoves) {
    const std::string path = file("nested/folder/defaults.json");
    {
        auto defaults = UserDefaults::withPath(path);
        defaults->setObject("orv_filter_code", "F12");
        defaults->setObject("orv_history", nlohmann::json::array({"b", "a"}));
        defaults->setObject("flag", true);
        defaults->setObject("count", 42);
        defaults->setObject("ratio", 0.75);
        defaults->setObject("gone", "soon");
        defaults->setObject("gone", nullptr);
    }
    auto reopened = UserDefaults::withPath(path);
    EXPECT_EQ(reopened->stringForKey("orv_filter_code"), "F12");
    EXPECT_EQ(reopened->stringArrayForKey("orv_history"), (std::vector<std::string>{"b", "a"}));
    EXPECT_TRUE(reopened->boolForKey("flag"));
    EXPECT_EQ(reopened->integerForKey("count"), 42);
    EXPECT_DOUBLE_EQ(reopened->doubleForKey("ratio"), 0.75);
    EXPECT_TRUE(reopened->objectForKey("gone").is_null());

    reopened->removeObjectForKey("orv_filter_code");
    EXPECT_EQ(UserDefaults::withPath(path)->stringForKey("orv_filter_code"), std::nullopt);
    EXPECT_TRUE(reopened->synchronize());
}

TEST_F(UserDefaultsTest, TypedReadsOfAbsentOrMismatchedValues) {
    auto defaults = UserDefaults::withPath(file("defaults.json"));
    defaults->setObject("number", 3);
    defaults->setObject("yes", "YES");
    defaults->setObject("numeric", "12.5");
    defaults->setObject("mixed", nlohmann::json::array({"x", 1, "y"}));
    defaults->setObject("huge", 1e300);

    EXPECT_EQ(defaults->stringForKey("number"), std::nullopt);
    EXPECT_EQ(defaults->stringForKey("absent"), std::nullopt);
    EXPECT_TRUE(defaults->arrayForKey("number").is_array());
    EXPECT_TRUE(defaults->arrayForKey("number").empty());
    EXPECT_EQ(defaults->stringArrayForKey("mixed"), (std::vector<std::string>{"x", "y"}));
    EXPECT_TRUE(defaults->boolForKey("yes"));
    EXPECT_TRUE(defaults->boolForKey("number"));
    EXPECT_FALSE(defaults->boolForKey("absent"));
    EXPECT_EQ(defaults->integerForKey("numeric"), 12);
    EXPECT_DOUBLE_EQ(defaults->doubleForKey("numeric"), 12.5);
    EXPECT_EQ(defaults->integerForKey("absent"), 0);
    EXPECT_EQ(defaults->integerForKey("huge"), std::numeric_limits<long>::max());
}

TEST_F(UserDefaultsTest, WritesLeaveOnlyTheFileBehind) {
    auto defaults = UserDefaults::withPath(file("defaults.json"));
    for (int i = 0; i < 5; ++i) defaults->setObject("k" + std::to_string(i), i);
    EXPECT_EQ(filesInDir(), std::vector<fs::path>{dir / "defaults.json"});
    EXPECT_EQ(nlohmann::json::parse(read(dir / "defaults.json"))["k4"], 4);
}

TEST_F(UserDefaultsTest, CorruptFilesAreKeptAsideAndTheStoreStartsEmpty) {
    for (const std::string broken : {"{\"half\": ", "[\"an\", \"array\"]", ""}) {
        SCOPED_TRACE(broken);
        fs::remove_all(dir);
        fs::create_directories(dir);
        const std::string path = file("defaults.json");
        std::ofstream(path) << broken;

        test::LogCapture capture;
        auto defaults = UserDefaults::withPath(path);
        EXPECT_TRUE(defaults->objectForKey("half").is_null());
        ASSERT_EQ(capture.lines().size(), 1u);
        EXPECT_NE(capture.lines()[0].find("warn: user defaults:"), std::string::npos);

        const auto files = filesInDir();
        ASSERT_EQ(files.size(), 1u);
        EXPECT_EQ(files[0].filename().string().rfind("defaults.json.corrupt-", 0), 0u);
        EXPECT_EQ(read(files[0]), broken) << "the broken file is kept as it was";

        defaults->setObject("fresh", 1);
        EXPECT_EQ(UserDefaults::withPath(path)->integerForKey("fresh"), 1);
    }
}

TEST_F(UserDefaultsTest, StandardFollowsTheEnvironmentPath) {
    const std::string path = file("standard.json");
    {
        test::ScopedEnv env("ORV_DEFAULTS_PATH", path.c_str());
        UserDefaults::resetStandardForTesting();
        EXPECT_EQ(UserDefaults::standard().path(), path);
        UserDefaults::standard().setObject("orv_brush", "B3");
        EXPECT_EQ(nlohmann::json::parse(read(path))["orv_brush"], "B3");
    }
    {
        test::ScopedEnv env("ORV_DEFAULTS_PATH", nullptr);
        test::ScopedEnv xdg("XDG_CONFIG_HOME", "/xdg");
        EXPECT_EQ(UserDefaults::defaultPath(), "/xdg/orvviews/defaults.json");
    }
    UserDefaults::resetStandardForTesting();
    EXPECT_EQ(UserDefaults::standard().stringForKey("orv_brush"), std::nullopt);
}

}  // namespace
}  // namespace orv::rt
