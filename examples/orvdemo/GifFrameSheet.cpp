#include "examples/orvdemo/GifFrameSheet.h"

#include <algorithm>
#include <cstdio>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "platform/gfx/AttributedString.h"
#include "platform/gfx/ImageContext.h"

namespace orvdemo {

namespace {

constexpr double kGap = 10, kLabel = 26;
constexpr int kColumns = 6;

void drawLabel(gfx::ImageContext& context, const std::string& text, const gfx::Rect& rect) {
    gfx::TextAttributes attributes;
    attributes.font = gfx::Font::systemFont(14);
    attributes.foregroundColor = gfx::Color::white(0.9);
    attributes.paragraphStyle = gfx::ParagraphStyle{.alignment = gfx::TextAlignment::Center};
    gfx::TextLayout(gfx::AttributedString(text, attributes), rect.size, 1).draw(context, rect);
}

}  // namespace

bool GifFrameSheet::write(OrvGifImage& gif, const std::string& path) {
    const uint64_t count = gif.frameCount();
    if (count == 0) return false;
    const gfx::Size frame = gif.size();
    const int rows = static_cast<int>((count + kColumns - 1) / kColumns);
    const int columns = static_cast<int>(std::min<uint64_t>(count, kColumns));
    const gfx::Size size{columns * (frame.width + kGap) + kGap,
                         rows * (frame.height + kLabel + kGap) + kGap};
    gfx::ImageContext context(size, true, 1);
    context.setFillColor(gfx::Color::rgb(0.11, 0.12, 0.15));
    context.fillRect(gfx::Rect({0, 0}, size));
    for (uint64_t i = 0; i < count; ++i) {
        const double x = kGap + (i % kColumns) * (frame.width + kGap);
        const double y = kGap + (i / kColumns) * (frame.height + kLabel + kGap);
        if (auto image = gif.imageFrameAtIndex(i)) {
            context.drawImageInRect(*image, gfx::Rect(x, y, frame.width, frame.height));
        }
        char label[48];
        std::snprintf(label, sizeof label, "#%llu  %.2f s", static_cast<unsigned long long>(i),
                      gif.durationAtIndex(i));
        drawLabel(context, label, gfx::Rect(x, y + frame.height + 4, frame.width, kLabel - 4));
    }
    const auto png = orvPngData(context.endImage());
    return !png.empty() && OrvTSFileManager::writeDataAtomically(png, path);
}

}  // namespace orvdemo
