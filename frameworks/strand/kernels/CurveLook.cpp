#include "frameworks/strand/kernels/CurveLook.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "frameworks/strand/kernels/FilmGrain.h"
#include "frameworks/strand/kernels/ParallelRows.h"
#include "frameworks/strand/kernels/Vignette.h"

namespace orv::strand {

using nlohmann::json;

namespace {

// Where a look's vignette starts, and how much of the colour it takes at "vignette" 1.
constexpr float kVignetteStart = 0.35f;
constexpr float kVignetteDepth = 0.5f;
// The faded black's level, and the white given up with it, at fade 1.
constexpr float kFadeBlack = 0.25f, kFadeWhite = 0.06f;

// ---- Reading a recipe: every value checked, so a typing error breaks the catalogue loudly.

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what);
}

float number(const json& value, const std::string& key, float low, float high) {
    if (!value.is_number()) fail(key + " is not a number");
    const float v = value.get<float>();
    if (!(v >= low && v <= high)) {
        fail(key + " is " + value.dump() + ", outside " + std::to_string(low) + " to " +
             std::to_string(high));
    }
    return v;
}

gfx::Color color(const json& value, const std::string& key) {
    const auto parsed =
        value.is_string() ? gfx::Color::fromHex(value.get<std::string>()) : std::nullopt;
    if (!parsed) fail(key + " is not a colour \"#rrggbb\"");
    return *parsed;
}

// Control points [[x, y], ...] in 8-bit levels, x increasing.
ToneCurve curve(const json& value, const std::string& key) {
    if (!value.is_array() || value.size() < 2) fail(key + " needs two points or more");
    std::vector<std::pair<float, float>> points;
    for (const json& point : value) {
        if (!point.is_array() || point.size() != 2) fail(key + " has a point that is not [x, y]");
        const float x = number(point[0], key, 0, 255) / 255,
                    y = number(point[1], key, 0, 255) / 255;
        if (!points.empty() && x <= points.back().first) fail(key + " is not in increasing x");
        points.emplace_back(x, y);
    }
    return ToneCurve::through(points);
}

void onlyKeys(const json& object, const std::string& what, const std::set<std::string>& keys) {
    if (!object.is_object()) fail(what + " is not an object");
    for (const auto& [key, value] : object.items()) {
        if (!keys.contains(key)) fail(what + " has an unknown key \"" + key + "\"");
    }
}

void readMixer(const json& value, CurveLook::Recipe& recipe) {
    if (!value.is_array() || value.size() != 3) fail("mixer is not three rows");
    for (int row = 0; row < 3; ++row) {
        if (!value[row].is_array() || value[row].size() != 3)
            fail("mixer row is not three numbers");
        for (int col = 0; col < 3; ++col)
            recipe.mixer[row][col] = number(value[row][col], "mixer", -2, 2);
    }
}

void readCurves(const json& value, CurveLook::Recipe& recipe) {
    onlyKeys(value, "curves", {"rgb", "r", "g", "b"});
    if (value.contains("r")) recipe.red = curve(value["r"], "curves.r");
    if (value.contains("g")) recipe.green = curve(value["g"], "curves.g");
    if (value.contains("b")) recipe.blue = curve(value["b"], "curves.b");
    if (value.contains("rgb")) recipe.master = curve(value["rgb"], "curves.rgb");
}

void readToning(const json& value, CurveLook::Recipe& recipe) {
    onlyKeys(value, "toning",
             {"shadows", "shadowAmount", "highlights", "highlightAmount", "balance"});
    if (value.contains("shadows")) {
        recipe.shadowTint = color(value["shadows"], "toning.shadows");
        recipe.shadowAmount =
            number(value.value("shadowAmount", json(0.3)), "toning.shadowAmount", 0, 1);
    }
    if (value.contains("highlights")) {
        recipe.highlightTint = color(value["highlights"], "toning.highlights");
        recipe.highlightAmount =
            number(value.value("highlightAmount", json(0.3)), "toning.highlightAmount", 0, 1);
    }
    if (value.contains("balance"))
        recipe.balance = number(value["balance"], "toning.balance", -1, 1);
}

// ---- The colour operations, in the order a recipe applies them.

void mix(const CurveLook::Recipe& r, std::array<float, 3>& c) {
    const std::array<float, 3> in = c;
    for (int row = 0; row < 3; ++row) {
        c[row] =
            std::clamp(r.mixer[row][0] * in[0] + r.mixer[row][1] * in[1] + r.mixer[row][2] * in[2],
                       0.0f, 1.0f);
    }
}

void saturate(const CurveLook::Recipe& r, std::array<float, 3>& c) {
    const float y = ColorTable::luma(c);
    const float chroma = std::max({c[0], c[1], c[2]}) - std::min({c[0], c[1], c[2]});
    const float gain = std::max(0.0f, 1 + r.saturation + r.vibrance * (1 - chroma) * (1 - chroma));
    for (float& v : c) v = std::clamp(y + (v - y) * gain, 0.0f, 1.0f);
}

