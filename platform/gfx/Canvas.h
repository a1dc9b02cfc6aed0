#pragma once
// A drawing surface over an owned R, G, B, A premultiplied bitmap, in view coordinates (y down,
// points), with a device scale. This is what the renderer draws a window through; the bitmap
// context with y up and blend modes is a different class.

#include <memory>

#include "platform/gfx/Bitmap.h"
#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/gfx/Path.h"

namespace orv::gfx {

struct StrokeStyle {
    double width = 1;
    LineCap cap = LineCap::Butt;
    LineJoin join = LineJoin::Miter;
    double strokeStart = 0;  // fractions of the path's length to draw, 0 to 1
    double strokeEnd = 1;
};

class Canvas {
  public:
    // A transparent surface of size × scale pixels.
    Canvas(Size sizeInPoints, double scale);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    Size size() const;
    double scale() const;

    // State: transform (concatenated before what is there), clip, global alpha.
    void save();
    void restore();
    void concat(const AffineTransform& t);
    void translate(double x, double y);
    void clipToRect(const Rect& r);
    void clipToRoundedRect(const Rect& r, double cornerRadius);
    void setAlpha(double alpha);  // multiplies with the alpha already in force
    double alpha() const;

    // Drawing between these goes to a transparent sheet that is then laid over the canvas at
    // `alpha` times the alpha in force when the sheet began, so overlapping parts of a
    // translucent group do not show through each other. Inside the sheet the alpha starts at 1.
    // The pair also saves and restores the state, as save() and restore() do.
    void beginTransparencyLayer();
    void endTransparencyLayer(double alpha = 1);

    void fill(const Color& color);  // the whole clip
    void fillRect(const Rect& r, const Color& color);
    void fillPath(const Path& path, const Color& color);
    void strokePath(const Path& path, const Color& color, const StrokeStyle& style);
    // The border of a rectangle drawn inside its edge, as a layer border is.
    void strokeRectInside(const Rect& r, double width, double cornerRadius, const Color& color);
    // Draws the image's pixels, orientation applied, scaled smoothly into `r`.
    void drawImage(const Image& image, const Rect& r);
    // Draws only the image's alpha, filled with a colour (template rendering).
    void drawImageTinted(const Image& image, const Rect& r, const Color& tint);
    void drawRadialGradient(Point center, double radius, const Color& inner, const Color& outer);

    // The pixels so far, R, G, B, A premultiplied, unaffected by later drawing.
    BitmapPtr snapshot() const;

    struct Impl;
    Impl& impl() { return *impl_; }

  private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace orv::gfx
