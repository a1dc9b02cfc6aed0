#pragma once
// A vector path (CGPath / UIBezierPath) in user space: sub-paths of lines and curves.

#include <vector>

#include "platform/gfx/Geometry.h"

namespace orv::gfx {

enum class LineCap { Butt, Round, Square };
enum class LineJoin { Miter, Round, Bevel };

class Path {
  public:
    enum class ElementType { MoveTo, LineTo, QuadCurveTo, CurveTo, Close };
    struct Element {
        ElementType type;
        Point points[3];  // as many as the type uses
    };

    void moveTo(Point p);
    void lineTo(Point p);
    void quadCurveTo(Point control, Point end);
    void curveTo(Point c1, Point c2, Point end);
    void close();
    // An arc of the circle around `center`; angles in radians, y downward, so increasing angles
    // turn clockwise on the screen. Joins the current point with a line when there is one.
    void addArc(Point center, double radius, double startAngle, double endAngle, bool clockwise);
    void addRect(const Rect& r);
    void addEllipseInRect(const Rect& r);
    void addRoundedRect(const Rect& r, double cornerRadius);

    bool isEmpty() const { return elements_.empty(); }
    const std::vector<Element>& elements() const { return elements_; }
    Rect boundingBox() const;  // of all points, control points included
    Path transformed(const AffineTransform& t) const;

    static Path rect(const Rect& r);
    static Path ellipseInRect(const Rect& r);
    static Path roundedRect(const Rect& r, double cornerRadius);
    static Path arc(Point center, double radius, double startAngle, double endAngle,
                    bool clockwise);

  private:
    void append(ElementType type, Point p0, Point p1 = {}, Point p2 = {});
    void ensureCurrentPoint(Point p);
    // Cubic pieces of the arc from `start` sweeping `sweep` radians (sign gives the direction).
    void appendArcCurves(Point center, double radius, double start, double sweep);

    std::vector<Element> elements_;
    bool hasCurrentPoint_ = false;
    Point current_;
    Point subpathStart_;
};

}  // namespace orv::gfx
