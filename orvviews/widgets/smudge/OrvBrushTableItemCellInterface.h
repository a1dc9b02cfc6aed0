#pragma once
// What a brush list needs of its cells: the brush to show.

#include <memory>

#include "frameworks/core/OrvBrush.h"
#include "frameworks/core/OrvKit.h"

class OrvBrushTableItemCellInterface {
    ORV_DECLARE_PROTOCOL(OrvBrushTableItemCellInterface)
  public:
    virtual ~OrvBrushTableItemCellInterface() = default;
    virtual void setMode(const std::shared_ptr<OrvBrush>& brush) = 0;
    virtual const std::shared_ptr<OrvBrush>& mode() const = 0;
};
