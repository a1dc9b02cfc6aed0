#include "platform/ui/ViewAnimator.h"

#include <algorithm>

#include "platform/rt/RunLoop.h"

namespace orv::ui {

ORV_DEFINE_CLASS(ViewAnimator, rt::Object)

struct ViewAnimator::Transaction {
    double duration = 0;
    double delay = 0;
    unsigned options = 0;
    double start = 0;  // when the values begin to move (after the delay)
    std::function<void(bool)> completion;
    int activeTracks = 0;
    bool touched = false;  // the block changed at least one animatable property
    bool finished = true;  // false once a newer block took one of its properties
    bool done = false;
};

namespace {

std::shared_ptr<ViewAnimator>& sharedSlot() {
    static std::shared_ptr<ViewAnimator> animator;
    return animator;
}

}  // namespace

ViewAnimator& ViewAnimator::shared() {
    auto& slot = sharedSlot();
    if (!slot) slot = rt::make<ViewAnimator>();
    return *slot;
}

void ViewAnimator::reset() {
    sharedSlot().reset();
}

void ViewAnimator::animate(double duration, double delay, unsigned options,
                           const std::function<void()>& animations,
                           std::function<void(bool)> completion) {
    auto transaction = std::make_shared<Transaction>();
    transaction->duration = std::max(0.0, duration);
    transaction->delay = std::max(0.0, delay);
    transaction->options = options;
    transaction->start = rt::RunLoop::main().now() + transaction->delay;
    transaction->completion = std::move(completion);

    stack_.push_back(transaction);
    try {
        if (animations) animations();
    } catch (...) {
        stack_.pop_back();
        throw;
    }
    stack_.pop_back();

    // The loop keeps the animator alive through `self`, should the shared one be reset meanwhile.
    auto self = this->self<ViewAnimator>();
    // A block that animated nothing completes on the next turn, as the platform does.
    const double wait = transaction->touched ? transaction->delay + transaction->duration : 0;
    rt::RunLoop::main().postDelayed(wait, [self, transaction] { self->finish(transaction); });
}

void ViewAnimator::withoutAnimation(const std::function<void()>& changes) {
    stack_.push_back(nullptr);
    try {
        if (changes) changes();
    } catch (...) {
        stack_.pop_back();
        throw;
    }
    stack_.pop_back();
}

bool ViewAnimator::isInsideAnimationBlock() const {
    return !stack_.empty() && stack_.back();
}

void ViewAnimator::propertyChanged(const View& view, Property property, const Values& from,
                                   const Values& to) {
    const Key key{&view, property};
    auto it = tracks_.find(key);
    if (!isInsideAnimationBlock()) {
        // A plain change jumps the screen to the new value; the block that was animating it
        // still completes at its time.
        if (it != tracks_.end()) dropTrack(it, false);
        return;
    }
    const auto& transaction = stack_.back();
    transaction->touched = true;
    if (it != tracks_.end() && it->second.transaction == transaction) {
        it->second.to = to;
        return;
    }
    Values start = from;
    if (it != tracks_.end()) {
        start = valueOf(it->second);  // continue from what the screen shows now
        dropTrack(it, true);
    }
    tracks_[key] = Track{transaction, start, to};
    ++transaction->activeTracks;
}

void ViewAnimator::dropTrack(std::map<Key, Track>::iterator it, bool interrupted) {
    auto transaction = it->second.transaction;
    tracks_.erase(it);
    --transaction->activeTracks;
    if (!interrupted) return;
    transaction->finished = false;
    // An interrupted block completes as soon as nothing of it is left running.
    if (transaction->activeTracks == 0 && !transaction->done) {
        auto self = this->self<ViewAnimator>();
        rt::RunLoop::main().post([self, transaction] { self->finish(transaction); });
    }
}

void ViewAnimator::finish(const std::shared_ptr<Transaction>& transaction) {
    if (transaction->done) return;
    transaction->done = true;
    std::erase_if(tracks_,
                  [&](const auto& entry) { return entry.second.transaction == transaction; });
    transaction->activeTracks = 0;
    if (auto completion = std::move(transaction->completion)) completion(transaction->finished);
}

void ViewAnimator::forgetView(const View& view) {
    for (auto it = tracks_.begin(); it != tracks_.end();) {
        if (it->first.first == &view) {
            --it->second.transaction->activeTracks;
            it = tracks_.erase(it);
        } else {
            ++it;
        }
    }
}

ViewAnimator::Values ViewAnimator::valueOf(const Track& track) const {
    const Transaction& t = *track.transaction;
    const double elapsed = rt::RunLoop::main().now() - t.start;
    const double progress =
        t.duration <= 0 ? (elapsed >= 0 ? 1.0 : 0.0) : std::clamp(elapsed / t.duration, 0.0, 1.0);
    Values v{};
    for (size_t i = 0; i < v.size(); ++i) {
        v[i] = track.from[i] + (track.to[i] - track.from[i]) * progress;
    }
    return v;
}

std::optional<ViewAnimator::Values> ViewAnimator::presentationValue(const View& view,
                                                                    Property property) const {
    auto it = tracks_.find(Key{&view, property});
    if (it == tracks_.end()) return std::nullopt;
    return valueOf(it->second);
}

bool ViewAnimator::isAnimating(const View& view, Property property) const {
    return tracks_.count(Key{&view, property}) > 0;
}

}  // namespace orv::ui
