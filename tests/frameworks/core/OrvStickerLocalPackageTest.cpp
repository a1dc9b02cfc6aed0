#include "frameworks/core/OrvStickerLocalPackage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

#include "platform/rt/Bundle.h"
#include "tests/platform/rt/RtTestHelpers.h"
#include "tests/support/TestEnvironment.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::shared_ptr<OrvSticker>> allStickers(const OrvStickerLocalPackage& package) {
    std::vector<std::shared_ptr<OrvSticker>> stickers;
    for (const auto& category : package.categories()) {
        for (const auto& group : category->datas()) {
            stickers.insert(stickers.end(), group->stickers().begin(), group->stickers().end());
        }
    }
    return stickers;
}

size_t logged(const rt::test::LogCapture& capture, const std::string& part) {
    size_t count = 0;
    for (const std::string& line : capture.lines()) count += line.find(part) != std::string::npos;
    return count;
}

TEST(OrvStickerLocalPackage, ShippedCatalogueListsStickersWhosePicturesLoad) {
    const auto package = OrvStickerLocalPackage::package();
    const auto categories = package->categories();
    ASSERT_GE(categories.size(), 2u);
    const auto stickers = allStickers(*package);
    ASSERT_GE(stickers.size(), 12u);

    std::set<long> ids;
    bool hasText = false;
    for (const auto& sticker : stickers) {
        SCOPED_TRACE(sticker->stickerImageName());
        EXPECT_TRUE(ids.insert(sticker->idt()).second);
        EXPECT_NE(package->categorieWithIdt(sticker->categoryId()), nullptr);
        if (sticker->type() == OrvSticker::kText) {
            hasText = true;
            ASSERT_TRUE(sticker->texts() && !sticker->texts()->empty());
            const gfx::Rect& r = sticker->texts()->front()->rect();
            EXPECT_TRUE(r.origin.x >= 0 && r.origin.x + r.size.width <= 1);
            EXPECT_TRUE(r.origin.y >= 0 && r.origin.y + r.size.height <= 1);
            EXPECT_FALSE(sticker->texts()->front()->text().empty());
        }
    }
    EXPECT_TRUE(hasText);

    // Composition loads pictures on worker threads; the first and last worker load the same
    // stickers at once.
    std::vector<std::thread> workers;
    for (size_t t = 0; t < 3; ++t) {
        workers.emplace_back([&, t] {
            for (size_t i = t; i < stickers.size(); i += 2) package->loadStickerData(stickers[i]);
        });
    }
    for (auto& worker : workers) worker.join();
    for (const auto& sticker : stickers) {
        SCOPED_TRACE(sticker->stickerImageName());
        ASSERT_NE(sticker->image(), nullptr);
        EXPECT_EQ(sticker->image()->size(), sticker->size());
    }
}

TEST(OrvStickerLocalPackage, StickerWithIdtGivesAFreshUnloadedSticker) {
    const auto package = OrvStickerLocalPackage::package();
    const auto listed = allStickers(*package);
    const auto text = std::find_if(listed.begin(), listed.end(),
                                   [](const auto& s) { return s->type() == OrvSticker::kText; });
    ASSERT_NE(text, listed.end());
    package->loadStickerData(*text);

    const auto first = package->stickerWithIdt((*text)->idt());
    const auto second = package->stickerWithIdt((*text)->idt());
    ASSERT_NE(first, nullptr);
    EXPECT_NE(first, second);
    EXPECT_NE(first, *text);
    EXPECT_EQ(first->image(), nullptr);
    EXPECT_EQ(first->stickerImageName(), (*text)->stickerImageName());
    EXPECT_EQ(first->categoryId(), (*text)->categoryId());
    EXPECT_EQ(first->size(), (*text)->size());
    // Its texts are its own too: editing one leaves the catalogue's alone.
    first->texts()->front()->setText("changed");
    EXPECT_NE(second->texts()->front()->text(), "changed");
    EXPECT_NE((*text)->texts()->front()->text(), "changed");

    EXPECT_EQ(package->stickerWithIdt(987654321), nullptr);
    EXPECT_EQ(package->categorieWithIdt(987654321), nullptr);
}

