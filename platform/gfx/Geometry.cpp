#include "platform/gfx/Geometry.h"

#include <algorithm>
#include <limits>
#include <sstream>

namespace orv::gfx {

Rect applyTransform(const Rect& r, const AffineTransform& t) {
    const Rect s = rectStandardize(r);
    const Point corners[4] = {applyTransform(s.origin, t),
                              applyTransform(Point{rectGetMaxX(s), s.origin.y}, t),
                              applyTransform(Point{s.origin.x, rectGetMaxY(s)}, t),
                              applyTransform(Point{rectGetMaxX(s), rectGetMaxY(s)}, t)};
    double minX = corners[0].x, maxX = corners[0].x, minY = corners[0].y, maxY = corners[0].y;
    for (const Point& p : corners) {
        minX = std::min(minX, p.x);
        maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y);
        maxY = std::max(maxY, p.y);
    }
    return {minX, minY, maxX - minX, maxY - minY};
}

Rect rectStandardize(const Rect& r) {
    return {rectGetMinX(r), rectGetMinY(r), rectGetWidth(r), rectGetHeight(r)};
}

Rect rectNull() {
    const double inf = std::numeric_limits<double>::infinity();
    return {inf, inf, 0, 0};
}

bool rectIsNull(const Rect& r) {
    return std::isinf(r.origin.x) || std::isinf(r.origin.y);
}

bool rectIsEmpty(const Rect& r) {
    return rectIsNull(r) || r.size.width == 0 || r.size.height == 0 || std::isnan(r.size.width) ||
           std::isnan(r.size.height);
}

bool rectContainsPoint(const Rect& r, Point p) {
    if (rectIsEmpty(r)) return false;
    return p.x >= rectGetMinX(r) && p.x < rectGetMaxX(r) && p.y >= rectGetMinY(r) &&
           p.y < rectGetMaxY(r);
}

bool rectContainsRect(const Rect& outer, const Rect& inner) {
    if (rectIsEmpty(outer)) return false;
    return rectGetMinX(inner) >= rectGetMinX(outer) && rectGetMaxX(inner) <= rectGetMaxX(outer) &&
           rectGetMinY(inner) >= rectGetMinY(outer) && rectGetMaxY(inner) <= rectGetMaxY(outer);
}

Rect rectIntersection(const Rect& a, const Rect& b) {
    if (rectIsNull(a) || rectIsNull(b)) return rectNull();
    const double x0 = std::max(rectGetMinX(a), rectGetMinX(b));
    const double y0 = std::max(rectGetMinY(a), rectGetMinY(b));
    const double x1 = std::min(rectGetMaxX(a), rectGetMaxX(b));
    const double y1 = std::min(rectGetMaxY(a), rectGetMaxY(b));
    if (x1 < x0 || y1 < y0) return rectNull();
    return {x0, y0, x1 - x0, y1 - y0};
}

bool rectIntersectsRect(const Rect& a, const Rect& b) {
    const Rect i = rectIntersection(a, b);
    return !rectIsNull(i) && i.size.width > 0 && i.size.height > 0;
}

Rect rectUnion(const Rect& a, const Rect& b) {
    if (rectIsNull(a)) return rectStandardize(b);
    if (rectIsNull(b)) return rectStandardize(a);
    const double x0 = std::min(rectGetMinX(a), rectGetMinX(b));
    const double y0 = std::min(rectGetMinY(a), rectGetMinY(b));
    const double x1 = std::max(rectGetMaxX(a), rectGetMaxX(b));
    const double y1 = std::max(rectGetMaxY(a), rectGetMaxY(b));
    return {x0, y0, x1 - x0, y1 - y0};
}

Rect rectInset(const Rect& r, double dx, double dy) {
    const Rect s = rectStandardize(r);
    const Rect out{s.origin.x + dx, s.origin.y + dy, s.size.width - 2 * dx, s.size.height - 2 * dy};
    if (out.size.width < 0 || out.size.height < 0) return rectNull();
    return out;
}

Rect rectOffset(const Rect& r, double dx, double dy) {
    return {r.origin.x + dx, r.origin.y + dy, r.size.width, r.size.height};
}

Rect rectIntegral(const Rect& r) {
    if (rectIsNull(r)) return r;
    const Rect s = rectStandardize(r);
    const double x0 = std::floor(s.origin.x), y0 = std::floor(s.origin.y);
    const double x1 = std::ceil(rectGetMaxX(s)), y1 = std::ceil(rectGetMaxY(s));
    return {x0, y0, x1 - x0, y1 - y0};
}

Rect insetRect(const Rect& r, const EdgeInsets& in) {
    return {r.origin.x + in.left, r.origin.y + in.top, r.size.width - in.left - in.right,
            r.size.height - in.top - in.bottom};
}

namespace {
std::string number(double v) {
    std::ostringstream s;
    s << v;
    return s.str();
}
}  // namespace

std::string toString(Point p) {
    return "{" + number(p.x) + ", " + number(p.y) + "}";
}
std::string toString(Size s) {
    return "{" + number(s.width) + ", " + number(s.height) + "}";
}
std::string toString(const Rect& r) {
    return "{" + toString(r.origin) + ", " + toString(r.size) + "}";
}

}  // namespace orv::gfx
