#pragma once
// The demo's sticker screen: the photo with a layer of stickers over the part of the screen the
// photo fills. On "Done" the stickers are laid on the full-size photo where the screen showed
// them, and the water mark is stamped on top.

#include <memory>
#include <vector>

#include "examples/orvdemo/PhotoDemoController.h"
#include "orvviews/widgets/sticker/OrvStickerFactory.h"
#include "orvviews/widgets/sticker/OrvStickerItemView.h"
#include "orvviews/widgets/sticker/OrvStickerItemViewDelegate.h"

namespace orvdemo {

class StickerDemoController : public PhotoDemoController, public OrvStickerItemViewDelegate {
    ORV_DECLARE_CLASS(StickerDemoController)
  public:
    void loadedInputImage(const gfx::ImagePtr& image) override;
    void onDone() override;

    // Lays a sticker on the photo, centred and selected.
    std::shared_ptr<OrvStickerItemView> addSticker(const std::shared_ptr<OrvSticker>& sticker);
    const std::vector<std::shared_ptr<OrvStickerItemView>>& items() const { return items_; }
    // The view the stickers lie on: exactly the part of the screen the photo fills.
    const std::shared_ptr<ui::View>& stickerLayer() const { return stickerLayer_; }

    void onClosedStickerItemView(OrvStickerItemView& view) override;
    void onSelectedStickerItemView(OrvStickerItemView& view) override;

  protected:
    gfx::ImagePtr editedImage(const gfx::ImagePtr& original) override;

  private:
    std::shared_ptr<ui::View> stickerLayer_;
    std::vector<std::shared_ptr<OrvStickerItemView>> items_;
    OrvStickerFactory::Results results_;
};

}  // namespace orvdemo
