#include "platform/ui/TouchDispatcher.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/rt/RunLoop.h"
#include "platform/ui/Event.h"
#include "platform/ui/GestureRecognizer.h"
#include "platform/ui/Touch.h"
#include "platform/ui/View.h"

namespace orv::ui {

ORV_DEFINE_CLASS(TouchDispatcher, rt::Object)

namespace {

double distance(gfx::Point a, gfx::Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// Groups touches by a key, keeping the order in which keys first appear.
template <class Key>
void addToGroup(std::vector<std::pair<Key, TouchSet>>& groups, const Key& key,
                const TouchPtr& touch) {
    auto it = std::find_if(groups.begin(), groups.end(),
                           [&key](const auto& group) { return group.first == key; });
    if (it == groups.end()) {
        groups.push_back({key, {touch}});
    } else {
        it->second.push_back(touch);
    }
}

using ViewHandler = void (Responder::*)(const TouchSet&, Event*);

ViewHandler viewHandlerFor(TouchPhase phase) {
    switch (phase) {
        case TouchPhase::Began:
            return &Responder::touchesBegan;
        case TouchPhase::Moved:
        case TouchPhase::Stationary:
            return &Responder::touchesMoved;
        case TouchPhase::Ended:
            return &Responder::touchesEnded;
        case TouchPhase::Cancelled:
            break;
    }
    return &Responder::touchesCancelled;
}

}  // namespace

std::shared_ptr<TouchDispatcher> TouchDispatcher::dispatcherForView(std::shared_ptr<View> root) {
    auto dispatcher = rt::make<TouchDispatcher>();
    dispatcher->window_ = root->window();
    dispatcher->root_ = std::move(root);
    dispatcher->event_ = rt::make<Event>();
    return dispatcher;
}

void TouchDispatcher::touchesDown(const std::vector<Finger>& fingers) {
    const double now = rt::RunLoop::main().now();
    TouchSet began;
    for (const auto& finger : fingers) {
        if (isDown(finger.id)) {
            orvThrowWithReason("touch " + std::to_string(finger.id) + " is already down");
        }
        auto touch = makeTouch(finger.location, now);
        event_->touches_.push_back(touch);
        records_.push_back({finger.id, touch, recognizersFor(*touch)});
        began.push_back(std::move(touch));
    }
    beginChange(now, began);
    deliver(TouchPhase::Began, began);
}

void TouchDispatcher::touchesMove(const std::vector<Finger>& fingers) {
    const double now = rt::RunLoop::main().now();
    TouchSet moved;
    for (const auto& finger : fingers) {
        const TouchPtr& touchPtr = recordFor(finger.id).touch;
        Touch& touch = *touchPtr;
        touch.previousLocation_ = touch.location_;
        touch.location_ = finger.location;
        touch.phase_ = TouchPhase::Moved;
        if (distance(touch.startLocation_, finger.location) > Touch::kTapMovementLimit) {
            touch.movedFromStart_ = true;
        }
        moved.push_back(touchPtr);
    }
    beginChange(now, moved);
    deliver(TouchPhase::Moved, moved);
}

void TouchDispatcher::touchesUp(const std::vector<int>& ids) {
    finish(TouchPhase::Ended, ids);
}

void TouchDispatcher::touchesCancel(const std::vector<int>& ids) {
    finish(TouchPhase::Cancelled, ids);
}

bool TouchDispatcher::isDown(int id) const {
    return std::any_of(records_.begin(), records_.end(),
                       [id](const Record& r) { return r.id == id; });
}

std::shared_ptr<Touch> TouchDispatcher::touchWithId(int id) const {
    auto it = std::find_if(records_.begin(), records_.end(),
                           [id](const Record& r) { return r.id == id; });
    return it == records_.end() ? nullptr : it->touch;
}

std::optional<double> TouchDispatcher::tapSequenceDeadline(gfx::Point p) const {
    if (!lastTap_ || distance(lastTap_->location, p) > Touch::kTapMovementLimit) return {};
    const double deadline = lastTap_->time + Touch::kMultiTapInterval;
    if (rt::RunLoop::main().now() > deadline) return {};
    return deadline;
}

void TouchDispatcher::dealloc() {
    // Fingers still down when the window's driver goes away are cancelled, so no recogniser or
    // view is left waiting for an end.
    std::vector<int> ids;
    for (const auto& r : records_) ids.push_back(r.id);
    if (!ids.empty()) finish(TouchPhase::Cancelled, ids);
    rt::Object::dealloc();
}

bool TouchDispatcher::admit(GestureRecognizer& recognizer) {
    std::vector<std::shared_ptr<GestureRecognizer>> rivals;
    for (const auto& other : knownRecognizers()) {
        if (other.get() == &recognizer || !other->sharesTouchWith(recognizer)) continue;
        if (recognizer.canRecognizeSimultaneouslyWith(*other)) continue;
        if (other->isActive()) return false;  // the first to begin wins
        if (other->state() == GestureRecognizerState::Possible) rivals.push_back(other);
    }
    for (const auto& rival : rivals) rival->setState(GestureRecognizerState::Failed);
    return true;
}

void TouchDispatcher::cancelTouchesInView(GestureRecognizer& recognizer) {
    auto keepAlive = weak_from_this().lock();
    std::vector<std::pair<View*, TouchSet>> groups;
    const TouchSet touches = recognizer.touches();
    for (const auto& touch : touches) {
        Record* record = recordFor(touch.get());
        if (!record || record->viewCancelled) continue;
        record->viewCancelled = true;
        if (record->viewBegan && touch->view()) addToGroup(groups, touch->view(), touch);
    }
    for (const auto& [view, set] : groups) view->touchesCancelled(set, event_.get());
}

TouchDispatcher::Record& TouchDispatcher::recordFor(int id) {
    auto it = std::find_if(records_.begin(), records_.end(),
                           [id](const Record& r) { return r.id == id; });
    if (it == records_.end()) orvThrowWithReason("touch " + std::to_string(id) + " is not down");
    return *it;
}

TouchDispatcher::Record* TouchDispatcher::recordFor(const Touch* touch) {
    auto it = std::find_if(records_.begin(), records_.end(),
                           [touch](const Record& r) { return r.touch.get() == touch; });
    return it == records_.end() ? nullptr : &*it;
}

std::shared_ptr<Touch> TouchDispatcher::makeTouch(gfx::Point location, double now) {
    auto touch = rt::make<Touch>();
    touch->location_ = touch->previousLocation_ = touch->startLocation_ = location;
    touch->window_ = window_;
    const auto deadline = tapSequenceDeadline(location);
    touch->tapCount_ = deadline ? lastTap_->count + 1 : 1;
    const gfx::Point local = root_->convertPointFromView(location, nullptr);
    if (View* hit = root_->hitTest(local, event_.get())) touch->view_ = hit->self<View>();
    return touch;
}

std::vector<std::shared_ptr<GestureRecognizer>> TouchDispatcher::recognizersFor(
    Touch& touch) const {
    std::vector<std::shared_ptr<GestureRecognizer>> result;
    for (View* v = touch.view(); v; v = v == root_.get() ? nullptr : v->superview()) {
        for (const auto& r : v->gestureRecognizers()) {
            if (!r->isEnabled()) continue;
            if (r->view() != v) r->setView(v);  // in case the view did not say so itself
            auto delegate = r->delegate().lock();
            if (delegate && !delegate->shouldReceiveTouch(*r, touch)) continue;
            result.push_back(r);
        }
    }
    return result;
}

std::vector<std::shared_ptr<GestureRecognizer>> TouchDispatcher::knownRecognizers() const {
    std::vector<std::shared_ptr<GestureRecognizer>> result;
    for (const auto& record : records_) {
        for (const auto& r : record.recognizers) {
            if (std::find(result.begin(), result.end(), r) == result.end()) result.push_back(r);
        }
    }
    return result;
}

bool TouchDispatcher::isAttached(const GestureRecognizer& recognizer) {
    const View* view = recognizer.view();
    if (!view) return false;
    const auto& attached = view->gestureRecognizers();
    return std::any_of(attached.begin(), attached.end(),
                       [&recognizer](const auto& r) { return r.get() == &recognizer; });
}

void TouchDispatcher::beginChange(double now, const TouchSet& changed) {
    event_->timestamp_ = now;
    for (const auto& touch : event_->touches_) {
        if (std::find(changed.begin(), changed.end(), touch) != changed.end()) {
            touch->timestamp_ = now;
        } else if (touch->phase_ == TouchPhase::Began || touch->phase_ == TouchPhase::Moved) {
            touch->phase_ = TouchPhase::Stationary;
        }
    }
}

void TouchDispatcher::deliver(TouchPhase phase, const TouchSet& touches) {
    auto keepAlive = weak_from_this().lock();
    deliverToRecognizers(phase, touches);
    deliverToViews(phase, touches);
}

void TouchDispatcher::deliverToRecognizers(TouchPhase phase, const TouchSet& touches) {
    std::vector<std::pair<std::shared_ptr<GestureRecognizer>, TouchSet>> groups;
    for (const auto& touch : touches) {
        const Record* record = recordFor(touch.get());
        if (!record) continue;
        for (const auto& r : record->recognizers) {
            if (phase == TouchPhase::Began || r->tracks(touch.get())) addToGroup(groups, r, touch);
        }
    }
    // Null while the dispatcher is being torn down; recognisers then arbitrate no more.
    auto self = std::static_pointer_cast<TouchDispatcher>(weak_from_this().lock());
    for (const auto& [recognizer, set] : groups) {
        if (phase == TouchPhase::Began) recognizer->attachDispatcher(self);
        // Earlier deliveries may have moved on; only what the recogniser still tracks goes.
        TouchSet mine;
        std::copy_if(set.begin(), set.end(), std::back_inserter(mine), [&](const TouchPtr& t) {
            return phase == TouchPhase::Began || recognizer->tracks(t.get());
        });
        if (mine.empty()) continue;
        if (!isAttached(*recognizer)) {
            recognizer->setView(nullptr);  // taken off its view mid-gesture: drop it quietly
            continue;
        }
        recognizer->receiveTouches(phase, mine, event_.get());
    }
}

void TouchDispatcher::deliverToViews(TouchPhase phase, const TouchSet& touches) {
    std::vector<std::pair<View*, TouchSet>> groups;
    for (const auto& touch : touches) {
        Record* record = recordFor(touch.get());
        if (!record || record->viewCancelled || !touch->view()) continue;
        if (phase == TouchPhase::Began) record->viewBegan = true;
        if (record->viewBegan) addToGroup(groups, touch->view(), touch);
    }
    const ViewHandler handler = viewHandlerFor(phase);
    for (const auto& [view, set] : groups) (view->*handler)(set, event_.get());
}

void TouchDispatcher::finish(TouchPhase phase, const std::vector<int>& ids) {
    const double now = rt::RunLoop::main().now();
    TouchSet finished;
    for (int id : ids) {
        auto touch = recordFor(id).touch;
        touch->phase_ = phase;
        finished.push_back(std::move(touch));
    }
    beginChange(now, finished);
    deliver(phase, finished);
    for (const auto& touch : finished) {
        if (phase == TouchPhase::Ended && !touch->movedFromStart_) {
            lastTap_ = LastTap{now, touch->startLocation_, touch->tapCount_};
        } else {
            lastTap_.reset();
        }
    }
    forget(finished);
}

void TouchDispatcher::forget(const TouchSet& touches) {
    for (const auto& touch : touches) {
        std::erase_if(records_, [&touch](const Record& r) { return r.touch == touch; });
        std::erase(event_->touches_, touch);
    }
}

}  // namespace orv::ui
