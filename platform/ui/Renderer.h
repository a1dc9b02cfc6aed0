#pragma once
// Turns a window (or any view tree) into pixels, as the screen would show it now: presentation
// values of running animations, alpha composited by group, masks, clipping, borders, shape
// layers and each view's own drawing.

#include <string>

#include "platform/gfx/Bitmap.h"
#include "platform/rt/Object.h"

namespace orv::ui {

class View;
class Window;

class Renderer : public rt::Object {
    ORV_DECLARE_CLASS(Renderer)
  public:
    // The window at the main screen's scale, after a layout pass.
    static gfx::BitmapPtr render(Window& window);
    // A view's bounds at the main screen's scale, as it draws itself (its own centre and
    // transform left out).
    static gfx::BitmapPtr renderView(View& view);
    // render() written as a PNG file; false when it cannot be written.
    static bool writePNG(Window& window, const std::string& path);
};

}  // namespace orv::ui
