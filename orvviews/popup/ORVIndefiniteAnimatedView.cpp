#include "orvviews/popup/ORVIndefiniteAnimatedView.h"

#include <cmath>

#include "frameworks/core/OrvBundleImage.h"
#include "platform/ui/Animation.h"
#include "platform/ui/Layer.h"

ORV_DEFINE_CLASS(ORVIndefiniteAnimatedView, ui::View)

void ORVIndefiniteAnimatedView::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    strokeThickness_ = 1;
    radius_ = 8;
    strokeColor_ = gfx::Color::black();
}

std::shared_ptr<ui::ShapeLayer> ORVIndefiniteAnimatedView::indefiniteAnimatedLayer() {
    if (indefiniteAnimatedLayer_) return indefiniteAnimatedLayer_;

    const gfx::Point arcCenter{radius_ + strokeThickness_ / 2 + 5,
                               radius_ + strokeThickness_ / 2 + 5};
    const gfx::Rect rect{0, 0, arcCenter.x * 2, arcCenter.y * 2};

    auto layer = orv::rt::make<ui::ShapeLayer>();
    layer->setFrame(rect);
    layer->setFillColor(gfx::Color::clear());
    layer->setStrokeColor(strokeColor_);
    layer->setLineWidth(strokeThickness_);
    layer->setLineCap(gfx::LineCap::Round);
    layer->setLineJoin(gfx::LineJoin::Bevel);
    layer->setPath(gfx::Path::arc(arcCenter, radius_, M_PI * 3 / 2, M_PI / 2 + M_PI * 5, true));

    if (auto maskImage = imageORVBundleNamed("style_default_hud_angle-mask")) {
        auto mask = orv::rt::make<ui::Layer>();
        mask->setContents(maskImage);
        mask->setFrame(layer->bounds());
        layer->setMask(mask);
    }

    const double duration = 1.0;
    auto rotate = ui::BasicAnimation::withKeyPath("transform.rotation");
    rotate->setFromValue(0);
    rotate->setToValue(M_PI * 2);
    rotate->setDuration(duration);
    rotate->setRemovedOnCompletion(false);
    rotate->setRepeatCount(HUGE_VALF);
    layer->addAnimation(rotate, "rotate");

    auto strokeStart = ui::BasicAnimation::withKeyPath("strokeStart");
    strokeStart->setFromValue(0.015);
    strokeStart->setToValue(0.515);
    auto strokeEnd = ui::BasicAnimation::withKeyPath("strokeEnd");
    strokeEnd->setFromValue(0.485);
    strokeEnd->setToValue(0.985);
    auto group = orv::rt::make<ui::AnimationGroup>();
    group->setDuration(duration);
    group->setRepeatCount(HUGE_VALF);
    group->setRemovedOnCompletion(false);
    group->setAnimations({strokeStart, strokeEnd});
    layer->addAnimation(group, "progress");

    indefiniteAnimatedLayer_ = layer;
    layoutAnimatedLayer();
    return indefiniteAnimatedLayer_;
}

void ORVIndefiniteAnimatedView::willMoveToSuperview(ui::View* newSuperview) {
    if (newSuperview) {
        layer().addSublayer(indefiniteAnimatedLayer());
    } else if (indefiniteAnimatedLayer_) {
        indefiniteAnimatedLayer_->removeFromSuperlayer();
        indefiniteAnimatedLayer_ = nullptr;
    }
}

void ORVIndefiniteAnimatedView::layoutAnimatedLayer() {
    if (!indefiniteAnimatedLayer_) return;
    const gfx::Rect b = bounds();
    indefiniteAnimatedLayer_->setPosition({gfx::rectGetMidX(b), gfx::rectGetMidY(b)});
}

// Changing the look throws the layer away; the next read builds it anew.
void ORVIndefiniteAnimatedView::setRadius(double radius) {
    radius_ = radius;
    const bool shown = indefiniteAnimatedLayer_ && indefiniteAnimatedLayer_->superlayer();
    if (indefiniteAnimatedLayer_) indefiniteAnimatedLayer_->removeFromSuperlayer();
    indefiniteAnimatedLayer_ = nullptr;
    if (shown) layer().addSublayer(indefiniteAnimatedLayer());
}

void ORVIndefiniteAnimatedView::setStrokeColor(const gfx::Color& color) {
    strokeColor_ = color;
    if (indefiniteAnimatedLayer_) indefiniteAnimatedLayer_->setStrokeColor(color);
}

void ORVIndefiniteAnimatedView::setStrokeThickness(double thickness) {
    strokeThickness_ = thickness;
    if (indefiniteAnimatedLayer_) indefiniteAnimatedLayer_->setLineWidth(thickness);
}

gfx::Size ORVIndefiniteAnimatedView::sizeThatFits(gfx::Size) const {
    const double side = radius_ * 2 + strokeThickness_;
    return {side, side};
}
