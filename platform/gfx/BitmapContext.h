#pragma once
// A drawing context over a bitmap buffer: what brushes, stickers and composition draw with.
//
// Coordinates start with the origin at the bottom left and y upward, in pixels (the base
// space). The current transform (CTM) maps user space to base space; translate/scale/rotate
// post-multiply it, so the newest step acts first on drawn coordinates, and a rotation by a
// positive angle turns counter-clockwise in the y-up frame.
//
// Pixels are composed on premultiplied values with the blend mode in force. A drawing
// operation only touches the pixels its shape covers (and the clip allows); inside the shape
// the blend mode decides:
//   Normal          S + D × (1 − Sa)       (source over)
//   Copy            S                      (the source replaces the destination)
//   SourceIn        S × Da
//   DestinationOut  D × (1 − Sa)
//   Clear           0
// With antialias on, edge pixels mix the result and the destination by their coverage.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/gfx/Bitmap.h"
#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"
#include "platform/gfx/Image.h"
#include "platform/gfx/Path.h"

typedef struct _cairo cairo_t;

namespace orv::gfx {

// The platform's numbering.
enum class BlendMode { Normal = 0, Clear = 16, Copy = 17, SourceIn = 18, DestinationOut = 23 };
enum class InterpolationQuality { Default = 0, None = 1, Low = 2, High = 3, Medium = 4 };

class BitmapContext {
  public:
    // An owned, zero-filled (transparent) buffer with tight rows. Sizes of no pixels, or past
    // 65536 a side or 2^28 pixels, give a context without pixels that draws nothing.
    BitmapContext(int width, int height, PixelFormat format = PixelFormat::RGBA8888Premultiplied);
    // Draws into a caller-owned buffer of `rowBytes` × `height` bytes (0: tight rows), which
    // must outlive the context; the context never frees it. Row bytes must be a multiple of 4
    // and at least 4 × width; otherwise, or without a buffer, the context has no pixels and
    // draws nothing.
    BitmapContext(uint8_t* data, int width, int height, size_t rowBytes = 0,
                  PixelFormat format = PixelFormat::RGBA8888Premultiplied);
    virtual ~BitmapContext();
    BitmapContext(const BitmapContext&) = delete;
    BitmapContext& operator=(const BitmapContext&) = delete;

    uint8_t* data() const;
    int width() const;
    int height() const;
    size_t rowBytes() const;
    PixelFormat format() const;

    // The graphics state. save/restore push and pop all of it: transform, clip, blend mode,
    // interpolation, antialias, alpha, colours, line settings and shadow.
    void saveGState();
    void restoreGState();  // an unbalanced restore does nothing

    void translateCTM(double tx, double ty);
    void scaleCTM(double sx, double sy);
    void rotateCTM(double radians);
    void concatCTM(const AffineTransform& t);  // t acts first, then the current transform
    AffineTransform ctm() const;               // user space to base space

    void setBlendMode(BlendMode mode);
    BlendMode blendMode() const;
    // None samples the nearest pixel; every other value smooths (bilinear, and area averaging
    // when an image is reduced by more than half).
    void setInterpolationQuality(InterpolationQuality quality);
    InterpolationQuality interpolationQuality() const;
    void setShouldAntialias(bool antialias);
    bool shouldAntialias() const;
    // Multiplies every drawing's alpha (CGContextSetAlpha).
    void setAlpha(double alpha);

    void setFillColor(const Color& color);
    void setStrokeColor(const Color& color);
    void setLineWidth(double width);
    void setLineCap(LineCap cap);
    void setLineJoin(LineJoin join);
    void setMiterLimit(double limit);

    // Every later drawing casts a shadow: its alpha, blurred by `blur` (the platform's blur
    // radius in base units) and offset by `offset` in base space, filled with `color`, drawn
    // under the drawing with the same blend mode. A missing or fully clear colour turns the
    // shadow off. The offset and blur do not follow the CTM.
    void setShadow(Size offset, double blur, std::optional<Color> color);

    // Intersects the clip with the rectangle under the current transform.
    void clipToRect(const Rect& rect);

    void fillRect(const Rect& rect);
    // Sets the rectangle to transparent black whatever the blend mode.
    void clearRect(const Rect& rect);
    void fillEllipseInRect(const Rect& rect);
    void fillPath(const Path& path, bool evenOdd = false);
    void strokePath(const Path& path);

    // CGContextDrawImage: the bitmap scaled into `rect` under the transform, blend mode and
    // interpolation; its top row goes to the rectangle's high-y edge, so drawing at
    // (0, 0, width, height) into a context of that size reproduces it row for row. Any of the
    // three pixel formats is accepted.
    void drawImage(const Rect& rect, const Bitmap& bitmap);
    // UIImage drawInRect: the picture upright in a y-down user space (its top row at the
    // rectangle's low-y edge), its orientation tag applied. As on the platform it draws with
    // the Normal mode and an alpha of 1 whatever the state says (clip and shadow still apply).
    // A picture without a bitmap draws nothing.
    void drawImageInRect(const Image& image, const Rect& rect);

    // Draws what `paint` draws with cairo, under the transform, clip, alpha, blend mode and
    // shadow. `paint` gets a cairo context whose user space is this context's user space and
    // must stay inside `userBounds` (anything outside may be cut). What it draws is composed as
    // one picture over the whole of `userBounds`, so a Copy replaces all of that rectangle.
    // Text drawing goes through this.
    void drawWithCairo(const Rect& userBounds, const std::function<void(cairo_t*)>& paint);

    // An immutable copy of the pixels now, unaffected by later drawing.
    BitmapPtr makeImage() const;
    // For a canvas that is drawn on a little at a time and shown after every change: makeImage()
    // then reuses the buffers of snapshots that nobody holds any more and copies into them only
    // what changed since they were taken, instead of copying the whole canvas into fresh memory.
    // Up to two such buffers are kept while the context lives. Off by default. Writes made
    // through data() are not seen by it: call markChanged() after them.
    void setRecyclesSnapshots(bool on);
    // Everything is taken as changed for the next snapshot.
    void markChanged();

  protected:
    // Makes `t` the initial transform and the space shadows are measured in (the image
    // context's y-down points). Call before drawing, with no state saved.
    void setBaseTransform(const AffineTransform& t);
    // Hands over the pixels as a bitmap, without a copy when the context owns them, and leaves
    // the context without pixels: later drawing does nothing.
    BitmapPtr takeBitmap();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace orv::gfx
