#pragma once
// Hands our paths, transforms and line settings to cairo, for every drawing surface of this
// folder that renders shapes with it.

#include <cairo.h>

#include "platform/gfx/Geometry.h"
#include "platform/gfx/Path.h"

namespace orv::gfx::cairo_path {

// Appends the path's sub-paths to the current path of `cr`, in its user space.
void append(cairo_t* cr, const Path& path);

cairo_matrix_t matrix(const AffineTransform& t);
cairo_line_cap_t lineCap(LineCap cap);
cairo_line_join_t lineJoin(LineJoin join);

}  // namespace orv::gfx::cairo_path
