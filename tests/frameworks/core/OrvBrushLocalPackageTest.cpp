#include "frameworks/core/OrvBrushLocalPackage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <thread>

#include "platform/ui/ImageView.h"
#include "tests/support/ResourcesFolderFixture.h"

namespace fs = std::filesystem;

namespace {

// The alpha of the brush's shape at a fraction of its radius from the centre, going right.
int alphaAt(const OrvBrush& brush, double fractionOfRadius) {
    const auto& bitmap = *brush.image()->bitmap();
    const double half = bitmap.width() / 2.0;
    const int x = std::min(bitmap.width() - 1, int(half + fractionOfRadius * half));
    return bitmap.pixel(x, bitmap.height() / 2)[3];
}

std::shared_ptr<OrvBrush> loaded(const std::string& code) {
    auto brush = OrvBrushLocalPackage::package()->brushWithCode(code);
    if (brush) {
        EXPECT_TRUE(OrvBrushLocalPackage::package()->loadBrushData(brush));
    }
    return brush;
}

TEST(OrvBrushLocalPackage, ShippedCatalogueListsBrushesInOrderWithTheirKinds) {
    const auto package = OrvBrushLocalPackage::package();
    const auto codes = package->codes();
    ASSERT_GE(codes.size(), 8u);
    EXPECT_EQ(codes.front(), "round_soft");
    EXPECT_NE(std::find(codes.begin(), codes.end(), orvEraserBrushCode), codes.end());

    const auto brushes = package->brushWithCodes(codes);
    ASSERT_EQ(brushes.size(), codes.size());
    // Brush tools load shapes on worker threads, here two at once on the same brushes.
    std::vector<std::thread> workers;
    for (int t = 0; t < 2; ++t) {
        workers.emplace_back([&] {
            for (const auto& brush : brushes) EXPECT_TRUE(package->loadBrushData(brush));
        });
    }
    for (auto& worker : workers) worker.join();
    size_t mosaics = 0;
    for (size_t i = 0; i < codes.size(); ++i) {
        SCOPED_TRACE(codes[i]);
        EXPECT_EQ(brushes[i]->code(), codes[i]);
        EXPECT_FALSE(brushes[i]->name().empty());
        mosaics += brushes[i]->brushType() == OrvBrush::kMosaic;
        ASSERT_NE(brushes[i]->image(), nullptr);
        EXPECT_EQ(brushes[i]->image()->size(), (gfx::Size{128, 128}));  // the @2x picture, scale 1
    }
    EXPECT_EQ(mosaics, 2u);
    EXPECT_EQ(package->brushWithCode(orvEraserBrushCode)->brushType(), OrvBrush::kEraser);
    const auto splatter = package->brushWithCode("stamp_splatter");
    ASSERT_NE(splatter, nullptr);
    EXPECT_EQ(splatter->rotateType(), OrvBrush::kRotateRandom);
    EXPECT_EQ(splatter->positionType(), OrvBrush::kPositionRandom);
}

TEST(OrvBrushLocalPackage, BrushWithCodeGivesFreshUnloadedBrushesAndTheDefault) {
    const auto package = OrvBrushLocalPackage::package();
    const auto first = loaded("round_hard");
    const auto second = package->brushWithCode("round_hard");
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(second->image(), nullptr);
    second->setRotateType(OrvBrush::kRotateNone);
    EXPECT_NE(package->brushWithCode("round_hard")->rotateType(), OrvBrush::kRotateNone);

    EXPECT_EQ(package->brushWithCode(std::nullopt)->code(), "round_soft");
    EXPECT_EQ(package->brushWithCode("no_such_brush"), nullptr);
    const auto some = package->brushWithCodes({"mosaic_square", "no_such_brush", "eraser"});
    ASSERT_EQ(some.size(), 2u);
    EXPECT_EQ(some[0]->code(), "mosaic_square");
    EXPECT_EQ(some[1]->code(), "eraser");
}

TEST(OrvBrushLocalPackage, ShapesCarryTheirEdgeInTheAlpha) {
    const auto soft = loaded("round_soft");
    ASSERT_NE(soft, nullptr);
    EXPECT_GE(alphaAt(*soft, 0), 240);
    EXPECT_NEAR(alphaAt(*soft, 0.5), 128, 40);
    EXPECT_LE(alphaAt(*soft, 0.97), 12);
    EXPECT_EQ(soft->image()->bitmap()->pixel(0, 0)[3], 0);

    // A hard edge goes from opaque to clear within a few pixels.
    const auto hard = loaded("round_hard");
    ASSERT_NE(hard, nullptr);
    EXPECT_EQ(alphaAt(*hard, 0.95), 255);
    EXPECT_EQ(alphaAt(*hard, 1), 0);
    EXPECT_EQ(hard->image()->bitmap()->pixel(0, 0)[3], 0);
}

TEST(OrvBrushLocalPackage, BrushWithTypeHasNoPicture) {
    const auto online = OrvBrush::brushWithType(OrvBrush::kOnline);
    EXPECT_EQ(online->brushType(), OrvBrush::kOnline);
    EXPECT_EQ(online->image(), nullptr);
    rt::test::LogCapture capture;
    EXPECT_FALSE(OrvBrushLocalPackage::package()->loadBrushData(online));
    ASSERT_EQ(capture.lines().size(), 1u);
    EXPECT_NE(capture.lines()[0].find("no picture"), std::string::npos);
}

TEST(OrvBrushLocalPackage, ThumbnailFillsTheViewAndAFailedOneClearsIt) {
    const auto package = OrvBrushLocalPackage::package();
    auto view = ui::ImageView::withImage(nullptr);
    package->loadThumbWithBrush(package->brushWithCode("stamp_star"), view);
    ASSERT_NE(view->image(), nullptr);
    EXPECT_EQ(view->image()->size(), (gfx::Size{32, 32}));
    package->cancelLoadImage(view);
    EXPECT_NE(view->image(), nullptr);

    package->loadThumbWithBrush(OrvBrush::brushWithType(OrvBrush::kOnline), view);
    EXPECT_EQ(view->image(), nullptr);
}

class RecordingDelegate : public OrvBrushLocalPackageDelegate {
  public:
    void brushManager(OrvBrushLocalPackage&, const std::shared_ptr<OrvBrush>&,
                      long status) override {
        statuses.push_back(status);
    }
    std::vector<long> statuses;
};

TEST(OrvBrushLocalPackage, DelegatesAreToldOfAReloadUntilRemoved) {
    const auto package = OrvBrushLocalPackage::package();
    auto kept = std::make_shared<RecordingDelegate>();
    auto removed = std::make_shared<RecordingDelegate>();
    auto gone = std::make_shared<RecordingDelegate>();
    package->appenDelegate(kept);
    package->appenDelegate(kept);
    package->appenDelegate(removed);
    package->appenDelegate(gone);
    gone.reset();

    package->reloadForTesting();
    EXPECT_EQ(kept->statuses, std::vector<long>{OrvBrushLocalPackage::kStatusChanged});
    EXPECT_EQ(removed->statuses.size(), 1u);
    EXPECT_FALSE(package->codes().empty());

    package->removeDelegate(removed.get());
    package->reloadForTesting();
    EXPECT_EQ(kept->statuses.size(), 2u);
    EXPECT_EQ(removed->statuses.size(), 1u);
    package->removeDelegate(kept.get());
}

class OrvBrushLocalPackageInFolder : public orv::test::ResourcesFolderFixture {
  protected:
    void reloadPackage() override { OrvBrushLocalPackage::package()->reloadForTesting(); }
    void writeCatalogue(const std::string& text) {
        write(fs::path(OrvBrushLocalPackage::kDirectory) / "catalogue.json", text);
    }
};

TEST_F(OrvBrushLocalPackageInFolder, MissingOrBrokenCatalogueGivesNoBrushes) {
    const auto package = OrvBrushLocalPackage::package();
    EXPECT_TRUE(package->codes().empty());
    EXPECT_EQ(package->brushWithCode(std::nullopt), nullptr);
    EXPECT_EQ(logged("missing"), 1u);

    const auto withDefault = [](const std::string& code, const std::string& type) {
        return R"({"default": ")" + code + R"(", "brushes": [{"code": "a", "brushType": )" + type +
               R"(, "thumb": "t"}]})";
    };
    size_t failures = 0;
    for (const std::string& broken :
         {std::string("{\"brushes\": ["), withDefault("b", "3"), withDefault("a", "7")}) {
        SCOPED_TRACE(broken);
        writeCatalogue(broken);
        package->reloadForTesting();
        EXPECT_TRUE(package->codes().empty());
        EXPECT_EQ(logged("broken"), ++failures);
    }
    // The same catalogue with a listed default and a known type reads.
    writeCatalogue(withDefault("a", "3"));
    package->reloadForTesting();
    EXPECT_EQ(package->codes(), std::vector<std::string>{"a"});
}

TEST_F(OrvBrushLocalPackageInFolder, MissingOrCorruptPictureAnswersFalse) {
    writeCatalogue(R"({"default": "gone", "brushes": [
        {"code": "gone", "name": {"zh-Hans": "没了", "en": "Gone"}, "brushType": 3,
         "image": "gone", "thumb": "gone_thumb"},
        {"code": "bad", "name": "Bad", "brushType": 3, "image": "bad", "thumb": "bad_thumb"}]})");
    write(fs::path(OrvBrushLocalPackage::kImageDirectory) / "bad.png", "not a png");
    const auto package = OrvBrushLocalPackage::package();
    ASSERT_EQ(package->codes().size(), 2u);
    EXPECT_EQ(package->brushWithCode("gone")->name(), "没了");

    EXPECT_FALSE(package->loadBrushData(package->brushWithCode(std::nullopt)));
    EXPECT_EQ(logged("no readable picture gone"), 1u);
    const auto bad = package->brushWithCode("bad");
    EXPECT_FALSE(package->loadBrushData(bad));
    EXPECT_EQ(bad->image(), nullptr);
    EXPECT_EQ(logged("bad.png could not be read"), 1u);
    EXPECT_EQ(logged("no readable picture bad"), 1u);
}

}  // namespace
