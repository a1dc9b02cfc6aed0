#include "examples/orvdemo/CropOrientationTour.h"

#include <cstdio>
#include <vector>

#include "examples/orvdemo/ContactSheet.h"
#include "examples/orvdemo/DemoWait.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "platform/gfx/BitmapOps.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/EventInjector.h"
#include "platform/ui/Renderer.h"
#include "platform/ui/Screen.h"

namespace orvdemo {

ORV_DEFINE_CLASS(CropOrientationTour, rt::Object, CropToolDelegate)

namespace {

constexpr long kSquare = 2;
constexpr double kCell = 220, kGap = 12, kLabel = 24;
const char* const kNames[] = {
    "1 up",          "3 down",          "8 left",          "6 right",
    "2 up mirrored", "4 down mirrored", "5 left mirrored", "7 right mirrored"};

rt::RunLoop& loop() {
    return rt::RunLoop::main();
}

// The stored pixels that show as `upright` under the tag: the tag's turn undone. The quarter
// turns undo each other; every other tag is its own inverse.
gfx::ImageOrientation undoing(gfx::ImageOrientation tag) {
    if (tag == gfx::ImageOrientation::Left) return gfx::ImageOrientation::Right;
    if (tag == gfx::ImageOrientation::Right) return gfx::ImageOrientation::Left;
    return tag;
}

}  // namespace

std::string CropOrientationTour::writeTagged(const gfx::ImagePtr& upright, int orientation) {
    const auto tag = gfx::ImageOrientation(orientation);
    auto stored = gfx::BitmapOps::oriented(*upright->bitmap(), undoing(tag));
    const auto path = OrvTSFileManager::newTemporaryPath(".jpg");
    const auto jpeg = orvJpegDataWithCompress(gfx::Image::withBitmap(stored, 1, tag), 0.9);
    return OrvTSFileManager::writeDataAtomically(jpeg, path) ? path : std::string();
}

gfx::ImagePtr CropOrientationTour::windowContent(CropToolController& tool) const {
    const auto screen = ui::Renderer::render(*window_);
    const auto& mask = tool.touchView()->cutRegionView();
    const gfx::Rect window = mask->convertRectToView(mask->regionRect(), nullptr);
    const double scale = ui::Screen::main().scale();
    auto cut = gfx::BitmapOps::cropped(
        *screen, int(window.origin.x * scale) + 4, int(window.origin.y * scale) + 4,
        int(window.size.width * scale) - 8, int(window.size.height * scale) - 8);
    return cut ? gfx::Image::withBitmap(cut) : nullptr;
}

void CropOrientationTour::onCropToolResult(CropToolController&,
                                           const std::shared_ptr<OrvResult>& result) {
    result_ = result;
}

bool CropOrientationTour::run(const std::string& photo, const std::string& sheet) {
    auto upright = orvImageLimit(imageWithContentsOfFile(photo), 1600);
    if (!upright) return false;
    upright = orvImageRotatedToUp(upright);
    const auto home = window_->rootViewController();
    std::vector<std::pair<gfx::ImagePtr, gfx::ImagePtr>> pairs;
    for (int o = 0; o < 8; ++o) {
        const std::string file = writeTagged(upright, o);
        auto tool = rt::make<CropToolController>();
        tool->setInputTempFilePath(file);
        tool->setSaveToTemp(true);
        tool->setDelegate(std::static_pointer_cast<CropToolDelegate>(self<CropOrientationTour>()));
        result_.reset();
        window_->setRootViewController(tool);
        if (!waitFor([&] { return tool->touchView()->imageView()->image() != nullptr; })) {
            std::fprintf(stderr, "demo failed: the crop tool never showed %s\n", kNames[o]);
            return false;
        }
        tool->chooseRatioType(kSquare);
        waitFor([&] { return !tool->touchView()->inActioning(); });
        loop().runFor(0.3);
        if (o == 7 && shoot_) shoot_("crop-exif-" + std::to_string(o));
        auto shown = windowContent(*tool);
        tool->onImageCompleteAtion();
        if (!waitFor([&] { return result_ != nullptr; }) || !result_->imagePath()) {
            std::fprintf(stderr, "demo failed: no crop of %s\n", kNames[o]);
            return false;
        }
        auto cropped = imageWithContentsOfFile(*result_->imagePath());
        std::printf(
            "  EXIF %-17s -> %dx%d, tag %d\n", kNames[o], cropped ? cropped->bitmap()->width() : 0,
            cropped ? cropped->bitmap()->height() : 0, cropped ? int(cropped->orientation()) : -1);
        pairs.emplace_back(shown, cropped);
        OrvTSFileManager::deletePath(file);
        OrvTSFileManager::deletePath(result_->imagePath());
        window_->setRootViewController(home);
        loop().runFor(0.2);
    }
    // Four pairs a row: the window as shown, then the saved result.
    const gfx::Size size{4 * (2 * kCell + 3 * kGap), 2 * (kCell + kLabel + kGap) + kGap};
    ContactSheet page(size);
    for (size_t i = 0; i < pairs.size(); ++i) {
        const double x = (i % 4) * (2 * kCell + 3 * kGap) + kGap;
        const double y = (i / 4) * (kCell + kLabel + kGap) + kGap;
        if (pairs[i].first) page.context().drawImageInRect(*pairs[i].first, {x, y, kCell, kCell});
        if (pairs[i].second) {
            page.context().drawImageInRect(*pairs[i].second, {x + kCell + kGap, y, kCell, kCell});
        }
        page.drawLabel(std::string("EXIF ") + kNames[i] + ": shown | saved",
                       {x, y + kCell + 2, 2 * kCell + kGap, kLabel - 2});
    }
    return page.write(sheet);
}

}  // namespace orvdemo
