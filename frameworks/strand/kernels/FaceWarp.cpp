#include "frameworks/strand/kernels/FaceWarp.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "frameworks/strand/kernels/ParallelRows.h"

namespace orv::strand {

namespace {

// Landmark indices of the 68-point layout.
constexpr int kLandmarks = 68;
constexpr int kLeftEye = 36, kRightEye = 42, kEyePoints = 6;  // corners at +0 and +3
constexpr int kNoseTip = 30;
constexpr int kCheekPoints[] = {3, 4, 5, 11, 12, 13};

// The eye's lens reaches this many eye widths from its centre and shrinks the source distance
// at the centre by up to this share (a magnification of 1 / (1 − share)).
constexpr float kEyeRadius = 1.0f, kEyeMaxShrink = 0.3f;
// Each cheek point is pulled towards the nose tip by this share of its distance to it, within
// this share of that distance; neighbouring pulls overlap and add up.
constexpr float kCheekPull = 0.08f, kCheekRadius = 0.6f;
// Warps smaller than this (pixels) are no warps.
constexpr float kMinRadius = 1;

// A lens (local scaling) in inverse form: an output point at distance d < radius from the
// centre takes its colour from the centre + (1 − shrink × (1 − d²/radius²)²) × its offset.
struct Lens {
    float cx, cy, radius, shrink;
};

// A local translation in inverse form: an output point at distance d < radius from the centre
// takes its colour from (tx, ty) × (1 − d²/radius²)² behind it, so the content around the
// centre moves by (tx, ty), fading smoothly to nothing at the radius. The move stays well under
// the radius, which keeps the map free of folds.
struct Pull {
    float cx, cy, radius, tx, ty;
};

struct Warps {
    std::vector<Lens> lenses;
    std::vector<Pull> pulls;
    float reach = 0;  // the most all warps together move a point

