#include "orvviews/widgets/smudge/OrvSmudgeViewBase.h"

#include "frameworks/core/OrvViewGeometry.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Layer.h"

ORV_DEFINE_CLASS(OrvSmudgeViewBase, ui::View)

OrvTSAnimation& OrvSmudgeViewBase::anim() {
    if (!anim_) {
        std::weak_ptr<OrvSmudgeViewBase> weak =
            std::static_pointer_cast<OrvSmudgeViewBase>(shared_from_this());
        anim_ = OrvTSAnimation::animWithDuration(kGrowSeconds, OrvKitTweenQuintEaseOut,
                                                 [weak](OrvTSAnimation&, double step) {
                                                     if (auto self = weak.lock())
                                                         self->applyAnimationWithStep(step);
                                                 });
    }
    return *anim_;
}

void OrvSmudgeViewBase::placeCursorCentred(gfx::Size size) {
    auto cursor = sizeAnimView();
    auto wrap = smudgeWrap();
    if (!cursor || !wrap) return;
    orvSetSize(*cursor, size);
    orvSetOriginX(*cursor, orvGetCenterX(*wrap, size.width));
    orvSetOriginY(*cursor, orvGetCenterY(*wrap, size.height));
    cursor->layer().setCornerRadius(size.width / 2);
}

void OrvSmudgeViewBase::showBrushSizeAnim(double from, double to) {
    auto cursor = sizeAnimView();
    if (!cursor || !smudgeWrap()) return;
    placeCursorCentred({kCursorFactor * from, kCursorFactor * from});
    cursor->setAlpha(1);
    cursor->setHidden(false);
    toSize_ = {kCursorFactor * to, kCursorFactor * to};
    diffSize_ = {kCursorFactor * (to - from), kCursorFactor * (to - from)};
    anim().start();
}

void OrvSmudgeViewBase::applyAnimationWithStep(double step) {
    const double rest = 1 - step;
    placeCursorCentred(
        {toSize_.width - diffSize_.width * rest, toSize_.height - diffSize_.height * rest});
    if (rest > 0) return;
    anim().stop();
    std::weak_ptr<OrvSmudgeViewBase> weak =
        std::static_pointer_cast<OrvSmudgeViewBase>(shared_from_this());
    rt::RunLoop::main().postDelayed(kHideDelaySeconds, [weak] {
        if (auto self = weak.lock()) self->setBrushSizeViewHidden();
    });
}

void OrvSmudgeViewBase::setBrushSizeViewHidden() {
    std::shared_ptr<ui::View> cursor = sizeAnimView();
    if (!cursor) return;
    ui::View::animateWithDuration(
        kFadeSeconds, [cursor] { cursor->setAlpha(0); },
        [cursor](bool finished) {
            if (!finished) return;
            cursor->setTransform(gfx::AffineTransform::identity());
            cursor->setHidden(true);
        });
}

void OrvSmudgeViewBase::showBrushSizeCursor(gfx::Point point) {
    auto cursor = sizeAnimView();
    auto wrap = smudgeWrap();
    if (!cursor || !wrap) return;
    const gfx::Size size = orvGetSize(*wrap);
    if (point.x < 0 || point.x > size.width || point.y < 0 || point.y > size.height) {
        hideBrushSizeCursor();
        return;
    }
    if (cursor->isHidden()) {
        cursor->setAlpha(1);
        cursor->setHidden(false);
        cursor->layer().setBackgroundColor(gfx::Color::whiteColor());
    }
    const gfx::Size cursorSize = orvGetSize(*cursor);
    orvSetOrigin(*cursor, {point.x - cursorSize.width / 2, point.y - cursorSize.height / 2});
    if (cursor->superview()) cursor->superview()->bringSubviewToFront(cursor.get());
}

void OrvSmudgeViewBase::hideBrushSizeCursor() {
    auto cursor = sizeAnimView();
    if (!cursor) return;
    cursor->setAlpha(0);
    cursor->setHidden(true);
    cursor->layer().setBackgroundColor(gfx::Color::clear());
}

void OrvSmudgeViewBase::viewWillDestory() {
    ui::View::viewWillDestory();
    if (anim_) {
        anim_->destory();
        anim_.reset();
    }
}
