#include "platform/gfx/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/gfx/BitmapOps.h"
#include "platform/gfx/CairoPath.h"
#include "platform/gfx/CairoPixels.h"
#include "platform/gfx/CanvasImpl.h"

namespace orv::gfx {

namespace {

int pixelExtent(double points, double scale) {
    return std::max(0, static_cast<int>(std::lround(points * scale)));
}

struct Polyline {
    std::vector<Point> points;
    bool closed = false;
};

// The current path of `cr`, flattened into polylines (cairo's tolerance, in device pixels).
std::vector<Polyline> flattenCurrentPath(cairo_t* cr) {
    std::vector<Polyline> lines;
    cairo_path_t* flat = cairo_copy_path_flat(cr);
    for (int i = 0; i < flat->num_data; i += flat->data[i].header.length) {
        const cairo_path_data_t& d = flat->data[i];
        switch (d.header.type) {
            case CAIRO_PATH_MOVE_TO:
                if (lines.empty() || lines.back().points.size() > 1 || lines.back().closed) {
                    lines.emplace_back();
                }
                lines.back().points = {{flat->data[i + 1].point.x, flat->data[i + 1].point.y}};
                break;
            case CAIRO_PATH_LINE_TO:
                if (lines.empty()) lines.emplace_back();
                lines.back().points.push_back(
                    {flat->data[i + 1].point.x, flat->data[i + 1].point.y});
                break;
            case CAIRO_PATH_CLOSE_PATH:
                if (!lines.empty()) lines.back().closed = true;
                break;
            case CAIRO_PATH_CURVE_TO:
                break;  // a flat path has none
        }
    }
    cairo_path_destroy(flat);
    return lines;
}

double distance(Point a, Point b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

Point lerp(Point a, Point b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

double length(const Polyline& l) {
    double sum = 0;
    for (size_t i = 1; i < l.points.size(); ++i) sum += distance(l.points[i - 1], l.points[i]);
    return sum;
}

// Replaces the current path by the part of it between the length fractions [from, to].
void trimCurrentPath(cairo_t* cr, double from, double to) {
    std::vector<Polyline> lines = flattenCurrentPath(cr);
    cairo_new_path(cr);
    double total = 0;
    for (Polyline& l : lines) {
        if (l.closed) l.points.push_back(l.points.front());  // the closing segment counts too
        total += length(l);
    }
    const double start = from * total, end = to * total;
    double walked = 0;
    for (const Polyline& l : lines) {
        const double lineLength = length(l);
        if (l.closed && start <= walked && walked + lineLength <= end) {
            // A whole closed sub-path keeps its join where it closes.
            cairo_move_to(cr, l.points[0].x, l.points[0].y);
            for (size_t i = 1; i + 1 < l.points.size(); ++i)
                cairo_line_to(cr, l.points[i].x, l.points[i].y);
            cairo_close_path(cr);
            walked += lineLength;
            continue;
        }
        bool drawing = false;
        for (size_t i = 1; i < l.points.size(); ++i) {
            const Point a = l.points[i - 1], b = l.points[i];
            const double len = distance(a, b);
            const double s = std::max(start, walked), e = std::min(end, walked + len);
            if (s < e) {
                const Point p0 = lerp(a, b, (s - walked) / len),
                            p1 = lerp(a, b, (e - walked) / len);
                if (!drawing) cairo_move_to(cr, p0.x, p0.y);
                cairo_line_to(cr, p1.x, p1.y);
                drawing = true;
            } else {
                drawing = false;
            }
            walked += len;
        }
    }
}

// Maps pixel coordinates of a bitmap to the coordinates of the upright picture (in pixels).
AffineTransform orientationTransform(ImageOrientation o, double w, double h) {
    switch (o) {
        case ImageOrientation::Up:
            return {};
        case ImageOrientation::Down:
            return {-1, 0, 0, -1, w, h};
        case ImageOrientation::Left:
            return {0, -1, 1, 0, 0, w};
        case ImageOrientation::Right:
            return {0, 1, -1, 0, h, 0};
        case ImageOrientation::UpMirrored:
            return {-1, 0, 0, 1, w, 0};
        case ImageOrientation::DownMirrored:
            return {1, 0, 0, -1, 0, h};
        case ImageOrientation::LeftMirrored:
            return {0, 1, 1, 0, 0, 0};
        case ImageOrientation::RightMirrored:
            return {0, -1, -1, 0, h, w};
    }
    return {};
}

double clamp01(double v) {
    return std::clamp(v, 0.0, 1.0);
}

}  // namespace

Canvas::Impl::Impl(Size sizeInPoints, double deviceScale)
    : size(sizeInPoints), scale(deviceScale > 0 ? deviceScale : 1) {
    surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixelExtent(size.width, scale),
                                         pixelExtent(size.height, scale));
    cr = cairo_create(surface);
    cairo_scale(cr, scale, scale);
}

Canvas::Impl::~Impl() {
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
}

void Canvas::Impl::setSourceColor(const Color& c) const {
    cairo_set_source_rgba(cr, clamp01(c.r), clamp01(c.g), clamp01(c.b), clamp01(c.a) * alpha);
}

Canvas::Canvas(Size sizeInPoints, double scale)
    : impl_(std::make_unique<Impl>(sizeInPoints, scale)) {}

Canvas::~Canvas() = default;

Size Canvas::size() const {
    return impl_->size;
}
double Canvas::scale() const {
    return impl_->scale;
}

void Canvas::save() {
    cairo_save(impl_->cr);
    impl_->saved.push_back({impl_->alpha, false});
}

void Canvas::restore() {
    // Unbalanced calls are ignored rather than unwinding a transparency layer or cairo's stack.
    if (impl_->saved.empty() || impl_->saved.back().group) return;
    cairo_restore(impl_->cr);
    impl_->alpha = impl_->saved.back().alpha;
    impl_->saved.pop_back();
}

void Canvas::beginTransparencyLayer() {
    cairo_push_group(impl_->cr);
    impl_->saved.push_back({impl_->alpha, true});
    impl_->alpha = 1;
}

void Canvas::endTransparencyLayer(double alpha) {
    auto& saved = impl_->saved;
    const bool open =
        std::any_of(saved.begin(), saved.end(), [](const Impl::Saved& s) { return s.group; });
    if (!open) return;
    while (!saved.back().group) restore();  // saves left open inside the layer
    impl_->alpha = saved.back().alpha;
    saved.pop_back();
    cairo_pop_group_to_source(impl_->cr);
    cairo_paint_with_alpha(impl_->cr, impl_->alpha * clamp01(alpha));
}

void Canvas::concat(const AffineTransform& t) {
    const cairo_matrix_t m = cairo_path::matrix(t);
    cairo_matrix_t combined;
    cairo_get_matrix(impl_->cr, &combined);
    cairo_matrix_multiply(&combined, &m, &combined);
    // A singular transform (a view scaled to zero mid-animation) would put cairo into a
    // permanent error state; everything drawn under it is invisible anyway, so clip it all away.
    if (cairo_matrix_invert(&combined) != CAIRO_STATUS_SUCCESS) {
        cairo_new_path(impl_->cr);
        cairo_rectangle(impl_->cr, 0, 0, 0, 0);
        cairo_clip(impl_->cr);
        return;
    }
    cairo_transform(impl_->cr, &m);
}

void Canvas::translate(double x, double y) {
    concat(AffineTransform::translation(x, y));
}

void Canvas::clipToRect(const Rect& r) {
    cairo_rectangle(impl_->cr, r.origin.x, r.origin.y, r.size.width, r.size.height);
    cairo_clip(impl_->cr);
}

void Canvas::clipToRoundedRect(const Rect& r, double cornerRadius) {
    cairo_path::append(impl_->cr, Path::roundedRect(r, cornerRadius));
    cairo_clip(impl_->cr);
}

void Canvas::setAlpha(double alpha) {
    impl_->alpha *= clamp01(alpha);
}
double Canvas::alpha() const {
    return impl_->alpha;
}

void Canvas::fill(const Color& color) {
    impl_->setSourceColor(color);
    cairo_paint(impl_->cr);
}

void Canvas::fillRect(const Rect& r, const Color& color) {
    cairo_rectangle(impl_->cr, r.origin.x, r.origin.y, r.size.width, r.size.height);
    impl_->setSourceColor(color);
    cairo_fill(impl_->cr);
}

void Canvas::fillPath(const Path& path, const Color& color) {
    cairo_path::append(impl_->cr, path);
    impl_->setSourceColor(color);
    cairo_fill(impl_->cr);
}

void Canvas::strokePath(const Path& path, const Color& color, const StrokeStyle& style) {
    const double from = clamp01(style.strokeStart), to = clamp01(style.strokeEnd);
    if (to <= from || style.width <= 0) return;
    cairo_t* cr = impl_->cr;
    cairo_path::append(cr, path);
    if (from > 0 || to < 1) trimCurrentPath(cr, from, to);
    cairo_set_line_width(cr, style.width);
    cairo_set_line_cap(cr, cairo_path::lineCap(style.cap));
    cairo_set_line_join(cr, cairo_path::lineJoin(style.join));
    impl_->setSourceColor(color);
    cairo_stroke(cr);
}

void Canvas::strokeRectInside(const Rect& rect, double width, double cornerRadius,
                              const Color& color) {
    if (width <= 0) return;
    const Rect r = rectStandardize(rect);
    cairo_t* cr = impl_->cr;
    cairo_path::append(cr, Path::roundedRect(r, cornerRadius));
    const Rect inner = rectInset(r, width, width);
    if (!rectIsEmpty(inner)) {
        cairo_path::append(cr, Path::roundedRect(inner, std::max(0.0, cornerRadius - width)));
    }
    cairo_save(cr);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    impl_->setSourceColor(color);
    cairo_fill(cr);
    cairo_restore(cr);
}

namespace {

// Runs `paint` with the user space set to the bitmap's pixel grid laid upright into `r`, and
// the source/mask pattern it is given over the bitmap's pixels.
template <class Paint>
void withImagePattern(cairo_t* cr, const Image& image, const Rect& r, Paint&& paint) {
    const BitmapPtr& source = image.bitmap();
    if (!source || source->width() == 0 || source->height() == 0 || rectIsEmpty(r)) return;
    const BitmapPtr pixels = cairo_pixels::readyForCairo(source);
    const double w = pixels->width(), h = pixels->height();
    const bool turned = isQuarterTurn(image.orientation());
    const double uprightW = turned ? h : w, uprightH = turned ? w : h;

    cairo_surface_t* surface = cairo_pixels::wrap(*pixels);
    cairo_pattern_t* pattern = cairo_pattern_create_for_surface(surface);
    // Padding keeps the edges of a scaled picture crisp inside its rectangle.
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pattern, CAIRO_FILTER_GOOD);

