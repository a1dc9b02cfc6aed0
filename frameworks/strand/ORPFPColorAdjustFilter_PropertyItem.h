#pragma once
// One item of the colour adjust: its name (one of the ..._PROP_TYPE_... texts) and one or two
// values from −1 to 1. Immutable: a change makes a new item.

#include <memory>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class ORPFPColorAdjustFilter_PropertyItem : public rt::Object {
    ORV_DECLARE_CLASS(ORPFPColorAdjustFilter_PropertyItem)
  public:
    using rt::Object::init;  // the static init forms below would hide it from rt::make
    static std::shared_ptr<const ORPFPColorAdjustFilter_PropertyItem> init(std::string name,
                                                                           float with);
    static std::shared_ptr<const ORPFPColorAdjustFilter_PropertyItem> init(std::string name,
                                                                           float with, float and_);

    const std::string& name() const { return name_; }
    const std::vector<float>& values() const { return values_; }

  private:
    std::string name_;
    std::vector<float> values_;
};
