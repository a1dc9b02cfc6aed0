#include "platform/ui/Control.h"

#include <algorithm>

#include "platform/ui/Touch.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Control, View)

void Control::addTarget(std::weak_ptr<rt::Object> target, Action action, unsigned events) {
    const bool hasTarget = !target.expired();
    targets_.push_back({std::move(target), hasTarget, std::move(action), events});
}

void Control::removeTarget(const rt::Object* target, unsigned events) {
    for (auto& t : targets_) {
        if (!target || (t.hasTarget && t.target.lock().get() == target)) t.events &= ~events;
    }
    std::erase_if(targets_, [](const Target& t) { return t.events == 0; });
}

unsigned Control::allControlEvents() const {
    unsigned events = 0;
    for (const auto& t : targets_) events |= t.events;
    return events;
}

void Control::sendActionsForControlEvents(unsigned events, Event* event) {
    auto keepAlive = weak_from_this().lock();
    std::erase_if(targets_, [](const Target& t) { return t.hasTarget && t.target.expired(); });
    for (unsigned bit = 1; bit != 0 && bit <= events; bit <<= 1) {
        if (!(events & bit)) continue;
        const auto targets = targets_;  // an action may add or remove targets
        for (const auto& t : targets) {
            if (!(t.events & bit)) continue;
            auto target = t.target.lock();
            if (t.hasTarget && !target) continue;
            t.action(*this, event);
        }
    }
}

void Control::setEnabled(bool enabled) {
    if (enabled_ == enabled) return;
    enabled_ = enabled;
    if (!enabled) endTracking();  // the finger's end will go to the next responder
    stateDidChange();
}

void Control::setHighlighted(bool highlighted) {
    if (highlighted_ == highlighted) return;
    highlighted_ = highlighted;
    stateDidChange();
}

void Control::setSelected(bool selected) {
    if (selected_ == selected) return;
    selected_ = selected;
    stateDidChange();
}

unsigned Control::state() const {
    unsigned s = ControlStateNormal;
    if (highlighted_) s |= ControlStateHighlighted;
    if (!enabled_) s |= ControlStateDisabled;
    if (selected_) s |= ControlStateSelected;
    return s;
}

void Control::touchesBegan(const TouchSet& touches, Event* event) {
    if (!enabled_) {
        View::touchesBegan(touches, event);
        return;
    }
    if (isTracking() || touches.empty()) return;
    const Touch& touch = *touches.front();
    trackingTouch_ = touches.front();
    touchInside_ = true;
    setHighlighted(true);
    unsigned events = ControlEventTouchDown;
    if (touch.tapCount() > 1) events |= ControlEventTouchDownRepeat;
    sendActionsForControlEvents(events, event);
}

void Control::touchesMoved(const TouchSet& touches, Event* event) {
    if (!enabled_) {
        View::touchesMoved(touches, event);
        return;
    }
    const Touch* touch = trackedAmong(touches);
    if (!touch) return;
    const bool inside = isInsideForTracking(*touch);
    unsigned events = inside ? ControlEventTouchDragInside : ControlEventTouchDragOutside;
    if (inside != touchInside_)
        events |= inside ? ControlEventTouchDragEnter : ControlEventTouchDragExit;
    touchInside_ = inside;
    setHighlighted(inside);
    sendActionsForControlEvents(events, event);
}

void Control::touchesEnded(const TouchSet& touches, Event* event) {
    if (!enabled_) {
        View::touchesEnded(touches, event);
        return;
    }
    const Touch* touch = trackedAmong(touches);
    if (!touch) return;
    const bool inside = isInsideForTracking(*touch);
    endTracking();
    sendActionsForControlEvents(inside ? ControlEventTouchUpInside : ControlEventTouchUpOutside,
                                event);
}

void Control::touchesCancelled(const TouchSet& touches, Event* event) {
    if (!enabled_) {
        View::touchesCancelled(touches, event);
        return;
    }
    if (!trackedAmong(touches)) return;
    endTracking();
    sendActionsForControlEvents(ControlEventTouchCancel, event);
}

const Touch* Control::trackedAmong(const TouchSet& touches) const {
    const auto tracked = trackingTouch_.lock();
    if (!tracked) return nullptr;
    auto it = std::find(touches.begin(), touches.end(), tracked);
    return it == touches.end() ? nullptr : it->get();
}

bool Control::isInsideForTracking(const Touch& touch) const {
    return gfx::rectContainsPoint(gfx::rectInset(bounds(), -kTouchSlop, -kTouchSlop),
                                  touch.locationInView(this));
}

void Control::endTracking() {
    trackingTouch_.reset();
    touchInside_ = false;
    setHighlighted(false);
}

}  // namespace orv::ui
