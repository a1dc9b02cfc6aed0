#include "bench/ComposeScene.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "bench/BenchPhoto.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvSticker.h"
#include "frameworks/core/OrvWaterMarkOption.h"
#include "orvviews/widgets/OrvResultViewController.h"
#include "orvviews/widgets/sticker/OrvStickerResult.h"
#include "platform/codec/PngCodec.h"
#include "platform/gfx/TextLayout.h"
#include "platform/ui/Screen.h"

namespace orv::bench {

namespace {

namespace fs = std::filesystem;

struct StickerSpot {
    const char* picture;
    double centerX, centerY, width, degrees;
};

// Sizes from 300 to 900 pixels, every kind of turn, overlaps among them and over the photo's
// left, top, right and bottom edges; the bottom right stays free for the water mark.
constexpr StickerSpot kStickers[] = {
    {"sticker_animal_cat@3x.png", 520, 480, 600, -15},
    {"sticker_animal_dog@3x.png", 1500, 700, 420, 30},
    {"sticker_animal_fox@3x.png", 150, 1600, 500, 45},
    {"sticker_face_party@3x.png", 2600, 1200, 900, 0},
    {"sticker_face_heart_eyes@3x.png", 3850, 400, 700, 120},
    {"sticker_food_pizza@3x.png", 1200, 2300, 800, -60},
    {"sticker_thing_star@3x.png", 2200, 2950, 360, 200},
    {"sticker_thing_balloon@3x.png", 3300, 1800, 550, 75},
    {"sticker_face_sunglasses@3x.png", 2900, 1000, 300, 10},
    {"sticker_food_watermelon@3x.png", 700, 1300, 650, 162.5},
};
constexpr const char* kMarkSource = "sticker_label_tag@3x.png";
constexpr const char* kMarkFile = "mark.png";
constexpr const char* kMarkTextFile = "mark-text.png";
// Large enough to read on a 4000-pixel photo.
constexpr double kMarkTextSize = 96;
// Clear pixels around the text picture, so that its shadow is not cut.
constexpr int kTextRoom = 3;

std::string packagePicture(const std::string& name) {
    return (fs::path(ORV_SOURCE_RESOURCES) / "packages/stickers/images" / name).string();
}

std::string stickerFile(size_t index) {
    char name[32];
    std::snprintf(name, sizeof name, "sticker-%02zu.png", index);
    return name;
}

gfx::Size markTextSize() {
    const auto option = ComposeScene::waterMarkOption(nullptr);
    return gfx::TextLayout::measure(option->markText(),
                                    gfx::Font::systemFont(option->markTextSize()));
}

// The text alone, stamped by our water mark on a clear picture with room around it; the text's
// box ends kTextRoom pixels before the right and bottom edges.
gfx::ImagePtr markTextPicture(gfx::Size textSize) {
    auto option = ComposeScene::waterMarkOption(nullptr);
    option->setMarkMargin(kTextRoom / ui::Screen::main().scale());
    auto controller = rt::make<OrvResultViewController>();
    controller->setWaterMarkOption(option);
    const auto clear =
        std::make_shared<gfx::Bitmap>(static_cast<int>(std::ceil(textSize.width)) + 2 * kTextRoom,
                                      static_cast<int>(std::ceil(textSize.height)) + 2 * kTextRoom);
    return controller->addWaterMarkToImage(gfx::Image::withBitmap(clear));
}

gfx::Point topLeftOnPhoto(const OrvStickerResult& result, gfx::Size photo) {
    const gfx::Rect& c = result.center();
    return {(c.origin.x - c.size.width / 2) * photo.width,
            (c.origin.y - c.size.height / 2) * photo.height};
}

std::string markLine(const std::string& file, double left, double top) {
    std::ostringstream line;
    line << file << ' ' << std::lround(left) << ' ' << std::lround(top) << '\n';
    return line.str();
}

// Where our water mark puts its picture and its text on the photo, as marks.txt lines; the
// text's line places the text picture so that its text box falls where ours draws the text.
std::string markLines(gfx::Size photo, const gfx::ImagePtr& picture, gfx::Size textSize,
                      gfx::Size textPictureSize) {
    auto controller = rt::make<OrvResultViewController>();
    const auto option = ComposeScene::waterMarkOption(picture);
    controller->setWaterMarkOption(option);
    auto pictureSticker = OrvSticker::stickerWithType(OrvSticker::kImage);
    pictureSticker->setSize(picture->size());
    auto textSticker = OrvSticker::stickerWithType(OrvSticker::kText);
    textSticker->setSize(textSize);
    // The block as addWaterMarkToImage lays it out: the picture, a gap, the text.
    const gfx::Size block{picture->size().width +
                              option->markTextPadding() * ui::Screen::main().scale() +
                              textSize.width,
                          std::max(picture->size().height, textSize.height)};
    const int after = OrvWaterMarkOption::kTextAfterPicture;
    const gfx::Point p =
        topLeftOnPhoto(*controller->createStickResult(pictureSticker, block, photo, after), photo);
    const gfx::Point t =
        topLeftOnPhoto(*controller->createStickResult(textSticker, block, photo, after), photo);
    return markLine(kMarkFile, p.x, p.y) +
           markLine(kMarkTextFile, t.x - (textPictureSize.width - textSize.width - kTextRoom),
                    t.y - (textPictureSize.height - textSize.height - kTextRoom));
}

bool writeText(const std::string& text, const std::string& path) {
    std::ofstream out(path);
    out << text;
    return static_cast<bool>(out);
}

// Copies the package's stickers and returns the layout.txt text; empty when one is unreadable.
std::string copyStickers(const fs::path& dir, std::vector<std::string>& written) {
    std::ostringstream layout;
    for (size_t i = 0; i < std::size(kStickers); ++i) {
        const StickerSpot& spot = kStickers[i];
        const auto picture = imageWithContentsOfFile(packagePicture(spot.picture));
        std::error_code error;
        const fs::path to = dir / stickerFile(i);
        if (!picture || !fs::copy_file(packagePicture(spot.picture), to,
                                       fs::copy_options::overwrite_existing, error)) {
            return {};
        }
        // Drawn with the picture's own proportions.
        const double height = spot.width * picture->size().height / picture->size().width;
        layout << stickerFile(i) << ' ' << spot.centerX << ' ' << spot.centerY << ' ' << spot.width
               << ' ' << height << ' ' << spot.degrees << '\n';
        written.push_back(to.string());
    }
    return layout.str();
}

std::optional<ComposeScene::Placement> parsePlacement(const std::string& line) {
    ComposeScene::Placement p;
    std::istringstream in(line);
    if (!(in >> p.file >> p.centerX >> p.centerY >> p.width >> p.height >> p.degrees)) {
        return std::nullopt;
    }
    return p;
}

}  // namespace

std::vector<std::string> ComposeScene::writeInputs(const std::string& dir) {
    std::error_code error;
    fs::create_directories(dir, error);
    std::vector<std::string> written;
    const std::string layout = copyStickers(dir, written);
    const fs::path markPath = fs::path(dir) / kMarkFile;
    const auto picture = imageWithContentsOfFile(packagePicture(kMarkSource));
    if (layout.empty() || !picture ||
        !fs::copy_file(packagePicture(kMarkSource), markPath, fs::copy_options::overwrite_existing,
                       error)) {
        return {};
    }
    // Read back under its own name, which gives it the scale the compose run will see.
    const auto mark = imageWithContentsOfFile(markPath.string());
    const gfx::Size textSize = markTextSize();
    const auto text = markTextPicture(textSize);
    const fs::path textPath = fs::path(dir) / kMarkTextFile;
    const fs::path layoutPath = fs::path(dir) / "layout.txt",
                   marksPath = fs::path(dir) / "marks.txt";
    const gfx::Size photo{double(BenchPhoto::kWidth), double(BenchPhoto::kHeight)};
    if (!mark || !text || !codec::PngCodec::writeFile(*text->bitmap(), textPath.string()) ||
        !writeText(layout, layoutPath.string()) ||
        !writeText(markLines(photo, mark, textSize, text->size()), marksPath.string())) {
        return {};
    }
    for (const fs::path& p : {markPath, textPath, layoutPath, marksPath}) {
        written.push_back(p.string());
    }
    return written;
}

std::optional<ComposeScene> ComposeScene::read(const std::string& dir) {
    ComposeScene scene;
    std::ifstream layout(fs::path(dir) / "layout.txt");
    std::string line;
    while (std::getline(layout, line)) {
        if (line.empty()) continue;
        const auto placement = parsePlacement(line);
        const auto picture =
            placement ? imageWithContentsOfFile((fs::path(dir) / placement->file).string())
                      : nullptr;
        if (!picture) return std::nullopt;
        scene.placements_.push_back(*placement);
        scene.pictures_.push_back(picture);
    }
    scene.markPicture_ = imageWithContentsOfFile((fs::path(dir) / kMarkFile).string());
    if (scene.placements_.empty() || !scene.markPicture_) return std::nullopt;
    return scene;
}

OrvStickerFactory::Results ComposeScene::stickerResults(gfx::Size photoSize) const {
    OrvStickerFactory::Results results;
    for (size_t i = 0; i < placements_.size(); ++i) {
        const Placement& p = placements_[i];
        auto sticker = OrvSticker::stickerWithType(OrvSticker::kImage);
        sticker->setIdt(0);
        sticker->setImage(pictures_[i]);
        sticker->setSize(pictures_[i]->size());
        const gfx::Rect center(p.centerX / photoSize.width, p.centerY / photoSize.height,
                               p.width / photoSize.width, p.height / photoSize.height);
        results.push_back(
            OrvStickerResult::initWithSticker(sticker, center, static_cast<float>(p.degrees)));
    }
    return results;
}

std::shared_ptr<OrvWaterMarkOption> ComposeScene::waterMarkOption(const gfx::ImagePtr& picture) {
    auto option = OrvWaterMarkOption::option();
    option->setMarkImage(picture);
    option->setMarkText(kMarkText);
    option->setMarkTextSize(kMarkTextSize);
    option->setMarkPosition(OrvWaterMarkOption::kBottomRight);
    return option;
}

}  // namespace orv::bench
