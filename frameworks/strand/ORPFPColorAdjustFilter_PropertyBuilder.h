#pragma once
// The colour adjust's items in their fixed order: white balance (temperature, tint),
// highlight-shadow (highlights, shadows), sharpen, brightness, contrast, saturation, exposure.

#include <memory>
#include <vector>

#include "frameworks/strand/ORPFPColorAdjustFilter_PropertyItem.h"
#include "frameworks/strand/ORPFPFilter.h"
#include "frameworks/strand/kernels/FilterSettings.h"

class ORPFPColorAdjustFilter_PropertyBuilder : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPColorAdjustFilter_PropertyBuilder)
  public:
    using Item = std::shared_ptr<const ORPFPColorAdjustFilter_PropertyItem>;

    std::vector<Item>& items() { return items_; }
    const std::vector<Item>& items() const { return items_; }
    // The settings the items describe (an item that is missing or short leaves its zeros).
    ORPFPProperty makeProperty() const;

  private:
    std::vector<Item> items_;
};
