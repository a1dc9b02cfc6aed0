#include "platform/gfx/Coverage.h"

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "platform/gfx/CairoPath.h"

namespace orv::gfx {

struct Coverage::Mask {
    Mask(int w, int h)
        : width(w),
          height(h),
          stride((w + 3) & ~3),  // pixman and cairo both want rows of whole 32-bit words
          pixels(static_cast<size_t>(stride) * h, 0),
          image(pixman_image_create_bits(PIXMAN_a8, w, h,
                                         reinterpret_cast<uint32_t*>(pixels.data()), stride)) {}

    int width, height, stride;
    std::vector<uint8_t> pixels;
    PixmanPtr image;
};

namespace {

// Far enough outside any bitmap that nothing of a shape cut there can show, and small enough
// for cairo's 24.8 fixed-point coordinates.
constexpr double kCoordinateLimit = 1 << 22;
// Blurs wider than this would only make huge, invisible shadows.
constexpr double kMaxSigma = 256;

bool near(double a, double b) {
    return std::fabs(a - b) < 1e-6;
}

bool onWholePixels(double v) {
    return near(v, std::round(v));
}

int clampedInt(double v) {
    return static_cast<int>(std::clamp(v, -kCoordinateLimit, kCoordinateLimit));
}

PixmanPtr solidAlpha(double alpha) {
    const auto a = static_cast<uint16_t>(std::lround(std::clamp(alpha, 0.0, 1.0) * 255) * 257);
    const pixman_color_t color{0, 0, 0, a};
    return PixmanPtr(pixman_image_create_solid_fill(&color));
}

// The corners as an axis-aligned rectangle, when they are one.
std::optional<std::array<double, 4>> axisAlignedRect(const std::vector<Point>& c) {
    if (c.size() != 4) return std::nullopt;
    const bool wide = near(c[0].y, c[1].y) && near(c[1].x, c[2].x) && near(c[2].y, c[3].y) &&
                      near(c[3].x, c[0].x);
    const bool tall = near(c[0].x, c[1].x) && near(c[1].y, c[2].y) && near(c[2].x, c[3].x) &&
                      near(c[3].y, c[0].y);
    if (!wide && !tall) return std::nullopt;
    return std::array<double, 4>{std::min(c[0].x, c[2].x), std::min(c[0].y, c[2].y),
                                 std::max(c[0].x, c[2].x), std::max(c[0].y, c[2].y)};
}

// Sutherland-Hodgman against one edge: keeps the side where inside(p) holds.
template <class Inside, class Cross>
std::vector<Point> clipAgainst(const std::vector<Point>& in, Inside inside, Cross cross) {
    std::vector<Point> out;
    for (size_t i = 0; i < in.size(); ++i) {
        const Point a = in[i], b = in[(i + 1) % in.size()];
        if (inside(a)) out.push_back(a);
        if (inside(a) != inside(b)) out.push_back(cross(a, b));
    }
    return out;
}

std::vector<Point> clipPolygon(std::vector<Point> p, double x0, double y0, double x1, double y1) {
    auto atX = [](double x) {
        return [x](Point a, Point b) {
            return Point{x, a.y + (b.y - a.y) * (x - a.x) / (b.x - a.x)};
        };
    };
    auto atY = [](double y) {
        return [y](Point a, Point b) {
            return Point{a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y), y};
        };
    };
    p = clipAgainst(
        p, [&](Point q) { return q.x >= x0; }, atX(x0));
    p = clipAgainst(
        p, [&](Point q) { return q.x <= x1; }, atX(x1));
    p = clipAgainst(
        p, [&](Point q) { return q.y >= y0; }, atY(y0));
    return clipAgainst(
        p, [&](Point q) { return q.y <= y1; }, atY(y1));
}

double area(const std::vector<Point>& p) {
    double sum = 0;
    for (size_t i = 0; i < p.size(); ++i) {
        const Point a = p[i], b = p[(i + 1) % p.size()];
        sum += a.x * b.y - b.x * a.y;
    }
    return std::fabs(sum) / 2;
}

// Radii of three box blurs whose sequence approximates a gaussian of `sigma`.
std::array<int, 3> boxRadii(double sigma) {
    constexpr int n = 3;
    const double variance = 12 * sigma * sigma;
    int lower = static_cast<int>(std::floor(std::sqrt(variance / n + 1)));
    if (lower % 2 == 0) --lower;
    const int wider = static_cast<int>(
        std::lround((variance - n * lower * lower - 4 * n * lower - 3 * n) / (-4.0 * lower - 4)));
    std::array<int, 3> radii{};
    for (int i = 0; i < n; ++i) radii[i] = ((i < wider ? lower : lower + 2) - 1) / 2;
    return radii;
}

// Averages of 2r + 1 values in 16-bit fixed point: a multiply instead of a division a pixel.
struct BoxAverage {
    explicit BoxAverage(int radius) : factor((65536 + radius) / (2 * radius + 1)) {}
    uint8_t operator()(unsigned sum) const {
        return static_cast<uint8_t>(std::min((sum * factor + 32768) >> 16, 255u));
    }
    unsigned factor;
};

// One box pass along each row, values outside the mask counting as 0.
void blurRows(const uint8_t* src, uint8_t* dst, int w, int h, int stride, int radius) {
    const BoxAverage average(radius);
    for (int y = 0; y < h; ++y) {
        const uint8_t* s = src + static_cast<ptrdiff_t>(y) * stride;
        uint8_t* d = dst + static_cast<ptrdiff_t>(y) * stride;
        unsigned sum = 0;
        for (int x = 0; x <= std::min(radius, w - 1); ++x) sum += s[x];
        for (int x = 0; x < w; ++x) {
            d[x] = average(sum);
            if (x + radius + 1 < w) sum += s[x + radius + 1];
            if (x - radius >= 0) sum -= s[x - radius];
        }
    }
}

// One box pass down the columns, kept as running sums of whole rows so memory is read in
// order.
void blurColumns(const uint8_t* src, uint8_t* dst, int w, int h, int stride, int radius) {
    const BoxAverage average(radius);
    std::vector<unsigned> sums(w, 0);
    auto row = [&](const uint8_t* base, int y) {
        return base + static_cast<ptrdiff_t>(y) * stride;
    };
    auto add = [&](int y, int sign) {
        const uint8_t* s = row(src, y);
        for (int x = 0; x < w; ++x) sums[x] += sign * s[x];
    };
    for (int y = 0; y <= std::min(radius, h - 1); ++y) add(y, 1);
    for (int y = 0; y < h; ++y) {
        uint8_t* d = dst + static_cast<ptrdiff_t>(y) * stride;
        for (int x = 0; x < w; ++x) d[x] = average(sums[x]);
        if (y + radius + 1 < h) add(y + radius + 1, 1);
        if (y - radius >= 0) add(y - radius, -1);
    }
}

// Three horizontal and three vertical passes alternate between the mask and a scratch copy,
// so the sixth lands back in the mask.
void blurInPlace(pixman_image_t* a8, double sigma) {
    const int w = pixman_image_get_width(a8), h = pixman_image_get_height(a8);
    const int stride = pixman_image_get_stride(a8);
    uint8_t* a = reinterpret_cast<uint8_t*>(pixman_image_get_data(a8));
    std::vector<uint8_t> scratch(static_cast<size_t>(stride) * h);
    uint8_t* b = scratch.data();
    const std::array<int, 3> radii = boxRadii(sigma);
    for (int r : radii) {
        blurRows(a, b, w, h, stride, r);
        std::swap(a, b);
    }
    for (int r : radii) {
        blurColumns(a, b, w, h, stride, r);
        std::swap(a, b);
    }
}

}  // namespace

