#include "frameworks/core/OrvSticker.h"

ORV_DEFINE_CLASS(OrvSticker, rt::Object)

std::shared_ptr<OrvSticker> OrvSticker::stickerWithType(int type) {
    auto sticker = rt::make<OrvSticker>();
    sticker->type_ = type;
    return sticker;
}

gfx::ImagePtr OrvSticker::image() const {
    std::lock_guard lock(imageMutex_);
    return image_;
}

void OrvSticker::setImage(gfx::ImagePtr image) {
    std::lock_guard lock(imageMutex_);
    image_ = std::move(image);
}
