#include "platform/ui/ImageView.h"

#include <algorithm>

#include "platform/gfx/Canvas.h"

namespace orv::ui {

ORV_DEFINE_CLASS(ImageView, View)

std::shared_ptr<ImageView> ImageView::withImage(gfx::ImagePtr image) {
    const gfx::Size size = image ? image->size() : gfx::Size{};
    auto view = makeView<ImageView>({0, 0, size.width, size.height});
    view->setImage(std::move(image));
    return view;
}

void ImageView::initWithFrame(const gfx::Rect& frame) {
    View::initWithFrame(frame);
    setUserInteractionEnabled(false);
}

void ImageView::setImage(gfx::ImagePtr image) {
    image_ = std::move(image);
    setNeedsDisplay();
}

void ImageView::setTintColor(std::optional<gfx::Color> color) {
    tintColor_ = color;
    setNeedsDisplay();
}

void ImageView::setRendersAsTemplate(bool on) {
    rendersAsTemplate_ = on;
    setNeedsDisplay();
}

gfx::Size ImageView::sizeThatFits(gfx::Size) const {
    return image_ ? image_->size() : gfx::Size{};
}

gfx::Rect ImageView::imageRect(ContentMode mode, const gfx::Rect& bounds, gfx::Size size) {
    const double bw = bounds.size.width, bh = bounds.size.height;
    const double x0 = bounds.origin.x, y0 = bounds.origin.y;
    auto centred = [&](double w, double h) {
        return gfx::Rect{x0 + (bw - w) / 2, y0 + (bh - h) / 2, w, h};
    };
    switch (mode) {
        case ContentMode::ScaleAspectFit:
        case ContentMode::ScaleAspectFill: {
            if (size.width <= 0 || size.height <= 0) return bounds;
            const double sx = bw / size.width, sy = bh / size.height;
            const double s =
                mode == ContentMode::ScaleAspectFit ? std::min(sx, sy) : std::max(sx, sy);
            return centred(size.width * s, size.height * s);
        }
        case ContentMode::Center:
            return centred(size.width, size.height);
        case ContentMode::Top:
            return {x0 + (bw - size.width) / 2, y0, size.width, size.height};
        case ContentMode::Bottom:
            return {x0 + (bw - size.width) / 2, y0 + bh - size.height, size.width, size.height};
        case ContentMode::Left:
            return {x0, y0 + (bh - size.height) / 2, size.width, size.height};
        case ContentMode::Right:
            return {x0 + bw - size.width, y0 + (bh - size.height) / 2, size.width, size.height};
        case ContentMode::TopLeft:
            return {x0, y0, size.width, size.height};
        case ContentMode::TopRight:
            return {x0 + bw - size.width, y0, size.width, size.height};
        case ContentMode::BottomLeft:
            return {x0, y0 + bh - size.height, size.width, size.height};
        case ContentMode::BottomRight:
            return {x0 + bw - size.width, y0 + bh - size.height, size.width, size.height};
        case ContentMode::ScaleToFill:
        case ContentMode::Redraw:
            break;
    }
    return bounds;
}

void ImageView::drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) {
    if (!image_ || !image_->bitmap()) return;
    const gfx::Rect r = imageRect(contentMode(), bounds(), image_->size());
    if (rendersAsTemplate_) {
        canvas.drawImageTinted(*image_, r, tintColor_.value_or(defaultTintColor()));
    } else {
        canvas.drawImage(*image_, r);
    }
}

}  // namespace orv::ui
