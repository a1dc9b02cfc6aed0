#include "platform/ui/PanGestureRecognizer.h"

#include <algorithm>
#include <cmath>

#include "platform/ui/Event.h"
#include "platform/ui/Touch.h"
#include "platform/ui/View.h"

namespace orv::ui {

ORV_DEFINE_CLASS(PanGestureRecognizer, GestureRecognizer)

namespace {

// A window-space vector in the view's coordinates (translation and scale, no offset).
gfx::Point vectorInView(gfx::Point v, const View* view) {
    if (!view) return v;
    const gfx::Point a = view->convertPointFromView({0, 0}, nullptr);
    const gfx::Point b = view->convertPointFromView(v, nullptr);
    return {b.x - a.x, b.y - a.y};
}

gfx::Point vectorFromView(gfx::Point v, const View* view) {
    if (!view) return v;
    const gfx::Point a = view->convertPointToView({0, 0}, nullptr);
    const gfx::Point b = view->convertPointToView(v, nullptr);
    return {b.x - a.x, b.y - a.y};
}

}  // namespace

gfx::Point PanGestureRecognizer::translationInView(const View* view) const {
    return vectorInView(translation_, view);
}

void PanGestureRecognizer::setTranslation(gfx::Point translation, const View* view) {
    translation_ = vectorFromView(translation, view);
}

gfx::Point PanGestureRecognizer::velocityInView(const View* view) const {
    return vectorInView(velocity_, view);
}

void PanGestureRecognizer::touchesBegan(const TouchSet& touches, Event* event) {
    if (event) lastEventTime_ = event->timestamp();
    if (state() == State::Possible) {
        if (numberOfTouches() > maximumNumberOfTouches_) setState(State::Failed);
        return;
    }
    for (const auto& t : touches) {
        if (numberOfTouches() > maximumNumberOfTouches_) ignoreTouch(t.get());
    }
}

void PanGestureRecognizer::touchesMoved(const TouchSet& touches, Event* event) {
    const gfx::Point step = centroidStep(touches);
    translation_ = {translation_.x + step.x, translation_.y + step.y};
    movement_ = {movement_.x + step.x, movement_.y + step.y};
    if (event) {
        const double dt = event->timestamp() - lastEventTime_;
        if (dt > 0) velocity_ = {step.x / dt, step.y / dt};
        lastEventTime_ = event->timestamp();
    }

    if (isActive()) {
        setState(State::Changed);
        return;
    }
    const size_t count = numberOfTouches();
    if (count >= minimumNumberOfTouches_ && count <= maximumNumberOfTouches_ &&
        std::hypot(movement_.x, movement_.y) >= kHysteresis) {
        setState(State::Began);
    }
}

gfx::Point PanGestureRecognizer::centroidStep(const TouchSet& moved) const {
    // The centroid moves by the moved fingers' share; resting fingers add nothing, so fingers
    // joining or leaving never make the translation jump.
    gfx::Point sum;
    for (const auto& t : moved) {
        const gfx::Point now = t->locationInView(nullptr);
        const gfx::Point before = t->previousLocationInView(nullptr);
        sum.x += now.x - before.x;
        sum.y += now.y - before.y;
    }
    const double n = static_cast<double>(std::max<size_t>(numberOfTouches(), 1));
    return {sum.x / n, sum.y / n};
}

void PanGestureRecognizer::touchesEnded(const TouchSet& touches, Event* event) {
    if (isActive() && liveTouchCount() < std::max<size_t>(minimumNumberOfTouches_, 1)) {
        setState(State::Ended);
    }
}

void PanGestureRecognizer::reset() {
    GestureRecognizer::reset();
    translation_ = movement_ = velocity_ = {};
    lastEventTime_ = 0;
}

}  // namespace orv::ui
