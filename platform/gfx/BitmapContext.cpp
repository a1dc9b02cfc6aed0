#include "platform/gfx/BitmapContext.h"

#include <cairo.h>
#include <pixman.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <deque>
#include <mutex>

#include "platform/gfx/AffineComposite.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/gfx/CairoPath.h"
#include "platform/gfx/Coverage.h"

namespace orv::gfx {

namespace {

// Bigger requests come from a wrong size, not from a picture: they get a context of no pixels.
constexpr int kMaxSide = 1 << 16;
constexpr int64_t kMaxPixels = int64_t{1} << 28;
// Paths reaching further than this are not drawn: cairo's fixed-point coordinates end there.
constexpr double kPathLimit = 1 << 22;
// pixman's 16.16 transforms hold values below this.
constexpr double kFixedLimit = 32767;

bool usableSize(int width, int height) {
    return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide &&
           int64_t{width} * height <= kMaxPixels;
}

// pixman's fastest paths (bilinear sampling under rotation above all) are for words of
// B, G, R, A bytes. Every operation here treats red and blue alike, so an R, G, B, A context
// tells pixman its bytes are B, G, R, A, and names every other picture and colour with red and
// blue swapped to match (`swapRB`).
pixman_format_code_t pixmanFormat(PixelFormat format, bool swapRB) {
    switch (format) {
        case PixelFormat::RGBA8888Premultiplied:
            return swapRB ? PIXMAN_a8r8g8b8 : PIXMAN_a8b8g8r8;
        case PixelFormat::BGRA8888Premultiplied:
            return swapRB ? PIXMAN_a8b8g8r8 : PIXMAN_a8r8g8b8;
        case PixelFormat::BGRX8888:
            return swapRB ? PIXMAN_x8b8g8r8 : PIXMAN_x8r8g8b8;
    }
    return PIXMAN_a8b8g8r8;
}

double unitInterval(double v) {
    return v > 0 ? std::min(v, 1.0) : 0;  // NaN too goes to 0
}

PixmanPtr bitsOver(PixelFormat format, bool swapRB, int width, int height, const uint8_t* pixels,
                   size_t rowBytes) {
    // pixman only writes through this when it is a destination; sources are read.
    return PixmanPtr(pixman_image_create_bits(
        pixmanFormat(format, swapRB), width, height,
        reinterpret_cast<uint32_t*>(const_cast<uint8_t*>(pixels)), static_cast<int>(rowBytes)));
}

// A colour, its alpha multiplied by `alpha`, premultiplied and rounded once to bytes.
PixmanPtr solidColor(const Color& color, double alpha, bool swapRB) {
    const uint32_t p = color.withAlpha(unitInterval(color.a) * alpha).premultipliedRGBA();
    auto wide = [p](int shift) { return static_cast<uint16_t>(((p >> shift) & 0xff) * 257); };
    const pixman_color_t c{wide(swapRB ? 16 : 0), wide(8), wide(swapRB ? 0 : 16), wide(24)};
    return PixmanPtr(pixman_image_create_solid_fill(&c));
}

PixmanPtr solidAlpha(double alpha) {
    return solidColor(Color::black(), unitInterval(alpha), false);
}

bool isWhole(double v) {
    return std::fabs(v - std::round(v)) < 1e-9;
}

// A transform that only moves by whole pixels (up to rounding noise from its making).
bool isWholeTranslation(const AffineTransform& m) {
    return std::fabs(m.a - 1) < 1e-9 && std::fabs(m.b) < 1e-9 && std::fabs(m.c) < 1e-9 &&
           std::fabs(m.d - 1) < 1e-9 && isWhole(m.tx) && isWhole(m.ty);
}

// What a drawing paints, in device pixels: a colour, or a picture either sampled through
// `deviceToSource` or moved by whole pixels.
struct Source {
    PixmanPtr image;
    std::optional<AffineTransform> deviceToSource;
    bool smooth = false;  // sampled bilinearly through deviceToSource
    int dx = 0, dy = 0;   // picture pixel = device pixel + (dx, dy), without a transform
    BitmapPtr keep;       // pixels the image reads when they are a converted copy
};

struct MaskRef {
    pixman_image_t* image = nullptr;  // null: every pixel counts fully
    int x = 0, y = 0;                 // the device pixel of the mask's pixel (0, 0)
};

MaskRef maskOf(const Coverage& c) {
    return {c.mask(), c.maskX(), c.maskY()};
}

// A coverage times an alpha, as a mask for pixman.
struct ScaledMask {
    ScaledMask(const Coverage& coverage, double alpha) {
        if (alpha >= 1) {
            ref = maskOf(coverage);
        } else if (coverage.isFull() || !(alpha > 0)) {
            solid = solidAlpha(alpha);
            ref = {solid.get(), 0, 0};
        } else {
            scaled = coverage.scaled(alpha);
            ref = maskOf(scaled);
        }
    }
    Coverage scaled;
    PixmanPtr solid;
    MaskRef ref;
};

// What a transformed source is sampled through on `region`, in pixman's 16.16: relative to the
// region, so that its numbers stay small. None when they don't fit.
std::optional<pixman_transform_t> regionTransform(const Source& src, const PixelBox& region) {
    const AffineTransform t =
        AffineTransform::translation(region.x0, region.y0).concat(*src.deviceToSource);
    for (double v : {t.a, t.b, t.c, t.d, t.tx, t.ty}) {
        if (!(std::fabs(v) < kFixedLimit)) return std::nullopt;
    }
    auto f = [](double v) { return static_cast<pixman_fixed_t>(std::lround(v * 65536)); };
    return pixman_transform_t{{{f(t.a), f(t.c), f(t.tx)}, {f(t.b), f(t.d), f(t.ty)}, {0, 0, f(1)}}};
}

// Composites `src` through `mask` over `region` of `dest`, whose pixel (0, 0) is the device
// pixel (originX, originY).
void composite(pixman_op_t op, const Source& src, const MaskRef& mask, pixman_image_t* dest,
               int originX, int originY, const PixelBox& region) {
    int sx = region.x0 + src.dx, sy = region.y0 + src.dy;
    if (src.deviceToSource) {
        const std::optional<pixman_transform_t> m = regionTransform(src, region);
        if (!m || !pixman_image_set_transform(src.image.get(), &*m)) return;
        sx = sy = 0;
    }
    pixman_image_composite32(op, src.image.get(), mask.image, dest, sx, sy, region.x0 - mask.x,
                             region.y0 - mask.y, region.x0 - originX, region.y0 - originY,
                             region.width(), region.height());
}

// 32-bit pixels whose bytes mean the same in both formats, the destination's with alpha (the
// picture's may be padding).
bool composable(pixman_format_code_t picture, pixman_format_code_t dest) {
    auto rgb8 = [](pixman_format_code_t f) {
        return PIXMAN_FORMAT_BPP(f) == 32 && PIXMAN_FORMAT_R(f) == 8 && PIXMAN_FORMAT_G(f) == 8 &&
               PIXMAN_FORMAT_B(f) == 8;
    };
    return rgb8(picture) && rgb8(dest) && PIXMAN_FORMAT_TYPE(picture) == PIXMAN_FORMAT_TYPE(dest) &&
           PIXMAN_FORMAT_A(dest) == 8;
}

uint8_t* bytesAt(pixman_image_t* image, int x, int y) {
    const int pixelBytes = PIXMAN_FORMAT_BPP(pixman_image_get_format(image)) / 8;
    return reinterpret_cast<uint8_t*>(pixman_image_get_data(image)) +
           static_cast<ptrdiff_t>(pixman_image_get_stride(image)) * y +
           static_cast<ptrdiff_t>(pixelBytes) * x;
}

size_t rowBytesOf(pixman_image_t* image) {
    return static_cast<size_t>(pixman_image_get_stride(image));
}

AffineComposite::Picture pictureOf(pixman_image_t* image) {
    return {bytesAt(image, 0, 0), pixman_image_get_width(image), pixman_image_get_height(image),
            rowBytesOf(image), PIXMAN_FORMAT_A(pixman_image_get_format(image)) == 0};
}

// The coverage over its box.
AffineComposite::Mask maskOver(const Coverage& c) {
    if (!c.mask()) return {};
    return {bytesAt(c.mask(), c.box().x0 - c.maskX(), c.box().y0 - c.maskY()),
            rowBytesOf(c.mask())};
}

// As pixman's masks take an alpha: rounded once to a byte.
uint8_t alphaByte(double alpha) {
    return static_cast<uint8_t>(alpha >= 1 ? 255 : std::lround(unitInterval(alpha) * 255));
}

// pixman samples a turned (or skewed) picture through its general path, a pixel at a time;
// source over and destination out of one go through AffineComposite instead, which gives the
// same bytes several times faster. False when it doesn't apply: nearest sampling, plain
// scalings (pixman has fast paths for them), formats that need converting, processors without
// the vector loop.
bool composeTurned(AffineComposite::Op op, const Source& src, const Coverage& coverage,
                   double alpha, pixman_image_t* dest) {
    if (!src.deviceToSource || !src.smooth || !AffineComposite::vectorised()) return false;
    const PixelBox& r = coverage.box();
    const std::optional<pixman_transform_t> m = regionTransform(src, r);
    if (!m || (m->matrix[0][1] == 0 && m->matrix[1][0] == 0)) return false;
    pixman_image_t* picture = src.image.get();
    if (!composable(pixman_image_get_format(picture), pixman_image_get_format(dest))) return false;
    AffineComposite(pictureOf(picture), *m, op, alphaByte(alpha))
        .run({bytesAt(dest, r.x0, r.y0), rowBytesOf(dest), r.width(), r.height()},
             maskOver(coverage));
    return true;
}

Source solidSource(const Color& color, double alpha, bool swapRB) {
    Source s;
    s.image = solidColor(color, alpha, swapRB);
    return s;
}

std::vector<Point> corners(const Rect& rect, const AffineTransform& t) {
    const Rect r = rectStandardize(rect);
    const double x1 = r.origin.x + r.size.width, y1 = r.origin.y + r.size.height;
    return {applyTransform(r.origin, t), applyTransform(Point{x1, r.origin.y}, t),
            applyTransform(Point{x1, y1}, t), applyTransform(Point{r.origin.x, y1}, t)};
}

struct CairoSurfaceDestroy {
    void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
struct CairoDestroy {
    void operator()(cairo_t* cr) const { cairo_destroy(cr); }
};

// Everything save and restore keep.
struct GState {
    AffineTransform ctm;
    Coverage clip;
    BlendMode blendMode = BlendMode::Normal;
    InterpolationQuality interpolation = InterpolationQuality::Default;
    bool antialias = true;
    double alpha = 1;
    Color fillColor = Color::black();
    Color strokeColor = Color::black();
    double lineWidth = 1;
    LineCap lineCap = LineCap::Butt;
    LineJoin lineJoin = LineJoin::Miter;
    double miterLimit = 10;
    Size shadowOffset;
    double shadowBlur = 0;
    std::optional<Color> shadowColor;
};

}  // namespace

// Snapshot buffers that came back from their last holder, ready to be brought up to date. The
// deleters of handed-out snapshots return them here from whichever thread drops them last.
struct SnapshotSpares {
    static constexpr size_t kMaxSpares = 2;
    struct Spare {
        std::unique_ptr<Bitmap> bitmap;
        uint64_t generation;  // the snapshot it holds
    };
    std::mutex mutex;
    std::vector<Spare> spares;
    bool closed = false;  // the context is gone: returned buffers are freed

