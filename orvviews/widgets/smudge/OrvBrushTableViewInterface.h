#pragma once
// What a brush bar needs of its list: the cell width, the brushes to show, and a selection.

#include <memory>
#include <vector>

#include "frameworks/core/OrvBrush.h"
#include "frameworks/core/OrvKit.h"

class OrvBrushTableViewInterface {
    ORV_DECLARE_PROTOCOL(OrvBrushTableViewInterface)
  public:
    // The index of nothing, for a brush the list does not hold.
    static constexpr long kNotFound = -1;

    virtual ~OrvBrushTableViewInterface() = default;
    virtual void setCellWidth(double width) = 0;
    virtual void setModeList(const std::vector<std::shared_ptr<OrvBrush>>& brushes) = 0;
    // Selects the brush at that index; kNotFound or an index past the end selects nothing.
    virtual void selectPostion(long index, bool scrollToCenter, bool reload) = 0;
};
