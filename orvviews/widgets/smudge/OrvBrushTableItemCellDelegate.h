#pragma once
// What a brush cell tells its list: that the user asked to remove the brush it shows (a brush
// that came from the store).

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class OrvBrushTableItemCellBase;

class OrvBrushTableItemCellDelegate {
    ORV_DECLARE_PROTOCOL(OrvBrushTableItemCellDelegate)
  public:
    virtual ~OrvBrushTableItemCellDelegate() = default;
    virtual void onBrushItemRemove(OrvBrushTableItemCellBase& cell) {}
};
