#pragma once
// Drives a window as a user would: taps, long presses, drags, pinches and rotations, in window
// coordinates and through hit testing, paced by the main run loop's clock. Between the steps of
// a gesture the main loop runs for the step's time (RunLoop::runFor), so on a manual clock time
// moves only as the gesture needs; each call returns right after the last finger lifts.
//
// A gesture starts a fresh tap sequence: when a tap near the same point ended less than
// Touch::kMultiTapInterval ago, the loop first runs past that interval, so two tap() calls in a
// row are two single taps, while tap(p, 2) or doubleTap() is one double tap.

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"

namespace orv::ui {

class View;
class TouchDispatcher;

class EventInjector : public rt::Object {
    ORV_DECLARE_CLASS(EventInjector)
  public:
    // Time a tapping finger stays down, and the pause between the taps of a multi-tap.
    static constexpr double kTapHoldSeconds = 0.05;
    static constexpr double kTapGapSeconds = 0.1;
    // Time between two moves of a gesture (a 60 Hz screen).
    static constexpr double kStepSeconds = 1.0 / 60;

    // `window` is normally a Window; any root view works the same way.
    static std::shared_ptr<EventInjector> injectorForWindow(std::shared_ptr<View> window);

    void tap(gfx::Point p, int tapCount = 1);
    void doubleTap(gfx::Point p) { tap(p, 2); }
    void longPress(gfx::Point p, double seconds);
    // One finger along the polyline, every corner visited, in about `duration` seconds.
    void drag(const std::vector<gfx::Point>& path, double duration);
    // Two fingers on a horizontal line through the centre, from one distance apart to another.
    void pinch(gfx::Point center, double startDistance, double endDistance, double duration);
    // Two fingers opposite each other on a circle about the centre, turned from one angle to
    // another; angles grow clockwise on the screen.
    void rotate(gfx::Point center, double radius, double startAngle, double endAngle,
                double duration);

    // Scripted fingers, named by the caller's ids; each call is one change of the screen.
    void touchDown(int id, gfx::Point p);
    void touchMove(int id, gfx::Point p);
    void touchesMove(const std::vector<std::pair<int, gfx::Point>>& moves);
    void touchUp(int id);
    void touchCancel(int id);

    TouchDispatcher& dispatcher() const { return *dispatcher_; }

  private:
    using FingerPair = std::pair<gfx::Point, gfx::Point>;

    void startFreshSequence(gfx::Point p);
    void twoFingerGesture(const std::function<FingerPair(double)>& fingersAt, double duration);
    static int stepsFor(double duration);

    std::shared_ptr<TouchDispatcher> dispatcher_;
};

}  // namespace orv::ui
