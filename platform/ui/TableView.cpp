#include "platform/ui/TableView.h"

#include <algorithm>

#include "platform/ui/TableViewCell.h"
#include "platform/ui/Touch.h"

namespace orv::ui {

ORV_DEFINE_CLASS(TableView, ScrollView)

void TableView::initWithFrame(const gfx::Rect& frame) {
    initWithFrame(frame, TableViewStyle::Plain);
}

void TableView::initWithFrame(const gfx::Rect& frame, TableViewStyle style) {
    ScrollView::initWithFrame(frame);
    style_ = style;
    setBackgroundColor(gfx::Color::whiteColor());
    setAlwaysBounceVertical(true);
}

// --- Configuration ---------------------------------------------------------------------------

void TableView::setDataSource(std::weak_ptr<TableViewDataSource> dataSource) {
    dataSource_ = std::move(dataSource);
    setNeedsReload();
}

void TableView::setDelegate(std::weak_ptr<TableViewDelegate> delegate) {
    ScrollView::setDelegate(delegate);
    delegate_ = std::move(delegate);
    setNeedsReload();  // the rows' heights come from it
}

void TableView::setRowHeight(double height) {
    if (height == rowHeight_) return;
    rowHeight_ = height;
    setNeedsReload();
}

void TableView::setSeparatorStyle(TableViewCellSeparatorStyle style) {
    separatorStyle_ = style;
    for (const auto& [path, cell] : visibleCells_) {
        cell->setSeparatorHidden(style == TableViewCellSeparatorStyle::None);
    }
}

void TableView::setTableHeaderView(std::shared_ptr<View> view) {
    if (tableHeaderView_) tableHeaderView_->removeFromSuperview();
    tableHeaderView_ = std::move(view);
    if (tableHeaderView_) addSubview(tableHeaderView_);
    layOutHeaderAndContentSize();
    tileRows();
}

// --- Data ------------------------------------------------------------------------------------

void TableView::setNeedsReload() {
    needsReload_ = true;
    setNeedsLayout();
}

void TableView::reloadIfNeeded() {
    if (needsReload_) reloadData();
}

void TableView::reloadData() {
    const auto keep = self<View>();
    needsReload_ = false;
    retireAllCells();
    selectedRow_.reset();
    tapRow_.reset();
    measureRows();
    layOutHeaderAndContentSize();
    if (!isDragging()) {
        const gfx::Point clamped = clampedContentOffset(contentOffset());
        if (clamped != contentOffset()) setContentOffset(clamped);
    }
    tileRows();
}

void TableView::measureRows() {
    rows_.clear();
    sectionStarts_.clear();
    rowCounts_.clear();
    rowsHeight_ = 0;
    const auto source = dataSource();
    if (!source) return;
    const long sections = std::max(0L, source->numberOfSectionsInTableView(*this));
    for (long section = 0; section < sections; ++section) {
        const long count = std::max(0L, source->numberOfRowsInSection(*this, section));
        sectionStarts_.push_back(rows_.size());
        rowCounts_.push_back(count);
        for (long row = 0; row < count; ++row) {
            const IndexPath path = IndexPath::forRow(row, section);
            const double height = std::max(0.0, rowHeightFor(path));
            rows_.push_back({path, rowsHeight_, height});
            rowsHeight_ += height;
        }
    }
}

double TableView::rowHeightFor(const IndexPath& indexPath) {
    const auto listener = delegate();
    return listener ? listener->heightForRowAtIndexPath(*this, indexPath) : rowHeight_;
}

long TableView::numberOfSections() {
    reloadIfNeeded();
    return static_cast<long>(rowCounts_.size());
}

long TableView::numberOfRowsInSection(long section) {
    reloadIfNeeded();
    if (section < 0 || section >= static_cast<long>(rowCounts_.size())) return 0;
    return rowCounts_[static_cast<size_t>(section)];
}

bool TableView::isValid(const IndexPath& indexPath) const {
    const long sections = static_cast<long>(rowCounts_.size());
    return indexPath.section >= 0 && indexPath.section < sections && indexPath.row >= 0 &&
           indexPath.row < rowCounts_[static_cast<size_t>(indexPath.section)];
}

const TableView::Row& TableView::rowAt(const IndexPath& indexPath) const {
    return rows_[sectionStarts_[static_cast<size_t>(indexPath.section)] +
                 static_cast<size_t>(indexPath.row)];
}

// --- Geometry --------------------------------------------------------------------------------

double TableView::headerHeight() const {
    return tableHeaderView_ ? tableHeaderView_->frame().size.height : 0;
}

void TableView::layOutHeaderAndContentSize() {
    const double width = bounds().size.width;
    if (tableHeaderView_) tableHeaderView_->setFrame({0, 0, width, headerHeight()});
    setContentSize({width, headerHeight() + rowsHeight_});
}

gfx::Rect TableView::rectForRowAtIndexPath(const IndexPath& indexPath) {
    reloadIfNeeded();
    if (!isValid(indexPath)) return {};
    const Row& row = rowAt(indexPath);
    return {0, headerHeight() + row.top, bounds().size.width, row.height};
}

size_t TableView::firstRowEndingBelow(double y) const {
    const double inRows = y - headerHeight();
    auto it = std::upper_bound(rows_.begin(), rows_.end(), inRows,
                               [](double v, const Row& row) { return v < row.top + row.height; });
    return static_cast<size_t>(it - rows_.begin());
}

std::optional<IndexPath> TableView::indexPathForRowAtPoint(gfx::Point point) {
    reloadIfNeeded();
    const size_t index = firstRowEndingBelow(point.y);
    if (index == rows_.size()) return std::nullopt;
    const IndexPath path = rows_[index].path;
    if (!gfx::rectContainsPoint(rectForRowAtIndexPath(path), point)) return std::nullopt;
    return path;
}

std::vector<IndexPath> TableView::indexPathsForRowsInRect(const gfx::Rect& rect) {
    reloadIfNeeded();
    std::vector<IndexPath> paths;
    const double bottom = gfx::rectGetMaxY(rect) - headerHeight();
    for (size_t i = firstRowEndingBelow(gfx::rectGetMinY(rect));
         i < rows_.size() && rows_[i].top < bottom; ++i) {
        if (rows_[i].height > 0) paths.push_back(rows_[i].path);
    }
    return paths;
}

// --- Cells -----------------------------------------------------------------------------------

void TableView::layoutSubviews() {
    ScrollView::layoutSubviews();
    layOutHeaderAndContentSize();
    tileRows();
}

void TableView::contentOffsetDidChange() {
    tileRows();
}

void TableView::tileRows() {
    if (needsReload_) {
        reloadData();  // which tiles
        return;
    }
    if (tiling_) {
        setNeedsLayout();  // a data source that scrolls from inside: tile again at layout
        return;
    }
    tiling_ = true;
    const auto paths = indexPathsForRowsInRect(bounds());
    std::vector<IndexPath> leaving;
    for (const auto& [path, cell] : visibleCells_) {
        if (!std::binary_search(paths.begin(), paths.end(), path)) leaving.push_back(path);
    }
    for (const IndexPath& path : leaving) retireCell(path);
    for (const IndexPath& path : paths) {
        auto it = visibleCells_.find(path);
        if (it == visibleCells_.end()) {
            showCell(path);
        } else {
            it->second->setFrame(rectForRowAtIndexPath(path));
        }
    }
    tiling_ = false;
}

void TableView::showCell(const IndexPath& indexPath) {
    const auto source = dataSource();
    if (!source) return;
    CellPtr cell = source->cellForRowAtIndexPath(*this, indexPath);
    if (!cell) orvThrowWithReason("the data source gave no cell for a row");
    cell->setFrame(rectForRowAtIndexPath(indexPath));
    cell->setSeparatorHidden(separatorStyle_ == TableViewCellSeparatorStyle::None);
    cell->setSelected(selectedRow_ == indexPath, false);
    insertSubview(cell, 0);  // under anything else the table holds
    visibleCells_[indexPath] = cell;
    if (auto listener = delegate()) listener->willDisplayCell(*this, *cell, indexPath);
    cell->viewNeedShowed();
}

void TableView::retireCell(const IndexPath& indexPath) {
    auto it = visibleCells_.find(indexPath);
    if (it == visibleCells_.end()) return;
    const CellPtr cell = it->second;
    visibleCells_.erase(it);
    cell->removeFromSuperview();
    if (auto listener = delegate()) listener->didEndDisplayingCell(*this, *cell, indexPath);
    if (const auto& identifier = cell->reuseIdentifier()) {
        cell->prepareForReuse();
        cell->viewNeedRest();
        reusePool_[*identifier].push_back(cell);
    } else {
        cell->viewNeedRest();
    }
}

void TableView::retireAllCells() {
    while (!visibleCells_.empty()) retireCell(visibleCells_.begin()->first);
}

std::vector<TableView::CellPtr> TableView::visibleCells() {
    reloadIfNeeded();
    std::vector<CellPtr> cells;
    for (const auto& [path, cell] : visibleCells_) cells.push_back(cell);
    return cells;
}

std::vector<IndexPath> TableView::indexPathsForVisibleRows() {
    reloadIfNeeded();
    std::vector<IndexPath> paths;
    for (const auto& [path, cell] : visibleCells_) paths.push_back(path);
    return paths;
}

TableView::CellPtr TableView::cellForRowAtIndexPath(const IndexPath& indexPath) {
    reloadIfNeeded();
    auto it = visibleCells_.find(indexPath);
    return it == visibleCells_.end() ? nullptr : it->second;
}

TableView::CellPtr TableView::dequeueReusableCellWithIdentifier(const std::string& identifier) {
    auto pool = reusePool_.find(identifier);
    if (pool != reusePool_.end() && !pool->second.empty()) {
        CellPtr cell = std::move(pool->second.back());
        pool->second.pop_back();
        return cell;
    }
    auto factory = cellFactories_.find(identifier);
    return factory == cellFactories_.end() ? nullptr : factory->second(identifier);
}

void TableView::registerCellFactory(const std::string& identifier, CellFactory factory) {
    cellFactories_[identifier] = std::move(factory);
}

// --- Selection -------------------------------------------------------------------------------

void TableView::selectRowAtIndexPath(const std::optional<IndexPath>& indexPath, bool animated,
                                     TableViewScrollPosition scrollPosition) {
    reloadIfNeeded();
    if (!indexPath) {
        changeSelection(std::nullopt, animated);
        return;
    }
    if (!isValid(*indexPath)) return;
    changeSelection(indexPath, animated);
    if (scrollPosition != TableViewScrollPosition::None) {
        scrollToRowAtIndexPath(*indexPath, scrollPosition, animated);
    }
}

void TableView::deselectRowAtIndexPath(const IndexPath& indexPath, bool animated) {
    if (selectedRow_ == indexPath) changeSelection(std::nullopt, animated);
}

void TableView::changeSelection(const std::optional<IndexPath>& indexPath, bool animated) {
    if (selectedRow_ == indexPath) return;
    if (selectedRow_) {
        if (auto cell = cellForRowAtIndexPath(*selectedRow_)) cell->setSelected(false, animated);
    }
    selectedRow_ = indexPath;
    if (selectedRow_) {
        if (auto cell = cellForRowAtIndexPath(*selectedRow_)) cell->setSelected(true, animated);
    }
}

void TableView::selectRowByTouch(const IndexPath& indexPath) {
    if (!allowsSelection_) return;
    const auto keep = self<View>();
    const auto listener = delegate();
    const std::optional<IndexPath> chosen =
        listener ? listener->willSelectRowAtIndexPath(*this, indexPath) : indexPath;
    if (!chosen || !isValid(*chosen)) return;
    const std::optional<IndexPath> previous = selectedRow_;
    changeSelection(chosen, false);
    if (!listener) return;
    if (previous && previous != chosen) listener->didDeselectRowAtIndexPath(*this, *previous);
    listener->didSelectRowAtIndexPath(*this, *chosen);
}

// A touch that ends without the pan taking it selects the row it came down on. A second finger
// spoils the tap.
void TableView::touchesBegan(const TouchSet& touches, Event* event) {
    const auto tracked = tapTouch_.lock();
    const bool trackingOne = tracked && tracked->phase() != TouchPhase::Ended &&
                             tracked->phase() != TouchPhase::Cancelled;
    if (trackingOne || touches.size() != 1) {
        tapTouch_.reset();
        tapRow_.reset();
        return;
    }
    tapTouch_ = touches.front();
    tapRow_ = indexPathForRowAtPoint(touches.front()->locationInView(this));
}

void TableView::touchesMoved(const TouchSet& touches, Event* event) {}

void TableView::touchesEnded(const TouchSet& touches, Event* event) {
    const auto tapTouch = tapTouch_.lock();
    if (!tapTouch || std::find(touches.begin(), touches.end(), tapTouch) == touches.end()) return;
    const std::optional<IndexPath> row = tapRow_;
    tapTouch_.reset();
    tapRow_.reset();
    if (row) selectRowByTouch(*row);
}

void TableView::touchesCancelled(const TouchSet& touches, Event* event) {
    tapTouch_.reset();
    tapRow_.reset();
}

// --- Scrolling to a row ----------------------------------------------------------------------

void TableView::scrollToRowAtIndexPath(const IndexPath& indexPath,
                                       TableViewScrollPosition scrollPosition, bool animated) {
    reloadIfNeeded();
    if (!isValid(indexPath)) return;
    const double y = offsetShowingRow(rectForRowAtIndexPath(indexPath), scrollPosition);
    setContentOffset(clampedContentOffset({contentOffset().x, y}), animated);
}

double TableView::offsetShowingRow(const gfx::Rect& row, TableViewScrollPosition position) const {
    const gfx::EdgeInsets inset = contentInset();
    const double height = bounds().size.height;
    const double visibleHeight = height - inset.top - inset.bottom;
    const double current = contentOffset().y;
    switch (position) {
        case TableViewScrollPosition::Top:
            return gfx::rectGetMinY(row) - inset.top;
        case TableViewScrollPosition::Middle:
            return gfx::rectGetMidY(row) - inset.top - visibleHeight / 2;
        case TableViewScrollPosition::Bottom:
            return gfx::rectGetMaxY(row) - height + inset.bottom;
        case TableViewScrollPosition::None:
            break;
    }
    if (gfx::rectGetMinY(row) < current + inset.top) {
        return offsetShowingRow(row, TableViewScrollPosition::Top);
    }
    if (gfx::rectGetMaxY(row) > current + height - inset.bottom) {
        return offsetShowingRow(row, TableViewScrollPosition::Bottom);
    }
    return current;
}

}  // namespace orv::ui
