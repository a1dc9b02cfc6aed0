#include "frameworks/core/OrvNKImageColorArgument.h"

#include <algorithm>
#include <array>
#include <cstdint>

ORV_DEFINE_CLASS(OrvNKImageColorArgument, rt::Object)

namespace {

using Histogram = std::array<uint64_t, 256>;

// The smallest level at or below which at least `fraction` of the `total` samples lie.
float percentile(const Histogram& histogram, uint64_t total, double fraction) {
    const double wanted = fraction * static_cast<double>(total);
    uint64_t seen = 0;
    for (int level = 0; level < 256; ++level) {
        seen += histogram[level];
        if (static_cast<double>(seen) >= wanted && seen > 0) return static_cast<float>(level);
    }
    return 255;
}

}  // namespace

std::shared_ptr<OrvNKImageColorArgument> OrvNKImageColorArgument::analysisWithImage(
    const gfx::ImagePtr& image) {
    if (!image || !image->bitmap()) return nullptr;
    gfx::BitmapPtr bitmap = image->bitmap();
    if (bitmap->format() != gfx::PixelFormat::RGBA8888Premultiplied)
        bitmap = bitmap->converted(gfx::PixelFormat::RGBA8888Premultiplied);

    Histogram r{}, g{}, b{}, y{};
    uint64_t total = 0;
    for (int row = 0; row < bitmap->height(); ++row) {
        const uint8_t* p = bitmap->row(row);
        for (int x = 0; x < bitmap->width(); ++x, p += 4) {
            const unsigned a = p[3];
            if (a == 0) continue;
            // The colour as it is meant, alpha taken out.
            const unsigned cr = std::min(255u, (p[0] * 255u + a / 2) / a);
            const unsigned cg = std::min(255u, (p[1] * 255u + a / 2) / a);
            const unsigned cb = std::min(255u, (p[2] * 255u + a / 2) / a);
            ++r[cr];
            ++g[cg];
            ++b[cb];
            // Rec. 601 luma in 16-bit fixed point.
            ++y[(19595u * cr + 38470u * cg + 7471u * cb + 32768u) >> 16];
            ++total;
        }
    }
    if (total == 0) return nullptr;

    constexpr double kLow = 0.005, kHigh = 0.995, kMiddle = 0.5;
    auto analysis = rt::make<OrvNKImageColorArgument>();
    analysis->minR_ = percentile(r, total, kLow);
    analysis->minG_ = percentile(g, total, kLow);
    analysis->minB_ = percentile(b, total, kLow);
    analysis->minY_ = percentile(y, total, kLow);
    analysis->maxR_ = percentile(r, total, kHigh);
    analysis->maxG_ = percentile(g, total, kHigh);
    analysis->maxB_ = percentile(b, total, kHigh);
    analysis->maxY_ = percentile(y, total, kHigh);
    analysis->midR_ = percentile(r, total, kMiddle);
    analysis->midG_ = percentile(g, total, kMiddle);
    analysis->midB_ = percentile(b, total, kMiddle);
    return analysis;
}
