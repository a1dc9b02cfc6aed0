#pragma once
// The touches on the screen at one moment. A window keeps one event and updates it for every
// change, as the platform does, so responders should not hold on to it.

#include "platform/rt/Object.h"
#include "platform/ui/Responder.h"

namespace orv::ui {

class View;
class GestureRecognizer;

class Event : public rt::Object {
    ORV_DECLARE_CLASS(Event)
  public:
    // Every finger that is down, including the ones that end or are cancelled in this change.
    const TouchSet& allTouches() const { return touches_; }
    // The touches that landed on `view`.
    TouchSet touchesForView(const View* view) const;
    // The touches `recognizer` is tracking.
    TouchSet touchesForGestureRecognizer(const GestureRecognizer* recognizer) const;
    double timestamp() const { return timestamp_; }

  private:
    friend class TouchDispatcher;

    TouchSet touches_;
    double timestamp_ = 0;
};

}  // namespace orv::ui
