#pragma once
// The device screen: its size in points and its scale. Headless, both are settings (tests and
// the demo pick a device); the defaults are a 375 × 667 point phone at scale 2.

#include <memory>

#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"

namespace orv::ui {

class Screen : public rt::Object {
    ORV_DECLARE_CLASS(Screen)
  public:
    static Screen& main();
    // Puts a fresh screen with the defaults in place (tests).
    static void resetMain();

    gfx::Rect bounds() const { return bounds_; }
    void setBounds(const gfx::Rect& bounds) { bounds_ = bounds; }
    double scale() const { return scale_; }
    void setScale(double scale) { scale_ = scale > 0 ? scale : 1; }
    // The screen in pixels: the bounds' size times the scale.
    gfx::Size sizeInPixels() const;

  private:
    gfx::Rect bounds_{0, 0, 375, 667};
    double scale_ = 2;
};

}  // namespace orv::ui
