#include "frameworks/strand/kernels/AspectCrop.h"

#include <algorithm>
#include <cmath>

#include "platform/gfx/BitmapOps.h"

namespace orv::strand {

gfx::BitmapPtr AspectCrop::apply(const gfx::Bitmap& src, double ratio) {
    const int width = src.width(), height = src.height();
    if (!(ratio > 0) || !std::isfinite(ratio) || width == 0 || height == 0) {
        return std::make_shared<gfx::Bitmap>(src);
    }
    // The largest centred frame of that ratio, at least a pixel each way.
    int w = width, h = height;
    if (static_cast<double>(width) / height > ratio) {
        w = std::clamp(static_cast<int>(std::lround(height * ratio)), 1, width);
    } else {
        h = std::clamp(static_cast<int>(std::lround(width / ratio)), 1, height);
    }
    if (w == width && h == height) return std::make_shared<gfx::Bitmap>(src);
    return gfx::BitmapOps::cropped(src, (width - w) / 2, (height - h) / 2, w, h);
}

}  // namespace orv::strand
