#pragma once
// One finger on the screen. A touch keeps its place in window coordinates; the view it landed on
// (chosen by hit testing at touch-down) is held for the whole life of the touch.

#include <memory>

#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"

namespace orv::ui {

class View;
class Window;

// The platform's numbering.
enum class TouchPhase { Began = 0, Moved = 1, Stationary = 2, Ended = 3, Cancelled = 4 };

class Touch : public rt::Object {
    ORV_DECLARE_CLASS(Touch)
  public:
    // A touch that comes down within this time of a tap ending, and this close to it, continues
    // the tap sequence; a touch that strays further than the distance from where it began is no
    // tap.
    static constexpr double kMultiTapInterval = 0.3;
    static constexpr double kTapMovementLimit = 10;

    TouchPhase phase() const { return phase_; }
    // Where the finger is (was, before the last move) in the view's coordinates; null means the
    // window's.
    gfx::Point locationInView(const View* view) const;
    gfx::Point previousLocationInView(const View* view) const;
    View* view() const { return view_.get(); }
    Window* window() const { return window_; }
    // 1 for a lone touch; one more than the last tap's count when this touch came down soon
    // after a tap at nearly the same place.
    int tapCount() const { return tapCount_; }
    double timestamp() const { return timestamp_; }

  private:
    friend class TouchDispatcher;

    TouchPhase phase_ = TouchPhase::Began;
    gfx::Point location_;
    gfx::Point previousLocation_;
    gfx::Point startLocation_;
    bool movedFromStart_ = false;  // went further than a tap allows
    std::shared_ptr<View> view_;
    Window* window_ = nullptr;
    int tapCount_ = 1;
    double timestamp_ = 0;
};

using TouchPtr = std::shared_ptr<Touch>;

}  // namespace orv::ui