    void giveBack(Bitmap* bitmap, uint64_t generation) {
        std::unique_ptr<Bitmap> owned(bitmap);
        std::lock_guard lock(mutex);
        if (!closed && spares.size() < kMaxSpares) spares.push_back({std::move(owned), generation});
    }
};

// What changed between snapshots, so that an old snapshot's buffer can be brought up to date by
// copying only that.
struct SnapshotRecycler {
    static constexpr size_t kTrackedSnapshots = 16;
    std::shared_ptr<SnapshotSpares> spares = std::make_shared<SnapshotSpares>();
    uint64_t generation = 0;
    PixelBox pending;                                   // changed since the last snapshot
    std::deque<std::pair<uint64_t, PixelBox>> changes;  // what changed before each snapshot

    ~SnapshotRecycler() {
        std::lock_guard lock(spares->mutex);
        spares->closed = true;
        spares->spares.clear();
    }
    // The box to copy into a buffer that holds snapshot `since`; the whole canvas when that is
    // too old to know.
    PixelBox changedSince(uint64_t since, const PixelBox& all) const {
        if (changes.empty() || since + 1 < changes.front().first) return all;
        PixelBox box;
        for (const auto& [g, changed] : changes) {
            if (g > since && !changed.empty()) box = box.empty() ? changed : box.united(changed);
        }
        return box.intersected(all);
    }
};

struct BitmapContext::Impl {
    void attach(uint8_t* pixels, int w, int h, size_t stride, PixelFormat f);
    void changed(const PixelBox& box) {
        if (recycler && !box.empty())
            recycler->pending = recycler->pending.empty() ? box : recycler->pending.united(box);
    }
    BitmapPtr recycledImage();

