#pragma once
// The canvas of the demo's picture sheets (filters, GIF frames, crops): a dark page, pictures
// laid on it by the caller, centred captions under them, written out as one PNG.

#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/ImageContext.h"

namespace orvdemo {

class ContactSheet {
  public:
    explicit ContactSheet(gfx::Size size);

    gfx::ImageContext& context() { return context_; }
    // One line, centred, cut short with an ellipsis when too long.
    void drawLabel(const std::string& text, const gfx::Rect& rect, double fontSize = 14);
    // The sheet as a PNG at `path`; false when it could not be written. Ends the drawing.
    bool write(const std::string& path);

  private:
    gfx::ImageContext context_;
};

}  // namespace orvdemo
