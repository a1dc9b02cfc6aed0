#pragma once
// A cell of the demo's brush strip: the brush's thumbnail on a light round tile with its name
// under it, a blue ring when chosen. The strip is a list turned a quarter, so the cell turns its
// content back upright.

#include <memory>

#include "orvviews/widgets/smudge/OrvBrushTableItemCellBase.h"
#include "platform/ui/Label.h"

namespace orvdemo {

class BrushCell : public OrvBrushTableItemCellBase {
    ORV_DECLARE_CLASS(BrushCell)
  public:
    static constexpr const char* kEraserIcon = "style_default_brush_eraser";
    static constexpr const char* kOnlineIcon = "style_default_brush_online";

    void orvInitView() override;
    void layoutSubviews() override;
    std::shared_ptr<ui::ImageView> thumbView() const override { return thumb_; }
    void setMode(const std::shared_ptr<OrvBrush>& brush) override;
    void handleTypeEraser(const std::shared_ptr<OrvBrush>& brush) override;
    void handleTypeOnlie(const std::shared_ptr<OrvBrush>& brush) override;
    void setSelected(bool selected, bool animated) override;

  private:
    std::shared_ptr<ui::View> upright_;
    std::shared_ptr<ui::View> tile_;
    std::shared_ptr<ui::ImageView> thumb_;
    std::shared_ptr<ui::Label> name_;
};

}  // namespace orvdemo