    cairo_save(cr);
    cairo_translate(cr, r.origin.x, r.origin.y);
    cairo_scale(cr, r.size.width / uprightW, r.size.height / uprightH);
    const cairo_matrix_t m = cairo_path::matrix(orientationTransform(image.orientation(), w, h));
    cairo_transform(cr, &m);
    cairo_rectangle(cr, 0, 0, w, h);
    cairo_clip(cr);
    paint(pattern);
    cairo_restore(cr);

    cairo_pattern_destroy(pattern);
    cairo_surface_destroy(surface);
}

}  // namespace

void Canvas::drawImage(const Image& image, const Rect& r) {
    cairo_t* cr = impl_->cr;
    const double alpha = impl_->alpha;
    withImagePattern(cr, image, r, [&](cairo_pattern_t* pattern) {
        cairo_set_source(cr, pattern);
        if (alpha >= 1)
            cairo_paint(cr);
        else
            cairo_paint_with_alpha(cr, alpha);
    });
}

void Canvas::drawImageTinted(const Image& image, const Rect& r, const Color& tint) {
    cairo_t* cr = impl_->cr;
    withImagePattern(cr, image, r, [&](cairo_pattern_t* pattern) {
        impl_->setSourceColor(tint);
        cairo_mask(cr, pattern);
    });
}

void Canvas::drawRadialGradient(Point center, double radius, const Color& inner,
                                const Color& outer) {
    if (radius <= 0) return;
    cairo_pattern_t* gradient =
        cairo_pattern_create_radial(center.x, center.y, 0, center.x, center.y, radius);
    const double a = impl_->alpha;
    cairo_pattern_add_color_stop_rgba(gradient, 0, clamp01(inner.r), clamp01(inner.g),
                                      clamp01(inner.b), clamp01(inner.a) * a);
    cairo_pattern_add_color_stop_rgba(gradient, 1, clamp01(outer.r), clamp01(outer.g),
                                      clamp01(outer.b), clamp01(outer.a) * a);
    // Only the disc is painted, as a gradient drawn without extension options is.
    cairo_arc(impl_->cr, center.x, center.y, radius, 0, 2 * M_PI);
    cairo_set_source(impl_->cr, gradient);
    cairo_fill(impl_->cr);
    cairo_pattern_destroy(gradient);
}

BitmapPtr Canvas::snapshot() const {
    cairo_surface_flush(impl_->surface);
    const int w = cairo_image_surface_get_width(impl_->surface);
    const int h = cairo_image_surface_get_height(impl_->surface);
    const int stride = cairo_image_surface_get_stride(impl_->surface);
    const uint8_t* data = cairo_image_surface_get_data(impl_->surface);
    // Bytes B, G, R, A (native-endian A R G B words) to R, G, B, A, a row at a time through a
    // small buffer: the pixels are written once, not zeroed first (a screen is 12 MB at 3x).
    std::vector<uint8_t> pixels, row(4 * static_cast<size_t>(std::max(w, 0)));
    pixels.reserve(row.size() * static_cast<size_t>(std::max(h, 0)));
    for (int y = 0; y < h; ++y) {
        BitmapOps::swapRedBlueRow(data + static_cast<size_t>(stride) * y, row.data(), w);
        pixels.insert(pixels.end(), row.begin(), row.end());
    }
    return std::make_shared<Bitmap>(w, h, PixelFormat::RGBA8888Premultiplied, 0, std::move(pixels));
}

}  // namespace orv::gfx
