#include "frameworks/core/OrvStickerText.h"

ORV_DEFINE_CLASS(OrvStickerText, rt::Object)

std::shared_ptr<OrvStickerText> OrvStickerText::textWithType(int type) {
    auto text = rt::make<OrvStickerText>();
    text->type_ = type;
    return text;
}
