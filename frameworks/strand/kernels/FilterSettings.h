#pragma once
// What each filter of the pipe is told: plain values, copied into the pipe by the property
// builders' makeProperty and read by the filter kernels.

#include <array>
#include <map>
#include <string>
#include <vector>

#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"

namespace orv::strand {

struct ApertureSettings {
    float selective = 0;           // below 0.5 a focused circle, from 0.5 a focused band
    gfx::Point center{0.5, 0.5};   // fractions of the picture
    float radius = 0.4f;           // circle radius or band half width, fraction of the shorter side
    float blurSize = 0.5f;         // 0 to 1
    float degree = 0.5f;           // 0 to 1: the band's angle, 0 to 180 degrees
    gfx::Color color{1, 1, 1, 0};  // the mask over the blurred part; alpha 0 shows none
};

struct HdrSettings {
    float strength = 0;  // 0 to 1
};

struct HolyLightSettings {
    float strength = 0;    // 0 to 1: how much the bright areas bloom
    float brightness = 0;  // 0 to 1: how bright the bloom is
};

struct VignetteSettings {
    float start = 1;  // 0 to 1: distance from the centre (in half diagonals) where it begins
};

struct SharpenSettings {
    float sharpness = 0;  // 0 to 1
};

struct SkinSettings {
    float smoothing = 0;  // 0 to 1 each
    float fair = 0;
    float ruddy = 0;
};

// One face's landmarks in picture pixels, in the 68-point layout (jaw 0–16, brows 17–26,
// nose 27–35, eyes 36–47, mouth 48–67).
struct FaceLandmarks {
    std::vector<gfx::Point> points;
};

struct PlasticSettings {
    double eyeEnlarge = 0;  // 0 to 1 each
    double cheekThin = 0;
    std::vector<FaceLandmarks> faces;  // none: the picture stays as it is
};

// The seven items of the colour adjust, each from −1 to 1 (0: no change), applied in this
// order: white balance (temperature, tint), highlights and shadows, sharpen, brightness,
// contrast, saturation, exposure.
struct ColorAdjustSettings {
    float temperature = 0, tint = 0;
    float highlights = 0, shadows = 0;
    float sharpen = 0;
    float brightness = 0;
    float contrast = 0;
    float saturation = 0;
    float exposure = 0;
};

// Levels from a colour analysis, each 0 to 255: the darkest, brightest and middle values of
// red, green, blue (and of luma for the first two).
struct ColorCorrectionSettings {
    float maxR = 255, maxG = 255, maxB = 255, maxY = 255;
    float minR = 0, minG = 0, minB = 0, minY = 0;
    float midR = 128, midG = 128, midB = 128;
};

// A look filter's published parameters by key ("strength" 0 to 1 at least).
using LookSettings = std::map<std::string, double>;

}  // namespace orv::strand
