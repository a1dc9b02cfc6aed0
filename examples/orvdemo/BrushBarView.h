#pragma once
// The demo's brush bar: the brush strip on a panel, remembering the last brush of the smudge
// tool, and telling its owner each brush chosen (the remembered one first).

#include <functional>
#include <memory>

#include "examples/orvdemo/BrushTable.h"
#include "orvviews/widgets/smudge/OrvBrushBarViewBase.h"

namespace orvdemo {

class BrushBarView : public OrvBrushBarViewBase {
    ORV_DECLARE_CLASS(BrushBarView)
  public:
    static constexpr double kCellWidth = 62;

    void initWithFrame(const gfx::Rect& frame) override;
    std::shared_ptr<ui::View> tableView() const override { return table_; }
    const std::shared_ptr<BrushTable>& table() const { return table_; }
    void setOnSelected(BrushTable::Chosen selected) { onSelected_ = std::move(selected); }

    void notifySelectedBrush(const std::shared_ptr<OrvBrush>& brush) override;
    void refreshBrushData() override { loadBrushes(); }

  private:
    std::shared_ptr<BrushTable> table_;
    BrushTable::Chosen onSelected_;
};

}  // namespace orvdemo
