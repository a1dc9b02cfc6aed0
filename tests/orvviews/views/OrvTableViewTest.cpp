#include "orvviews/views/OrvTableView.h"

#include <gtest/gtest.h>

#include "orvviews/views/OrvTableViewCell.h"
#include "platform/ui/TableViewCell.h"
#include "tests/platform/ui/TableTestSupport.h"
#include "tests/support/ScreenFixture.h"

namespace {

using orv::ui::test::row;

class OrvFilterTable : public OrvTableView {
    ORV_DECLARE_CLASS(OrvFilterTable)
  public:
    void orvInitView() override { ++initCalls; }
    int initCalls = 0;
};
ORV_DEFINE_CLASS(OrvFilterTable, OrvTableView)

// A 300 high table of 20 rows of 44, its cells plain ones the test can see selected.
class OrvTableViewTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        window->makeKeyAndVisible();
        table = OrvTableView::tableWithHeight(300);
        window->addSubview(table);
        source->rows = 20;
        source->identifier = table->cellIdentifier();
        table->setDataSource(source);
        table->setDelegate(source);
        table->reloadData();
    }
    bool cellSelected(long r) { return table->cellForRowAtIndexPath(row(r))->isSelected(); }

    std::shared_ptr<OrvTableView> table;
    std::shared_ptr<orv::ui::test::RowsSource> source = orv::rt::make<orv::ui::test::RowsSource>();
};

TEST_F(OrvTableViewTest, SetUpAndCellIdentifierFollowTheClass) {
    EXPECT_EQ(table->frame(), gfx::Rect(0, 0, 375, 300));
    EXPECT_EQ(table->cellIdentifier(), "OrvTableViewCell");
    EXPECT_EQ(table->backgroundColor(), gfx::Color::clear());
    EXPECT_EQ(OrvTableView::table()->frame(), gfx::Rect());
    table->setTopHeight(80);
    EXPECT_EQ(table->tableHeaderView()->frame(), gfx::Rect(0, 0, 375, 80));
    EXPECT_EQ(table->rectForRowAtIndexPath(row(0)).origin.y, 80);

    auto filters = OrvTableView::table<OrvFilterTable>(ui::TableViewStyle::Grouped);
    EXPECT_EQ(filters->cellIdentifier(), "OrvFilterTableCell");
    EXPECT_EQ(filters->style(), ui::TableViewStyle::Grouped);
    EXPECT_EQ(filters->initCalls, 1);
}

TEST_F(OrvTableViewTest, CellIsClearWithoutASelectedLook) {
    auto cell = OrvTableViewCell::initWithReuseIdentifier("filter");
    EXPECT_EQ(cell->reuseIdentifier(), "filter");
    EXPECT_EQ(cell->backgroundColor(), gfx::Color::clear());
    cell->setSelected(true);
    EXPECT_EQ(cell->selectedBackgroundView()->alpha(), 0);
}

TEST_F(OrvTableViewTest, DeselectRowAndSetCellSelected) {
    table->selectRowAtIndexPath(row(2), false, ui::TableViewScrollPosition::None);
    table->deselectRow(false);
    EXPECT_EQ(table->indexPathForSelectedRow(), row(2));
    EXPECT_TRUE(cellSelected(2));
    table->deselectRow(true);
    EXPECT_FALSE(table->indexPathForSelectedRow());
    EXPECT_FALSE(cellSelected(2));

    table->selectRowAtIndexPath(row(3), false, ui::TableViewScrollPosition::None);
    table->deselectRow();
    EXPECT_FALSE(table->indexPathForSelectedRow());
    EXPECT_FALSE(cellSelected(3));
    table->deselectRow();  // nothing selected: nothing to do
    EXPECT_TRUE(source->takeLog().empty());

    // setCellSelected changes the look of a visible row only, not the table's choice.
    table->setCellSelected(true, row(1));
    EXPECT_TRUE(cellSelected(1));
    EXPECT_FALSE(table->indexPathForSelectedRow());
    table->setCellSelected(true, std::nullopt);
    table->setCellSelected(true, row(19));
    table->scrollToRowAtIndexPath(row(19), ui::TableViewScrollPosition::Bottom, false);
    EXPECT_FALSE(cellSelected(19));
}

TEST_F(OrvTableViewTest, ReloadDataSaveSelectedKeepsTheSelection) {
    table->selectRowAtIndexPath(row(4), false, ui::TableViewScrollPosition::None);
    source->rows = 10;
    table->reloadDataSaveSelected();
    EXPECT_EQ(table->numberOfRowsInSection(0), 10);
    EXPECT_EQ(table->indexPathForSelectedRow(), row(4));
    EXPECT_TRUE(cellSelected(4));
    EXPECT_EQ(table->contentOffset(), gfx::Point(0, 0));

    table->deselectRow();
    source->rows = 5;
    table->reloadDataSaveSelected();
    EXPECT_EQ(table->numberOfRowsInSection(0), 5);
    EXPECT_FALSE(table->indexPathForSelectedRow());
    EXPECT_TRUE(source->takeLog().empty());
}

}  // namespace
