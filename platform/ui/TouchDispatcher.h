#pragma once
// Delivers the fingers of one window to its views and gesture recognisers.
//
// At touch-down the window is hit-tested and the touch belongs to that view for its whole life.
// The recognisers attached to the view and its ancestors (deepest first) see each change before
// the view does. When a recogniser that cancels touches in its view begins (continuous) or is
// recognised (discrete), its targets are told first, then the views get touchesCancelled for
// those touches and hear nothing more of them.

#include <memory>
#include <optional>
#include <vector>

#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"
#include "platform/ui/Responder.h"

namespace orv::ui {

class View;
class Window;
class Event;
class GestureRecognizer;
enum class TouchPhase;

class TouchDispatcher : public rt::Object {
    ORV_DECLARE_CLASS(TouchDispatcher)
  public:
    // `root` is what touches are hit-tested in (normally the window); points are in window
    // coordinates.
    static std::shared_ptr<TouchDispatcher> dispatcherForView(std::shared_ptr<View> root);

    // A finger, named by the caller's id, and where it is.
    struct Finger {
        int id = 0;
        gfx::Point location;
    };

    // Each call is one change of the screen, reported to every responder at once. Ids must be
    // down (or, for touchesDown, not yet down); anything else is a scripting error and throws.
    void touchesDown(const std::vector<Finger>& fingers);
    void touchesMove(const std::vector<Finger>& fingers);
    void touchesUp(const std::vector<int>& ids);
    void touchesCancel(const std::vector<int>& ids);

    bool isDown(int id) const;
    std::shared_ptr<Touch> touchWithId(int id) const;
    Event* event() const { return event_.get(); }
    View* root() const { return root_.get(); }
    // The time until which a touch coming down at `p` would continue the last tap sequence.
    std::optional<double> tapSequenceDeadline(gfx::Point p) const;

    void dealloc() override;

  private:
    friend class GestureRecognizer;
    struct Record {
        int id = 0;
        std::shared_ptr<Touch> touch;
        std::vector<std::shared_ptr<GestureRecognizer>> recognizers;
        bool viewBegan = false;
        bool viewCancelled = false;
    };
    struct LastTap {
        double time = 0;
        gfx::Point location;
        int count = 0;
    };

    // Lets the recogniser begin unless an active one sharing its touches objects; fails the
    // possible ones it excludes.
    bool admit(GestureRecognizer& recognizer);
    void cancelTouchesInView(GestureRecognizer& recognizer);

    Record& recordFor(int id);
    Record* recordFor(const Touch* touch);
    std::shared_ptr<Touch> makeTouch(gfx::Point location, double now);
    std::vector<std::shared_ptr<GestureRecognizer>> recognizersFor(Touch& touch) const;
    std::vector<std::shared_ptr<GestureRecognizer>> knownRecognizers() const;
    static bool isAttached(const GestureRecognizer& recognizer);
    void beginChange(double now, const TouchSet& changed);
    void deliver(TouchPhase phase, const TouchSet& touches);
    void deliverToRecognizers(TouchPhase phase, const TouchSet& touches);
    void deliverToViews(TouchPhase phase, const TouchSet& touches);
    void finish(TouchPhase phase, const std::vector<int>& ids);
    void forget(const TouchSet& touches);

    std::shared_ptr<View> root_;
    Window* window_ = nullptr;
    std::shared_ptr<Event> event_;
    std::vector<Record> records_;
    std::optional<LastTap> lastTap_;
};

}  // namespace orv::ui
