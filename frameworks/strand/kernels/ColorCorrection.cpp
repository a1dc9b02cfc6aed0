#include "frameworks/strand/kernels/ColorCorrection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "frameworks/strand/kernels/ParallelRows.h"

namespace orv::strand {

namespace {

// A stretch narrower than this is noise in the analysis, not a picture's range.
constexpr float kNarrowestRange = 8;
// The gamma that moves a channel's middle stays within these, so a picture of one tone is not
// bent out of shape.
constexpr float kMinGamma = 0.75f, kMaxGamma = 1.33f;
// How far each channel's middle moves towards the common one.
constexpr float kCastRemoval = 0.35f;
constexpr float kGrey = 128.0f / 255;

using Levels = std::array<uint8_t, 256>;

float level(float v, float neutral) {
    return std::isnan(v) ? neutral : std::clamp(v, 0.0f, 255.0f);
}

// One channel's black and white points and where its middle falls between them (0 to 1). A
// range too narrow to trust falls back to the luma's; with neither there is no analysis to go
// by (the builder's zeros) and the channel stays as it is.
struct Range {
    float low, high, middle;
};

Range channelRange(float low, float high, float mid, float lowY, float highY) {
    low = level(low, 0), high = level(high, 255), mid = level(mid, 128);
    if (high - low < kNarrowestRange) low = level(lowY, 0), high = level(highY, 255);
    if (high - low < kNarrowestRange) low = 0, high = 255, mid = 128;
    return {low, high, std::clamp((mid - low) / (high - low), 0.01f, 0.99f)};
}

// The range stretched to 0 to 255, and a gamma that takes the middle to `target`.
Levels channelLevels(const Range& r, float target) {
    float gamma = std::clamp(std::log(target) / std::log(r.middle), kMinGamma, kMaxGamma);
    if (std::fabs(gamma - 1) < 1e-3f) gamma = 1;  // a middle already there: no rounding drift
    Levels levels;
    for (int v = 0; v < 256; ++v) {
        const float t = std::clamp((v - r.low) / (r.high - r.low), 0.0f, 1.0f);
        levels[v] = static_cast<uint8_t>(std::lround(255 * std::pow(t, gamma)));
    }
    return levels;
}

bool isIdentity(const Levels& levels) {
    for (int v = 0; v < 256; ++v) {
        if (levels[v] != v) return false;
    }
    return true;
}

// Per-channel levels of premultiplied pixels: opaque ones straight through the tables, the
// others unpremultiplied around them.
void levelsRow(const std::array<Levels, 3>& levels, const uint8_t* in, uint8_t* out, int count) {
    for (int i = 0; i < count; ++i, in += 4, out += 4) {
        const unsigned a = in[3];
        if (a == 255) {
            for (int c = 0; c < 3; ++c) out[c] = levels[c][in[c]];
        } else {
            for (int c = 0; c < 3; ++c) {
                const unsigned straight = a == 0 ? 0 : std::min(255u, (in[c] * 255u + a / 2) / a);
                const unsigned v = levels[c][straight] * a + 128;
                out[c] = static_cast<uint8_t>((v + (v >> 8)) >> 8);
            }
        }
        out[3] = static_cast<uint8_t>(a);
    }
}

}  // namespace

gfx::BitmapPtr ColorCorrection::apply(const gfx::Bitmap& src, const ColorCorrectionSettings& s) {
    const std::array<Range, 3> ranges = {channelRange(s.minR, s.maxR, s.midR, s.minY, s.maxY),
                                         channelRange(s.minG, s.maxG, s.midG, s.minY, s.maxY),
                                         channelRange(s.minB, s.maxB, s.midB, s.minY, s.maxY)};
    // A cast fades as the channels' middles move part of the way towards a common one (halfway
    // between their mean and grey). A median is a poor grey in a photo of one strong colour (an
    // orange suit), so forcing every channel there would turn it to the complement.
    const float mean = (ranges[0].middle + ranges[1].middle + ranges[2].middle) / 3;
    const float common = 0.5f * mean + 0.5f * kGrey;
    std::array<Levels, 3> levels;
    for (int c = 0; c < 3; ++c) {
        const float target = ranges[c].middle + kCastRemoval * (common - ranges[c].middle);
        levels[c] = channelLevels(ranges[c], target);
    }
    if (std::all_of(levels.begin(), levels.end(), isIdentity)) {
        return std::make_shared<gfx::Bitmap>(src);
    }
    auto out = std::make_shared<gfx::Bitmap>(src.width(), src.height());
    ParallelRows::run(src.height(), [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            levelsRow(levels, src.row(y), out->mutableRow(y), src.width());
        }
    });
    return out;
}

}  // namespace orv::strand
