#include "platform/ui/GestureRecognizer.h"

#include <algorithm>
#include <cmath>

#include "platform/rt/RunLoop.h"
#include "platform/rt/Timer.h"
#include "platform/ui/Touch.h"
#include "platform/ui/TouchDispatcher.h"
#include "platform/ui/View.h"

namespace orv::ui {

ORV_DEFINE_CLASS(GestureRecognizer, rt::Object)

namespace {
bool isFinished(GestureRecognizerState s) {
    return s == GestureRecognizerState::Ended || s == GestureRecognizerState::Cancelled ||
           s == GestureRecognizerState::Failed;
}
bool isDown(const TouchPtr& t) {
    return t->phase() != TouchPhase::Ended && t->phase() != TouchPhase::Cancelled;
}
}  // namespace

void GestureRecognizer::addTarget(std::weak_ptr<rt::Object> target, Action action) {
    const bool hasTarget = !target.expired();
    targets_.push_back({std::move(target), hasTarget, std::move(action)});
}

void GestureRecognizer::addTarget(Action action) {
    addTarget({}, std::move(action));
}

void GestureRecognizer::removeTarget(const rt::Object* target) {
    std::erase_if(targets_, [target](const Target& t) {
        return !target || (t.hasTarget && t.target.lock().get() == target);
    });
}

void GestureRecognizer::setEnabled(bool enabled) {
    if (enabled_ == enabled) return;
    enabled_ = enabled;
    if (enabled) return;
    auto keepAlive = weak_from_this().lock();
    if (isActive()) setState(State::Cancelled);
    resetNow();
}

gfx::Point GestureRecognizer::locationInView(const View* view) const {
    const gfx::Point p = touches_.empty() ? lastCentroid_ : centroid();
    return view ? view->convertPointFromView(p, nullptr) : p;
}

gfx::Point GestureRecognizer::locationOfTouch(size_t index, const View* view) const {
    if (index >= touches_.size()) orvThrowWithReason("locationOfTouch: index beyond the touches");
    return touches_[index]->locationInView(view);
}

bool GestureRecognizer::canRecognizeSimultaneouslyWith(GestureRecognizer& other) {
    if (auto mine = delegate_.lock();
        mine && mine->shouldRecognizeSimultaneouslyWithGestureRecognizer(*this, other)) {
        return true;
    }
    auto theirs = other.delegate_.lock();
    return theirs && theirs->shouldRecognizeSimultaneouslyWithGestureRecognizer(other, *this);
}

void GestureRecognizer::setView(View* view) {
    if (this->view() == view) return;
    resetNow();
    view_ = view;
    viewRef_ = view ? view->weak_from_this() : std::weak_ptr<rt::Object>{};
}

void GestureRecognizer::dealloc() {
    resetNow();
    rt::Object::dealloc();
}

void GestureRecognizer::touchesCancelled(const TouchSet& touches, Event* event) {
    setState(isActive() ? State::Cancelled : State::Failed);
}

void GestureRecognizer::reset() {}

void GestureRecognizer::setState(State state) {
    auto keepAlive = weak_from_this().lock();
    const bool beginning =
        state_ == State::Possible && (state == State::Began || state == State::Ended);
    auto dispatcher = dispatcher_.lock();
    if (beginning && !(delegateAllowsBegin() && (!dispatcher || dispatcher->admit(*this)))) {
        state = State::Failed;
    }
    state_ = state;
    if (state != State::Possible && state != State::Failed) sendActions();
    // Targets hear of the gesture before the view hears its touches are gone.
    if (beginning && state != State::Failed && cancelsTouchesInView_ && dispatcher) {
        dispatcher->cancelTouchesInView(*this);
    }
    if (!delivering_) resetIfFinished();
}

void GestureRecognizer::ignoreTouch(const Touch* touch) {
    for (size_t i = touches_.size(); i-- > 0;) {
        if (touches_[i].get() != touch) continue;
        touches_.erase(touches_.begin() + static_cast<std::ptrdiff_t>(i));
        startLocations_.erase(startLocations_.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

size_t GestureRecognizer::liveTouchCount() const {
    return std::count_if(touches_.begin(), touches_.end(), isDown);
}

gfx::Point GestureRecognizer::centroid() const {
    if (touches_.empty()) return lastCentroid_;
    gfx::Point sum;
    for (const auto& t : touches_) {
        const gfx::Point p = t->locationInView(nullptr);
        sum.x += p.x;
        sum.y += p.y;
    }
    const double n = static_cast<double>(touches_.size());
    return {sum.x / n, sum.y / n};
}

double GestureRecognizer::farthestMovement() const {
    double farthest = 0;
    for (size_t i = 0; i < touches_.size(); ++i) {
        const gfx::Point p = touches_[i]->locationInView(nullptr);
        farthest =
            std::max(farthest, std::hypot(p.x - startLocations_[i].x, p.y - startLocations_[i].y));
    }
    return farthest;
}

std::shared_ptr<rt::Timer> GestureRecognizer::scheduleTimer(double seconds,
                                                            std::function<void()> action) {
    std::weak_ptr<rt::Object> weak = weak_from_this();
    return rt::RunLoop::main().scheduleTimer(seconds, false,
                                             [weak, action = std::move(action)](rt::Timer&) {
                                                 if (auto alive = weak.lock()) action();
                                             });
}

void GestureRecognizer::receiveTouches(TouchPhase phase, const TouchSet& touches, Event* event) {
    auto keepAlive = weak_from_this().lock();
    if (phase == TouchPhase::Began) {
        // A finished recogniser sits out until its own touches end.
        if (isFinished(state_)) return;
        for (const auto& t : touches) {
            touches_.push_back(t);
            startLocations_.push_back(t->locationInView(nullptr));
        }
    }
    lastCentroid_ = centroid();
    if (!isFinished(state_)) {
        delivering_ = true;
        switch (phase) {
            case TouchPhase::Began:
                touchesBegan(touches, event);
                break;
            case TouchPhase::Moved:
            case TouchPhase::Stationary:
                touchesMoved(touches, event);
                break;
            case TouchPhase::Ended:
                touchesEnded(touches, event);
                break;
            case TouchPhase::Cancelled:
                touchesCancelled(touches, event);
                break;
        }
        delivering_ = false;
    }
    if (phase == TouchPhase::Ended || phase == TouchPhase::Cancelled) removeTouches(touches);
    if (state_ == State::Possible && touches_.empty() && !isAwaitingNextTouch()) {
        resetNow();
    } else {
        resetIfFinished();
    }
}

void GestureRecognizer::attachDispatcher(const std::shared_ptr<TouchDispatcher>& dispatcher) {
    dispatcher_ = dispatcher;
}

bool GestureRecognizer::tracks(const Touch* touch) const {
    return std::any_of(touches_.begin(), touches_.end(),
                       [touch](const TouchPtr& t) { return t.get() == touch; });
}

bool GestureRecognizer::sharesTouchWith(const GestureRecognizer& other) const {
    return std::any_of(touches_.begin(), touches_.end(),
                       [&other](const TouchPtr& t) { return other.tracks(t.get()); });
}

bool GestureRecognizer::delegateAllowsBegin() {
    auto delegate = delegate_.lock();
    return !delegate || delegate->gestureRecognizerShouldBegin(*this);
}

void GestureRecognizer::sendActions() {
    std::erase_if(targets_, [](const Target& t) { return t.hasTarget && t.target.expired(); });
    const auto targets = targets_;  // an action may add or remove targets
    for (const auto& t : targets) {
        auto target = t.target.lock();
        if (t.hasTarget && !target) continue;
        t.action(*this);
    }
}

void GestureRecognizer::removeTouches(const TouchSet& touches) {
    for (const auto& t : touches) ignoreTouch(t.get());
}

void GestureRecognizer::resetIfFinished() {
    if (isFinished(state_) && liveTouchCount() == 0) resetNow();
}

void GestureRecognizer::resetNow() {
    state_ = State::Possible;
    touches_.clear();
    startLocations_.clear();
    dispatcher_.reset();
    reset();
}

}  // namespace orv::ui