    PixelBox bounds() const { return {0, 0, width, height}; }
    // User space to device pixels (y down from the first row).
    AffineTransform userToDevice() const {
        return state.ctm.concat({1, 0, 0, -1, 0, static_cast<double>(height)});
    }
    bool shadowOn() const { return state.shadowColor && state.shadowColor->a > 0; }
    void shadowShift(int& dx, int& dy) const;
    double shadowSigma() const;
    // The device pixels a shape may matter on: the clip's box, and with a shadow the pixels
    // whose shadow falls into it.
    PixelBox interest() const;

    Coverage rectCoverage(const Rect& rect, const PixelBox& limit) const {
        return Coverage::polygon(corners(rect, userToDevice()), limit, state.antialias);
    }
    Coverage pathCoverage(const Path& path, double margin,
                          const std::function<void(cairo_t*)>& paint) const;
    std::optional<Source> imageSource(const Bitmap& bitmap, AffineTransform toDevice) const;

    void drawBitmap(const Bitmap& bitmap, const AffineTransform& imageToUser, BlendMode mode,
                    double alpha);
    void draw(const Source& src, const Coverage& shape, BlendMode mode, double alpha);
    void castShadow(const Source& src, const Coverage& shape, BlendMode mode, double alpha);
    void blend(const Source& src, const Coverage& coverage, BlendMode mode, double alpha);
    void blendSourceIn(const Source& src, const Coverage& coverage, double alpha);

