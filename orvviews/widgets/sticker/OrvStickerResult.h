#pragma once
// Where a sticker lies on its region, independent of the screen: the centre and size as
// fractions of the region (origin = the centre, not a corner) and the turn in degrees,
// clockwise on the screen.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvSticker.h"
#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"

class OrvStickerResult : public rt::Object {
    ORV_DECLARE_CLASS(OrvStickerResult)
  public:
    static std::shared_ptr<OrvStickerResult> initWithSticker(std::shared_ptr<OrvSticker> sticker,
                                                             const gfx::Rect& center, float degree);

    const std::shared_ptr<OrvSticker>& sticker() const { return sticker_; }
    const gfx::Rect& center() const { return center_; }
    float degree() const { return degree_; }

  private:
    std::shared_ptr<OrvSticker> sticker_;
    gfx::Rect center_;
    float degree_ = 0;
};
