#include "examples/orvdemo/StickerDemoController.h"

#include <algorithm>

#include "platform/gfx/Bitmap.h"
#include "platform/ui/ImageView.h"

namespace orvdemo {

ORV_DEFINE_CLASS(StickerDemoController, PhotoDemoController, OrvStickerItemViewDelegate)

void StickerDemoController::loadedInputImage(const gfx::ImagePtr& image) {
    PhotoDemoController::loadedInputImage(image);
    if (!image || stickerLayer_) return;
    const gfx::Rect shown = ui::ImageView::imageRect(ui::ContentMode::ScaleAspectFit,
                                                     imageView()->bounds(), image->size());
    stickerLayer_ = ui::makeView<ui::View>(imageView()->convertRectToView(shown, view().get()));
    stickerLayer_->setClipsToBounds(true);
    view()->addSubview(stickerLayer_);
}

std::shared_ptr<OrvStickerItemView> StickerDemoController::addSticker(
    const std::shared_ptr<OrvSticker>& sticker) {
    if (!stickerLayer_) return nullptr;
    auto item = ui::makeView<OrvStickerItemView>(stickerLayer_->bounds());
    item->setStrokeWidth(2.0);
    item->setStrokeColor(gfx::Color::whiteColor());
    item->setDelegate(self<StickerDemoController>());
    // The item sizes itself against its parent, so it joins the layer first.
    stickerLayer_->addSubview(item);
    item->setSticker(sticker);
    items_.push_back(item);
    onSelectedStickerItemView(*item);
    return item;
}

void StickerDemoController::onSelectedStickerItemView(OrvStickerItemView& view) {
    for (const auto& item : items_) item->setSelected(item.get() == &view);
}

void StickerDemoController::onClosedStickerItemView(OrvStickerItemView& view) {
    view.removeFromSuperview();
    std::erase_if(items_, [&](const auto& item) { return item.get() == &view; });
}

void StickerDemoController::onDone() {
    // The poses are read on the screen's thread; the drawing happens on the edit thread.
    results_.clear();
    if (stickerLayer_) {
        for (const auto& item : items_) {
            results_.push_back(item->resultWithRegionRect(stickerLayer_->bounds()));
        }
    }
    PhotoDemoController::onDone();
}

gfx::ImagePtr StickerDemoController::editedImage(const gfx::ImagePtr& original) {
    return addWaterMarkToImage(OrvStickerFactory::megerStickers(results_, original));
}

}  // namespace orvdemo
