#pragma once
// The bookkeeping behind View::animateWithDuration: which animation block animates which property
// of which view, from what to what and since when. Model values change at once; this keeps what
// the screen would still show (presentation values) and decides whether a block finished or was
// interrupted by a newer one on the same property.

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/rt/Object.h"

namespace orv::ui {

class View;

class ViewAnimator : public rt::Object {
    ORV_DECLARE_CLASS(ViewAnimator)
  public:
    enum class Property { Alpha, Center, Bounds, Transform, BackgroundColor };
    // A property's value as plain numbers (alpha: 1, centre: 2, bounds and colour: 4,
    // transform: 6), so that one linear interpolation serves them all.
    using Values = std::array<double, 6>;

    static ViewAnimator& shared();
    // Forgets everything in flight (tests start from a clean slate).
    static void reset();

    void animate(double duration, double delay, unsigned options,
                 const std::function<void()>& animations, std::function<void(bool)> completion);
    void withoutAnimation(const std::function<void()>& changes);
    bool isInsideAnimationBlock() const;

    // The view's setters report each change of an animatable property here.
    void propertyChanged(const View& view, Property property, const Values& from, const Values& to);
    void forgetView(const View& view);

    // What the screen shows now for the property, or nothing when it is not animating.
    std::optional<Values> presentationValue(const View& view, Property property) const;
    bool isAnimating(const View& view, Property property) const;

  private:
    struct Transaction;
    struct Track {
        std::shared_ptr<Transaction> transaction;
        Values from{};
        Values to{};
    };
    using Key = std::pair<const View*, Property>;

    Values valueOf(const Track& track) const;
    void dropTrack(std::map<Key, Track>::iterator it, bool interrupted);
    void finish(const std::shared_ptr<Transaction>& transaction);

    std::vector<std::shared_ptr<Transaction>> stack_;  // null entries: performWithoutAnimation
    std::map<Key, Track> tracks_;
};

}  // namespace orv::ui