PixelBox PixelBox::intersected(const PixelBox& o) const {
    const PixelBox b{std::max(x0, o.x0), std::max(y0, o.y0), std::min(x1, o.x1),
                     std::min(y1, o.y1)};
    return b.empty() ? PixelBox{} : b;
}

PixelBox PixelBox::united(const PixelBox& o) const {
    if (empty()) return o;
    if (o.empty()) return *this;
    return {std::min(x0, o.x0), std::min(y0, o.y0), std::max(x1, o.x1), std::max(y1, o.y1)};
}

PixelBox PixelBox::inflated(int margin) const {
    return {x0 - margin, y0 - margin, x1 + margin, y1 + margin};
}

PixelBox PixelBox::shifted(int dx, int dy) const {
    return {x0 + dx, y0 + dy, x1 + dx, y1 + dy};
}

PixelBox PixelBox::enclosing(double minX, double minY, double maxX, double maxY) {
    if (!std::isfinite(minX) || !std::isfinite(minY) || !std::isfinite(maxX) ||
        !std::isfinite(maxY)) {
        return {};
    }
    return {clampedInt(std::floor(minX)), clampedInt(std::floor(minY)), clampedInt(std::ceil(maxX)),
            clampedInt(std::ceil(maxY))};
}

Coverage::Coverage(const PixelBox& box, std::shared_ptr<const Mask> mask, int maskX, int maskY)
    : box_(box), mask_(std::move(mask)), maskX_(maskX), maskY_(maskY) {}

