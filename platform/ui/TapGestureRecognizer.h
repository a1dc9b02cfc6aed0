#pragma once
// One or more taps of a number of fingers. Recognised when the last finger of the last tap lifts.
// Fails when a finger strays more than Touch::kTapMovementLimit, when more fingers come down than
// required, or when the next tap does not come within Touch::kMultiTapInterval and the same
// distance of the first.

#include <memory>

#include "platform/ui/GestureRecognizer.h"

namespace orv::ui {

class TapGestureRecognizer : public GestureRecognizer {
    ORV_DECLARE_CLASS(TapGestureRecognizer)
  public:
    int numberOfTapsRequired() const { return numberOfTapsRequired_; }
    void setNumberOfTapsRequired(int n) { numberOfTapsRequired_ = n; }
    size_t numberOfTouchesRequired() const { return numberOfTouchesRequired_; }
    void setNumberOfTouchesRequired(size_t n) { numberOfTouchesRequired_ = n; }

  protected:
    void touchesBegan(const TouchSet& touches, Event* event) override;
    void touchesMoved(const TouchSet& touches, Event* event) override;
    void touchesEnded(const TouchSet& touches, Event* event) override;
    void reset() override;
    bool isAwaitingNextTouch() const override { return tapsDone_ > 0; }

  private:
    void tapFinished();

    int numberOfTapsRequired_ = 1;
    size_t numberOfTouchesRequired_ = 1;
    int tapsDone_ = 0;
    size_t mostTouches_ = 0;  // fingers down at once during this tap
    gfx::Point firstTapLocation_;
    std::shared_ptr<rt::Timer> nextTapTimer_;
};

}  // namespace orv::ui
