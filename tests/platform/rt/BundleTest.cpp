#include "platform/rt/Bundle.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/platform/rt/RtTestHelpers.h"
#include "tests/support/TestEnvironment.h"

namespace orv::rt {
namespace {

namespace fs = std::filesystem;

class BundleTest : public ::testing::Test {
  protected:
    fs::path root;

    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        root = fs::path(orv::test::TestEnvironment::tempDir()) / "bundles" / info->name();
        fs::remove_all(root);
        fs::create_directories(root);
    }

    void write(const fs::path& relative, const std::string& text) {
        fs::create_directories((root / relative).parent_path());
        std::ofstream(root / relative) << text;
    }
};

TEST_F(BundleTest, LanguageComesFromTheFirstLocaleVariableSet) {
    test::ScopedEnv lcAll("LC_ALL", nullptr);
    test::ScopedEnv lcMessages("LC_MESSAGES", "en_GB.UTF-8");
    test::ScopedEnv lang("LANG", "zh_CN.UTF-8");
    {
        test::ScopedEnv locale("ORV_LOCALE", "zh_TW");
        EXPECT_EQ(Bundle::languageFromEnvironment(), "zh-Hans");
    }
    {
        test::ScopedEnv locale("ORV_LOCALE", nullptr);
        EXPECT_EQ(Bundle::languageFromEnvironment(), "en");
        test::ScopedEnv all("LC_ALL", "fr_FR");
        EXPECT_EQ(Bundle::languageFromEnvironment(), "zh-Hans") << "not English: built-in texts";
    }
}

TEST_F(BundleTest, EnglishTableAnswersAndMissingKeysFallBackToTheDefault) {
    write("strings/en/OrvKit.json", R"({"orv_nav_cancel": "Cancel", "odd": 5})");
    test::ScopedEnv locale("ORV_LOCALE", "en_US.UTF-8");
    auto bundle = Bundle::withResourcePath(root.string());
    EXPECT_EQ(bundle->localizedStringForKey("orv_nav_cancel", "取消", "OrvKit"), "Cancel");
    EXPECT_EQ(bundle->localizedStringForKey("orv_nav_back", "返回", "OrvKit"), "返回");
    EXPECT_EQ(bundle->localizedStringForKey("odd", "默认", "OrvKit"), "默认");
    EXPECT_EQ(bundle->localizedStringForKey("orv_filter_set_x", "", "OrvKit"), "orv_filter_set_x");
    EXPECT_EQ(bundle->localizedStringForKey("orv_nav_cancel", "取消", "Other"), "取消");
}

TEST_F(BundleTest, OtherLocalesUseTheDefaultsUnlessAChineseTableExists) {
    write("strings/en/OrvKit.json", R"({"orv_nav_cancel": "Cancel"})");
    test::ScopedEnv locale("ORV_LOCALE", "zh_CN");
    auto bundle = Bundle::withResourcePath(root.string());
    EXPECT_EQ(bundle->localizedStringForKey("orv_nav_cancel", "取消", "OrvKit"), "取消");

    write("strings/zh-Hans/OrvKit.json", R"({"orv_nav_cancel": "算了"})");
    bundle->reloadForTesting();
    EXPECT_EQ(bundle->localizedStringForKey("orv_nav_cancel", "取消", "OrvKit"), "算了");
}

TEST_F(BundleTest, CorruptTableWarnsOnceAndGivesTheDefaults) {
    write("strings/en/OrvKit.json", R"({"orv_nav_cancel": "Canc)");
    test::ScopedEnv locale("ORV_LOCALE", "en");
    test::LogCapture capture;
    auto bundle = Bundle::withResourcePath(root.string());
    EXPECT_EQ(bundle->localizedStringForKey("orv_nav_cancel", "取消", "OrvKit"), "取消");
    EXPECT_EQ(bundle->localizedStringForKey("orv_nav_back", "返回", "OrvKit"), "返回");
    ASSERT_EQ(capture.lines().size(), 1u);
    EXPECT_NE(capture.lines()[0].find("OrvKit.json"), std::string::npos);
}

TEST_F(BundleTest, PathForResourceFindsFilesOnly) {
    write("style_default_close@2x.png", "png");
    write("sounds/beep.caf", "caf");
    fs::create_directories(root / "folder.png");
    auto bundle = Bundle::withResourcePath(root.string());
    const std::string base = root.string();
    EXPECT_EQ(bundle->pathForResource("style_default_close@2x", "png"),
              base + "/style_default_close@2x.png");
    EXPECT_EQ(bundle->pathForResource("style_default_close@2x", ".png"),
              base + "/style_default_close@2x.png");
    EXPECT_EQ(bundle->pathForResource("style_default_close@2x.png", ""),
              base + "/style_default_close@2x.png");
    EXPECT_EQ(bundle->pathForResource("beep", "caf", "sounds"), base + "/sounds/beep.caf");
    EXPECT_EQ(bundle->pathForResource("style_default_close", "png"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("folder", "png"), std::nullopt);
    EXPECT_EQ(bundle->pathForResource("", ""), std::nullopt);
}

void expectEnglishTable() {
    const auto path = Bundle::main().pathForResource("OrvKit", "json", "strings/en");
    ASSERT_TRUE(path);
    std::ifstream in(*path);
    const auto table = nlohmann::json::parse(in);
    for (const auto& [key, text] : table.items()) {
        EXPECT_EQ(Bundle::main().localizedStringForKey(key, "默认", "OrvKit"), text) << key;
        EXPECT_FALSE(text.get<std::string>().empty()) << key;
    }
    EXPECT_EQ(Bundle::main().localizedStringForKey("orv_nav_cancel", "取消", "OrvKit"), "Cancel");
}

TEST(MainBundleTest, ShipsAnEnglishTextForEveryBuiltInKey) {
    {
        test::ScopedEnv locale("ORV_LOCALE", "en_US");
        Bundle::main().reloadForTesting();
        expectEnglishTable();
    }
    Bundle::main().reloadForTesting();
    EXPECT_EQ(Bundle::main().localizedStringForKey("orv_nav_cancel", "取消", "OrvKit"), "取消");
}

}  // namespace
}  // namespace orv::rt
