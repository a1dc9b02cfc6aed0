#pragma once
// How much of each device pixel a drawing covers, for the bitmap context. Device pixels run x
// right and y down from the bitmap's first row. A coverage is a box of pixels and either no
// mask (every pixel of the box wholly covered: the fast case of pixel-exact rectangles) or an
// A8 mask over the box. Masks are shared and never change once made, so a coverage is cheap to
// copy; the clip is one too.

#include <pixman.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/gfx/Geometry.h"

typedef struct _cairo cairo_t;

namespace orv::gfx {

struct PixmanUnref {
    void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};
using PixmanPtr = std::unique_ptr<pixman_image_t, PixmanUnref>;

// Device pixels [x0, x1) × [y0, y1).
struct PixelBox {
    int x0 = 0, y0 = 0, x1 = 0, y1 = 0;

    int width() const { return x1 - x0; }
    int height() const { return y1 - y0; }
    bool empty() const { return x1 <= x0 || y1 <= y0; }
    PixelBox intersected(const PixelBox& o) const;
    PixelBox united(const PixelBox& o) const;  // the box around both
    PixelBox inflated(int margin) const;
    PixelBox shifted(int dx, int dy) const;
    // The pixels an area of these extents touches; non-finite extents give an empty box.
    static PixelBox enclosing(double minX, double minY, double maxX, double maxY);
};

class Coverage {
  public:
    Coverage() = default;  // covers nothing

    static Coverage full(const PixelBox& box);
    // A polygon in device coordinates, inside `limit`. Axis-aligned rectangles on whole pixels
    // (or, without antialias, any axis-aligned rectangle) need no mask. Coordinates may be
    // huge: the polygon is cut to the limit before it is rendered.
    static Coverage polygon(const std::vector<Point>& corners, const PixelBox& limit,
                            bool antialias);
    // What `paint` fills or strokes with cairo on the pixels of `box`, in a user space that
    // `userToDevice` maps to device pixels. Empty when the transform cannot be inverted.
    static Coverage painted(const PixelBox& box, const AffineTransform& userToDevice,
                            bool antialias, const std::function<void(cairo_t*)>& paint);
    // What `compose` composites into a zeroed A8 image over `box` (its pixel 0, 0 being the
    // box's top left).
    static Coverage composed(const PixelBox& box,
                             const std::function<void(pixman_image_t*)>& compose);

    const PixelBox& box() const { return box_; }
    bool empty() const { return box_.empty(); }
    bool isFull() const { return !mask_; }
    // The mask, or null when the box is wholly covered. Its pixel (0, 0) is the device pixel
    // (maskX(), maskY()).
    pixman_image_t* mask() const;
    int maskX() const { return maskX_; }
    int maskY() const { return maskY_; }

    Coverage intersected(const Coverage& other) const;
    Coverage scaled(double alpha) const;  // every value times alpha
    // A gaussian-like blur (three box passes); the box grows by blurReach(sigma) on each side.
    Coverage blurred(double sigma) const;
    Coverage shifted(int dx, int dy) const;

    static int blurReach(double sigma);

  private:
    struct Mask;
    Coverage(const PixelBox& box, std::shared_ptr<const Mask> mask, int maskX, int maskY);

    PixelBox box_;
    std::shared_ptr<const Mask> mask_;
    int maskX_ = 0, maskY_ = 0;
};

}  // namespace orv::gfx
