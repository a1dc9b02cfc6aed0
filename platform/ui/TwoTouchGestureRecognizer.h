#pragma once
// The common part of pinch and rotation: a gesture of exactly two fingers that begins when its
// measure has gone far enough from where the two fingers started, and ends when either lifts.
// Fingers beyond the second are ignored.

#include "platform/ui/GestureRecognizer.h"

namespace orv::ui {

class TwoTouchGestureRecognizer : public GestureRecognizer {
    ORV_DECLARE_CLASS(TwoTouchGestureRecognizer)
  public:
    // The fingers' midpoint when the second came down, in the view's coordinates as they are
    // now (null: the window's). What was under the fingers before the gesture could begin.
    gfx::Point startLocationInView(const View* view) const;

  protected:
    void touchesBegan(const TouchSet& touches, Event* event) override;
    void touchesMoved(const TouchSet& touches, Event* event) override;
    void touchesEnded(const TouchSet& touches, Event* event) override;

    bool hasBothTouches() const { return numberOfTouches() == 2; }
    // The two fingers in window coordinates; only valid with both touches.
    gfx::Point firstLocation() const;
    gfx::Point secondLocation() const;
    double touchDistance() const;

    // The second finger came down: take the fingers' current placement as the start.
    virtual void startTracking() = 0;
    // The fingers moved: update the value and say how far it is from the start, in the
    // subclass's own unit, for comparison with hysteresis().
    virtual double trackMove() = 0;
    virtual double hysteresis() const = 0;

  private:
    gfx::Point startMidpoint_;  // window coordinates
};

}  // namespace orv::ui