pixman_image_t* Coverage::mask() const {
    return mask_ ? mask_->image.get() : nullptr;
}

Coverage Coverage::full(const PixelBox& box) {
    return box.empty() ? Coverage{} : Coverage(box, nullptr, 0, 0);
}

Coverage Coverage::polygon(const std::vector<Point>& corners, const PixelBox& limit,
                           bool antialias) {
    if (corners.size() < 3 || limit.empty()) return {};
    for (const Point& p : corners) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return {};
    }
    // Pixels beyond the limit don't count, so the shape is cut a pixel outside it.
    const double lx0 = limit.x0 - 1, ly0 = limit.y0 - 1, lx1 = limit.x1 + 1, ly1 = limit.y1 + 1;
    if (auto r = axisAlignedRect(corners)) {
        const double x0 = std::clamp((*r)[0], lx0, lx1), y0 = std::clamp((*r)[1], ly0, ly1);
        const double x1 = std::clamp((*r)[2], lx0, lx1), y1 = std::clamp((*r)[3], ly0, ly1);
        if (!antialias) {
            // A pixel belongs to the shape when its centre does.
            return full(PixelBox::enclosing(std::ceil(x0 - 0.5), std::ceil(y0 - 0.5),
                                            std::ceil(x1 - 0.5), std::ceil(y1 - 0.5))
                            .intersected(limit));
        }
        if (onWholePixels(x0) && onWholePixels(y0) && onWholePixels(x1) && onWholePixels(y1)) {
            return full(
                PixelBox::enclosing(std::round(x0), std::round(y0), std::round(x1), std::round(y1))
                    .intersected(limit));
        }
    }
    const std::vector<Point> cut = clipPolygon(corners, lx0, ly0, lx1, ly1);
    if (cut.size() < 3 || area(cut) < 1e-9) return {};
    double minX = cut[0].x, minY = cut[0].y, maxX = minX, maxY = minY;
    for (const Point& p : cut) {
        minX = std::min(minX, p.x);
        minY = std::min(minY, p.y);
        maxX = std::max(maxX, p.x);
        maxY = std::max(maxY, p.y);
    }
    const PixelBox box = PixelBox::enclosing(minX, minY, maxX, maxY).intersected(limit);
    return painted(box, {}, antialias, [&](cairo_t* cr) {
        for (const Point& p : cut) cairo_line_to(cr, p.x, p.y);
        cairo_close_path(cr);
        cairo_fill(cr);
    });
}

