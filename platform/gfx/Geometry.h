#pragma once
// Geometry on doubles: x to the right, y downward in view space. The free functions keep the
// meaning of the platform helpers the library code is written against (CGRectIsEmpty, ...).

#include <cmath>
#include <string>

namespace orv::gfx {

struct Point {
    double x = 0, y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    Point origin;
    Size size;
    Rect() = default;
    Rect(double x, double y, double w, double h) : origin{x, y}, size{w, h} {}
    Rect(Point o, Size s) : origin(o), size(s) {}
    bool operator==(const Rect&) const = default;
};

struct EdgeInsets {
    double top = 0, left = 0, bottom = 0, right = 0;
    bool operator==(const EdgeInsets&) const = default;
};

struct Offset {  // UIOffset
    double horizontal = 0, vertical = 0;
    bool operator==(const Offset&) const = default;
};

// [a b 0; c d 0; tx ty 1], applied to row vectors: x' = a x + c y + tx, y' = b x + d y + ty.
struct AffineTransform {
    double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;
    bool operator==(const AffineTransform&) const = default;

    static AffineTransform identity() { return {}; }
    static AffineTransform translation(double tx, double ty) { return {1, 0, 0, 1, tx, ty}; }
    static AffineTransform scale(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }
    static AffineTransform rotation(double radians) {
        const double c = std::cos(radians), s = std::sin(radians);
        return {c, s, -s, c, 0, 0};
    }
    bool isIdentity() const { return *this == AffineTransform{}; }
    // t1.concat(t2) applies t1 first, then t2 (CGAffineTransformConcat).
    AffineTransform concat(const AffineTransform& t2) const {
        return {a * t2.a + b * t2.c, a * t2.b + b * t2.d,           c * t2.a + d * t2.c,
                c * t2.b + d * t2.d, tx * t2.a + ty * t2.c + t2.tx, tx * t2.b + ty * t2.d + t2.ty};
    }
    // The CGAffineTransformTranslate/Scale/Rotate forms: the new step applies before this one.
    AffineTransform translated(double x, double y) const { return translation(x, y).concat(*this); }
    AffineTransform scaled(double sx, double sy) const { return scale(sx, sy).concat(*this); }
    AffineTransform rotated(double radians) const { return rotation(radians).concat(*this); }
    AffineTransform inverted() const {
        const double det = a * d - b * c;
        if (det == 0) return *this;  // the platform gives the transform back when it can't invert
        return {
            d / det, -b / det, -c / det, a / det, (c * ty - d * tx) / det, (b * tx - a * ty) / det};
    }
};

inline Point applyTransform(Point p, const AffineTransform& t) {
    return {t.a * p.x + t.c * p.y + t.tx, t.b * p.x + t.d * p.y + t.ty};
}
inline Size applyTransform(Size s, const AffineTransform& t) {
    return {t.a * s.width + t.c * s.height, t.b * s.width + t.d * s.height};
}
Rect applyTransform(const Rect& r, const AffineTransform& t);  // bounding box of the image

inline double rectGetMinX(const Rect& r) {
    return std::fmin(r.origin.x, r.origin.x + r.size.width);
}
inline double rectGetMaxX(const Rect& r) {
    return std::fmax(r.origin.x, r.origin.x + r.size.width);
}
inline double rectGetMinY(const Rect& r) {
    return std::fmin(r.origin.y, r.origin.y + r.size.height);
}
inline double rectGetMaxY(const Rect& r) {
    return std::fmax(r.origin.y, r.origin.y + r.size.height);
}
inline double rectGetMidX(const Rect& r) {
    return r.origin.x + r.size.width / 2;
}
inline double rectGetMidY(const Rect& r) {
    return r.origin.y + r.size.height / 2;
}
inline double rectGetWidth(const Rect& r) {
    return std::fabs(r.size.width);
}
inline double rectGetHeight(const Rect& r) {
    return std::fabs(r.size.height);
}

// A rectangle with non-negative width and height.
Rect rectStandardize(const Rect& r);
// True for a null rectangle or one with zero (or negative) width or height.
bool rectIsEmpty(const Rect& r);
bool rectIsNull(const Rect& r);
bool rectContainsPoint(const Rect& r, Point p);  // min edges inside, max edges outside
bool rectContainsRect(const Rect& outer, const Rect& inner);
bool rectIntersectsRect(const Rect& a, const Rect& b);
Rect rectIntersection(const Rect& a, const Rect& b);  // rectNull() when they don't meet
Rect rectUnion(const Rect& a, const Rect& b);
Rect rectInset(const Rect& r, double dx, double dy);
Rect rectOffset(const Rect& r, double dx, double dy);
Rect rectIntegral(const Rect& r);
Rect rectNull();
Rect insetRect(const Rect& r, const EdgeInsets& insets);  // UIEdgeInsetsInsetRect

std::string toString(Point p);  // "{x, y}" as the logs print it
std::string toString(Size s);   // "{w, h}"
std::string toString(const Rect& r);

}  // namespace orv::gfx
