#pragma once
// A view that turns touches into control events and sends them to target-action pairs. Only the
// first finger on the control is tracked. A disabled control takes no part: its touches go on to
// the next responder.

#include <functional>
#include <memory>
#include <vector>

#include "platform/ui/View.h"

namespace orv::ui {

// The platform's bits.
enum ControlEvents : unsigned {
    ControlEventTouchDown = 1u << 0,
    ControlEventTouchDownRepeat = 1u << 1,
    ControlEventTouchDragInside = 1u << 2,
    ControlEventTouchDragOutside = 1u << 3,
    ControlEventTouchDragEnter = 1u << 4,
    ControlEventTouchDragExit = 1u << 5,
    ControlEventTouchUpInside = 1u << 6,
    ControlEventTouchUpOutside = 1u << 7,
    ControlEventTouchCancel = 1u << 8,
    ControlEventValueChanged = 1u << 12,
    ControlEventAllTouchEvents = 0x0FFFu,
    ControlEventAllEvents = 0xFFFFFFFFu,
};

// The platform's bits; states combine (a highlighted selected control is 1 | 4).
enum ControlState : unsigned {
    ControlStateNormal = 0,
    ControlStateHighlighted = 1u << 0,
    ControlStateDisabled = 1u << 1,
    ControlStateSelected = 1u << 2,
};

class Control : public View {
    ORV_DECLARE_CLASS(Control)
  public:
    using Action = std::function<void(Control& sender, Event* event)>;

    // How far outside its bounds a tracked finger still counts as inside.
    static constexpr double kTouchSlop = 70;

    // The action runs for the events while the target lives; an empty target means a free
    // function that always runs.
    void addTarget(std::weak_ptr<rt::Object> target, Action action, unsigned events);
    // Takes the events off the target's actions (off every action for a null target); an
    // action left with no event goes.
    void removeTarget(const rt::Object* target, unsigned events);
    unsigned allControlEvents() const;
    // Runs the actions of each event in turn, lowest bit first.
    void sendActionsForControlEvents(unsigned events, Event* event = nullptr);

    bool isEnabled() const { return enabled_; }
    virtual void setEnabled(bool enabled);
    bool isHighlighted() const { return highlighted_; }
    virtual void setHighlighted(bool highlighted);
    bool isSelected() const { return selected_; }
    virtual void setSelected(bool selected);
    // ControlState bits.
    unsigned state() const;

    bool isTracking() const { return !trackingTouch_.expired(); }
    bool isTouchInside() const { return touchInside_; }

    void touchesBegan(const TouchSet& touches, Event* event) override;
    void touchesMoved(const TouchSet& touches, Event* event) override;
    void touchesEnded(const TouchSet& touches, Event* event) override;
    void touchesCancelled(const TouchSet& touches, Event* event) override;

  protected:
    // Called after enabled, highlighted or selected changed (subclasses restyle here).
    virtual void stateDidChange() {}

  private:
    struct Target {
        std::weak_ptr<rt::Object> target;
        bool hasTarget = false;
        Action action;
        unsigned events = 0;
    };

    const Touch* trackedAmong(const TouchSet& touches) const;
    bool isInsideForTracking(const Touch& touch) const;
    void endTracking();

    std::vector<Target> targets_;
    bool enabled_ = true;
    bool highlighted_ = false;
    bool selected_ = false;
    std::weak_ptr<Touch> trackingTouch_;
    bool touchInside_ = false;
};

}  // namespace orv::ui