    // Whether a warp around `cy` can touch a point that started on row centre `y`.
    template <typename Warp>
    bool touches(const Warp& w, float y) const {
        return std::abs(y - w.cy) < w.radius + reach;
    }
};

inline float unit(double v) {
    return std::isfinite(v) ? static_cast<float>(std::clamp(v, 0.0, 1.0)) : 0.f;
}

// The face's points within the picture, or none when it is not a usable face.
std::vector<gfx::Point> clampedPoints(const FaceLandmarks& face, int width, int height) {
    if (face.points.size() < kLandmarks) return {};
    std::vector<gfx::Point> points(face.points.begin(), face.points.begin() + kLandmarks);
    for (auto& p : points) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return {};
        p.x = std::clamp(p.x, 0.0, static_cast<double>(width));
        p.y = std::clamp(p.y, 0.0, static_cast<double>(height));
    }
    return points;
}

void addEye(const std::vector<gfx::Point>& p, int first, float strength, Warps& warps) {
    double cx = 0, cy = 0;
    for (int i = first; i < first + kEyePoints; ++i) cx += p[i].x, cy += p[i].y;
    const double eyeWidth = std::hypot(p[first + 3].x - p[first].x, p[first + 3].y - p[first].y);
    const float radius = static_cast<float>(eyeWidth) * kEyeRadius;
    if (radius < kMinRadius) return;
    const float shrink = kEyeMaxShrink * strength;
    warps.lenses.push_back(
        {static_cast<float>(cx / kEyePoints), static_cast<float>(cy / kEyePoints), radius, shrink});
    warps.reach += shrink * radius;
}

void addCheek(const gfx::Point& point, const gfx::Point& nose, float strength, Warps& warps) {
    const float dx = static_cast<float>(nose.x - point.x),
                dy = static_cast<float>(nose.y - point.y);
    const float radius = std::hypot(dx, dy) * kCheekRadius;
    if (radius < kMinRadius) return;
    const float pull = kCheekPull * strength;
    warps.pulls.push_back(
        {static_cast<float>(point.x), static_cast<float>(point.y), radius, pull * dx, pull * dy});
    warps.reach += std::hypot(pull * dx, pull * dy);
}

Warps warpsFor(const PlasticSettings& settings, float eye, float cheek, int width, int height) {
    Warps warps;
    for (const auto& face : settings.faces) {
        const auto points = clampedPoints(face, width, height);
        if (points.empty()) continue;
        if (eye > 0) {
            addEye(points, kLeftEye, eye, warps);
            addEye(points, kRightEye, eye, warps);
        }
        if (cheek > 0)
            for (int i : kCheekPoints) addCheek(points[i], points[kNoseTip], cheek, warps);
    }
    return warps;
}

// Each warp maps the source positions qx, qy (pixel centres at first) in place.
void applyLens(const Lens& lens, float* __restrict qx, float* __restrict qy, int count) {
    const float inverseSquare = 1 / (lens.radius * lens.radius);
    for (int i = 0; i < count; ++i) {
        const float dx = qx[i] - lens.cx, dy = qy[i] - lens.cy;
        const float falloff = std::max(0.f, 1 - (dx * dx + dy * dy) * inverseSquare);
        const float shrink = lens.shrink * falloff * falloff;
        qx[i] -= shrink * dx;
        qy[i] -= shrink * dy;
    }
}

void applyPull(const Pull& pull, float* __restrict qx, float* __restrict qy, int count) {
    const float inverseSquare = 1 / (pull.radius * pull.radius);
    for (int i = 0; i < count; ++i) {
        const float dx = qx[i] - pull.cx, dy = qy[i] - pull.cy;
        const float falloff = std::max(0.f, 1 - (dx * dx + dy * dy) * inverseSquare);
        qx[i] -= falloff * falloff * pull.tx;
        qy[i] -= falloff * falloff * pull.ty;
    }
}

// Bilinear sampling of premultiplied pixels (8-bit weights), the border repeated.
void sampleRow(const gfx::Bitmap& src, const float* qx, const float* qy, uint8_t* dst, int count) {
    const int width = src.width(), height = src.height();
    for (int i = 0; i < count; ++i) {
        const float sx = std::clamp(qx[i] - 0.5f, 0.f, static_cast<float>(width - 1));
        const float sy = std::clamp(qy[i] - 0.5f, 0.f, static_cast<float>(height - 1));
        const int x0 = static_cast<int>(sx), y0 = static_cast<int>(sy);
        const int x1 = std::min(x0 + 1, width - 1), y1 = std::min(y0 + 1, height - 1);
        const int fx = static_cast<int>((sx - x0) * 256 + 0.5f);
        const int fy = static_cast<int>((sy - y0) * 256 + 0.5f);
        const uint8_t *p00 = src.pixel(x0, y0), *p01 = src.pixel(x1, y0);
        const uint8_t *p10 = src.pixel(x0, y1), *p11 = src.pixel(x1, y1);
        for (int c = 0; c < 4; ++c) {
            const int top = p00[c] * (256 - fx) + p01[c] * fx;
            const int bottom = p10[c] * (256 - fx) + p11[c] * fx;
            dst[4 * i + c] = static_cast<uint8_t>((top * (256 - fy) + bottom * fy + 32768) >> 16);
        }
    }
}

// The columns and rows any warp reaches, clipped to the picture: [x0, x1) × [y0, y1).
struct Span {
    int x0, y0, x1, y1;
};

template <typename Warp>
void extend(const std::vector<Warp>& list, float reach, Span& span) {
    for (const auto& w : list) {
        const float r = w.radius + reach;
        span.x0 = std::min(span.x0, static_cast<int>(std::floor(w.cx - r)));
        span.y0 = std::min(span.y0, static_cast<int>(std::floor(w.cy - r)));
        span.x1 = std::max(span.x1, static_cast<int>(std::ceil(w.cx + r)) + 1);
        span.y1 = std::max(span.y1, static_cast<int>(std::ceil(w.cy + r)) + 1);
    }
}

Span spanOf(const Warps& warps, int width, int height) {
    Span span{width, height, 0, 0};
    extend(warps.lenses, warps.reach, span);
    extend(warps.pulls, warps.reach, span);
    return {std::max(span.x0, 0), std::max(span.y0, 0), std::min(span.x1, width),
            std::min(span.y1, height)};
}

// The columns [x0, x1) a warp can touch, within the span.
template <typename Warp>
std::pair<int, int> columnsOf(const Warp& w, float reach, const Span& span) {
    const float r = w.radius + reach;
    return {std::max(span.x0, static_cast<int>(std::floor(w.cx - r))),
            std::min(span.x1, static_cast<int>(std::ceil(w.cx + r)) + 1)};
}

// Runs `apply` on the part of the row's source positions (starting at column x0) that each
// warp touching row centre `y` can reach, last warp first.
template <typename Warp, typename Apply>
void applyAll(const std::vector<Warp>& list, const Warps& warps, const Span& span, float y, int x0,
              float* qx, float* qy, const Apply& apply) {
    for (auto it = list.rbegin(); it != list.rend(); ++it) {
        if (!warps.touches(*it, y)) continue;
        const auto [from, to] = columnsOf(*it, warps.reach, span);
        if (from < to) apply(*it, qx + (from - x0), qy + (from - x0), to - from);
    }
}

void warpRows(const gfx::Bitmap& src, gfx::Bitmap& out, const Warps& warps, const Span& span,
              int begin, int end) {
    const int count = span.x1 - span.x0;
    std::vector<float> qx(count), qy(count);
    for (int y = begin; y < end; ++y) {
        const float centre = y + 0.5f;
        for (int i = 0; i < count; ++i) qx[i] = span.x0 + i + 0.5f;
        std::fill(qy.begin(), qy.end(), centre);
        // The eyes are enlarged first, then the cheeks pulled: the inverse runs the other way.
        applyAll(warps.pulls, warps, span, centre, span.x0, qx.data(), qy.data(), applyPull);
        applyAll(warps.lenses, warps, span, centre, span.x0, qx.data(), qy.data(), applyLens);
        // Only the columns some warp moved need sampling; the copy holds the rest.
        int first = 0, last = count;
        while (first < last && qx[first] == span.x0 + first + 0.5f && qy[first] == centre) ++first;
        while (last > first && qx[last - 1] == span.x0 + last - 0.5f && qy[last - 1] == centre)
            --last;
        sampleRow(src, qx.data() + first, qy.data() + first,
                  out.mutableRow(y) + 4 * static_cast<size_t>(span.x0 + first), last - first);
    }
}

}  // namespace

gfx::BitmapPtr FaceWarp::apply(const gfx::Bitmap& src, const PlasticSettings& settings) {
    const float eye = unit(settings.eyeEnlarge), cheek = unit(settings.cheekThin);
    const int width = src.width(), height = src.height();
    auto out = std::make_shared<gfx::Bitmap>(src);
    if (width < 1 || height < 1 || (eye == 0 && cheek == 0)) return out;
    const Warps warps = warpsFor(settings, eye, cheek, width, height);
    const Span span = spanOf(warps, width, height);
    if (span.x0 >= span.x1 || span.y0 >= span.y1) return out;
    ParallelRows::run(span.y1 - span.y0, [&](int begin, int end) {
        warpRows(src, *out, warps, span, span.y0 + begin, span.y0 + end);
    });
    return out;
}

}  // namespace orv::strand
