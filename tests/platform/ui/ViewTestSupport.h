#pragma once
// A clean slate for view tests: fresh application and screen singletons, no animation left
// over, and the main loop drained afterwards so that no completion outlives its test.

#include <gtest/gtest.h>

#include <cmath>

#include "platform/gfx/Geometry.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Application.h"
#include "platform/ui/Screen.h"
#include "platform/ui/ViewAnimator.h"

namespace orv::ui::test {

class ViewTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Application::resetShared();
        Screen::resetMain();
        ViewAnimator::reset();
    }
    void TearDown() override {
        rt::RunLoop::main().runFor(60);
        Application::resetShared();
        ViewAnimator::reset();
    }
    static void runFor(double seconds) { rt::RunLoop::main().runFor(seconds); }
    static void runPending() { rt::RunLoop::main().runPending(); }
};

inline void expectNear(gfx::Point actual, gfx::Point expected, double tolerance = 1e-9) {
    EXPECT_NEAR(actual.x, expected.x, tolerance) << gfx::toString(actual);
    EXPECT_NEAR(actual.y, expected.y, tolerance) << gfx::toString(actual);
}

inline void expectNear(const gfx::Rect& actual, const gfx::Rect& expected,
                       double tolerance = 1e-9) {
    EXPECT_NEAR(actual.origin.x, expected.origin.x, tolerance) << gfx::toString(actual);
    EXPECT_NEAR(actual.origin.y, expected.origin.y, tolerance) << gfx::toString(actual);
    EXPECT_NEAR(actual.size.width, expected.size.width, tolerance) << gfx::toString(actual);
    EXPECT_NEAR(actual.size.height, expected.size.height, tolerance) << gfx::toString(actual);
}

}  // namespace orv::ui::test
