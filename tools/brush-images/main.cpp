// Draws the local brush package into resources/packages/brushes: each brush's shape (white, its
// alpha the shape) and its thumbnail for the brush bar, and the catalogue that lists them.
//
//     orv-brush-images <resources/packages/brushes folder>
//
// Every shape is written at 1x and 2x ("name.png", "name@2x.png") for its side in points, and its
// thumbnail once at 2x ("name_thumb@2x.png").

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "frameworks/core/OrvBrush.h"
#include "frameworks/core/OrvBrushLocalPackage.h"
#include "platform/codec/PngCodec.h"
#include "platform/gfx/Canvas.h"

namespace fs = std::filesystem;
// Ordered, so that each brush's line starts with its code.
using json = nlohmann::ordered_json;

namespace {

constexpr double kShapeSide = 64;  // points: 128 pixels at 2x
constexpr double kThumbSide = 32;  // points, written at 2x
const gfx::Color kThumbInk = gfx::Color::white(0.2);
const gfx::Color kThumbTile = gfx::Color::white(0.93);

// Draws a shape of that side in points from the canvas's origin, in one colour.
using Draw = std::function<void(gfx::Canvas&, double side, const gfx::Color& ink)>;

struct BrushRecipe {
    std::string code;
    json name;
    long brushType;
    long rotateType;
    long positionType;
    long sizeType;
    Draw draw;
    // Mosaics: the corner radius of their shape, as a fraction of its side, for a thumbnail of
    // blocks inside that outline; negative for every other brush.
    double mosaicCorner = -1;
};

void drawSoft(gfx::Canvas& canvas, double side, const gfx::Color& ink) {
    canvas.drawRadialGradient({side / 2, side / 2}, side / 2, ink, ink.withAlpha(0));
}

// A disc a point inside the edge, so that its antialiased rim is not cut by the picture's edge.
void drawHard(gfx::Canvas& canvas, double side, const gfx::Color& ink) {
    canvas.fillPath(gfx::Path::ellipseInRect({1, 1, side - 2, side - 2}), ink);
}

// A square with slightly rounded corners, for hiding text and faces block by block.
void drawSquare(gfx::Canvas& canvas, double side, const gfx::Color& ink) {
    canvas.fillPath(gfx::Path::roundedRect({2, 2, side - 4, side - 4}, side * 0.08), ink);
}

void drawStar(gfx::Canvas& canvas, double side, const gfx::Color& ink) {
    gfx::Path star;
    for (int i = 0; i < 10; ++i) {
        const double radius = side * (i % 2 == 0 ? 0.47 : 0.2);
        const double angle = -M_PI / 2 + i * M_PI / 5;
        const gfx::Point p{side / 2 + radius * std::cos(angle),
                           side * 0.53 + radius * std::sin(angle)};
        i == 0 ? star.moveTo(p) : star.lineTo(p);
    }
    star.close();
    canvas.fillPath(star, ink);
}

void drawHeart(gfx::Canvas& canvas, double side, const gfx::Color& ink) {
    const auto at = [side](double x, double y) { return gfx::Point{x * side, y * side}; };
    gfx::Path heart;
    heart.moveTo(at(0.5, 0.9));
    heart.curveTo(at(0.1, 0.62), at(0.02, 0.4), at(0.12, 0.24));
    heart.curveTo(at(0.22, 0.08), at(0.44, 0.1), at(0.5, 0.28));
    heart.curveTo(at(0.56, 0.1), at(0.78, 0.08), at(0.88, 0.24));
    heart.curveTo(at(0.98, 0.4), at(0.9, 0.62), at(0.5, 0.9));
    heart.close();
    canvas.fillPath(heart, ink);
}

// Dots of several sizes scattered over the disc; a fixed sequence, so every run draws the same.
void drawSplatter(gfx::Canvas& canvas, double side, const gfx::Color& ink) {
    uint32_t state = 12345;
    const auto next = [&state] {
        state = state * 1664525u + 1013904223u;
        return (state >> 8) / double(1 << 24);
    };
    for (int i = 0; i < 22; ++i) {
        const double angle = next() * 2 * M_PI;
        const double distance = std::sqrt(next()) * side * 0.36;
        const double radius = side * (0.03 + 0.07 * next() * next());
        const gfx::Point c{side / 2 + distance * std::cos(angle),
                           side / 2 + distance * std::sin(angle)};
        canvas.fillPath(
            gfx::Path::ellipseInRect({c.x - radius, c.y - radius, 2 * radius, 2 * radius}), ink);
    }
}

std::vector<BrushRecipe> catalogue() {
    const auto names = [](const char* zh, const char* en) {
        return json{{"zh-Hans", zh}, {"en", en}};
    };
    constexpr long kStamp = OrvBrush::kStamp;
    constexpr long kMosaic = OrvBrush::kMosaic;
    constexpr long kRandom = OrvBrush::kRotateRandom;
    return {
        {"round_soft", names("柔边", "Soft"), kStamp, 0, 0, 0, drawSoft},
        {"round_hard", names("硬边", "Hard"), kStamp, 0, 0, 0, drawHard},
        {"stamp_star", names("星星", "Stars"), kStamp, kRandom, 0, OrvBrush::kSizeRandom, drawStar},
        {"stamp_heart", names("爱心", "Hearts"), kStamp, OrvBrush::kRotateJitter, 0,
         OrvBrush::kSizeRandom, drawHeart},
        {"stamp_splatter", names("飞溅", "Splatter"), kStamp, kRandom, OrvBrush::kPositionRandom,
         OrvBrush::kSizeRandom, drawSplatter},
        // Mosaic blocks are a fixed fraction of the picture, so the mosaics differ in shape only.
        {"mosaic", names("马赛克", "Mosaic"), kMosaic, 0, 0, 0, drawHard, 0.5},
        {"mosaic_square", names("方块马赛克", "Square mosaic"), kMosaic, 0, 0, 0, drawSquare, 0.08},
        {orvEraserBrushCode, names("橡皮擦", "Eraser"), OrvBrush::kEraser, 0, 0, 0, drawSoft},
    };
}

std::string imageName(const BrushRecipe& brush) {
    return "brush_" + brush.code;
}

std::string thumbName(const BrushRecipe& brush) {
    return "brush_" + brush.code + "_thumb";
}

bool write(const gfx::Canvas& canvas, const fs::path& path) {
    const bool ok = orv::codec::PngCodec::writeFile(*canvas.snapshot(), path.string());
    std::printf("%s %s\n", ok ? "wrote" : "FAILED", path.c_str());
    return ok;
}

// A mosaic's thumbnail: two-tone blocks inside the brush's shape.
void drawMosaicThumb(gfx::Canvas& canvas, const BrushRecipe& brush) {
    constexpr double cell = 6;
    const double side = kThumbSide - 8;
    canvas.save();
    canvas.clipToRoundedRect({4, 4, side, side}, side * brush.mosaicCorner);
    for (double y = 0; y < kThumbSide; y += cell) {
        for (double x = 0; x < kThumbSide; x += cell) {
            const bool dark = (int(x / cell) + int(y / cell)) % 2 == 0;
            canvas.fillRect({x, y, cell, cell}, dark ? kThumbInk : gfx::Color::white(0.55));
        }
    }
    canvas.restore();
}

// The thumbnail: the shape in dark ink on a light round tile, so it shows on any bar.
bool drawThumb(const fs::path& imageDir, const BrushRecipe& brush) {
    gfx::Canvas thumb({kThumbSide, kThumbSide}, 2);
    thumb.fillPath(gfx::Path::ellipseInRect({0, 0, kThumbSide, kThumbSide}), kThumbTile);
    if (brush.mosaicCorner >= 0) {
        drawMosaicThumb(thumb, brush);
    } else {
        const double inset = kThumbSide * 0.15;
        thumb.translate(inset, inset);
        brush.draw(thumb, kThumbSide - 2 * inset, kThumbInk);
    }
    return write(thumb, imageDir / (thumbName(brush) + "@2x.png"));
}

bool drawBrush(const fs::path& imageDir, const BrushRecipe& brush) {
    bool ok = true;
    for (int scale : {1, 2}) {
        gfx::Canvas canvas({kShapeSide, kShapeSide}, scale);
        brush.draw(canvas, kShapeSide, gfx::Color::whiteColor());
        const std::string suffix = scale == 1 ? ".png" : "@2x.png";
        ok &= write(canvas, imageDir / (imageName(brush) + suffix));
    }
    return drawThumb(imageDir, brush) && ok;
}

json brushEntry(const BrushRecipe& brush) {
    return {{"code", brush.code},
            {"name", brush.name},
            {"brushType", brush.brushType},
            {"rotateType", brush.rotateType},
            {"positionType", brush.positionType},
            {"sizeType", brush.sizeType},
            {"image", imageName(brush)},
            {"thumb", thumbName(brush)}};
}

bool writeText(const fs::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    const bool ok = !file.fail();
    std::printf("%s %s\n", ok ? "wrote" : "FAILED", path.c_str());
    return ok;
}

// The catalogue with one line a brush, which keeps it short enough to read through.
std::string catalogueText(const std::vector<BrushRecipe>& brushes) {
    std::string text = "{\n  \"default\": \"round_soft\",\n  \"brushes\": [\n";
    for (size_t i = 0; i < brushes.size(); ++i) {
        text += "    " + brushEntry(brushes[i]).dump() + (i + 1 < brushes.size() ? ",\n" : "\n");
    }
    return text + "  ]\n}\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <resources/packages/brushes folder>\n", argv[0]);
        return 2;
    }
    const fs::path dir = argv[1];
    const fs::path imageDir = dir / "images";
    fs::create_directories(imageDir);
    bool ok = true;
    const auto brushes = catalogue();
    for (const BrushRecipe& brush : brushes) ok &= drawBrush(imageDir, brush);
    ok &= writeText(dir / "catalogue.json", catalogueText(brushes));
    return ok ? 0 : 1;
}
