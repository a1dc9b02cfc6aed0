#include "orvviews/widgets/smudge/OrvBrushBarViewBase.h"

#include <gtest/gtest.h>

#include "frameworks/core/OrvBrushLocalPackage.h"
#include "frameworks/core/OrvUserDefaults.h"

namespace {

class FakeTable : public ui::View, public OrvBrushTableViewInterface {
    ORV_DECLARE_CLASS(FakeTable)
  public:
    std::vector<std::string> codes;
    long selected = -2;
    double width = 0;
    void setCellWidth(double w) override { width = w; }
    void setModeList(const std::vector<std::shared_ptr<OrvBrush>>& list) override {
        codes.clear();
        for (const auto& brush : list) codes.push_back(brush->code());
    }
    void selectPostion(long index, bool, bool) override { selected = index; }
};
ORV_DEFINE_CLASS(FakeTable, ui::View, OrvBrushTableViewInterface)

class TestBar : public OrvBrushBarViewBase {
    ORV_DECLARE_CLASS(TestBar)
  public:
    std::shared_ptr<FakeTable> table = ui::makeView<FakeTable>();
    std::vector<std::string> announced;
    int refreshes = 0;
    std::shared_ptr<ui::View> tableView() const override { return table; }
    void notifySelectedBrush(const std::shared_ptr<OrvBrush>& brush) override {
        announced.push_back(brush ? brush->code() : "");
    }
    void refreshBrushData() override { ++refreshes; }
};
ORV_DEFINE_CLASS(TestBar, OrvBrushBarViewBase)

std::shared_ptr<TestBar> makeBar(long action, bool remember, std::vector<std::string> group = {}) {
    auto bar = ui::makeView<TestBar>();
    bar->setAction(action);
    bar->setSaveLastBrush(remember);
    bar->setBrushGroup(std::move(group));
    return bar;
}

class OrvBrushBarViewBaseTest : public ::testing::Test {
  protected:
    void SetUp() override {
        for (long action : {6, 7}) orvSaveKey("orv_lastbrush_" + std::to_string(action), nullptr);
    }
};

TEST_F(OrvBrushBarViewBaseTest, StartsOnTheSecondBrushAndRemembersTheChoicePerTool) {
    auto bar = makeBar(6, true);
    bar->loadBrushes();
    const auto codes = OrvBrushLocalPackage::package()->codes();
    ASSERT_EQ(bar->table->codes, codes);
    EXPECT_EQ(bar->table->selected, 1);
    EXPECT_EQ(bar->announced, std::vector<std::string>{codes[1]});

    bar->selectBrush(OrvBrushLocalPackage::package()->brushWithCode(codes[3]));
    auto again = makeBar(6, true);
    again->loadBrushes();
    EXPECT_EQ(again->table->selected, 3);
    EXPECT_EQ(again->announced.back(), codes[3]);
    // Another tool keeps its own choice.
    auto other = makeBar(7, true);
    other->loadBrushes();
    EXPECT_EQ(other->table->selected, 1);
    // A remembered eraser is never restored.
    bar->selectBrush(OrvBrushLocalPackage::package()->brushWithCode(orvEraserBrushCode));
    auto afterEraser = makeBar(6, true);
    afterEraser->loadBrushes();
    EXPECT_EQ(afterEraser->table->selected, 1);
    // Not remembering: nothing is stored.
    auto forgetful = makeBar(7, false);
    forgetful->selectBrush(OrvBrushLocalPackage::package()->brushWithCode(codes[2]));
    EXPECT_TRUE(orvLoadForKey("orv_lastbrush_7").is_null());
}

TEST_F(OrvBrushBarViewBaseTest, FixedGroupsIgnoreLibraryChangesWhileFullListsFollowThem) {
    auto fixed = makeBar(6, false, {"eraser", "no_such_brush", "round_hard"});
    fixed->loadBrushes();
    EXPECT_EQ(fixed->table->codes, (std::vector<std::string>{"eraser", "round_hard"}));
    EXPECT_EQ(fixed->table->selected, 1);
    auto single = makeBar(6, false, {"round_hard"});
    single->loadBrushes();
    EXPECT_EQ(single->table->selected, OrvBrushTableViewInterface::kNotFound);
    EXPECT_EQ(single->announced, std::vector<std::string>{""});

    auto full = makeBar(6, false);
    full->loadBrushes();
    OrvBrushLocalPackage::package()->reloadForTesting();  // tells the delegates
    EXPECT_EQ(full->refreshes, 1);
    EXPECT_EQ(fixed->refreshes, 0);
    full->brushManager(*OrvBrushLocalPackage::package(), nullptr, 7);
    EXPECT_EQ(full->refreshes, 1);
    full->viewWillDestory();
    OrvBrushLocalPackage::package()->reloadForTesting();
    EXPECT_EQ(full->refreshes, 1);

    full->setCellWidth(0);
    full->setCellWidth(64);
    EXPECT_EQ(full->table->width, 64);
}

}  // namespace
