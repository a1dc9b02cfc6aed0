#include "platform/gfx/CairoPath.h"

namespace orv::gfx::cairo_path {

void append(cairo_t* cr, const Path& path) {
    for (const Path::Element& e : path.elements()) {
        const Point* p = e.points;
        switch (e.type) {
            case Path::ElementType::MoveTo:
                cairo_move_to(cr, p[0].x, p[0].y);
                break;
            case Path::ElementType::LineTo:
                cairo_line_to(cr, p[0].x, p[0].y);
                break;
            case Path::ElementType::QuadCurveTo: {
                double x0, y0;
                cairo_get_current_point(cr, &x0, &y0);
                // The cubic with the same shape as the quadratic.
                cairo_curve_to(cr, x0 + 2.0 / 3 * (p[0].x - x0), y0 + 2.0 / 3 * (p[0].y - y0),
                               p[1].x + 2.0 / 3 * (p[0].x - p[1].x),
                               p[1].y + 2.0 / 3 * (p[0].y - p[1].y), p[1].x, p[1].y);
                break;
            }
            case Path::ElementType::CurveTo:
                cairo_curve_to(cr, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
                break;
            case Path::ElementType::Close:
                cairo_close_path(cr);
                break;
        }
    }
}

cairo_matrix_t matrix(const AffineTransform& t) {
    cairo_matrix_t m;
    cairo_matrix_init(&m, t.a, t.b, t.c, t.d, t.tx, t.ty);
    return m;
}

cairo_line_cap_t lineCap(LineCap cap) {
    switch (cap) {
        case LineCap::Butt:
            return CAIRO_LINE_CAP_BUTT;
        case LineCap::Round:
            return CAIRO_LINE_CAP_ROUND;
        case LineCap::Square:
            return CAIRO_LINE_CAP_SQUARE;
    }
    return CAIRO_LINE_CAP_BUTT;
}

cairo_line_join_t lineJoin(LineJoin join) {
    switch (join) {
        case LineJoin::Miter:
            return CAIRO_LINE_JOIN_MITER;
        case LineJoin::Round:
            return CAIRO_LINE_JOIN_ROUND;
        case LineJoin::Bevel:
            return CAIRO_LINE_JOIN_BEVEL;
    }
    return CAIRO_LINE_JOIN_MITER;
}

}  // namespace orv::gfx::cairo_path
