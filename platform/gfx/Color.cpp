#include "platform/gfx/Color.h"

#include <algorithm>
#include <cmath>

namespace orv::gfx {

std::optional<Color> Color::fromHex(std::string_view hex) {
    if (!hex.empty() && hex.front() == '#') hex.remove_prefix(1);
    if (hex.size() != 6) return std::nullopt;
    int value[6];
    for (size_t i = 0; i < 6; ++i) {
        const char c = hex[i];
        if (c >= '0' && c <= '9')
            value[i] = c - '0';
        else if (c >= 'a' && c <= 'f')
            value[i] = c - 'a' + 10;
        else if (c >= 'A' && c <= 'F')
            value[i] = c - 'A' + 10;
        else
            return std::nullopt;
    }
    return Color{(value[0] * 16 + value[1]) / 255.0, (value[2] * 16 + value[3]) / 255.0,
                 (value[4] * 16 + value[5]) / 255.0, 1.0};
}

uint32_t Color::premultipliedRGBA() const {
    const double alpha = std::clamp(a, 0.0, 1.0);
    auto channel = [alpha](double v) {
        return static_cast<uint32_t>(std::lround(std::clamp(v, 0.0, 1.0) * alpha * 255.0));
    };
    const uint32_t A = static_cast<uint32_t>(std::lround(alpha * 255.0));
    // Byte order in memory R, G, B, A on a little-endian machine.
    return channel(r) | (channel(g) << 8) | (channel(b) << 16) | (A << 24);
}

}  // namespace orv::gfx
