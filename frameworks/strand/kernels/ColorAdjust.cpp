#include "frameworks/strand/kernels/ColorAdjust.h"

#include <algorithm>
#include <cmath>

#include "frameworks/strand/kernels/ColorTable.h"
#include "frameworks/strand/kernels/GaussianBlur.h"
#include "frameworks/strand/kernels/ToneCurve.h"
#include "frameworks/strand/kernels/UnsharpMask.h"

namespace orv::strand {

namespace {

// How far the items reach at ±1.
constexpr float kTemperatureStops = 0.35f;  // red up and blue down (warm) in linear light
constexpr float kTintStops = 0.25f;         // green down (magenta)
constexpr float kShadowLift = 0.16f;        // at a quarter of the range
constexpr float kHighlightLift = 0.16f;     // at three quarters
constexpr float kBrightnessLift = 0.2f;     // at mid grey
constexpr float kContrastSlope = 7;         // steepness of the S-curve
constexpr float kContrastFlatten = 0.5f;    // slope lost at −1
constexpr float kExposureStops = 2;
// Softening at −1, as a blur sigma over the shorter side (so a preview looks like the photo).
constexpr double kSoftenSigmaOfShorterSide = 0.0015;

float srgbToLinear(float v) {
    return v <= 0.04045f ? v / 12.92f : std::pow((v + 0.055f) / 1.055f, 2.4f);
}

float linearToSrgb(float v) {
    return v <= 0.0031308f ? v * 12.92f : 1.055f * std::pow(v, 1 / 2.4f) - 0.055f;
}

// A gain of the linear light of one channel, as a curve of its encoded value.
ToneCurve linearGain(float gain) {
    return ToneCurve::sampled([gain](float x) { return linearToSrgb(gain * srgbToLinear(x)); });
}

float unit(float v) {
    return std::isnan(v) ? 0 : std::clamp(v, -1.0f, 1.0f);
}

ColorAdjustSettings sanitized(const ColorAdjustSettings& s) {
    return {unit(s.temperature), unit(s.tint),       unit(s.highlights),
            unit(s.shadows),     unit(s.sharpen),    unit(s.brightness),
            unit(s.contrast),    unit(s.saturation), unit(s.exposure)};
}

// White balance, then highlights and shadows: what comes before the sharpening.
struct ToneStage {
    bool balanced, toned;
    std::array<ToneCurve, 3> balance;
    ToneCurve tone;

    explicit ToneStage(const ColorAdjustSettings& s)
        : balanced(s.temperature != 0 || s.tint != 0), toned(s.highlights != 0 || s.shadows != 0) {
        std::array<float, 3> gain = {std::exp2(kTemperatureStops * s.temperature),
                                     std::exp2(-kTintStops * s.tint),
                                     std::exp2(-kTemperatureStops * s.temperature)};
        // Grey keeps its brightness: only the balance between the channels moves.
        const float norm = ColorTable::luma(gain);
        for (int i = 0; i < 3; ++i) balance[i] = linearGain(gain[i] / norm);
        tone = ToneCurve::through({{0, 0},
                                   {0.25f, 0.25f + kShadowLift * s.shadows},
                                   {0.5f, 0.5f + kShadowLift * 0.3f * (s.shadows + s.highlights)},
                                   {0.75f, 0.75f + kHighlightLift * s.highlights},
                                   {1, 1}});
    }

    void operator()(std::array<float, 3>& c) const {
        if (balanced) {
            for (int i = 0; i < 3; ++i) c[i] = balance[i](c[i]);
        }
        if (!toned) return;
        // The luminance moves along the curve and the colour follows in proportion, so that
        // lifted shadows keep their hue.
        const float y = ColorTable::luma(c), target = tone(y);
        if (y < 1.0f / 1024) {
            c.fill(target);
            return;
        }
        for (float& v : c) v = std::min(1.0f, v * target / y);
    }
};

// Brightness, contrast, saturation and exposure: what comes after the sharpening.
struct ColorStage {
    ToneCurve brightnessContrast;
    float saturation;
    ToneCurve exposure;

    explicit ColorStage(const ColorAdjustSettings& s)
        : brightnessContrast(
              contrastCurve(s.contrast)
                  .after(ToneCurve::through(
                      {{0, 0}, {0.5f, 0.5f + kBrightnessLift * s.brightness}, {1, 1}}))),
          saturation(1 + s.saturation),
          exposure(linearGain(std::exp2(kExposureStops * s.exposure))) {}

    // Above 0 a sigmoid around mid grey, normalised to keep black and white; below 0 a
    // straight line flattened towards grey.
    static ToneCurve contrastCurve(float contrast) {
        if (contrast <= 0) {
            return ToneCurve::sampled([contrast](float x) {
                return 0.5f + (x - 0.5f) * (1 + kContrastFlatten * contrast);
            });
        }
        const float k = kContrastSlope * contrast;
        const auto sigmoid = [k](float x) { return 1 / (1 + std::exp(-k * (x - 0.5f))); };
        const float low = sigmoid(0), high = sigmoid(1);
        return ToneCurve::sampled([=](float x) { return (sigmoid(x) - low) / (high - low); });
    }

    void operator()(std::array<float, 3>& c) const {
        for (float& v : c) v = brightnessContrast(v);
        const float y = ColorTable::luma(c);
        for (float& v : c) v = exposure(y + (v - y) * saturation);
    }
};

bool hasTone(const ColorAdjustSettings& s) {
    return s.temperature != 0 || s.tint != 0 || s.highlights != 0 || s.shadows != 0;
}

bool hasColor(const ColorAdjustSettings& s) {
    return s.brightness != 0 || s.contrast != 0 || s.saturation != 0 || s.exposure != 0;
}

gfx::BitmapPtr sharpened(const gfx::Bitmap& src, float sharpen) {
    if (sharpen > 0) return UnsharpMask::apply(src, {.sharpness = sharpen});
    const int shorter = std::min(src.width(), src.height());
    return GaussianBlur::apply(src, -sharpen * kSoftenSigmaOfShorterSide * shorter);
}

}  // namespace

gfx::BitmapPtr ColorAdjust::apply(const gfx::Bitmap& src, const ColorAdjustSettings& settings) {
    const ColorAdjustSettings s = sanitized(settings);
    if (s.sharpen == 0) {
        if (!hasTone(s) && !hasColor(s)) return std::make_shared<gfx::Bitmap>(src);
        // Without the sharpening between them, both stages are one table and one pass.
        const ToneStage tone(s);
        const ColorStage color(s);
        return ColorTable([&](std::array<float, 3>& c) {
                   tone(c);
                   color(c);
               })
            .apply(src);
    }
    gfx::BitmapPtr picture;
    if (hasTone(s)) picture = ColorTable(ToneStage(s)).apply(src);
    picture = sharpened(picture ? *picture : src, s.sharpen);
    if (hasColor(s)) picture = ColorTable(ColorStage(s)).apply(*picture);
    return picture;
}

}  // namespace orv::strand
