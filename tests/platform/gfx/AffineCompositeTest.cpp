// Turned pictures drawn by the bitmap context (which composes them itself) against pixman alone
// composing them through the same coverage: the bytes must agree.

#include "platform/gfx/AffineComposite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>
#include <optional>
#include <random>
#include <vector>

#include "platform/gfx/BitmapContext.h"
#include "platform/gfx/Coverage.h"

namespace orv::gfx {
namespace {

constexpr int kWidth = 72, kHeight = 61;

pixman_format_code_t pixmanFormatOf(PixelFormat f) {
    switch (f) {
        case PixelFormat::RGBA8888Premultiplied:
            return PIXMAN_a8b8g8r8;
        case PixelFormat::BGRA8888Premultiplied:
            return PIXMAN_a8r8g8b8;
        case PixelFormat::BGRX8888:
            return PIXMAN_x8r8g8b8;
    }
    return PIXMAN_a8b8g8r8;
}

int uniform(std::mt19937& rng, int lo, int hi) {
    return std::uniform_int_distribution<int>(lo, hi)(rng);
}

double uniform(std::mt19937& rng, double lo, double hi) {
    return std::uniform_real_distribution<double>(lo, hi)(rng);
}

// Premultiplied bytes of some alpha (any, for a padded format) with colours no brighter.
void randomPixel(std::mt19937& rng, uint8_t* p, int alpha, PixelFormat f) {
    const int limit = f == PixelFormat::BGRX8888 ? 255 : alpha;
    for (int k = 0; k < 3; ++k) p[k] = static_cast<uint8_t>(uniform(rng, 0, limit));
    p[3] = static_cast<uint8_t>(f == PixelFormat::BGRX8888 ? uniform(rng, 0, 255) : alpha);
}

// Hard edges (opaque to the border, with a few see-through pixels), or a brush's soft falloff
// with speckles. In the padded format, now and then all black with the padding zero too: opaque
// all the same.
BitmapPtr randomPicture(std::mt19937& rng, PixelFormat f) {
    const int w = uniform(rng, 1, 33), h = uniform(rng, 1, 33);
    const bool soft = uniform(rng, 0, 1);
    auto b = std::make_shared<Bitmap>(w, h, f);
    if (f == PixelFormat::BGRX8888 && uniform(rng, 0, 2) == 0) return b;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const double dx = (x + 0.5) / w - 0.5, dy = (y + 0.5) / h - 0.5;
            const double falloff = std::clamp(1 - 2 * std::hypot(dx, dy), 0.0, 1.0);
            int alpha = soft ? static_cast<int>(255 * falloff) : 255;
            if (uniform(rng, 0, 7) == 0) alpha = uniform(rng, 0, 255);
            randomPixel(rng, b->mutableRow(y) + 4 * x, alpha, f);
        }
    }
    return b;
}

std::vector<Point> cornersOf(const Rect& rect, const AffineTransform& t) {
    const Rect r = rectStandardize(rect);
    const double x1 = r.origin.x + r.size.width, y1 = r.origin.y + r.size.height;
    return {applyTransform(r.origin, t), applyTransform(Point{x1, r.origin.y}, t),
            applyTransform(Point{x1, y1}, t), applyTransform(Point{r.origin.x, y1}, t)};
}

int coverageAt(const Coverage& c, int x, int y) {
    const PixelBox& b = c.box();
    if (x < b.x0 || x >= b.x1 || y < b.y0 || y >= b.y1) return 0;
    if (c.isFull()) return 255;
    const auto* bytes = reinterpret_cast<const uint8_t*>(pixman_image_get_data(c.mask()));
    return bytes[pixman_image_get_stride(c.mask()) * (y - c.maskY()) + (x - c.maskX())];
}

struct TurnedDraw {
    AffineTransform ctm;  // the picture's user space on the context's base space
    Rect rect;
    std::optional<Rect> clip;  // in base space
    double alpha = 1;
    BlendMode mode = BlendMode::Normal;
    PixelFormat canvasFormat = PixelFormat::RGBA8888Premultiplied;
    BitmapPtr picture;

    AffineTransform toDevice() const {
        const Rect r = rectStandardize(rect);
        const AffineTransform imageToUser{
            r.size.width / picture->width(),    0,          0,
            -r.size.height / picture->height(), r.origin.x, r.origin.y + r.size.height};
        return imageToUser.concat(ctm.concat(flip()));
    }
    static AffineTransform flip() { return {1, 0, 0, -1, 0, kHeight}; }
    // The pixels the drawing may change, and by how much.
    Coverage shape() const {
        Coverage clipped = Coverage::full({0, 0, kWidth, kHeight});
        if (clip)
            clipped = clipped.intersected(
                Coverage::polygon(cornersOf(*clip, flip()), clipped.box(), true));
        const Rect area(0, 0, picture->width(), picture->height());
        return Coverage::polygon(cornersOf(area, toDevice()), clipped.box(), true)
            .intersected(clipped);
    }
};

