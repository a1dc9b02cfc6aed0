#pragma once
// Fingers held still. Begins when the required fingers have been down for minimumPressDuration
// (on the main run loop's clock) without straying more than allowableMovement; then reports
// every move and ends when a finger lifts. Lifting or straying before that makes it fail.

#include <memory>

#include "platform/ui/GestureRecognizer.h"

namespace orv::ui {

class LongPressGestureRecognizer : public GestureRecognizer {
    ORV_DECLARE_CLASS(LongPressGestureRecognizer)
  public:
    double minimumPressDuration() const { return minimumPressDuration_; }
    void setMinimumPressDuration(double seconds) { minimumPressDuration_ = seconds; }
    double allowableMovement() const { return allowableMovement_; }
    void setAllowableMovement(double points) { allowableMovement_ = points; }
    size_t numberOfTouchesRequired() const { return numberOfTouchesRequired_; }
    void setNumberOfTouchesRequired(size_t n) { numberOfTouchesRequired_ = n; }

  protected:
    void touchesBegan(const TouchSet& touches, Event* event) override;
    void touchesMoved(const TouchSet& touches, Event* event) override;
    void touchesEnded(const TouchSet& touches, Event* event) override;
    void reset() override;

  private:
    void stopTimer();

    double minimumPressDuration_ = 0.5;
    double allowableMovement_ = 10;
    size_t numberOfTouchesRequired_ = 1;
    std::shared_ptr<rt::Timer> pressTimer_;
};

}  // namespace orv::ui
