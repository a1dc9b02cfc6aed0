#pragma once
// What the sticker layers rely on in an item, so that the item class can be replaced.

#include <memory>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvSticker.h"
#include "orvviews/widgets/sticker/OrvStickerItemViewDelegate.h"
#include "orvviews/widgets/sticker/OrvStickerResult.h"
#include "platform/gfx/Color.h"
#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"

class OrvStickerItemViewInterface {
    ORV_DECLARE_PROTOCOL(OrvStickerItemViewInterface)
  public:
    virtual ~OrvStickerItemViewInterface() = default;
    virtual std::shared_ptr<OrvStickerResult> resultWithRegionRect(const gfx::Rect& region) = 0;
    virtual std::shared_ptr<OrvStickerItemViewDelegate> delegate() const = 0;
    virtual void setDelegate(std::weak_ptr<OrvStickerItemViewDelegate> delegate) = 0;
    virtual const std::shared_ptr<OrvSticker>& sticker() const = 0;
    virtual void setSticker(std::shared_ptr<OrvSticker> sticker) = 0;
    virtual double strokeWidth() const = 0;
    virtual void setStrokeWidth(double width) = 0;
    virtual gfx::Color strokeColor() const = 0;
    virtual void setStrokeColor(const gfx::Color& color) = 0;
    virtual bool selected() const = 0;
    virtual void setSelected(bool selected) = 0;
};
