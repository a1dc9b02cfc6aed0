#pragma once
// A drag. Begins once the fingers have moved kHysteresis points together, and only while their
// number is within the limits; more fingers than the maximum before it begins make it fail, and
// extra fingers after it began are ignored. Ends when fewer than the minimum remain.

#include <cstddef>
#include <limits>

#include "platform/ui/GestureRecognizer.h"

namespace orv::ui {

class PanGestureRecognizer : public GestureRecognizer {
    ORV_DECLARE_CLASS(PanGestureRecognizer)
  public:
    static constexpr double kHysteresis = 10;

    size_t minimumNumberOfTouches() const { return minimumNumberOfTouches_; }
    void setMinimumNumberOfTouches(size_t n) { minimumNumberOfTouches_ = n; }
    size_t maximumNumberOfTouches() const { return maximumNumberOfTouches_; }
    void setMaximumNumberOfTouches(size_t n) { maximumNumberOfTouches_ = n; }

    // How far the fingers' centroid has moved since the first touch or the last
    // setTranslation, in the view's coordinates (null: the window's).
    gfx::Point translationInView(const View* view) const;
    void setTranslation(gfx::Point translation, const View* view);
    // Points per second, from the last move.
    gfx::Point velocityInView(const View* view) const;

  protected:
    void touchesBegan(const TouchSet& touches, Event* event) override;
    void touchesMoved(const TouchSet& touches, Event* event) override;
    void touchesEnded(const TouchSet& touches, Event* event) override;
    void reset() override;

  private:
    gfx::Point centroidStep(const TouchSet& moved) const;

    size_t minimumNumberOfTouches_ = 1;
    size_t maximumNumberOfTouches_ = std::numeric_limits<size_t>::max();
    gfx::Point translation_;  // window coordinates
    gfx::Point movement_;     // since the first touch, for the hysteresis
    gfx::Point velocity_;
    double lastEventTime_ = 0;
};

}  // namespace orv::ui
