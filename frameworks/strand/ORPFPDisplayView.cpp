#include "frameworks/strand/ORPFPDisplayView.h"

#include "platform/gfx/Canvas.h"
#include "platform/ui/ImageView.h"

ORV_DEFINE_CLASS(ORPFPDisplayView, ui::View)

void ORPFPDisplayView::setup() {
    setNeedsDisplay();
}

void ORPFPDisplayView::teardown() {
    update(nullptr);
}

void ORPFPDisplayView::update(const std::shared_ptr<ORPFPImage>& image) {
    image_ = image;
    shown_ = image ? image->getUIImage() : nullptr;
    setNeedsDisplay();
}

void ORPFPDisplayView::setClearColor(const gfx::Color& color) {
    // The renderer fills the background under the picture.
    setBackgroundColor(color);
}

void ORPFPDisplayView::drawRect(gfx::Canvas& canvas, const gfx::Rect&) {
    if (!shown_ || !shown_->bitmap()) return;
    const gfx::Size size = shown_->size();
    if (size.width <= 0 || size.height <= 0) return;
    canvas.drawImage(*shown_,
                     ui::ImageView::imageRect(ui::ContentMode::ScaleAspectFit, bounds(), size));
}
