#include "platform/ui/LongPressGestureRecognizer.h"

#include "platform/rt/Timer.h"

namespace orv::ui {

ORV_DEFINE_CLASS(LongPressGestureRecognizer, GestureRecognizer)

void LongPressGestureRecognizer::touchesBegan(const TouchSet& touches, Event* event) {
    if (isActive()) {
        for (const auto& t : touches) ignoreTouch(t.get());
        return;
    }
    const size_t count = liveTouchCount();
    if (count > numberOfTouchesRequired_) {
        setState(State::Failed);
    } else if (count == numberOfTouchesRequired_) {
        stopTimer();
        pressTimer_ = scheduleTimer(minimumPressDuration_, [this] {
            if (state() == State::Possible) setState(State::Began);
        });
    }
}

void LongPressGestureRecognizer::touchesMoved(const TouchSet& touches, Event* event) {
    if (isActive()) {
        setState(State::Changed);
    } else if (farthestMovement() > allowableMovement_) {
        setState(State::Failed);
    }
}

void LongPressGestureRecognizer::touchesEnded(const TouchSet& touches, Event* event) {
    setState(isActive() ? State::Ended : State::Failed);
}

void LongPressGestureRecognizer::reset() {
    GestureRecognizer::reset();
    stopTimer();
}

void LongPressGestureRecognizer::stopTimer() {
    if (pressTimer_) pressTimer_->invalidate();
    pressTimer_.reset();
}

}  // namespace orv::ui
