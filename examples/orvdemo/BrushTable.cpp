#include "examples/orvdemo/BrushTable.h"

#include <cmath>

#include "examples/orvdemo/BrushCell.h"

namespace orvdemo {

ORV_DEFINE_CLASS(BrushTable, OrvTableView, OrvBrushTableViewInterface, ui::TableViewDataSource,
                 ui::TableViewDelegate)

std::shared_ptr<BrushTable> BrushTable::stripWithFrame(const gfx::Rect& frame) {
    // Turned, the table's width is the strip's height and its height the strip's width.
    auto table = OrvTableView::table<BrushTable>();
    table->setBounds({0, 0, frame.size.height, frame.size.width});
    table->setCenter(
        {frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2});
    table->setTransform(gfx::AffineTransform::rotation(-M_PI / 2));
    return table;
}

void BrushTable::orvInitView() {
    auto me = std::static_pointer_cast<BrushTable>(shared_from_this());
    setDataSource(std::static_pointer_cast<ui::TableViewDataSource>(me));
    setDelegate(std::static_pointer_cast<ui::TableViewDelegate>(me));
}

void BrushTable::setModeList(const std::vector<std::shared_ptr<OrvBrush>>& brushes) {
    brushes_ = brushes;
    reloadData();
}

void BrushTable::selectPostion(long index, bool scrollToCenter, bool reload) {
    if (reload) reloadData();
    if (index < 0 || size_t(index) >= brushes_.size()) {
        selectRowAtIndexPath(std::nullopt, false, ui::TableViewScrollPosition::None);
        return;
    }
    selectRowAtIndexPath(
        ui::IndexPath::forRow(index, 0), false,
        scrollToCenter ? ui::TableViewScrollPosition::Middle : ui::TableViewScrollPosition::None);
}

long BrushTable::numberOfRowsInSection(ui::TableView&, long) {
    return long(brushes_.size());
}

std::shared_ptr<ui::TableViewCell> BrushTable::cellForRowAtIndexPath(
    ui::TableView&, const ui::IndexPath& indexPath) {
    auto cell =
        std::dynamic_pointer_cast<BrushCell>(dequeueReusableCellWithIdentifier(cellIdentifier()));
    if (!cell) cell = OrvTableViewCell::initWithReuseIdentifier<BrushCell>(cellIdentifier());
    cell->setMode(brushes_[size_t(indexPath.row)]);
    return cell;
}

void BrushTable::didSelectRowAtIndexPath(ui::TableView&, const ui::IndexPath& indexPath) {
    if (onChosen_) onChosen_(brushes_[size_t(indexPath.row)]);
}

}  // namespace orvdemo
