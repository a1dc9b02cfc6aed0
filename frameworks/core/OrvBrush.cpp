#include "frameworks/core/OrvBrush.h"

ORV_DEFINE_CLASS(OrvBrush, rt::Object)

std::shared_ptr<OrvBrush> OrvBrush::brushWithType(long type) {
    auto brush = rt::make<OrvBrush>();
    brush->brushType_ = type;
    return brush;
}

gfx::ImagePtr OrvBrush::image() const {
    std::lock_guard lock(imageMutex_);
    return image_;
}

void OrvBrush::setImage(gfx::ImagePtr image) {
    std::lock_guard lock(imageMutex_);
    image_ = std::move(image);
}
