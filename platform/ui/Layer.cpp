#include "platform/ui/Layer.h"

#include <algorithm>
#include <cmath>

#include "platform/gfx/Canvas.h"
#include "platform/gfx/Path.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Animation.h"
#include "platform/ui/View.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Layer, rt::Object)

void Layer::dealloc() {
    for (const Ptr& sublayer : sublayers_) sublayer->superlayer_ = nullptr;
    sublayers_.clear();
    rt::Object::dealloc();
}

gfx::Rect Layer::frame() const {
    return view_ ? view_->frame() : frame_;
}

void Layer::setFrame(const gfx::Rect& frame) {
    if (view_) {
        view_->setFrame(frame);
        return;
    }
    frame_ = frame;
}

gfx::Rect Layer::bounds() const {
    if (view_) return view_->bounds();
    return {0, 0, frame_.size.width, frame_.size.height};
}

gfx::Point Layer::position() const {
    if (view_) return view_->center();
    return {gfx::rectGetMidX(frame_), gfx::rectGetMidY(frame_)};
}

void Layer::setPosition(gfx::Point p) {
    if (view_) {
        view_->setCenter(p);
        return;
    }
    frame_.origin = {p.x - frame_.size.width / 2, p.y - frame_.size.height / 2};
}

// --- Sublayers -------------------------------------------------------------------------------

void Layer::addSublayer(const Ptr& layer) {
    if (!layer || layer.get() == this) return;
    const Ptr keep = layer;
    layer->removeFromSuperlayer();
    sublayers_.push_back(layer);
    layer->superlayer_ = this;
}

void Layer::removeFromSuperlayer() {
    Layer* parent = superlayer_;
    if (!parent) return;
    superlayer_ = nullptr;
    std::erase_if(parent->sublayers_, [this](const Ptr& l) { return l.get() == this; });
}

// --- Keyed animations ------------------------------------------------------------------------

void Layer::addAnimation(std::shared_ptr<Animation> animation, const std::string& key) {
    if (!animation) return;
    if (!key.empty()) removeAnimationForKey(key);
    RunningAnimation running{key, std::move(animation), rt::RunLoop::main().now(), nextSerial_++};
    const double active = running.animation->activeDuration();
    const uint64_t serial = running.serial;
    animations_.push_back(std::move(running));
    if (std::isinf(active)) return;  // runs until removed
    std::weak_ptr<Layer> weak = std::static_pointer_cast<Layer>(weak_from_this().lock());
    rt::RunLoop::main().postDelayed(active, [weak, serial] {
        if (auto layer = weak.lock()) layer->animationTimeIsUp(serial);
    });
}

void Layer::animationTimeIsUp(uint64_t serial) {
    auto it = std::find_if(animations_.begin(), animations_.end(),
                           [serial](const RunningAnimation& r) { return r.serial == serial; });
    if (it == animations_.end()) return;
    const RunningAnimation running = *it;
    if (running.animation->isRemovedOnCompletion()) animations_.erase(it);
    if (const auto& handler = running.animation->onStop()) handler(true);
}

void Layer::stopAnimation(const RunningAnimation& running, bool finished) {
    // The platform tells of a removal on a later turn, never inside the call that removed it.
    if (const auto& handler = running.animation->onStop()) {
        rt::RunLoop::main().post([handler, finished] { handler(finished); });
    }
}

std::shared_ptr<Animation> Layer::animationForKey(const std::string& key) const {
    for (const RunningAnimation& running : animations_) {
        if (running.key == key) return running.animation;
    }
    return nullptr;
}

void Layer::removeAnimationForKey(const std::string& key) {
    auto it = std::find_if(animations_.begin(), animations_.end(),
                           [&key](const RunningAnimation& r) { return r.key == key; });
    if (it == animations_.end()) return;
    const RunningAnimation running = *it;
    animations_.erase(it);
    stopAnimation(running, false);
}

void Layer::removeAllAnimations() {
    const auto removed = std::move(animations_);
    animations_.clear();
    for (const RunningAnimation& running : removed) stopAnimation(running, false);
}

std::vector<std::string> Layer::animationKeys() const {
    std::vector<std::string> keys;
    for (const RunningAnimation& running : animations_) {
        if (!running.key.empty()) keys.push_back(running.key);
    }
    return keys;
}

double Layer::presentationValue(const std::string& keyPath, double modelValue) const {
    if (animations_.empty()) return modelValue;
    const double now = rt::RunLoop::main().now();
    double value = modelValue;
    for (const RunningAnimation& running : animations_) {
        if (auto v = running.animation->valueForKeyPath(keyPath, now - running.beginTime, value)) {
            value = *v;
        }
    }
    return value;
}

gfx::AffineTransform Layer::presentationTransform(const gfx::AffineTransform& model) const {
    if (animations_.empty()) return model;
    const double modelAngle = std::atan2(model.b, model.a);
    const double modelScale = std::hypot(model.a, model.b);
    double angle = presentationValue("transform.rotation.z", modelAngle);
    angle = presentationValue("transform.rotation", angle);
    const double scale = presentationValue("transform.scale", modelScale);
    gfx::AffineTransform t = model;
    if (angle != modelAngle) t = gfx::AffineTransform::rotation(angle - modelAngle).concat(t);
    if (scale != modelScale && modelScale > 0) {
        t = gfx::AffineTransform::scale(scale / modelScale, scale / modelScale).concat(t);
    }
    return t;
}

double Layer::presentationOpacity() const {
    return presentationValue("opacity", view_ ? view_->presentationAlpha() : opacity_);
}

// --- Drawing ---------------------------------------------------------------------------------

void Layer::drawInCanvas(gfx::Canvas& canvas) const {
    const gfx::Rect b = bounds();
    const std::optional<gfx::Color> background =
        view_ ? view_->presentationBackgroundColor() : backgroundColor_;
    if (background && background->a > 0) {
        if (cornerRadius_ > 0) {
            canvas.fillPath(gfx::Path::roundedRect(b, cornerRadius_), *background);
        } else {
            canvas.fillRect(b, *background);
        }
    }
    if (contents_ && contents_->bitmap()) canvas.drawImage(*contents_, b);
}

}  // namespace orv::ui
