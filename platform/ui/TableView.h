#pragma once
// A vertical list of rows on a scroll view: one column, rows grouped in sections, an optional
// header view above the first row.
//
// Rows are measured when the data is (re)loaded; cells are asked of the data source only for the
// rows that meet the bounds, as the content scrolls. A cell that leaves the bounds goes back to
// the reuse pool of its identifier, from which dequeueReusableCellWithIdentifier() hands it out
// again. The table loads its data by itself at its first layout or first question, and again
// after its data source or delegate changes.
//
// Selection is single. A tap on a row (a touch that ends without the pan taking it) asks the
// delegate's willSelect, deselects the previous row (didDeselect) and selects the new one
// (didSelect); selectRowAtIndexPath() and deselectRowAtIndexPath() change it without telling
// the delegate. The selected row stays selected when it scrolls out and back in; reloadData()
// forgets it.
//
// Everything is read in the table's own coordinates, so a rotated table (a list running across
// the screen) scrolls and hit-tests along its rows.

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/ui/IndexPath.h"
#include "platform/ui/ScrollView.h"
#include "platform/ui/TableViewDataSource.h"
#include "platform/ui/TableViewDelegate.h"

namespace orv::ui {

class TableViewCell;
class Touch;

// The platform's numberings. Grouped is kept and lays out as Plain.
enum class TableViewStyle { Plain = 0, Grouped = 1 };
enum class TableViewScrollPosition { None = 0, Top = 1, Middle = 2, Bottom = 3 };
enum class TableViewCellSeparatorStyle { None = 0, SingleLine = 1 };

class TableView : public ScrollView {
    ORV_DECLARE_CLASS(TableView)
  public:
    using CellPtr = std::shared_ptr<TableViewCell>;
    using CellFactory = std::function<CellPtr(const std::string& reuseIdentifier)>;

    static constexpr double kDefaultRowHeight = 44;

    // A plain table.
    void initWithFrame(const gfx::Rect& frame) override;
    // Where subclasses set themselves up (overriding it, base first).
    virtual void initWithFrame(const gfx::Rect& frame, TableViewStyle style);

    TableViewStyle style() const { return style_; }

    std::shared_ptr<TableViewDataSource> dataSource() const { return dataSource_.lock(); }
    void setDataSource(std::weak_ptr<TableViewDataSource> dataSource);
    // Also the scroll view's delegate.
    std::shared_ptr<TableViewDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(std::weak_ptr<TableViewDelegate> delegate);

    double rowHeight() const { return rowHeight_; }
    void setRowHeight(double height);
    TableViewCellSeparatorStyle separatorStyle() const { return separatorStyle_; }
    void setSeparatorStyle(TableViewCellSeparatorStyle style);
    // Sits at the top of the content at its own height, across the table; the rows start below.
    const std::shared_ptr<View>& tableHeaderView() const { return tableHeaderView_; }
    void setTableHeaderView(std::shared_ptr<View> view);
    bool allowsSelection() const { return allowsSelection_; }
    void setAllowsSelection(bool allows) { allowsSelection_ = allows; }

    // Asks the data source again, forgets the selection and puts cells on the visible rows.
    void reloadData();
    long numberOfSections();
    // 0 for a section that does not exist.
    long numberOfRowsInSection(long section);

    // In the table's content coordinates; an empty rectangle for a row that does not exist.
    gfx::Rect rectForRowAtIndexPath(const IndexPath& indexPath);
    std::optional<IndexPath> indexPathForRowAtPoint(gfx::Point point);
    std::vector<IndexPath> indexPathsForRowsInRect(const gfx::Rect& rect);

    // The cells on the table, in row order.
    std::vector<CellPtr> visibleCells();
    std::vector<IndexPath> indexPathsForVisibleRows();
    // Null when the row is not on the table (not visible, or no such row).
    CellPtr cellForRowAtIndexPath(const IndexPath& indexPath);

