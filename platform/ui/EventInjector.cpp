#include "platform/ui/EventInjector.h"

#include <algorithm>
#include <cmath>

#include "platform/rt/RunLoop.h"
#include "platform/ui/TouchDispatcher.h"

namespace orv::ui {

ORV_DEFINE_CLASS(EventInjector, rt::Object)

namespace {

// Ids of the injector's own fingers, well away from what scripts use.
constexpr int kFirstFinger = 1 << 20;
constexpr int kSecondFinger = kFirstFinger + 1;

double distance(gfx::Point a, gfx::Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

gfx::Point lerp(gfx::Point a, gfx::Point b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

void runFor(double seconds) {
    rt::RunLoop::main().runFor(seconds);
}

}  // namespace

std::shared_ptr<EventInjector> EventInjector::injectorForWindow(std::shared_ptr<View> window) {
    auto injector = rt::make<EventInjector>();
    injector->dispatcher_ = TouchDispatcher::dispatcherForView(std::move(window));
    return injector;
}

void EventInjector::tap(gfx::Point p, int tapCount) {
    startFreshSequence(p);
    for (int i = 0; i < tapCount; ++i) {
        if (i > 0) runFor(kTapGapSeconds);
        touchDown(kFirstFinger, p);
        runFor(kTapHoldSeconds);
        touchUp(kFirstFinger);
    }
}

void EventInjector::longPress(gfx::Point p, double seconds) {
    startFreshSequence(p);
    touchDown(kFirstFinger, p);
    runFor(seconds);
    touchUp(kFirstFinger);
}

void EventInjector::drag(const std::vector<gfx::Point>& path, double duration) {
    if (path.empty()) return;
    startFreshSequence(path.front());
    double length = 0;
    for (size_t i = 1; i < path.size(); ++i) length += distance(path[i - 1], path[i]);
    // Each leg gets its share of the steps by length, at least one, so corners are visited.
    const int totalSteps = stepsFor(duration);
    std::vector<int> legSteps;
    int stepCount = 0;
    for (size_t i = 1; i < path.size(); ++i) {
        const double share = length > 0 ? distance(path[i - 1], path[i]) / length : 1.0;
        legSteps.push_back(std::max(1, static_cast<int>(std::lround(share * totalSteps))));
        stepCount += legSteps.back();
    }
    const double dt = stepCount > 0 ? duration / stepCount : duration;

    touchDown(kFirstFinger, path.front());
    if (stepCount == 0) runFor(duration);
    gfx::Point last = path.front();
    for (size_t leg = 0; leg < legSteps.size(); ++leg) {
        for (int s = 1; s <= legSteps[leg]; ++s) {
            runFor(dt);
            const gfx::Point next = lerp(path[leg], path[leg + 1], double(s) / legSteps[leg]);
            if (next == last) continue;  // a finger that stays put sends no move
            touchMove(kFirstFinger, next);
            last = next;
        }
    }
    touchUp(kFirstFinger);
}

void EventInjector::pinch(gfx::Point center, double startDistance, double endDistance,
                          double duration) {
    twoFingerGesture(
        [&](double t) {
            const double half = (startDistance + (endDistance - startDistance) * t) / 2;
            return FingerPair{{center.x - half, center.y}, {center.x + half, center.y}};
        },
        duration);
}

void EventInjector::rotate(gfx::Point center, double radius, double startAngle, double endAngle,
                           double duration) {
    twoFingerGesture(
        [&](double t) {
            const double a = startAngle + (endAngle - startAngle) * t;
            const double dx = radius * std::cos(a), dy = radius * std::sin(a);
            return FingerPair{{center.x - dx, center.y - dy}, {center.x + dx, center.y + dy}};
        },
        duration);
}

void EventInjector::touchDown(int id, gfx::Point p) {
    dispatcher_->touchesDown({{id, p}});
}

void EventInjector::touchMove(int id, gfx::Point p) {
    dispatcher_->touchesMove({{id, p}});
}

void EventInjector::touchesMove(const std::vector<std::pair<int, gfx::Point>>& moves) {
    std::vector<TouchDispatcher::Finger> fingers;
    for (const auto& [id, p] : moves) fingers.push_back({id, p});
    dispatcher_->touchesMove(fingers);
}

void EventInjector::touchUp(int id) {
    dispatcher_->touchesUp({id});
}

void EventInjector::touchCancel(int id) {
    dispatcher_->touchesCancel({id});
}

void EventInjector::startFreshSequence(gfx::Point p) {
    if (auto deadline = dispatcher_->tapSequenceDeadline(p)) {
        rt::RunLoop::main().runUntilTime(*deadline + kStepSeconds);
    }
}

void EventInjector::twoFingerGesture(const std::function<FingerPair(double)>& fingersAt,
                                     double duration) {
    const FingerPair start = fingersAt(0);
    startFreshSequence(start.first);
    dispatcher_->touchesDown({{kFirstFinger, start.first}, {kSecondFinger, start.second}});
    const int steps = stepsFor(duration);
    for (int s = 1; s <= steps; ++s) {
        runFor(duration / steps);
        const FingerPair at = fingersAt(double(s) / steps);
        dispatcher_->touchesMove({{kFirstFinger, at.first}, {kSecondFinger, at.second}});
    }
    dispatcher_->touchesUp({kFirstFinger, kSecondFinger});
}

int EventInjector::stepsFor(double duration) {
    return std::max(1, static_cast<int>(std::ceil(duration / kStepSeconds - 1e-9)));
}

}  // namespace orv::ui
