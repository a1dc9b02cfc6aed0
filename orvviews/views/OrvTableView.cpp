#include "orvviews/views/OrvTableView.h"

#include "platform/ui/Screen.h"
#include "platform/ui/TableViewCell.h"

ORV_DEFINE_CLASS(OrvTableView, ui::TableView)

gfx::Rect OrvTableView::screenWideFrame(float height) {
    return {0, 0, ui::Screen::main().bounds().size.width, height};
}

void OrvTableView::initWithFrame(const gfx::Rect& frame, ui::TableViewStyle style) {
    ui::TableView::initWithFrame(frame, style);
    setSeparatorStyle(ui::TableViewCellSeparatorStyle::None);
    setBackgroundColor(gfx::Color::clear());
    cellIdentifier_ = className() + "Cell";
    orvInitView();
}

void OrvTableView::setTopHeight(float height) {
    setTableHeaderView(ui::makeView({0, 0, bounds().size.width, height}));
}

void OrvTableView::deselectRow(bool animated) {
    if (!animated) return;
    if (const auto selected = indexPathForSelectedRow()) deselectRowAtIndexPath(*selected, true);
}

void OrvTableView::deselectRow() {
    const auto selected = indexPathForSelectedRow();
    if (selected) deselectRowAtIndexPath(*selected, false);
    setCellSelected(false, selected);
}

void OrvTableView::setCellSelected(bool selected, const std::optional<ui::IndexPath>& indexPath) {
    if (!indexPath) return;
    if (const auto cell = cellForRowAtIndexPath(*indexPath)) cell->setSelected(selected);
}

void OrvTableView::reloadDataSaveSelected() {
    const auto selected = indexPathForSelectedRow();
    reloadData();
    if (selected) selectRowAtIndexPath(selected, false, ui::TableViewScrollPosition::None);
}
