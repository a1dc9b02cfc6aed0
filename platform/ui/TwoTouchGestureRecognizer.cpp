#include "platform/ui/TwoTouchGestureRecognizer.h"

#include <cmath>

#include "platform/ui/Touch.h"
#include "platform/ui/View.h"

namespace orv::ui {

ORV_DEFINE_CLASS(TwoTouchGestureRecognizer, GestureRecognizer)

void TwoTouchGestureRecognizer::touchesBegan(const TouchSet& touches, Event* event) {
    for (const auto& t : touches) {
        if (numberOfTouches() > 2) ignoreTouch(t.get());
    }
    if (state() == State::Possible && hasBothTouches()) {
        startMidpoint_ = centroid();
        startTracking();
    }
}

gfx::Point TwoTouchGestureRecognizer::startLocationInView(const View* view) const {
    return view ? view->convertPointFromView(startMidpoint_, nullptr) : startMidpoint_;
}

void TwoTouchGestureRecognizer::touchesMoved(const TouchSet& touches, Event* event) {
    if (!hasBothTouches()) return;
    const double travelled = trackMove();
    if (isActive()) {
        setState(State::Changed);
    } else if (travelled >= hysteresis()) {
        setState(State::Began);
    }
}

void TwoTouchGestureRecognizer::touchesEnded(const TouchSet& touches, Event* event) {
    if (isActive()) setState(State::Ended);
}

gfx::Point TwoTouchGestureRecognizer::firstLocation() const {
    return touches()[0]->locationInView(nullptr);
}

gfx::Point TwoTouchGestureRecognizer::secondLocation() const {
    return touches()[1]->locationInView(nullptr);
}

double TwoTouchGestureRecognizer::touchDistance() const {
    const gfx::Point a = firstLocation(), b = secondLocation();
    return std::hypot(b.x - a.x, b.y - a.y);
}

}  // namespace orv::ui
