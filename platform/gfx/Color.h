#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

namespace orv::gfx {

// A colour with straight (not premultiplied) components in [0, 1], device RGB.
struct Color {
    double r = 0, g = 0, b = 0, a = 0;
    bool operator==(const Color&) const = default;

    static Color rgb(double r, double g, double b, double a = 1) { return {r, g, b, a}; }
    static Color white(double w, double a = 1) { return {w, w, w, a}; }  // colorWithWhite:alpha:
    static Color clear() { return {0, 0, 0, 0}; }
    static Color black() { return {0, 0, 0, 1}; }
    static Color whiteColor() { return {1, 1, 1, 1}; }
    static Color red() { return {1, 0, 0, 1}; }
    // "#ff6633" or "ff6633" (either case); nothing for anything else.
    static std::optional<Color> fromHex(std::string_view hex);

    Color withAlpha(double alpha) const { return {r, g, b, alpha}; }
    // Premultiplied 8-bit R, G, B, A with rounding; components are clamped first.
    uint32_t premultipliedRGBA() const;
};

}  // namespace orv::gfx
