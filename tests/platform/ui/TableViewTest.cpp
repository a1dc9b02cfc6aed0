#include "platform/ui/TableView.h"

#include <numbers>

#include "platform/rt/RunLoop.h"
#include "platform/ui/Renderer.h"
#include "tests/platform/ui/TableTestSupport.h"
#include "tests/platform/ui/TouchTestSupport.h"

namespace orv::ui::test {
namespace {

using Strings = std::vector<std::string>;
using Position = TableViewScrollPosition;

// Notes the table's hooks in the order they came.
class HookCell : public TableViewCell {
    ORV_DECLARE_CLASS(HookCell)
  public:
    void prepareForReuse() override { hooks.push_back("prepareForReuse"); }
    void viewNeedRest() override { hooks.push_back("viewNeedRest"); }
    void viewNeedShowed() override { hooks.push_back("viewNeedShowed"); }
    Strings hooks;
};
ORV_DEFINE_CLASS(HookCell, TableViewCell)

// A 320 × 352 table (eight rows of 44) at the origin of a white 400 × 400 window.
class TableViewTest : public TouchTest {
  protected:
    void SetUp() override {
        TouchTest::SetUp();
        window->setBackgroundColor(gfx::Color::whiteColor());
        table = makeTable({0, 0, 320, 352});
        window->addSubview(table);
        table->setDataSource(source);
        table->setDelegate(source);
        source->rows = 20;
    }
    // The centre of a row as the window sees it.
    gfx::Point onRow(long r) {
        return table->convertPointToView(
            {100, gfx::rectGetMidY(table->rectForRowAtIndexPath(row(r)))}, window.get());
    }
    bool isSelectedOnScreen(long r) {
        auto cell = table->cellForRowAtIndexPath(row(r));
        return cell && cell->isSelected();
    }
    static void runFor(double seconds) { rt::RunLoop::main().runFor(seconds); }

