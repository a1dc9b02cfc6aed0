#pragma once
// What the sticker layer hears from one of its items.

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvStickerItemView;

class OrvStickerItemViewDelegate {
    ORV_DECLARE_PROTOCOL(OrvStickerItemViewDelegate)
  public:
    virtual ~OrvStickerItemViewDelegate() = default;
    // The close button was tapped; the item asks to be removed.
    virtual void onClosedStickerItemView(OrvStickerItemView& view) { (void)view; }
    // A touch began on the item.
    virtual void onSelectedStickerItemView(OrvStickerItemView& view) = 0;
};
