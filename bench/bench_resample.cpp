// The photo reduction on the way to the screen (a 12-megapixel picture to a 1334-pixel long
// side) with our resampler, beside pixman's separable box convolution and cairo's GOOD filter.

#include <benchmark/benchmark.h>
#include <cairo.h>
#include <pixman.h>

#include <cstdint>
#include <memory>

#include "platform/gfx/BitmapOps.h"

namespace {

using orv::gfx::Bitmap;
using orv::gfx::BitmapOps;
using orv::gfx::ImageOrientation;

constexpr int kSrcW = 4000, kSrcH = 3000, kDstW = 1334, kDstH = 1000;

// An opaque picture with some texture, so no path can take a shortcut on flat colour.
const Bitmap& photo() {
    static const Bitmap bitmap = [] {
        Bitmap b(kSrcW, kSrcH);
        for (int y = 0; y < kSrcH; ++y) {
            uint8_t* p = b.mutableRow(y);
            for (int x = 0; x < kSrcW; ++x, p += 4) {
                p[0] = static_cast<uint8_t>(x ^ y);
                p[1] = static_cast<uint8_t>(x + 2 * y);
                p[2] = static_cast<uint8_t>(x * y >> 4);
                p[3] = 255;
            }
        }
        return b;
    }();
    return bitmap;
}

void setPixelsProcessed(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * int64_t{kSrcW} * kSrcH);
}

void BM_BitmapOpsResize(benchmark::State& state) {
    const Bitmap& src = photo();
    for (auto _ : state) benchmark::DoNotOptimize(BitmapOps::resized(src, kDstW, kDstH));
    setPixelsProcessed(state);
}

void BM_BitmapOpsRotateRight(benchmark::State& state) {
    const Bitmap& src = photo();
    for (auto _ : state)
        benchmark::DoNotOptimize(BitmapOps::oriented(src, ImageOrientation::Right));
    setPixelsProcessed(state);
}

using PixmanImage = std::unique_ptr<pixman_image_t, decltype(&pixman_image_unref)>;

PixmanImage wrap(const Bitmap& b) {
    auto* data = reinterpret_cast<uint32_t*>(const_cast<uint8_t*>(b.data()));
    return {pixman_image_create_bits(PIXMAN_a8b8g8r8, b.width(), b.height(), data,
                                     static_cast<int>(b.rowBytes())),
            pixman_image_unref};
}

void BM_PixmanSeparableBox(benchmark::State& state) {
    const Bitmap& src = photo();
    const auto srcImage = wrap(src);
    const pixman_fixed_t sx = pixman_double_to_fixed(double(kSrcW) / kDstW);
    const pixman_fixed_t sy = pixman_double_to_fixed(double(kSrcH) / kDstH);
    int count = 0;
    pixman_fixed_t* params = pixman_filter_create_separable_convolution(
        &count, sx, sy, PIXMAN_KERNEL_BOX, PIXMAN_KERNEL_BOX, PIXMAN_KERNEL_BOX, PIXMAN_KERNEL_BOX,
        1, 1);
    pixman_image_set_filter(srcImage.get(), PIXMAN_FILTER_SEPARABLE_CONVOLUTION, params, count);
    free(params);
    pixman_transform_t t;
    pixman_transform_init_scale(&t, sx, sy);
    pixman_image_set_transform(srcImage.get(), &t);
    for (auto _ : state) {
        Bitmap dst(kDstW, kDstH);
        const auto dstImage = wrap(dst);
        pixman_image_composite32(PIXMAN_OP_SRC, srcImage.get(), nullptr, dstImage.get(), 0, 0, 0, 0,
                                 0, 0, kDstW, kDstH);
        benchmark::DoNotOptimize(dst.data());
    }
    setPixelsProcessed(state);
}

void BM_CairoFilterGood(benchmark::State& state) {
    const Bitmap& src = photo();
    cairo_surface_t* srcSurface = cairo_image_surface_create_for_data(
        const_cast<uint8_t*>(src.data()), CAIRO_FORMAT_ARGB32, src.width(), src.height(),
        static_cast<int>(src.rowBytes()));
    for (auto _ : state) {
        cairo_surface_t* dst = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kDstW, kDstH);
        cairo_t* cr = cairo_create(dst);
        cairo_scale(cr, double(kDstW) / kSrcW, double(kDstH) / kSrcH);
        cairo_set_source_surface(cr, srcSurface, 0, 0);
        cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_GOOD);
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        cairo_paint(cr);
        cairo_destroy(cr);
        benchmark::DoNotOptimize(cairo_image_surface_get_data(dst));
        cairo_surface_destroy(dst);
    }
    cairo_surface_destroy(srcSurface);
    setPixelsProcessed(state);
}

BENCHMARK(BM_BitmapOpsResize)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BitmapOpsRotateRight)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PixmanSeparableBox)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CairoFilterGood)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