    std::shared_ptr<TableView> table;
    std::shared_ptr<RowsSource> source = rt::make<RowsSource>();
};

TEST_F(TableViewTest, TapSelectsTheRowAndTellsTheDelegate) {
    injector->tap(onRow(2));
    EXPECT_EQ(source->takeLog(), (Strings{"willSelect 0/2", "didSelect 0/2"}));
    EXPECT_TRUE(isSelectedOnScreen(2));

    injector->tap(onRow(5));
    EXPECT_EQ(source->takeLog(), (Strings{"willSelect 0/5", "didDeselect 0/2", "didSelect 0/5"}));
    EXPECT_FALSE(isSelectedOnScreen(2));
    EXPECT_EQ(table->indexPathForSelectedRow(), row(5));

    // willSelect may refuse; code that selects and deselects is not reported.
    source->refuse = true;
    injector->tap(onRow(1));
    EXPECT_EQ(source->takeLog(), (Strings{"willSelect 0/1"}));
    EXPECT_EQ(table->indexPathForSelectedRow(), row(5));
    table->selectRowAtIndexPath(row(3), false, Position::None);
    EXPECT_TRUE(isSelectedOnScreen(3));
    EXPECT_FALSE(isSelectedOnScreen(5));
    table->deselectRowAtIndexPath(row(3), false);
    EXPECT_FALSE(table->indexPathForSelectedRow());
    EXPECT_TRUE(source->takeLog().empty());
}

TEST_F(TableViewTest, DragScrollsWithoutSelecting) {
    injector->drag({{100, 300}, {100, 100}}, 0.3);
    EXPECT_EQ(table->contentOffset(), gfx::Point(0, 200));
    EXPECT_TRUE(source->takeLog().empty());
    EXPECT_EQ(table->indexPathsForVisibleRows().front(), row(4));  // 200 / 44 = 4.5
    EXPECT_EQ(table->indexPathsForVisibleRows().back(), row(12));
}

TEST_F(TableViewTest, ScrollingALongListReusesAFewCells) {
    source->rows = 1000;
    int made = 0;
    table->registerCellFactory("row", [&made](const std::string& id) {
        ++made;
        return makeCell<HookCell>(TableViewCellStyle::Default, id);
    });
    table->reloadData();
    auto first = std::static_pointer_cast<HookCell>(table->cellForRowAtIndexPath(row(0)));
    for (double y = 0; y <= 3000; y += 37) table->setContentOffset({0, y});
    injector->drag({{100, 300}, {100, 20}}, 0.3);

    // Nine rows meet the bounds at most; one spare is allowed.
    EXPECT_LE(made, 10);
    EXPECT_EQ(table->subviews().size(), table->visibleCells().size());
    for (const auto& path : table->indexPathsForVisibleRows()) {
        auto cell = table->cellForRowAtIndexPath(path);
        EXPECT_EQ(cell->frame(), table->rectForRowAtIndexPath(path));
        EXPECT_EQ(cell->textLabel()->text(), "Row " + std::to_string(path.row));
    }
    ASSERT_GE(first->hooks.size(), 4u);
    EXPECT_EQ(Strings(first->hooks.begin(), first->hooks.begin() + 4),
              (Strings{"viewNeedShowed", "prepareForReuse", "viewNeedRest", "viewNeedShowed"}));
}

TEST_F(TableViewTest, SelectionSurvivesScrollingOutAndBackButNotAReload) {
    injector->tap(onRow(1));
    table->setContentOffset({0, 500});
    EXPECT_FALSE(table->cellForRowAtIndexPath(row(1)));
    for (const auto& cell : table->visibleCells()) EXPECT_FALSE(cell->isSelected());
    table->setContentOffset({0, 0});
    EXPECT_TRUE(isSelectedOnScreen(1));

    table->reloadData();
    EXPECT_FALSE(table->indexPathForSelectedRow());
    EXPECT_FALSE(isSelectedOnScreen(1));
}

TEST_F(TableViewTest, HeaderShiftsEveryRowDownAndSectionsFollowEachOther) {
    source->sections = 2;
    table->setTableHeaderView(makeView({0, 0, 10, 100}));
    EXPECT_EQ(table->tableHeaderView()->frame(), gfx::Rect(0, 0, 320, 100));
    EXPECT_EQ(table->rectForRowAtIndexPath(row(0)), gfx::Rect(0, 100, 320, 44));
    EXPECT_EQ(table->contentSize().height, 100 + 40 * 44);
    const IndexPath secondSection = IndexPath::forRow(1, 1);
    EXPECT_EQ(table->rectForRowAtIndexPath(secondSection).origin.y, 100 + 21 * 44);
    EXPECT_EQ(table->indexPathForRowAtPoint({10, 100 + 21 * 44 + 1}), secondSection);
    EXPECT_FALSE(table->indexPathForRowAtPoint({10, 50}));
    EXPECT_EQ(table->indexPathForRowAtPoint({10, 150}), row(1));
    EXPECT_EQ(table->cellForRowAtIndexPath(row(0))->frame().origin.y, 100);

    injector->tap({100, 50});
    EXPECT_TRUE(source->takeLog().empty());
    injector->tap({100, 150});
    EXPECT_EQ(source->takeLog(), (Strings{"willSelect 0/1", "didSelect 0/1"}));
}

TEST_F(TableViewTest, ScrollToRowPlacesItAndIgnoresUnknownRows) {
    source->rows = 100;
    table->reloadData();
    auto scrolledTo = [this](long r, Position position) {
        table->scrollToRowAtIndexPath(row(r), position, false);
        return table->contentOffset().y;
    };
    EXPECT_EQ(scrolledTo(10, Position::Top), 440);
    EXPECT_EQ(scrolledTo(10, Position::Middle), 440 + 22 - 176);
    EXPECT_EQ(scrolledTo(10, Position::Bottom), 484 - 352);
    EXPECT_EQ(scrolledTo(9, Position::None), 484 - 352);  // wholly visible already
    EXPECT_EQ(scrolledTo(2, Position::None), 88);
    EXPECT_EQ(scrolledTo(99, Position::Top), 4400 - 352);   // no further than the end
    EXPECT_EQ(scrolledTo(100, Position::Top), 4400 - 352);  // no such row: no change

    table->scrollToRowAtIndexPath(row(0), Position::Top, true);
    runFor(1);
    EXPECT_EQ(table->contentOffset().y, 0);
    EXPECT_EQ(source->takeLog(), (Strings{"animated"}));
}

TEST_F(TableViewTest, RotatedTableScrollsAndHitTestsAlongItsRows) {
    // 80 × 400 turned a quarter anticlockwise: a strip from x 0 to 400 with row 0 on the left.
    table->setFrame({0, 0, 80, 400});
    table->setCenter({200, 300});
    table->setTransform(gfx::AffineTransform::rotation(-std::numbers::pi / 2));
    table->layoutIfNeeded();

    injector->tap({3 * 44 + 20, 300});
    EXPECT_EQ(table->indexPathForSelectedRow(), row(3));

    injector->drag({{300, 300}, {100, 300}}, 0.3);
    EXPECT_NEAR(table->contentOffset().y, 200, 1e-6);
    EXPECT_NEAR(table->contentOffset().x, 0, 1e-6);
    // Across the strip is across the rows: nothing moves.
    injector->drag({{200, 270}, {200, 330}}, 0.3);
    runFor(1);
    EXPECT_NEAR(table->contentOffset().y, 200, 1e-6);
    EXPECT_NEAR(table->contentOffset().x, 0, 1e-6);
    EXPECT_EQ(table->indexPathsForVisibleRows().front(), row(4));
}

TEST_F(TableViewTest, EmptyTableAndUnknownRowsAreHarmless) {
    auto bare = makeTable({0, 0, 100, 100});
    EXPECT_EQ(bare->numberOfSections(), 0);
    EXPECT_EQ(bare->rectForRowAtIndexPath(row(0)), gfx::Rect());

    source->rows = 0;
    table->reloadData();
    EXPECT_EQ(table->numberOfRowsInSection(3), 0);
    EXPECT_FALSE(table->indexPathForRowAtPoint({10, 10}));
    table->selectRowAtIndexPath(row(3), true, Position::Top);
    EXPECT_FALSE(table->indexPathForSelectedRow());
    EXPECT_FALSE(table->cellForRowAtIndexPath(row(0)));
    injector->tap({100, 20});
    injector->drag({{100, 300}, {100, 100}}, 0.3);
    runFor(1);
    EXPECT_TRUE(source->takeLog().empty());
    EXPECT_EQ(table->contentOffset(), gfx::Point(0, 0));
}

TEST_F(TableViewTest, RendersRowsHeaderSeparatorsAndTheSelection) {
    auto header = makeView({0, 0, 320, 60});
    header->setBackgroundColor(gfx::Color::rgb(0.2, 0.4, 0.8));
    table->setTableHeaderView(header);
    table->selectRowAtIndexPath(row(1), false, Position::None);
    ASSERT_TRUE(Renderer::writePNG(*window, "/tmp/orv_tableview.png"));  // to look at

    const auto bitmap = Renderer::render(*window);
    auto green = [&](double x, double y) { return int(bitmap->pixel(int(x * 2), int(y * 2))[1]); };
    EXPECT_NEAR(green(300, 30), 0.4 * 255, 2);               // header
    EXPECT_NEAR(green(300, 60 + 44 + 20), 0.85 * 255, 2);    // the selected row
    EXPECT_EQ(green(300, 60 + 88 + 20), 255);                // a plain row
    EXPECT_NEAR(green(100, 60 + 44 - 0.25), 0.78 * 255, 2);  // the separator under row 0
}

}  // namespace
}  // namespace orv::ui::test