// Points the main bundle at a private resources folder for one test.
class StickerPackageInFolder : public ::testing::Test {
  protected:
    void SetUp() override {
        root = fs::path(orv::test::TestEnvironment::tempDir()) / "sticker-resources";
        fs::remove_all(root);
        fs::create_directories(root / OrvStickerLocalPackage::kImageDirectory);
        env.emplace("ORV_RESOURCES", root.c_str());
        reload();
    }
    void TearDown() override {
        env.reset();
        reload();
    }
    static void reload() {
        rt::Bundle::main().reloadForTesting();
        OrvStickerLocalPackage::package()->reloadForTesting();
    }
    void writeCatalogue(const std::string& text) {
        std::ofstream(root / OrvStickerLocalPackage::kDirectory / "catalogue.json") << text;
    }

    fs::path root;
    std::optional<rt::test::ScopedEnv> env;
    rt::test::LogCapture capture;
};

TEST_F(StickerPackageInFolder, MissingOrBrokenCatalogueGivesNoCategories) {
    const auto package = OrvStickerLocalPackage::package();
    EXPECT_TRUE(package->categories().empty());
    EXPECT_EQ(logged(capture, "missing"), 1u);

    const std::string sticker =
        R"({"idt": 5, "type": %, "image": "a", "preview": "b", "size": [10, 10]})";
    const auto withType = [&](const std::string& type) {
        std::string entry = sticker;
        entry.replace(entry.find('%'), 1, type);
        return R"({"categories": [{"idt": 1, "name": "c", "groups": [{"idt": 2, "name": "g",
               "stickers": [)" +
               entry + "]}]}]}";
    };
    size_t failures = 0;
    for (const std::string& broken :
         {std::string("{\"categories\": [{\"idt\": 1,"), withType("3"), withType("\"1\"")}) {
        SCOPED_TRACE(broken);
        writeCatalogue(broken);
        package->reloadForTesting();
        EXPECT_TRUE(package->categories().empty());
        EXPECT_EQ(package->stickerWithIdt(5), nullptr);
        EXPECT_EQ(logged(capture, "broken"), ++failures);
    }

    // The same catalogue with a valid type reads, so the failures above were the type's.
    writeCatalogue(withType("1"));
    package->reloadForTesting();
    ASSERT_EQ(package->categories().size(), 1u);
    EXPECT_NE(package->stickerWithIdt(5), nullptr);
}

TEST_F(StickerPackageInFolder, MissingPictureLeavesTheImageEmpty) {
    writeCatalogue(R"({"categories": [{"idt": 1, "name": {"zh-Hans": "类", "en": "Kind"},
        "groups": [{"idt": 2, "name": "g", "stickers": [{"idt": 7, "type": 2, "image": "gone",
        "preview": "gone_preview", "size": [50, 20], "texts": [{"text": "Hi", "size": 12,
        "color": "#102030", "shadowColor": "#00000040", "alignment": 0}]}]}]}]})");
    const auto package = OrvStickerLocalPackage::package();
    ASSERT_EQ(package->categories().size(), 1u);
    EXPECT_EQ(package->categorieWithIdt(1)->name(), "类");

    const auto sticker = package->stickerWithIdt(7);
    ASSERT_NE(sticker, nullptr);
    const auto& text = *sticker->texts()->front();
    EXPECT_EQ(text.color(), gfx::Color::fromHex("#102030"));
    EXPECT_NEAR(text.shadowColor().a, 0x40 / 255.0, 1e-12);
    EXPECT_EQ(text.alignment(), 0);
    EXPECT_TRUE(gfx::rectIsEmpty(text.rect()));

    package->loadStickerData(sticker);
    EXPECT_EQ(sticker->image(), nullptr);
    EXPECT_EQ(logged(capture, "gone"), 1u);
}

}  // namespace