Coverage Coverage::painted(const PixelBox& box, const AffineTransform& userToDevice, bool antialias,
                           const std::function<void(cairo_t*)>& paint) {
    if (box.empty()) return {};
    const cairo_matrix_t m =
        cairo_path::matrix(userToDevice.concat(AffineTransform::translation(-box.x0, -box.y0)));
    cairo_matrix_t inverse = m;
    if (cairo_matrix_invert(&inverse) != CAIRO_STATUS_SUCCESS) return {};
    auto mask = std::make_shared<Mask>(box.width(), box.height());
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        mask->pixels.data(), CAIRO_FORMAT_A8, mask->width, mask->height, mask->stride);
    cairo_t* cr = cairo_create(surface);
    cairo_set_matrix(cr, &m);
    cairo_set_antialias(cr, antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
    cairo_set_source_rgba(cr, 0, 0, 0, 1);
    paint(cr);
    cairo_destroy(cr);
    cairo_surface_flush(surface);
    cairo_surface_destroy(surface);
    return Coverage(box, std::move(mask), box.x0, box.y0);
}

Coverage Coverage::composed(const PixelBox& box,
                            const std::function<void(pixman_image_t*)>& compose) {
    if (box.empty()) return {};
    auto mask = std::make_shared<Mask>(box.width(), box.height());
    compose(mask->image.get());
    return Coverage(box, std::move(mask), box.x0, box.y0);
}

Coverage Coverage::intersected(const Coverage& other) const {
    const PixelBox b = box_.intersected(other.box_);
    if (b.empty()) return {};
    if (!other.mask_) return Coverage(b, mask_, maskX_, maskY_);
    if (!mask_) return Coverage(b, other.mask_, other.maskX_, other.maskY_);
    return composed(b, [&](pixman_image_t* target) {
        pixman_image_composite32(PIXMAN_OP_SRC, mask(), nullptr, target, b.x0 - maskX_,
                                 b.y0 - maskY_, 0, 0, 0, 0, b.width(), b.height());
        pixman_image_composite32(PIXMAN_OP_IN, other.mask(), nullptr, target, b.x0 - other.maskX_,
                                 b.y0 - other.maskY_, 0, 0, 0, 0, b.width(), b.height());
    });
}

Coverage Coverage::scaled(double alpha) const {
    if (alpha >= 1) return *this;
    if (!(alpha > 0)) return {};
    const PixmanPtr factor = solidAlpha(alpha);
    return composed(box_, [&](pixman_image_t* target) {
        if (mask_) {
            pixman_image_composite32(PIXMAN_OP_SRC, mask(), factor.get(), target, box_.x0 - maskX_,
                                     box_.y0 - maskY_, 0, 0, 0, 0, box_.width(), box_.height());
        } else {
            pixman_image_composite32(PIXMAN_OP_SRC, factor.get(), nullptr, target, 0, 0, 0, 0, 0, 0,
                                     box_.width(), box_.height());
        }
    });
}

int Coverage::blurReach(double sigma) {
    if (!(sigma > 0)) return 0;
    const std::array<int, 3> r = boxRadii(std::min(sigma, kMaxSigma));
    return r[0] + r[1] + r[2];
}

Coverage Coverage::blurred(double sigma) const {
    const int reach = blurReach(sigma);
    if (reach == 0 || empty()) return *this;
    return composed(box_.inflated(reach), [&](pixman_image_t* target) {
        const PixmanPtr opaque = solidAlpha(1);
        pixman_image_composite32(PIXMAN_OP_SRC, mask_ ? mask() : opaque.get(), nullptr, target,
                                 box_.x0 - maskX_, box_.y0 - maskY_, 0, 0, reach, reach,
                                 box_.width(), box_.height());
        blurInPlace(target, std::min(sigma, kMaxSigma));
    });
}

Coverage Coverage::shifted(int dx, int dy) const {
    if (empty()) return {};
    return Coverage(box_.shifted(dx, dy), mask_, maskX_ + dx, maskY_ + dy);
}

}  // namespace orv::gfx
