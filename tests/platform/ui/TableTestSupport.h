#pragma once
// A data source and delegate for table tests: `rows` rows in each of `sections` sections, cells
// from the table's pool of `identifier` (else new ones) labelled "Row n", and a log of
// what the delegate heard ("willSelect 0/2", "didSelect 0/2", "didDeselect 0/1").

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/ui/Label.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TableViewCell.h"

namespace orv::ui::test {

inline IndexPath row(long r) {
    return IndexPath::forRow(r, 0);
}

class RowsSource : public rt::Object, public TableViewDataSource, public TableViewDelegate {
  public:
    long numberOfSectionsInTableView(TableView&) override { return sections; }
    long numberOfRowsInSection(TableView&, long) override { return rows; }
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView& table,
                                                         const IndexPath& path) override {
        auto cell = table.dequeueReusableCellWithIdentifier(identifier);
        if (!cell) cell = makeCell(TableViewCellStyle::Default, identifier);
        cell->textLabel()->setText("Row " + std::to_string(path.row));
        return cell;
    }
    std::optional<IndexPath> willSelectRowAtIndexPath(TableView&, const IndexPath& path) override {
        note("willSelect", path);
        return refuse ? std::nullopt : std::optional(path);
    }
    void didSelectRowAtIndexPath(TableView&, const IndexPath& path) override {
        note("didSelect", path);
    }
    void didDeselectRowAtIndexPath(TableView&, const IndexPath& path) override {
        note("didDeselect", path);
    }
    void scrollViewDidEndScrollingAnimation(ScrollView&) override { log.push_back("animated"); }

    std::vector<std::string> takeLog() { return std::exchange(log, {}); }

    long sections = 1;
    long rows = 0;
    std::string identifier = "row";
    bool refuse = false;  // willSelect answers nothing
    std::vector<std::string> log;

  private:
    void note(const std::string& what, const IndexPath& path) {
        log.push_back(what + " " + std::to_string(path.section) + "/" + std::to_string(path.row));
    }
};

}  // namespace orv::ui::test
