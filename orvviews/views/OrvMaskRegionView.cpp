#include "orvviews/views/OrvMaskRegionView.h"

#include "frameworks/core/OrvViewGeometry.h"
#include "platform/gfx/Canvas.h"

ORV_DEFINE_CLASS(OrvMaskRegionView, ui::View)

namespace {

gfx::Rect minus(const gfx::Rect& a, const gfx::Rect& b) {
    return {a.origin.x - b.origin.x, a.origin.y - b.origin.y, a.size.width - b.size.width,
            a.size.height - b.size.height};
}

}  // namespace

void OrvMaskRegionView::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    setBackgroundColor(gfx::Color::clear());
    setUserInteractionEnabled(false);
}

void OrvMaskRegionView::setRegionRatio(double ratio) {
    regionRatio_ = ratio;
    // Any alpha from 1 up is fully opaque.
    setAlpha(ratio > 0 ? 100.0 : 0);
    regionRect_ = convertScaleAspectFitWithRatio(*this, float(ratio));
    setNeedsDisplay();
}

gfx::Rect OrvMaskRegionView::changeRegionRatio(double ratio) {
    if (ratio == regionRatio_) return reduceRect_;
    regionRatio_ = ratio;
    auto me = std::static_pointer_cast<OrvMaskRegionView>(shared_from_this());
    ui::View::animateWithDuration(kAnimationSeconds,
                                  [me, ratio] { me->setAlpha(ratio > 0 ? 1 : 0); });
    toRect_ = convertScaleAspectFitWithRatio(*this, float(ratio));
    reduceRect_ = minus(toRect_, regionRect_);
    anim().start();
    return toRect_;
}

OrvTSAnimation& OrvMaskRegionView::anim() {
    if (!anim_) {
        std::weak_ptr<OrvMaskRegionView> weak =
            std::static_pointer_cast<OrvMaskRegionView>(shared_from_this());
        anim_ = OrvTSAnimation::animWithDuration(kAnimationSeconds, OrvKitTweenQuintEaseOut,
                                                 [weak](OrvTSAnimation&, double step) {
                                                     if (auto me = weak.lock())
                                                         me->applyAnimationWithStep(step);
                                                 });
    }
    return *anim_;
}

void OrvMaskRegionView::applyAnimationWithStep(double step) {
    const double rest = 1 - step;
    regionRect_ = {toRect_.origin.x - reduceRect_.origin.x * rest,
                   toRect_.origin.y - reduceRect_.origin.y * rest,
                   toRect_.size.width - reduceRect_.size.width * rest,
                   toRect_.size.height - reduceRect_.size.height * rest};
    setNeedsDisplay();
}

void OrvMaskRegionView::setEdgeMaskColor(std::optional<gfx::Color> color) {
    edgeMaskColor_ = color;
    setNeedsDisplay();
}

void OrvMaskRegionView::setEdgeSideColor(std::optional<gfx::Color> color) {
    edgeSideColor_ = color;
    setNeedsDisplay();
}

void OrvMaskRegionView::setEdgeSideWidth(double width) {
    edgeSideWidth_ = width;
    setNeedsDisplay();
}

// The mask covers everything but the window: drawn as the bands round it, which looks the same
// as filling all and clearing the window, without clearing what lies under this view.
void OrvMaskRegionView::drawRect(gfx::Canvas& canvas, const gfx::Rect&) {
    const gfx::Rect& r = regionRect_;
    if (gfx::rectIsEmpty(r)) return;
    if (edgeMaskColor_) {
        const gfx::Rect b = bounds();
        const double left = r.origin.x, top = r.origin.y;
        const double right = r.origin.x + r.size.width, bottom = r.origin.y + r.size.height;
        const double bRight = b.origin.x + b.size.width, bBottom = b.origin.y + b.size.height;
        for (const gfx::Rect& band :
             {gfx::Rect{b.origin.x, b.origin.y, b.size.width, top - b.origin.y},
              gfx::Rect{b.origin.x, bottom, b.size.width, bBottom - bottom},
              gfx::Rect{b.origin.x, top, left - b.origin.x, r.size.height},
              gfx::Rect{right, top, bRight - right, r.size.height}}) {
            if (!gfx::rectIsEmpty(band)) canvas.fillRect(band, *edgeMaskColor_);
        }
    }
    const float half = float(edgeSideWidth_ * 0.5);
    if (edgeSideColor_ && edgeSideWidth_ > 0) {
        const gfx::Rect line{r.origin.x + half, r.origin.y + half, r.size.width - edgeSideWidth_,
                             r.size.height - edgeSideWidth_};
        gfx::StrokeStyle style;
        style.width = edgeSideWidth_;
        canvas.strokePath(gfx::Path::rect(line), *edgeSideColor_, style);
    }
}

void OrvMaskRegionView::viewWillDestory() {
    ui::View::viewWillDestory();
    if (anim_) anim_->destory();
}