TurnedDraw randomDraw(std::mt19937& rng) {
    TurnedDraw d;
    static constexpr PixelFormat kPairs[][2] = {
        {PixelFormat::RGBA8888Premultiplied, PixelFormat::RGBA8888Premultiplied},
        {PixelFormat::BGRA8888Premultiplied, PixelFormat::BGRA8888Premultiplied},
        {PixelFormat::BGRA8888Premultiplied, PixelFormat::BGRX8888}};
    const auto& formats = kPairs[uniform(rng, 0, 2)];
    d.canvasFormat = formats[0];
    d.picture = randomPicture(rng, formats[1]);
    // Quarter turns exactly now and then: no scaling terms left, only the turning ones.
    const double angle = uniform(rng, 0, 4) == 0 ? std::numbers::pi / 2 * uniform(rng, 1, 3)
                                                 : uniform(rng, 0.0, 2 * std::numbers::pi);
    const double sx = uniform(rng, 0.6, 3.0) * (uniform(rng, 0, 5) ? 1 : -1);
    const double sy = uniform(rng, 0, 1) ? sx : uniform(rng, 0.6, 3.0);
    const double skew = uniform(rng, 0, 3) ? 0 : uniform(rng, -1.5, 1.5);
    d.ctm = AffineTransform::scale(sx, sy)
                .concat({1, 0, skew, 1, 0, 0})
                .concat(AffineTransform::rotation(angle))
                .concat(AffineTransform::translation(uniform(rng, -15.0, kWidth + 15.0),
                                                     uniform(rng, -15.0, kHeight + 15.0)));
    d.rect = {-d.picture->width() / 2.0 + uniform(rng, -1.0, 1.0),
              -d.picture->height() / 2.0 + uniform(rng, -1.0, 1.0), double(d.picture->width()),
              double(d.picture->height())};
    if (uniform(rng, 0, 2) == 0) {
        d.clip = Rect{uniform(rng, 0.0, 30.0), uniform(rng, 0.0, 30.0), uniform(rng, 10.0, 50.0),
                      uniform(rng, 10.0, 50.0)};
    }
    if (uniform(rng, 0, 1)) d.alpha = uniform(rng, 0.05, 1.0);
    if (uniform(rng, 0, 3) == 0) d.mode = BlendMode::DestinationOut;
    return d;
}

void drawOn(BitmapContext& c, const TurnedDraw& d) {
    c.saveGState();
    if (d.clip) c.clipToRect(*d.clip);
    c.concatCTM(d.ctm);
    c.setAlpha(d.alpha);
    c.setBlendMode(d.mode);
    c.drawImage(d.rect, *d.picture);
    c.restoreGState();
}

// What pixman gives for the drawing on `pixels`: the picture sampled bilinearly (its edges
// padded) through the coverage times alpha.
void drawWithPixman(std::vector<uint8_t>& pixels, const TurnedDraw& d, const Coverage& shape) {
    if (shape.empty()) return;
    const PixmanPtr dest(pixman_image_create_bits(pixmanFormatOf(d.canvasFormat), kWidth, kHeight,
                                                  reinterpret_cast<uint32_t*>(pixels.data()),
                                                  4 * kWidth));
    const Bitmap& p = *d.picture;
    const PixmanPtr src(pixman_image_create_bits(
        pixmanFormatOf(p.format()), p.width(), p.height(),
        reinterpret_cast<uint32_t*>(const_cast<uint8_t*>(p.data())), int(p.rowBytes())));
    pixman_image_set_filter(src.get(), PIXMAN_FILTER_BILINEAR, nullptr, 0);
    pixman_image_set_repeat(src.get(), PIXMAN_REPEAT_PAD);
    const PixelBox& r = shape.box();
    const AffineTransform t =
        AffineTransform::translation(r.x0, r.y0).concat(d.toDevice().inverted());
    auto f = [](double v) { return pixman_fixed_t(std::lround(v * 65536)); };
    const pixman_transform_t m{
        {{f(t.a), f(t.c), f(t.tx)}, {f(t.b), f(t.d), f(t.ty)}, {0, 0, f(1)}}};
    pixman_image_set_transform(src.get(), &m);
    const Coverage mask = shape.scaled(d.alpha);
    const pixman_op_t op = d.mode == BlendMode::Normal ? PIXMAN_OP_OVER : PIXMAN_OP_OUT_REVERSE;
    pixman_image_composite32(op, src.get(), mask.mask(), dest.get(), 0, 0, r.x0 - mask.maskX(),
                             r.y0 - mask.maskY(), r.x0, r.y0, r.width(), r.height());
}

std::vector<uint8_t> randomCanvas(std::mt19937& rng, PixelFormat f) {
    std::vector<uint8_t> pixels(4 * kWidth * kHeight);
    for (size_t i = 0; i < pixels.size(); i += 4)
        randomPixel(rng, &pixels[i], uniform(rng, 0, 3) ? 255 : uniform(rng, 0, 255), f);
    return pixels;
}

TEST(TurnedPictures, MatchPixmanAndLeaveEverythingOutsideAlone) {
    std::mt19937 rng(20240611);
    int largest = 0, drawn = 0;
    for (int n = 0; n < 150; ++n) {
        const TurnedDraw d = randomDraw(rng);
        const std::vector<uint8_t> before = randomCanvas(rng, d.canvasFormat);
        std::vector<uint8_t> after = before, expected = before;
        BitmapContext c(after.data(), kWidth, kHeight, 0, d.canvasFormat);
        drawOn(c, d);
        const Coverage shape = d.shape();
        drawWithPixman(expected, d, shape);
        drawn += after != before;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const size_t i = 4 * (size_t(y) * kWidth + x);
                if (coverageAt(shape, x, y) == 0) {
                    ASSERT_EQ(std::memcmp(&after[i], &before[i], 4), 0)
                        << "case " << n << " touched " << x << ", " << y;
                    continue;
                }
                for (int k = 0; k < 4; ++k) {
                    const int diff = std::abs(after[i + k] - expected[i + k]);
                    largest = std::max(largest, diff);
                    ASSERT_LE(diff, 2) << "case " << n << " at " << x << ", " << y << " byte " << k;
                }
            }
        }
    }
    EXPECT_GT(drawn, 100);  // most land on the canvas
    RecordProperty("largest difference", largest);
}

}  // namespace
}  // namespace orv::gfx