    std::vector<uint8_t> owned;
    bool ownsPixels = false;
    uint8_t* data = nullptr;
    int width = 0, height = 0;
    size_t rowBytes = 0;
    PixelFormat format = PixelFormat::RGBA8888Premultiplied;
    PixmanPtr dest;
    bool swapRB = false;
    const Source opaque = solidSource(Color::black(), 1, false);  // what Clear mode takes away
    AffineTransform base;
    GState state;
    std::vector<GState> saved;
    std::unique_ptr<SnapshotRecycler> recycler;
};

void BitmapContext::Impl::attach(uint8_t* pixels, int w, int h, size_t stride, PixelFormat f) {
    data = pixels;
    format = f;
    if (pixels && usableSize(w, h) && stride % 4 == 0 && stride >= 4 * static_cast<size_t>(w) &&
        stride <= static_cast<size_t>(INT32_MAX)) {
        width = w;
        height = h;
        rowBytes = stride;
        swapRB = f == PixelFormat::RGBA8888Premultiplied;
        dest = bitsOver(f, swapRB, w, h, pixels, stride);
    }
    state.clip = Coverage::full(bounds());
}

void BitmapContext::Impl::shadowShift(int& dx, int& dy) const {
    // The offset is measured in the base space (y up), pixels are counted downward.
    const Size o = applyTransform(state.shadowOffset, base);
    auto whole = [](double v) { return static_cast<int>(std::lround(std::clamp(v, -1e6, 1e6))); };
    dx = std::isfinite(o.width) ? whole(o.width) : 0;
    dy = std::isfinite(o.height) ? whole(-o.height) : 0;
}

double BitmapContext::Impl::shadowSigma() const {
    return state.shadowBlur * std::sqrt(std::fabs(base.a * base.d - base.b * base.c)) / 2;
}

PixelBox BitmapContext::Impl::interest() const {
    const PixelBox visible = state.clip.box();
    if (!shadowOn() || visible.empty()) return visible;
    int dx = 0, dy = 0;
    shadowShift(dx, dy);
    return visible.united(visible.shifted(-dx, -dy).inflated(Coverage::blurReach(shadowSigma())));
}

Coverage BitmapContext::Impl::pathCoverage(const Path& path, double margin,
                                           const std::function<void(cairo_t*)>& paint) const {
    if (!dest || path.isEmpty()) return {};
    const AffineTransform m = userToDevice();
    const Rect r = applyTransform(path.boundingBox(), m);
    const double x0 = r.origin.x, y0 = r.origin.y;
    const double x1 = x0 + r.size.width, y1 = y0 + r.size.height;
    for (double v : {x0, y0, x1, y1}) {
        if (!(std::fabs(v) < kPathLimit)) return {};
    }
    // Stretch of the transform at its most (bounded by the Frobenius norm).
    const double reach = margin * std::sqrt(m.a * m.a + m.b * m.b + m.c * m.c + m.d * m.d) + 1;
    const PixelBox box =
        PixelBox::enclosing(x0 - reach, y0 - reach, x1 + reach, y1 + reach).intersected(interest());
    return Coverage::painted(box, m, state.antialias, paint);
}

std::optional<Source> BitmapContext::Impl::imageSource(const Bitmap& bitmap,
                                                       AffineTransform toDevice) const {
    Source s;
    const Bitmap* pixels = &bitmap;
    if (bitmap.rowBytes() % 4 != 0) {
        s.keep = bitmap.converted(bitmap.format());
        pixels = s.keep.get();
    }
    const int w = bitmap.width(), h = bitmap.height();
    // Bilinear sampling skips source pixels when reducing by more than half: those reductions
    // are area-averaged first, down to about the drawn size.
    const double sx = std::hypot(toDevice.a, toDevice.b), sy = std::hypot(toDevice.c, toDevice.d);
    if (state.interpolation != InterpolationQuality::None && (sx < 0.5 || sy < 0.5)) {
        const int rw = sx < 0.5 ? std::max(1, static_cast<int>(std::lround(w * sx))) : w;
        const int rh = sy < 0.5 ? std::max(1, static_cast<int>(std::lround(h * sy))) : h;
        s.keep = BitmapOps::resized(*pixels, rw, rh);
        pixels = s.keep.get();
        toDevice = AffineTransform::scale(static_cast<double>(w) / rw, static_cast<double>(h) / rh)
                       .concat(toDevice);
    }
    s.image = bitsOver(pixels->format(), swapRB, pixels->width(), pixels->height(), pixels->data(),
                       pixels->rowBytes());
    const AffineTransform& m = toDevice;
    if (isWholeTranslation(m)) {
        s.dx = -static_cast<int>(std::lround(m.tx));
        s.dy = -static_cast<int>(std::lround(m.ty));
        return s;
    }
    if (!(std::fabs(m.a * m.d - m.b * m.c) > 1e-12)) return std::nullopt;
    s.deviceToSource = m.inverted();
    const bool nearest = state.interpolation == InterpolationQuality::None;
    s.smooth = !nearest;
    pixman_image_set_filter(s.image.get(), nearest ? PIXMAN_FILTER_NEAREST : PIXMAN_FILTER_BILINEAR,
                            nullptr, 0);
    // The shape's coverage bounds the picture; padding keeps its edge pixels from fading into
    // transparency when they are sampled between pixels.
    pixman_image_set_repeat(s.image.get(), PIXMAN_REPEAT_PAD);
    return s;
}

void BitmapContext::Impl::drawBitmap(const Bitmap& bitmap, const AffineTransform& imageToUser,
                                     BlendMode mode, double alpha) {
    if (!dest || bitmap.width() < 1 || bitmap.height() < 1) return;
    const AffineTransform toDevice = imageToUser.concat(userToDevice());
    const Rect area(0, 0, bitmap.width(), bitmap.height());
    const Coverage shape = Coverage::polygon(corners(area, toDevice), interest(), state.antialias);
    if (shape.empty()) return;
    if (const std::optional<Source> src = imageSource(bitmap, toDevice))
        draw(*src, shape, mode, alpha);
}

void BitmapContext::Impl::draw(const Source& src, const Coverage& shape, BlendMode mode,
                               double alpha) {
    if (shape.empty()) return;
    if (shadowOn() && mode != BlendMode::Clear) castShadow(src, shape, mode, alpha);
    blend(src, shape.intersected(state.clip), mode, alpha);
}

void BitmapContext::Impl::castShadow(const Source& src, const Coverage& shape, BlendMode mode,
                                     double alpha) {
    const PixelBox& box = shape.box();
    const ScaledMask m(shape, alpha);
    const Coverage drawn = Coverage::composed(box, [&](pixman_image_t* a8) {
        composite(PIXMAN_OP_SRC, src, m.ref, a8, box.x0, box.y0, box);
    });
    int dx = 0, dy = 0;
    shadowShift(dx, dy);
    const Coverage shadow = drawn.blurred(shadowSigma()).shifted(dx, dy).intersected(state.clip);
    if (!shadow.empty()) blend(solidSource(*state.shadowColor, 1, swapRB), shadow, mode, 1);
}

// Inside the coverage the blend mode decides; at its soft edges the result is mixed with
// the destination by the coverage. Source over and destination out behave so by themselves
// with the coverage as pixman's mask; copy and source in don't (pixman clears what the mask
// leaves out), so they are built as D × (1 − c) + result × c unless the shape is a whole box.
void BitmapContext::Impl::blend(const Source& src, const Coverage& coverage, BlendMode mode,
                                double alpha) {
    if (coverage.empty()) return;
    pixman_image_t* d = dest.get();
    const PixelBox& r = coverage.box();
    changed(r);
    switch (mode) {
        case BlendMode::Normal:
        case BlendMode::DestinationOut: {
            const bool over = mode == BlendMode::Normal;
            const auto op = over ? AffineComposite::Op::Over : AffineComposite::Op::OutReverse;
            if (composeTurned(op, src, coverage, alpha, d)) return;
            const ScaledMask m(coverage, alpha);
            composite(over ? PIXMAN_OP_OVER : PIXMAN_OP_OUT_REVERSE, src, m.ref, d, 0, 0, r);
            return;
        }
        case BlendMode::Clear:
            composite(coverage.isFull() ? PIXMAN_OP_CLEAR : PIXMAN_OP_OUT_REVERSE, opaque,
                      maskOf(coverage), d, 0, 0, r);
            return;
        case BlendMode::Copy: {
            const ScaledMask m(coverage, alpha);
            if (!coverage.isFull()) {
                composite(PIXMAN_OP_OUT_REVERSE, opaque, maskOf(coverage), d, 0, 0, r);
            }
            composite(coverage.isFull() ? PIXMAN_OP_SRC : PIXMAN_OP_ADD, src, m.ref, d, 0, 0, r);
            return;
        }
        case BlendMode::SourceIn:
            blendSourceIn(src, coverage, alpha);
            return;
    }
}

void BitmapContext::Impl::blendSourceIn(const Source& src, const Coverage& coverage, double alpha) {
    const PixelBox& r = coverage.box();
    const ScaledMask alphaOnly(Coverage::full(r), alpha);
    if (coverage.isFull()) {
        composite(PIXMAN_OP_IN, src, alphaOnly.ref, dest.get(), 0, 0, r);
        return;
    }
    // The result inside the shape's box, worked out on a copy of the destination there.
    Source result;
    result.image.reset(
        pixman_image_create_bits(pixmanFormat(format, swapRB), r.width(), r.height(), nullptr, 0));
    result.dx = -r.x0;
    result.dy = -r.y0;
    pixman_image_composite32(PIXMAN_OP_SRC, dest.get(), nullptr, result.image.get(), r.x0, r.y0, 0,
                             0, 0, 0, r.width(), r.height());
    composite(PIXMAN_OP_IN, src, alphaOnly.ref, result.image.get(), r.x0, r.y0, r);
    composite(PIXMAN_OP_OUT_REVERSE, opaque, maskOf(coverage), dest.get(), 0, 0, r);
    composite(PIXMAN_OP_ADD, result, maskOf(coverage), dest.get(), 0, 0, r);
}

// ---- BitmapContext

BitmapContext::BitmapContext(int width, int height, PixelFormat format)
    : impl_(std::make_unique<Impl>()) {
    Impl& d = *impl_;
    d.ownsPixels = true;
    if (usableSize(width, height)) {
        d.owned.assign(4 * static_cast<size_t>(width) * height, 0);
        d.attach(d.owned.data(), width, height, 4 * static_cast<size_t>(width), format);
    } else {
        d.attach(nullptr, 0, 0, 0, format);
    }
}

BitmapContext::BitmapContext(uint8_t* data, int width, int height, size_t rowBytes,
                             PixelFormat format)
    : impl_(std::make_unique<Impl>()) {
    const size_t stride = rowBytes ? rowBytes : 4 * static_cast<size_t>(std::max(width, 0));
    impl_->attach(data, width, height, stride, format);
}

BitmapContext::~BitmapContext() = default;

uint8_t* BitmapContext::data() const {
    return impl_->data;
}
int BitmapContext::width() const {
    return impl_->width;
}
int BitmapContext::height() const {
    return impl_->height;
}
size_t BitmapContext::rowBytes() const {
    return impl_->rowBytes;
}
PixelFormat BitmapContext::format() const {
    return impl_->format;
}

void BitmapContext::saveGState() {
    impl_->saved.push_back(impl_->state);
}

void BitmapContext::restoreGState() {
    if (impl_->saved.empty()) return;
    impl_->state = std::move(impl_->saved.back());
    impl_->saved.pop_back();
}

void BitmapContext::translateCTM(double tx, double ty) {
    impl_->state.ctm = impl_->state.ctm.translated(tx, ty);
}
void BitmapContext::scaleCTM(double sx, double sy) {
    impl_->state.ctm = impl_->state.ctm.scaled(sx, sy);
}
void BitmapContext::rotateCTM(double radians) {
    impl_->state.ctm = impl_->state.ctm.rotated(radians);
}
void BitmapContext::concatCTM(const AffineTransform& t) {
    impl_->state.ctm = t.concat(impl_->state.ctm);
}
AffineTransform BitmapContext::ctm() const {
    return impl_->state.ctm;
}

void BitmapContext::setBaseTransform(const AffineTransform& t) {
    impl_->base = t;
    impl_->state.ctm = t;
}

void BitmapContext::setBlendMode(BlendMode mode) {
    impl_->state.blendMode = mode;
}
BlendMode BitmapContext::blendMode() const {
    return impl_->state.blendMode;
}
void BitmapContext::setInterpolationQuality(InterpolationQuality quality) {
    impl_->state.interpolation = quality;
}
InterpolationQuality BitmapContext::interpolationQuality() const {
    return impl_->state.interpolation;
}
void BitmapContext::setShouldAntialias(bool antialias) {
    impl_->state.antialias = antialias;
}
bool BitmapContext::shouldAntialias() const {
    return impl_->state.antialias;
}
void BitmapContext::setAlpha(double alpha) {
    impl_->state.alpha = unitInterval(alpha);
}

void BitmapContext::setFillColor(const Color& color) {
    impl_->state.fillColor = color;
}
void BitmapContext::setStrokeColor(const Color& color) {
    impl_->state.strokeColor = color;
}
void BitmapContext::setLineWidth(double width) {
    impl_->state.lineWidth = width;
}
void BitmapContext::setLineCap(LineCap cap) {
    impl_->state.lineCap = cap;
}
void BitmapContext::setLineJoin(LineJoin join) {
    impl_->state.lineJoin = join;
}
void BitmapContext::setMiterLimit(double limit) {
    impl_->state.miterLimit = limit;
}

void BitmapContext::setShadow(Size offset, double blur, std::optional<Color> color) {
    GState& s = impl_->state;
    s.shadowOffset = offset;
    s.shadowBlur = blur > 0 ? blur : 0;
    s.shadowColor = color;
}

void BitmapContext::clipToRect(const Rect& rect) {
    Impl& d = *impl_;
    d.state.clip = d.state.clip.intersected(d.rectCoverage(rect, d.state.clip.box()));
}

void BitmapContext::fillRect(const Rect& rect) {
    Impl& d = *impl_;
    if (!d.dest) return;
    d.draw(solidSource(d.state.fillColor, d.state.alpha, d.swapRB),
           d.rectCoverage(rect, d.interest()), d.state.blendMode, 1);
}

void BitmapContext::clearRect(const Rect& rect) {
    Impl& d = *impl_;
    if (!d.dest) return;
    const Coverage shape = d.rectCoverage(rect, d.state.clip.box());
    d.blend(Source{}, shape.intersected(d.state.clip), BlendMode::Clear, 1);
}

void BitmapContext::fillEllipseInRect(const Rect& rect) {
    fillPath(Path::ellipseInRect(rect));
}

void BitmapContext::fillPath(const Path& path, bool evenOdd) {
    Impl& d = *impl_;
    const Coverage shape = d.pathCoverage(path, 0, [&](cairo_t* cr) {
        cairo_path::append(cr, path);
        cairo_set_fill_rule(cr, evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
        cairo_fill(cr);
    });
    d.draw(solidSource(d.state.fillColor, d.state.alpha, d.swapRB), shape, d.state.blendMode, 1);
}

void BitmapContext::strokePath(const Path& path) {
    Impl& d = *impl_;
    const GState& s = d.state;
    if (!(s.lineWidth > 0)) return;
    const double joinReach = s.lineJoin == LineJoin::Miter ? std::max(s.miterLimit, 1.0) : 1;
    const double capReach = s.lineCap == LineCap::Square ? std::sqrt(2.0) : 1;
    const Coverage shape =
        d.pathCoverage(path, s.lineWidth / 2 * std::max(joinReach, capReach), [&](cairo_t* cr) {
            cairo_path::append(cr, path);
            cairo_set_line_width(cr, s.lineWidth);
            cairo_set_line_cap(cr, cairo_path::lineCap(s.lineCap));
            cairo_set_line_join(cr, cairo_path::lineJoin(s.lineJoin));
            cairo_set_miter_limit(cr, s.miterLimit);
            cairo_stroke(cr);
        });
    d.draw(solidSource(s.strokeColor, s.alpha, d.swapRB), shape, s.blendMode, 1);
}

void BitmapContext::drawImage(const Rect& rect, const Bitmap& bitmap) {
    const Rect r = rectStandardize(rect);
    const double sx = r.size.width / std::max(bitmap.width(), 1);
    const double sy = r.size.height / std::max(bitmap.height(), 1);
    // Picture rows run down from the rectangle's top (high-y) edge.
    impl_->drawBitmap(bitmap, {sx, 0, 0, -sy, r.origin.x, r.origin.y + r.size.height},
                      impl_->state.blendMode, impl_->state.alpha);
}

void BitmapContext::drawImageInRect(const Image& image, const Rect& rect) {
    const BitmapPtr& source = image.bitmap();
    if (!source) return;
    const BitmapPtr upright = image.orientation() == ImageOrientation::Up
                                  ? source
                                  : BitmapOps::oriented(*source, image.orientation());
    const Rect r = rectStandardize(rect);
    const double sx = r.size.width / std::max(upright->width(), 1);
    const double sy = r.size.height / std::max(upright->height(), 1);
    impl_->drawBitmap(*upright, {sx, 0, 0, sy, r.origin.x, r.origin.y}, BlendMode::Normal, 1);
}

void BitmapContext::drawWithCairo(const Rect& userBounds,
                                  const std::function<void(cairo_t*)>& paint) {
    Impl& d = *impl_;
    if (!d.dest || !paint) return;
    const Coverage shape = d.rectCoverage(userBounds, d.interest());
    if (shape.empty()) return;
    const PixelBox& b = shape.box();
    const std::unique_ptr<cairo_surface_t, CairoSurfaceDestroy> sheet(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, b.width(), b.height()));
    {
        const std::unique_ptr<cairo_t, CairoDestroy> cr(cairo_create(sheet.get()));
        const cairo_matrix_t m =
            cairo_path::matrix(d.userToDevice().concat(AffineTransform::translation(-b.x0, -b.y0)));
        cairo_set_matrix(cr.get(), &m);
        if (!d.state.antialias) cairo_set_antialias(cr.get(), CAIRO_ANTIALIAS_NONE);
        paint(cr.get());
    }
    cairo_surface_flush(sheet.get());
    Source src;
    // Cairo's ARGB32 is pixman's a8r8g8b8: bytes B, G, R, A premultiplied.
    src.image = bitsOver(PixelFormat::BGRA8888Premultiplied, d.swapRB, b.width(), b.height(),
                         cairo_image_surface_get_data(sheet.get()),
                         cairo_image_surface_get_stride(sheet.get()));
    src.dx = -b.x0;
    src.dy = -b.y0;
    d.draw(src, shape, d.state.blendMode, d.state.alpha);
}

void BitmapContext::setRecyclesSnapshots(bool on) {
    if (on == bool(impl_->recycler)) return;
    impl_->recycler = on ? std::make_unique<SnapshotRecycler>() : nullptr;
    markChanged();
}

void BitmapContext::markChanged() {
    impl_->changed(impl_->bounds());
}

BitmapPtr BitmapContext::Impl::recycledImage() {
    SnapshotRecycler& r = *recycler;
    r.changes.emplace_back(++r.generation, r.pending);
    r.pending = {};
    if (r.changes.size() > SnapshotRecycler::kTrackedSnapshots) r.changes.pop_front();

    SnapshotSpares::Spare spare;
    {
        std::lock_guard lock(r.spares->mutex);
        if (!r.spares->spares.empty()) {
            spare = std::move(r.spares->spares.back());
            r.spares->spares.pop_back();
        }
    }
    PixelBox copy = bounds();
    if (spare.bitmap && spare.bitmap->width() == width && spare.bitmap->height() == height &&
        spare.bitmap->format() == format) {
        copy = r.changedSince(spare.generation, bounds());
    } else {
        spare.bitmap = std::make_unique<Bitmap>(width, height, format);
    }
    const size_t bytes = 4 * static_cast<size_t>(copy.width());
    for (int y = copy.y0; y < copy.y1; ++y) {
        std::memcpy(spare.bitmap->mutableRow(y) + 4 * static_cast<size_t>(copy.x0),
                    data + rowBytes * y + 4 * static_cast<size_t>(copy.x0), bytes);
    }
    const uint64_t generation = r.generation;
    return BitmapPtr(spare.bitmap.release(), [spares = r.spares, generation](const Bitmap* bitmap) {
        spares->giveBack(const_cast<Bitmap*>(bitmap), generation);
    });
}

BitmapPtr BitmapContext::makeImage() const {
    const Impl& d = *impl_;
    if (d.recycler && d.dest) return impl_->recycledImage();
    auto out = std::make_shared<Bitmap>(d.width, d.height, d.format);
    for (int y = 0; y < d.height; ++y) {
        std::memcpy(out->mutableRow(y), d.data + d.rowBytes * y, 4 * static_cast<size_t>(d.width));
    }
    return out;
}

BitmapPtr BitmapContext::takeBitmap() {
    Impl& d = *impl_;
    BitmapPtr out =
        d.ownsPixels ? std::make_shared<Bitmap>(d.width, d.height, d.format, 0, std::move(d.owned))
                     : makeImage();
    d.dest.reset();
    d.owned.clear();
    d.attach(nullptr, 0, 0, 0, d.format);
    d.width = d.height = 0;
    d.rowBytes = 0;
    d.saved.clear();
    return out;
}

}  // namespace orv::gfx
