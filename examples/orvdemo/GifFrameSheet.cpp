#include "examples/orvdemo/GifFrameSheet.h"

#include <algorithm>
#include <cstdio>

#include "examples/orvdemo/ContactSheet.h"

namespace orvdemo {

namespace {

constexpr double kGap = 10, kLabel = 26;
constexpr int kColumns = 6;

}  // namespace

bool GifFrameSheet::write(OrvGifImage& gif, const std::string& path) {
    const uint64_t count = gif.frameCount();
    if (count == 0) return false;
    const gfx::Size frame = gif.size();
    const int rows = static_cast<int>((count + kColumns - 1) / kColumns);
    const int columns = static_cast<int>(std::min<uint64_t>(count, kColumns));
    const gfx::Size size{columns * (frame.width + kGap) + kGap,
                         rows * (frame.height + kLabel + kGap) + kGap};
    ContactSheet sheet(size);
    for (uint64_t i = 0; i < count; ++i) {
        const double x = kGap + (i % kColumns) * (frame.width + kGap);
        const double y = kGap + (i / kColumns) * (frame.height + kLabel + kGap);
        if (auto image = gif.imageFrameAtIndex(i)) {
            sheet.context().drawImageInRect(*image, gfx::Rect(x, y, frame.width, frame.height));
        }
        char label[48];
        std::snprintf(label, sizeof label, "#%llu  %.2f s", static_cast<unsigned long long>(i),
                      gif.durationAtIndex(i));
        sheet.drawLabel(label, gfx::Rect(x, y + frame.height + 4, frame.width, kLabel - 4));
    }
    return sheet.write(path);
}

}  // namespace orvdemo
