#include "platform/gfx/Path.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orv::gfx {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
// The control-point distance of a cubic that follows a unit quarter circle.
constexpr double kQuarterKappa = 0.5522847498307936;

int pointCount(Path::ElementType type) {
    switch (type) {
        case Path::ElementType::MoveTo:
        case Path::ElementType::LineTo:
            return 1;
        case Path::ElementType::QuadCurveTo:
            return 2;
        case Path::ElementType::CurveTo:
            return 3;
        case Path::ElementType::Close:
            return 0;
    }
    return 0;
}

Point onCircle(Point center, double radius, double angle) {
    return {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
}

// The signed sweep from start to end in the asked direction, at most one full turn.
double arcSweep(double startAngle, double endAngle, bool clockwise) {
    double delta = endAngle - startAngle;
    if (clockwise) {
        if (delta < 0) delta = std::fmod(delta, kTwoPi) + kTwoPi;
        return std::min(delta, kTwoPi);
    }
    if (delta > 0) delta = std::fmod(delta, kTwoPi) - kTwoPi;
    return std::max(delta, -kTwoPi);
}

}  // namespace

void Path::append(ElementType type, Point p0, Point p1, Point p2) {
    elements_.push_back(Element{type, {p0, p1, p2}});
}

void Path::ensureCurrentPoint(Point p) {
    if (!hasCurrentPoint_) moveTo(p);
}

void Path::moveTo(Point p) {
    append(ElementType::MoveTo, p);
    hasCurrentPoint_ = true;
    current_ = subpathStart_ = p;
}

void Path::lineTo(Point p) {
    if (!hasCurrentPoint_) return moveTo(p);
    append(ElementType::LineTo, p);
    current_ = p;
}

void Path::quadCurveTo(Point control, Point end) {
    ensureCurrentPoint(control);
    append(ElementType::QuadCurveTo, control, end);
    current_ = end;
}

void Path::curveTo(Point c1, Point c2, Point end) {
    ensureCurrentPoint(c1);
    append(ElementType::CurveTo, c1, c2, end);
    current_ = end;
}

void Path::close() {
    if (!hasCurrentPoint_) return;
    append(ElementType::Close, {});
    // A closed sub-path leaves the pen where the sub-path began.
    current_ = subpathStart_;
}

void Path::appendArcCurves(Point center, double radius, double start, double sweep) {
    const int pieces =
        std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / (kTwoPi / 4) - 1e-9)));
    const double step = sweep / pieces;
    // Control distance for a circular piece of angle `step`: 4/3 tan(step/4).
    const double k = radius * 4.0 / 3.0 * std::tan(step / 4);
    double a0 = start;
    for (int i = 0; i < pieces; ++i) {
        const double a1 = a0 + step;
        const Point p0 = onCircle(center, radius, a0), p1 = onCircle(center, radius, a1);
        const Point c1{p0.x - k * std::sin(a0), p0.y + k * std::cos(a0)};
        const Point c2{p1.x + k * std::sin(a1), p1.y - k * std::cos(a1)};
        append(ElementType::CurveTo, c1, c2, p1);
        current_ = p1;
        a0 = a1;
    }
}

void Path::addArc(Point center, double radius, double startAngle, double endAngle, bool clockwise) {
    const Point start = onCircle(center, radius, startAngle);
    if (hasCurrentPoint_)
        lineTo(start);
    else
        moveTo(start);
    const double sweep = arcSweep(startAngle, endAngle, clockwise);
    if (sweep != 0 && radius > 0) appendArcCurves(center, radius, startAngle, sweep);
}

void Path::addRect(const Rect& r) {
    moveTo(r.origin);
    lineTo({r.origin.x + r.size.width, r.origin.y});
    lineTo({r.origin.x + r.size.width, r.origin.y + r.size.height});
    lineTo({r.origin.x, r.origin.y + r.size.height});
    close();
}

void Path::addEllipseInRect(const Rect& rect) {
    const Rect r = rectStandardize(rect);
    const double rx = r.size.width / 2, ry = r.size.height / 2;
    const double cx = r.origin.x + rx, cy = r.origin.y + ry;
    const double kx = rx * kQuarterKappa, ky = ry * kQuarterKappa;
    // Clockwise on screen from the right-hand end of the horizontal axis.
    moveTo({cx + rx, cy});
    curveTo({cx + rx, cy + ky}, {cx + kx, cy + ry}, {cx, cy + ry});
    curveTo({cx - kx, cy + ry}, {cx - rx, cy + ky}, {cx - rx, cy});
    curveTo({cx - rx, cy - ky}, {cx - kx, cy - ry}, {cx, cy - ry});
    curveTo({cx + kx, cy - ry}, {cx + rx, cy - ky}, {cx + rx, cy});
    close();
}

void Path::addRoundedRect(const Rect& rect, double cornerRadius) {
    const Rect r = rectStandardize(rect);
    const double radius = std::min({cornerRadius, r.size.width / 2, r.size.height / 2});
    if (radius <= 0) return addRect(r);
    const double x0 = r.origin.x, y0 = r.origin.y;
    const double x1 = x0 + r.size.width, y1 = y0 + r.size.height;
    constexpr double q = std::numbers::pi / 2;
    moveTo({x0 + radius, y0});
    lineTo({x1 - radius, y0});
    appendArcCurves({x1 - radius, y0 + radius}, radius, -q, q);
    lineTo({x1, y1 - radius});
    appendArcCurves({x1 - radius, y1 - radius}, radius, 0, q);
    lineTo({x0 + radius, y1});
    appendArcCurves({x0 + radius, y1 - radius}, radius, q, q);
    lineTo({x0, y0 + radius});
    appendArcCurves({x0 + radius, y0 + radius}, radius, 2 * q, q);
    close();
}

Rect Path::boundingBox() const {
    bool any = false;
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
    for (const Element& e : elements_) {
        for (int i = 0; i < pointCount(e.type); ++i) {
            const Point p = e.points[i];
            if (!any) {
                minX = maxX = p.x;
                minY = maxY = p.y;
                any = true;
                continue;
            }
            minX = std::min(minX, p.x);
            maxX = std::max(maxX, p.x);
            minY = std::min(minY, p.y);
            maxY = std::max(maxY, p.y);
        }
    }
    if (!any) return rectNull();
    return {minX, minY, maxX - minX, maxY - minY};
}

Path Path::transformed(const AffineTransform& t) const {
    Path out = *this;
    for (Element& e : out.elements_) {
        for (int i = 0; i < pointCount(e.type); ++i) e.points[i] = applyTransform(e.points[i], t);
    }
    out.current_ = applyTransform(current_, t);
    out.subpathStart_ = applyTransform(subpathStart_, t);
    return out;
}

Path Path::rect(const Rect& r) {
    Path p;
    p.addRect(r);
    return p;
}

Path Path::ellipseInRect(const Rect& r) {
    Path p;
    p.addEllipseInRect(r);
    return p;
}

Path Path::roundedRect(const Rect& r, double cornerRadius) {
    Path p;
    p.addRoundedRect(r, cornerRadius);
    return p;
}

Path Path::arc(Point center, double radius, double startAngle, double endAngle, bool clockwise) {
    Path p;
    p.addArc(center, radius, startAngle, endAngle, clockwise);
    return p;
}

}  // namespace orv::gfx
