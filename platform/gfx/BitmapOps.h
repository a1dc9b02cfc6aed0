#pragma once
// Pixel operations on bitmaps: smooth resampling, cropping, applying an orientation tag, and
// the premultiplication of alpha. Every result keeps the source's pixel format.

#include <cstdint>

#include "platform/gfx/Bitmap.h"
#include "platform/gfx/Image.h"

namespace orv::gfx {

class BitmapOps {
  public:
    BitmapOps() = delete;

    // A new bitmap of width × height. Each axis is reduced by area averaging (every source
    // pixel counts by the share of it that falls in the target pixel) and enlarged by linear
    // interpolation. Sizes below 1 give null.
    static BitmapPtr resized(const Bitmap& source, int width, int height);

    // The rectangle, clipped to the bitmap; null when nothing is left.
    static BitmapPtr cropped(const Bitmap& source, int x, int y, int width, int height);

    // The pixels turned and mirrored so that showing the result upright looks like showing
    // `source` with `orientation`. Up gives a copy.
    static BitmapPtr oriented(const Bitmap& source, ImageOrientation orientation);

    // Copies `count` four-byte pixels with their first and third bytes traded (R, G, B, A to
    // B, G, R, A and back); with `opaque` the fourth byte becomes 255. `src` and `dst` may be
    // the same row but must not otherwise overlap.
    static void swapRedBlueRow(const uint8_t* src, uint8_t* dst, int count, bool opaque = false);

    // Straight alpha to premultiplied and back, in place, for `count` four-byte pixels whose
    // alpha is the fourth byte.
    static void premultiplyRow(uint8_t* pixels, int count);
    static void unpremultiplyRow(uint8_t* pixels, int count);
};

}  // namespace orv::gfx
