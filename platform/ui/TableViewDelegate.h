#pragma once
// What a table asks and tells its delegate, besides the scroll view's calls. Every call is
// optional; the defaults are what the table does when the delegate does not answer.

#include <optional>

#include "platform/ui/IndexPath.h"
#include "platform/ui/ScrollViewDelegate.h"

namespace orv::ui {

class TableView;
class TableViewCell;

class TableViewDelegate : public ScrollViewDelegate {
    ORV_DECLARE_PROTOCOL(TableViewDelegate)
  public:
    // The table's rowHeight() by default.
    virtual double heightForRowAtIndexPath(TableView& tableView, const IndexPath& indexPath);

    // A finger chose the row. The answer is the row to select instead, or nothing to select
    // none; programmatic selection does not ask.
    virtual std::optional<IndexPath> willSelectRowAtIndexPath(TableView& tableView,
                                                              const IndexPath& indexPath) {
        return indexPath;
    }
    virtual void didSelectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) {}
    // The previous row lost its selection to a finger's choice.
    virtual void didDeselectRowAtIndexPath(TableView& tableView, const IndexPath& indexPath) {}

    // Just before a cell is put on the table, and after it has left it.
    virtual void willDisplayCell(TableView& tableView, TableViewCell& cell,
                                 const IndexPath& indexPath) {}
    virtual void didEndDisplayingCell(TableView& tableView, TableViewCell& cell,
                                      const IndexPath& indexPath) {}
};

}  // namespace orv::ui
