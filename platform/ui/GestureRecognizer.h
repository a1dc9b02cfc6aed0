#pragma once
// The base of the gesture recognisers: a state machine fed with touches by the touch dispatcher,
// reporting to its targets on every change the platform reports.
//
// A recogniser leaves Possible through setState(). Beginning (Began for continuous gestures,
// Ended for discrete ones) first asks the delegate, then the dispatcher, which lets it begin only
// when no active recogniser sharing its touches objects to running together; once it begins, the
// possible recognisers it excludes fail. After Ended, Cancelled or Failed it goes back to Possible
// when the last of its touches has ended.

#include <functional>
#include <memory>
#include <vector>

#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"
#include "platform/ui/GestureRecognizerDelegate.h"
#include "platform/ui/Responder.h"

namespace orv::rt {
class Timer;
}

namespace orv::ui {

class View;
class TouchDispatcher;
enum class TouchPhase;

// The platform's numbering; Recognized is Ended.
enum class GestureRecognizerState : int {
    Possible = 0,
    Began = 1,
    Changed = 2,
    Ended = 3,
    Recognized = 3,
    Cancelled = 4,
    Failed = 5,
};

class GestureRecognizer : public rt::Object {
    ORV_DECLARE_CLASS(GestureRecognizer)
  public:
    using State = GestureRecognizerState;
    using Action = std::function<void(GestureRecognizer&)>;

    // The action runs on every reported state change while the target lives.
    void addTarget(std::weak_ptr<rt::Object> target, Action action);
    // An action with no target: it runs for as long as the recogniser does.
    void addTarget(Action action);
    // Removes the actions of the target (of every target when null).
    void removeTarget(const rt::Object* target);

    State state() const { return state_; }
    // Null once the view has gone.
    View* view() const { return viewRef_.expired() ? nullptr : view_; }
    bool isEnabled() const { return enabled_; }
    // Disabling an active recogniser cancels it; a possible one fails.
    void setEnabled(bool enabled);
    bool cancelsTouchesInView() const { return cancelsTouchesInView_; }
    void setCancelsTouchesInView(bool cancels) { cancelsTouchesInView_ = cancels; }
    std::weak_ptr<GestureRecognizerDelegate> delegate() const { return delegate_; }
    void setDelegate(std::weak_ptr<GestureRecognizerDelegate> delegate) {
        delegate_ = std::move(delegate);
    }

    // The centroid of the tracked touches in the view's coordinates (null: the window's). With no
    // touch left, the last centroid there was.
    gfx::Point locationInView(const View* view) const;
    gfx::Point locationOfTouch(size_t index, const View* view) const;
    size_t numberOfTouches() const { return touches_.size(); }
    const TouchSet& touches() const { return touches_; }

    // Whether this and `other` may be active at once (either delegate says so).
    bool canRecognizeSimultaneouslyWith(GestureRecognizer& other);
    bool isActive() const { return state_ == State::Began || state_ == State::Changed; }

    // Only for View::addGestureRecognizer / removeGestureRecognizer: the view it is attached to.
    // Leaving a view drops whatever the recogniser was doing, without reporting it.
    void setView(View* view);

    void dealloc() override;

  protected:
    // The subclass's view of the touches it tracks. The base has already added new touches to
    // touches() before touchesBegan and removes ended ones after touchesEnded/Cancelled.
    virtual void touchesBegan(const TouchSet& touches, Event* event) {}
    virtual void touchesMoved(const TouchSet& touches, Event* event) {}
    virtual void touchesEnded(const TouchSet& touches, Event* event) {}
    // By default an active recogniser is cancelled and a possible one fails.
    virtual void touchesCancelled(const TouchSet& touches, Event* event);
    // Clears the subclass's own state on the way back to Possible. Overrides call the base.
    virtual void reset();
    // True while a possible recogniser with no touch down still waits for one (multi-tap).
    virtual bool isAwaitingNextTouch() const { return false; }

    // The state change that reports to the targets. See the header comment for beginning.
    void setState(State state);
    // Stops tracking the touch (extra fingers a gesture does not want).
    void ignoreTouch(const Touch* touch);
    // Number of tracked touches that are still down.
    size_t liveTouchCount() const;
    // Centroid of the tracked touches in window coordinates.
    gfx::Point centroid() const;
    // The greatest distance a tracked touch has gone from where this recogniser first saw it.
    double farthestMovement() const;
    // A one-shot timer on the main run loop whose action runs only while this recogniser lives.
    std::shared_ptr<rt::Timer> scheduleTimer(double seconds, std::function<void()> action);

  private:
    friend class TouchDispatcher;
    struct Target {
        std::weak_ptr<rt::Object> target;
        bool hasTarget = false;
        Action action;
    };

    // The dispatcher's entry point for touches of one phase.
    void receiveTouches(TouchPhase phase, const TouchSet& touches, Event* event);
    void attachDispatcher(const std::shared_ptr<TouchDispatcher>& dispatcher);
    bool tracks(const Touch* touch) const;
    bool sharesTouchWith(const GestureRecognizer& other) const;
    bool delegateAllowsBegin();
    void sendActions();
    void removeTouches(const TouchSet& touches);
    void resetIfFinished();
    void resetNow();

    State state_ = State::Possible;
    View* view_ = nullptr;
    std::weak_ptr<rt::Object> viewRef_;  // tells when view_ has gone
    bool enabled_ = true;
    bool cancelsTouchesInView_ = true;
    bool delivering_ = false;
    std::weak_ptr<GestureRecognizerDelegate> delegate_;
    std::weak_ptr<TouchDispatcher> dispatcher_;
    std::vector<Target> targets_;
    TouchSet touches_;
    std::vector<gfx::Point> startLocations_;  // beside touches_, in window coordinates
    gfx::Point lastCentroid_;
};

using GestureRecognizerPtr = std::shared_ptr<GestureRecognizer>;

}  // namespace orv::ui
