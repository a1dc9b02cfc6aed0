#pragma once
// The demo's brush strip: the library's list turned a quarter to the left, so that its rows run
// from left to right, one brush a row.

#include <functional>
#include <memory>
#include <vector>

#include "orvviews/views/OrvTableView.h"
#include "orvviews/widgets/smudge/OrvBrushTableViewInterface.h"
#include "platform/ui/TableViewDataSource.h"
#include "platform/ui/TableViewDelegate.h"

namespace orvdemo {

class BrushTable : public OrvTableView,
                   public OrvBrushTableViewInterface,
                   public ui::TableViewDataSource,
                   public ui::TableViewDelegate {
    ORV_DECLARE_CLASS(BrushTable)
  public:
    using Chosen = std::function<void(const std::shared_ptr<OrvBrush>& brush)>;

    // A strip laid over `frame` of its superview.
    static std::shared_ptr<BrushTable> stripWithFrame(const gfx::Rect& frame);
    void orvInitView() override;
    // A finger chose a brush.
    void setOnChosen(Chosen chosen) { onChosen_ = std::move(chosen); }
    const std::vector<std::shared_ptr<OrvBrush>>& brushes() const { return brushes_; }

    // OrvBrushTableViewInterface
    void setCellWidth(double width) override { setRowHeight(width); }
    void setModeList(const std::vector<std::shared_ptr<OrvBrush>>& brushes) override;
    void selectPostion(long index, bool scrollToCenter, bool reload) override;

    // TableViewDataSource, TableViewDelegate (beside the table's own methods of those names)
    using OrvTableView::cellForRowAtIndexPath;
    using OrvTableView::numberOfRowsInSection;
    long numberOfRowsInSection(ui::TableView& table, long section) override;
    std::shared_ptr<ui::TableViewCell> cellForRowAtIndexPath(
        ui::TableView& table, const ui::IndexPath& indexPath) override;
    void didSelectRowAtIndexPath(ui::TableView& table, const ui::IndexPath& indexPath) override;

  private:
    std::vector<std::shared_ptr<OrvBrush>> brushes_;
    Chosen onChosen_;
};

}  // namespace orvdemo
