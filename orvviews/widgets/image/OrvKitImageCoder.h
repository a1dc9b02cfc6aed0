#pragma once
// Decoded copies of pictures: a bitmap copied into the layout the renderer draws without
// conversion (B, G, R, A premultiplied, or B, G, R and a spare byte when opaque), so that
// showing it later costs nothing, and the mark on an image that says it has been through this.

#include "frameworks/core/OrvKit.h"
#include "platform/gfx/Bitmap.h"
#include "platform/gfx/Image.h"

// The colour space every bitmap here is in. There is only device RGB, so this is a token
// that names it, shared by the whole process.
struct OrvColorSpace {
    const char* name;
};
const OrvColorSpace* orvelCGColorSpaceGetDeviceRGB();

// With decodeForDisplay, the picture drawn into a new B, G, R, A (with alpha) or B, G, R, X
// (without) bitmap; without it, a private copy of the pixels as they are. Null for no picture,
// an empty one, or when the copy cannot be made.
gfx::BitmapPtr orvelCGImageCreateDecodedCopy(const gfx::BitmapPtr& image, bool decodeForDisplay);

// The image itself when it is already decoded (or cannot be); otherwise a new image of the
// same class with decoded pixels, the same scale and orientation, marked as decoded.
gfx::ImagePtr orvelImageByDecoded(const gfx::ImagePtr& image);
bool orvel_isDecodedForDisplay(const gfx::Image& image);
void setOrvel_isDecodedForDisplay(gfx::Image& image, bool decoded);
