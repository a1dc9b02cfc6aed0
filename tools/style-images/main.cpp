// Draws the library's style pictures into resources/style: the HUD's success and error marks
// (template pictures: only their alpha counts, the HUD tints them), the spinner's angle mask and
// the sticker item's two handles (full colour: a white mark on a dark disc) and the filter panel's
// sliders glyph (white, for its coloured round button), and the brush strip's eraser and store
// marks.
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

constexpr double kMarkSide = 28;    // points
constexpr double kHandleSide = 36;  // points
constexpr double kGlyphSide = 24;   // points

bool write(const gfx::Bitmap& bitmap, const std::filesystem::path& path) {
    const bool ok = orv::codec::PngCodec::writeFile(bitmap, path.string());
    std::printf("%s %s\n", ok ? "wrote" : "FAILED", path.c_str());
    return ok;
}

std::string scaledName(const std::string& name, int scale) {
    return scale == 1 ? name + ".png" : name + "@" + std::to_string(scale) + "x.png";
}

// The pen of every mark.
const gfx::StrokeStyle kRoundStroke{
    .width = 2.5, .cap = gfx::LineCap::Round, .join = gfx::LineJoin::Round};

// A mark drawn with round strokes on a transparent square, at 1x, 2x and 3x.
bool drawMark(const std::filesystem::path& dir, const std::string& name,
              const std::function<void(gfx::Path&)>& shape) {
    bool ok = true;
    for (int scale : {1, 2, 3}) {
        gfx::Canvas canvas({kMarkSide, kMarkSide}, scale);
        gfx::Path path;
        shape(path);
        canvas.strokePath(path, gfx::Color::black(), kRoundStroke);
        ok &= write(*canvas.snapshot(), dir / scaledName(name, scale));
    }
    return ok;
}

// A sticker handle: a dark disc with a thin light rim, so that it reads on dark and light photos
// alike, and a white mark drawn like the HUD's.
bool drawHandle(const std::filesystem::path& dir, const std::string& name,
                const std::function<void(gfx::Path&)>& mark) {
    bool ok = true;
    for (int scale : {1, 2, 3}) {
        gfx::Canvas canvas({kHandleSide, kHandleSide}, scale);
        const gfx::Rect disc{3, 3, kHandleSide - 6, kHandleSide - 6};
        canvas.fillPath(gfx::Path::ellipseInRect(gfx::rectInset(disc, -1.5, -1.5)),
                        gfx::Color::white(1, 0.9));
        canvas.fillPath(gfx::Path::ellipseInRect(disc), gfx::Color::white(0.13, 0.92));
        gfx::Path path;
        mark(path);
        canvas.strokePath(path, gfx::Color::whiteColor(), kRoundStroke);
        ok &= write(*canvas.snapshot(), dir / scaledName(name, scale));
    }
    return ok;
}

// The filter panel's glyph: three slider tracks with their knobs at different places, drawn with
// the marks' pen on a transparent square.
bool drawSlidersGlyph(const std::filesystem::path& dir, const std::string& name) {
    constexpr double kLeft = 4, kRight = kGlyphSide - 4, kKnobRadius = 3.5;
    constexpr struct { double y, knobX; } kTracks[] = {{6.5, 15}, {12, 8.5}, {17.5, 13}};
    bool ok = true;
    for (int scale : {1, 2, 3}) {
        gfx::Canvas canvas({kGlyphSide, kGlyphSide}, scale);
        gfx::Path tracks;
        for (const auto& track : kTracks) {
            tracks.moveTo({kLeft, track.y});
            tracks.lineTo({kRight, track.y});
        }
        canvas.strokePath(tracks, gfx::Color::whiteColor(), kRoundStroke);
        for (const auto& track : kTracks) {
            const gfx::Rect knob{track.knobX - kKnobRadius, track.y - kKnobRadius, 2 * kKnobRadius,
                                 2 * kKnobRadius};
            canvas.fillPath(gfx::Path::ellipseInRect(knob), gfx::Color::whiteColor());
        }
        ok &= write(*canvas.snapshot(), dir / scaledName(name, scale));
    }
    return ok;
}

// An open arrowhead at `tip`, pointing along `angle` (radians, y downward).
void arrowHead(gfx::Path& p, gfx::Point tip, double angle) {
    constexpr double kLength = 4.5, kSpread = 0.75;
    for (double side : {-kSpread, kSpread}) {
        p.moveTo(
            {tip.x - kLength * std::cos(angle + side), tip.y - kLength * std::sin(angle + side)});
        p.lineTo(tip);
    }
}

// The rotate-and-scale mark: an arc over the top with an arrowhead at each end, for turning
// either way.
void rotateScaleMark(gfx::Path& p) {
    const gfx::Point c{kHandleSide / 2, kHandleSide / 2 + 1};
    constexpr double kRadius = 8;
    const double start = 150 * M_PI / 180, end = 30 * M_PI / 180;
    p.addArc(c, kRadius, start, end, true);
    const auto at = [&](double a) {
        return gfx::Point{c.x + kRadius * std::cos(a), c.y + kRadius * std::sin(a)};
    };
    // Increasing angles run clockwise, so the tangent there is the angle plus a quarter turn.
    arrowHead(p, at(end), end + M_PI / 2);
    arrowHead(p, at(start), start - M_PI / 2);
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
    ok &= drawHandle(dir, "style_default_edit_drag_cancel", [](gfx::Path& p) {
        p.moveTo({13, 13});
        p.lineTo({23, 23});
        p.moveTo({23, 13});
        p.lineTo({13, 23});
    });
    ok &= drawHandle(dir, "style_default_edit_drag_rotate_scale", rotateScaleMark);
    ok &= drawSlidersGlyph(dir, "style_default_filter_config");
    // The brush strip's two entries that are not brushes: the eraser, a block tilted on its
    // edge over the line it clears, and the store, an arrow down into a tray.
    ok &= drawMark(dir, "style_default_brush_eraser", [](gfx::Path& p) {
        p.moveTo({9, 21});
        p.lineTo({19, 8.5});
        p.lineTo({24, 12.5});
        p.lineTo({15.5, 23});
        p.close();
        p.moveTo({12.5, 16.5});
        p.lineTo({18.5, 21.5});
        p.moveTo({5, 24});
        p.lineTo({23, 24});
    });
    ok &= drawMark(dir, "style_default_brush_online", [](gfx::Path& p) {
        p.moveTo({14, 4.5});
        p.lineTo({14, 17});
        p.moveTo({9, 12.5});
        p.lineTo({14, 17.5});
        p.lineTo({19, 12.5});
        p.moveTo({5, 17});
        p.lineTo({5, 23});
        p.lineTo({23, 23});
        p.lineTo({23, 17});
    });
    return ok ? 0 : 1;
}
