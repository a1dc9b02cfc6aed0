#pragma once
// One cell of the brush strip. It shows a brush's thumbnail, or an icon for the two entries that
// are not drawing brushes: the eraser and the entry that opens the store. A subclass supplies
// the thumbnail view and the icons, and lays the cell out.

#include <memory>
#include <string>

#include "orvviews/views/OrvTableViewCell.h"
#include "orvviews/widgets/smudge/OrvBrushTableItemCellDelegate.h"
#include "orvviews/widgets/smudge/OrvBrushTableItemCellInterface.h"
#include "platform/ui/ImageView.h"

class OrvBrushTableItemCellBase : public OrvTableViewCell, public OrvBrushTableItemCellInterface {
    ORV_DECLARE_CLASS(OrvBrushTableItemCellBase)
  public:
    // Resets the cell, then shows the brush the way its kind asks.
    void setMode(const std::shared_ptr<OrvBrush>& brush) override;
    const std::shared_ptr<OrvBrush>& mode() const override { return mode_; }
    // The thumbnail view; none in the base.
    virtual std::shared_ptr<ui::ImageView> thumbView() const { return nullptr; }
    std::weak_ptr<OrvBrushTableItemCellDelegate> delegate() const { return delegate_; }
    void setDelegate(std::weak_ptr<OrvBrushTableItemCellDelegate> delegate) {
        delegate_ = std::move(delegate);
    }

    // A drawing brush: its thumbnail from the library.
    virtual void handleTypeBrush(const std::shared_ptr<OrvBrush>& brush);
    // The eraser and the store's entry: a subclass shows an icon with handleBlockView().
    virtual void handleTypeEraser(const std::shared_ptr<OrvBrush>& brush) {}
    virtual void handleTypeOnlie(const std::shared_ptr<OrvBrush>& brush) {}
    // Shows the library's style picture of that name centred in the view.
    void handleBlockView(const std::shared_ptr<ui::ImageView>& view, const std::string& icon);
    // Before reuse: no picture, and no thumbnail still on its way.
    void viewNeedRest() override;
    bool canHiddenRemoveFlag() const { return true; }

  private:
    std::shared_ptr<OrvBrush> mode_;
    std::weak_ptr<OrvBrushTableItemCellDelegate> delegate_;
};
