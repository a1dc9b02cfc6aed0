#include "frameworks/strand/ORPFPColorAdjustFilter_PropertyBuilder.h"

#include <string_view>

#include "frameworks/strand/ORPFPConstants.h"

ORV_DEFINE_CLASS(ORPFPColorAdjustFilter_PropertyBuilder, rt::Object)

namespace {

using Settings = orv::strand::ColorAdjustSettings;

// Each item's name and the settings its first and second values go to.
struct Slot {
    std::string_view name;
    float Settings::*first;
    float Settings::*second;
};

constexpr Slot kSlots[] = {
    {ORPFPColorAdjustFilter_PROP_TYPE_WhiteBalance, &Settings::temperature, &Settings::tint},
    {ORPFPColorAdjustFilter_PROP_TYPE_HighlightShadow, &Settings::highlights, &Settings::shadows},
    {ORPFPColorAdjustFilter_PROP_TYPE_Sharpen, &Settings::sharpen, nullptr},
    {ORPFPColorAdjustFilter_PROP_TYPE_Brightness, &Settings::brightness, nullptr},
    {ORPFPColorAdjustFilter_PROP_TYPE_Contrast, &Settings::contrast, nullptr},
    {ORPFPColorAdjustFilter_PROP_TYPE_Saturation, &Settings::saturation, nullptr},
    {ORPFPColorAdjustFilter_PROP_TYPE_Exposure, &Settings::exposure, nullptr},
};

}  // namespace

ORPFPProperty ORPFPColorAdjustFilter_PropertyBuilder::makeProperty() const {
    Settings settings;
    for (const auto& item : items_) {
        if (!item) continue;
        const auto& values = item->values();
        for (const Slot& slot : kSlots) {
            if (slot.name != item->name()) continue;
            if (values.size() > 0) settings.*slot.first = values[0];
            if (values.size() > 1 && slot.second) settings.*slot.second = values[1];
        }
    }
    return ORPFPPropertyOf<Settings>::make(settings);
}
