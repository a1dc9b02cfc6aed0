#include "examples/orvdemo/BrushBarView.h"

#include "examples/orvdemo/DemoStyle.h"

namespace orvdemo {

ORV_DEFINE_CLASS(BrushBarView, OrvBrushBarViewBase)

void BrushBarView::initWithFrame(const gfx::Rect& frame) {
    OrvBrushBarViewBase::initWithFrame(frame);
    setBackgroundColor(DemoStyle::panel());
    table_ = BrushTable::stripWithFrame({0, 0, frame.size.width, frame.size.height});
    addSubview(table_);
    std::weak_ptr<BrushBarView> weak = std::static_pointer_cast<BrushBarView>(shared_from_this());
    table_->setOnChosen([weak](const std::shared_ptr<OrvBrush>& brush) {
        auto me = weak.lock();
        if (!me) return;
        me->selectBrush(brush);
        me->notifySelectedBrush(brush);
    });
    setCellWidth(kCellWidth);
}

void BrushBarView::notifySelectedBrush(const std::shared_ptr<OrvBrush>& brush) {
    if (brush && onSelected_) onSelected_(brush);
}

}  // namespace orvdemo
