#include "orvviews/widgets/sticker/OrvStickerResult.h"

ORV_DEFINE_CLASS(OrvStickerResult, rt::Object)

std::shared_ptr<OrvStickerResult> OrvStickerResult::initWithSticker(
    std::shared_ptr<OrvSticker> sticker, const gfx::Rect& center, float degree) {
    auto result = rt::make<OrvStickerResult>();
    result->sticker_ = std::move(sticker);
    result->center_ = center;
    result->degree_ = degree;
    return result;
}
