#pragma once
// The cairo state behind a Canvas, shared with the text drawing code of this folder.

#include <cairo.h>

#include <vector>

#include "platform/gfx/Canvas.h"

namespace orv::gfx {

struct Canvas::Impl {
    Impl(Size sizeInPoints, double deviceScale);
    ~Impl();
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    // Sets the source to `color` with the global alpha applied.
    void setSourceColor(const Color& color) const;

    Size size;
    double scale;
    cairo_surface_t* surface = nullptr;
    cairo_t* cr = nullptr;
    // What save() and beginTransparencyLayer() pushed, so that each pops only its own kind.
    struct Saved {
        double alpha;
        bool group;
    };

    double alpha = 1;
    std::vector<Saved> saved;
};

}  // namespace orv::gfx