    // A cell from the pool of that identifier; else one from the factory registered for it;
    // else null.
    CellPtr dequeueReusableCellWithIdentifier(const std::string& identifier);
    void registerCellFactory(const std::string& identifier, CellFactory factory);

    std::optional<IndexPath> indexPathForSelectedRow() const { return selectedRow_; }
    // Selects the row and scrolls it to the position (None does not scroll); a null path
    // deselects, a row that does not exist changes nothing. The delegate is not told.
    void selectRowAtIndexPath(const std::optional<IndexPath>& indexPath, bool animated,
                              TableViewScrollPosition scrollPosition);
    void deselectRowAtIndexPath(const IndexPath& indexPath, bool animated);

    // Scrolls so that the row sits at the top, middle or bottom of the bounds (inside the
    // insets), or for None as little as makes it wholly visible; never past the content's
    // range. A row that does not exist does nothing.
    void scrollToRowAtIndexPath(const IndexPath& indexPath, TableViewScrollPosition scrollPosition,
                                bool animated);

    void layoutSubviews() override;
    // The table keeps its fingers to itself (they select rows) rather than passing them up.
    void touchesBegan(const TouchSet& touches, Event* event) override;
    void touchesMoved(const TouchSet& touches, Event* event) override;
    void touchesEnded(const TouchSet& touches, Event* event) override;
    void touchesCancelled(const TouchSet& touches, Event* event) override;

  protected:
    void contentOffsetDidChange() override;

  private:
    // A row and its place below the header.
    struct Row {
        IndexPath path;
        double top = 0;
        double height = 0;
    };

    void setNeedsReload();
    void reloadIfNeeded();
    void measureRows();
    double rowHeightFor(const IndexPath& indexPath);
    bool isValid(const IndexPath& indexPath) const;
    const Row& rowAt(const IndexPath& indexPath) const;
    // The index in rows_ of the first row that ends below y (rows_.size() when none does).
    size_t firstRowEndingBelow(double y) const;
    double headerHeight() const;
    void layOutHeaderAndContentSize();

    // Puts cells on the rows that meet the bounds and takes them off the others.
    void tileRows();
    void showCell(const IndexPath& indexPath);
    void retireCell(const IndexPath& indexPath);
    void retireAllCells();

    void changeSelection(const std::optional<IndexPath>& indexPath, bool animated);
    void selectRowByTouch(const IndexPath& indexPath);
    double offsetShowingRow(const gfx::Rect& row, TableViewScrollPosition position) const;

    TableViewStyle style_ = TableViewStyle::Plain;
    std::weak_ptr<TableViewDataSource> dataSource_;
    std::weak_ptr<TableViewDelegate> delegate_;
    double rowHeight_ = kDefaultRowHeight;
    TableViewCellSeparatorStyle separatorStyle_ = TableViewCellSeparatorStyle::SingleLine;
    std::shared_ptr<View> tableHeaderView_;
    bool allowsSelection_ = true;

    bool needsReload_ = true;
    bool tiling_ = false;
    std::vector<Row> rows_;              // every row, sections one after the other
    std::vector<size_t> sectionStarts_;  // index in rows_ of each section's first row
    std::vector<long> rowCounts_;        // rows in each section
    double rowsHeight_ = 0;
    std::map<IndexPath, CellPtr> visibleCells_;
    std::unordered_map<std::string, std::vector<CellPtr>> reusePool_;
    std::unordered_map<std::string, CellFactory> cellFactories_;
    std::optional<IndexPath> selectedRow_;

    // The finger that may become a tap on a row, and the row it came down on.
    std::weak_ptr<Touch> tapTouch_;
    std::optional<IndexPath> tapRow_;
};

// Makes a table of class T through initWithFrame(frame, style).
template <class T = TableView>
std::shared_ptr<T> makeTable(const gfx::Rect& frame = {},
                             TableViewStyle style = TableViewStyle::Plain) {
    return rt::makeWith<T>([&](T& table) { table.initWithFrame(frame, style); });
}

}  // namespace orv::ui
