#pragma once
#include <string>

namespace orv::gfx {

// A font by family and size in points. The system font is a sans family that has Chinese.
struct Font {
    std::string family;
    double pointSize = 17;
    bool bold = false;
    bool operator==(const Font&) const = default;

    static Font systemFont(double size);
    static Font boldSystemFont(double size);
    // The subheadline text style's font.
    static Font preferredSubheadline();
    Font withSize(double size) const { return {family, size, bold}; }
};

}  // namespace orv::gfx