void applyCurves(const CurveLook::Recipe& r, std::array<float, 3>& c) {
    c = {r.master(r.red(c[0])), r.master(r.green(c[1])), r.master(r.blue(c[2]))};
}

// The tints' hues (their colour less their own luminance) pushed into the shadows and the
// highlights, so the toning colours without brightening or darkening.
void tone(const CurveLook::Recipe& r, std::array<float, 3>& c) {
    if (r.shadowAmount == 0 && r.highlightAmount == 0) return;
    const float y = ColorTable::luma(c);
    const float shadow = r.shadowAmount * (1 - y) * (1 - y) * std::min(1.0f, 1 - r.balance);
    const float highlight = r.highlightAmount * y * y * std::min(1.0f, 1 + r.balance);
    const std::array<float, 3> s = {float(r.shadowTint.r), float(r.shadowTint.g),
                                    float(r.shadowTint.b)};
    const std::array<float, 3> h = {float(r.highlightTint.r), float(r.highlightTint.g),
                                    float(r.highlightTint.b)};
    const float sy = ColorTable::luma(s), hy = ColorTable::luma(h);
    for (int i = 0; i < 3; ++i) {
        c[i] = std::clamp(c[i] + shadow * (s[i] - sy) + highlight * (h[i] - hy), 0.0f, 1.0f);
    }
}

void fade(const CurveLook::Recipe& r, std::array<float, 3>& c) {
    const float black = kFadeBlack * r.fade, white = 1 - kFadeWhite * r.fade;
    for (float& v : c) v = black + v * (white - black);
}

float setting(const LookSettings& settings, const char* key, float fallback) {
    const auto it = settings.find(key);
    if (it == settings.end() || std::isnan(it->second)) return fallback;
    return std::clamp(static_cast<float>(it->second), 0.0f, 1.0f);
}

}  // namespace

CurveLook::Recipe CurveLook::recipeFrom(const json& value) {
    onlyKeys(value, "recipe",
             {"mixer", "saturation", "vibrance", "curves", "toning", "fade", "grain", "vignette"});
    Recipe recipe;
    if (value.contains("mixer")) readMixer(value["mixer"], recipe);
    if (value.contains("saturation"))
        recipe.saturation = number(value["saturation"], "saturation", -1, 1);
    if (value.contains("vibrance")) recipe.vibrance = number(value["vibrance"], "vibrance", -1, 1);
    if (value.contains("curves")) readCurves(value["curves"], recipe);
    if (value.contains("toning")) readToning(value["toning"], recipe);
    if (value.contains("fade")) recipe.fade = number(value["fade"], "fade", 0, 1);
    if (value.contains("grain")) recipe.grain = number(value["grain"], "grain", 0, 1);
    if (value.contains("vignette")) recipe.vignette = number(value["vignette"], "vignette", 0, 1);
    return recipe;
}

void CurveLook::shade(const Recipe& recipe, std::array<float, 3>& rgb) {
    mix(recipe, rgb);
    saturate(recipe, rgb);
    applyCurves(recipe, rgb);
    tone(recipe, rgb);
    fade(recipe, rgb);
}

CurveLook::CurveLook(const Recipe& recipe)
    : table_([&recipe](std::array<float, 3>& rgb) { shade(recipe, rgb); }),
      grain_(recipe.grain),
      vignette_(recipe.vignette) {}

LookSettings CurveLook::defaults() const {
    LookSettings settings = {{"strength", 1.0}};
    if (grain_ > 0) settings["grain"] = grain_;
    if (vignette_ > 0) settings["vignette"] = vignette_;
    return settings;
}

gfx::BitmapPtr CurveLook::apply(const gfx::Bitmap& src, const LookSettings& settings) const {
    const float strength = setting(settings, "strength", 1);
    // The strength fades the whole look, grain and vignette too, so 0 is the picture itself.
    const float grain = setting(settings, "grain", grain_) * strength;
    const float vignette = setting(settings, "vignette", vignette_) * strength;
    ColorTable::Finish finish;
    finish.weight = static_cast<int>(std::lround(strength * 256));
    if (finish.weight == 0) return std::make_shared<gfx::Bitmap>(src);
    finish.grain = FilmGrain::strength(grain);
    const Vignette shading(kVignetteStart, vignette * kVignetteDepth);
    const int width = src.width(), height = src.height();
    auto out = std::make_shared<gfx::Bitmap>(width, height);
    ParallelRows::run(height, [&](int begin, int end) {
        ColorTable::Finish row = finish;
        std::vector<int8_t> noise(row.grain > 0 ? width : 0);
        std::vector<uint16_t> shade(vignette > 0 ? width : 0);
        if (!noise.empty()) row.noise = noise.data();
        if (!shade.empty()) row.shade = shade.data();
        for (int y = begin; y < end; ++y) {
            if (row.noise) FilmGrain::noiseRow(y, width, noise.data());
            if (row.shade) shading.shadeRow(shade.data(), width, y, height);
            table_.applyRow(src.row(y), out->mutableRow(y), width, row);
        }
    });
    return out;
}

}  // namespace orv::strand
