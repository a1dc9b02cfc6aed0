// Draws the library's style pictures into resources/style: the HUD's success and error marks
// (template pictures: only their alpha counts, the HUD tints them) and the spinner's angle mask.
//
//     orv-style-images <resources/style folder>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/codec/PngCodec.h"
#include "platform/gfx/Canvas.h"

namespace gfx = orv::gfx;

namespace {

constexpr double kMarkSide = 28;  // points

bool write(const gfx::Bitmap& bitmap, const std::filesystem::path& path) {
    const bool ok = orv::codec::PngCodec::writeFile(bitmap, path.string());
    std::printf("%s %s\n", ok ? "wrote" : "FAILED", path.c_str());
    return ok;
}

std::string scaledName(const std::string& name, int scale) {
    return scale == 1 ? name + ".png" : name + "@" + std::to_string(scale) + "x.png";
}

// A mark drawn with round strokes on a transparent square, at 1x, 2x and 3x.
bool drawMark(const std::filesystem::path& dir, const std::string& name,
              const std::function<void(gfx::Path&)>& shape) {
    bool ok = true;
    for (int scale : {1, 2, 3}) {
        gfx::Canvas canvas({kMarkSide, kMarkSide}, scale);
        gfx::Path path;
        shape(path);
        gfx::StrokeStyle stroke;
        stroke.width = 2.5;
        stroke.cap = gfx::LineCap::Round;
        stroke.join = gfx::LineJoin::Round;
        canvas.strokePath(path, gfx::Color::black(), stroke);
        ok &= write(*canvas.snapshot(), dir / scaledName(name, scale));
    }
    return ok;
}

// The spinner's mask: alpha grows with the angle around the centre, so the turning arc fades
// from its head to its tail.
bool drawAngleMask(const std::filesystem::path& dir) {
    bool ok = true;
    for (int scale : {1, 2, 3}) {
        const int side = 64 * scale;
        gfx::Bitmap bitmap(side, side);
        for (int y = 0; y < side; ++y) {
            uint8_t* row = bitmap.mutableRow(y);
            for (int x = 0; x < side; ++x) {
                const double dx = x + 0.5 - side / 2.0, dy = y + 0.5 - side / 2.0;
                const double turn = (std::atan2(dy, dx) + M_PI) / (2 * M_PI);
                const auto a = static_cast<uint8_t>(std::lround(turn * 255));
                row[4 * x + 0] = row[4 * x + 1] = row[4 * x + 2] = 0;
                row[4 * x + 3] = a;
            }
        }
        ok &= write(bitmap, dir / scaledName("style_default_hud_angle-mask", scale));
    }
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <resources/style folder>\n", argv[0]);
        return 2;
    }
    const std::filesystem::path dir = argv[1];
    std::filesystem::create_directories(dir);
    bool ok = drawMark(dir, "style_default_hud_success", [](gfx::Path& p) {
        p.moveTo({5, 14.5});
        p.lineTo({11.5, 21});
        p.lineTo({23, 7.5});
    });
    ok &= drawMark(dir, "style_default_hud_error", [](gfx::Path& p) {
        p.moveTo({7, 7});
        p.lineTo({21, 21});
        p.moveTo({21, 7});
        p.lineTo({7, 21});
    });
    ok &= drawAngleMask(dir);
    return ok ? 0 : 1;
}
