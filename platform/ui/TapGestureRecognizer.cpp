#include "platform/ui/TapGestureRecognizer.h"

#include <algorithm>
#include <cmath>

#include "platform/rt/Timer.h"
#include "platform/ui/Touch.h"

namespace orv::ui {

ORV_DEFINE_CLASS(TapGestureRecognizer, GestureRecognizer)

void TapGestureRecognizer::touchesBegan(const TouchSet& touches, Event* event) {
    if (nextTapTimer_) nextTapTimer_->invalidate();
    if (mostTouches_ == 0) {  // the first finger of a tap
        const gfx::Point here = centroid();
        if (tapsDone_ == 0) {
            firstTapLocation_ = here;
        } else if (std::hypot(here.x - firstTapLocation_.x, here.y - firstTapLocation_.y) >
                   Touch::kTapMovementLimit) {
            setState(State::Failed);
            return;
        }
    }
    mostTouches_ = std::max(mostTouches_, liveTouchCount());
    if (mostTouches_ > numberOfTouchesRequired_) setState(State::Failed);
}

void TapGestureRecognizer::touchesMoved(const TouchSet& touches, Event* event) {
    if (farthestMovement() > Touch::kTapMovementLimit) setState(State::Failed);
}

void TapGestureRecognizer::touchesEnded(const TouchSet& touches, Event* event) {
    if (liveTouchCount() == 0) tapFinished();
}

void TapGestureRecognizer::tapFinished() {
    if (mostTouches_ != numberOfTouchesRequired_) {
        setState(State::Failed);
        return;
    }
    mostTouches_ = 0;
    if (++tapsDone_ >= numberOfTapsRequired_) {
        setState(State::Recognized);
        return;
    }
    nextTapTimer_ = scheduleTimer(Touch::kMultiTapInterval, [this] {
        if (state() == State::Possible) setState(State::Failed);
    });
}

void TapGestureRecognizer::reset() {
    GestureRecognizer::reset();
    if (nextTapTimer_) nextTapTimer_->invalidate();
    nextTapTimer_.reset();
    tapsDone_ = 0;
    mostTouches_ = 0;
}

}  // namespace orv::ui
