#include "frameworks/strand/ORPFPColorCorrectionFilter_PropertyBuilder.h"

#include <algorithm>
#include <cmath>
#include <iterator>

ORV_DEFINE_CLASS(ORPFPColorCorrectionFilter_PropertyBuilder, rt::Object)

ORPFPProperty ORPFPColorCorrectionFilter_PropertyBuilder::makeProperty() const {
    using Settings = orv::strand::ColorCorrectionSettings;
    // The order of the analysis values in args.
    static constexpr float Settings::*kPlaces[] = {
        &Settings::maxR, &Settings::maxG, &Settings::maxB, &Settings::maxY,
        &Settings::minR, &Settings::minG, &Settings::minB, &Settings::minY,
        &Settings::midR, &Settings::midG, &Settings::midB,
    };
    Settings settings;
    const size_t count = std::min(args_.size(), std::size(kPlaces));
    for (size_t i = 0; i < count; ++i) {
        if (std::isfinite(args_[i])) settings.*kPlaces[i] = static_cast<float>(args_[i]);
    }
    return ORPFPPropertyOf<Settings>::make(settings);
}
