#include "platform/ui/TableViewDelegate.h"

#include "platform/ui/TableView.h"

namespace orv::ui {

double TableViewDelegate::heightForRowAtIndexPath(TableView& tableView,
                                                  const IndexPath& indexPath) {
    return tableView.rowHeight();
}

}  // namespace orv::ui
