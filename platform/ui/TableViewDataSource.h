#pragma once
// Where a table's rows come from. The row count and the cells are required; one section is
// assumed when the data source does not say.

#include <memory>

#include "platform/rt/Object.h"
#include "platform/ui/IndexPath.h"

namespace orv::ui {

class TableView;
class TableViewCell;

class TableViewDataSource {
    ORV_DECLARE_PROTOCOL(TableViewDataSource)
  public:
    virtual ~TableViewDataSource() = default;

    virtual long numberOfSectionsInTableView(TableView& tableView) { return 1; }
    virtual long numberOfRowsInSection(TableView& tableView, long section) = 0;
    // The cell for a row about to show, normally from dequeueReusableCellWithIdentifier() or a
    // new one. A null cell is a programming error and raises.
    virtual std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView& tableView,
                                                                 const IndexPath& indexPath) = 0;
};

}  // namespace orv::ui
