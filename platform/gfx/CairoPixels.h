#pragma once
// Bridges between our bitmaps (bytes R, G, B, A premultiplied) and cairo's image surfaces
// (32-bit native-endian words A R G B premultiplied, i.e. bytes B, G, R, A on this machine).

#include <cairo.h>

#include <memory>

#include "platform/gfx/Bitmap.h"

namespace orv::gfx::cairo_pixels {

// A bitmap in a layout cairo reads directly (B, G, R, A premultiplied or B, G, R, X). Converted
// copies of R, G, B, A bitmaps are kept in a small process-wide cache, because the renderer
// draws the same pictures every frame.
BitmapPtr readyForCairo(const BitmapPtr& bitmap);

// A surface over `pixels` (which must come from readyForCairo and outlive the surface).
cairo_surface_t* wrap(const Bitmap& pixels);

// Drops every cached conversion (tests and memory warnings).
void purgeCache();

}  // namespace orv::gfx::cairo_pixels
