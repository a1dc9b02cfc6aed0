#include "frameworks/strand/VimraParameterArg.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "frameworks/strand/VimraParameters.h"

ORV_DEFINE_CLASS(VimraParameterArg, rt::Object)

std::shared_ptr<VimraParameterArg> VimraParameterArg::argWithKey(std::string key, double value,
                                                                 double minValue, double maxValue) {
    auto arg = rt::make<VimraParameterArg>();
    arg->key_ = std::move(key);
    // A range that is not a range falls back to the default one; a reversed one is turned.
    if (!std::isfinite(minValue) || !std::isfinite(maxValue)) {
        minValue = kDefaultMin;
        maxValue = kDefaultMax;
    }
    arg->min_ = std::min(minValue, maxValue);
    arg->max_ = std::max(minValue, maxValue);
    // The value is kept as given (the filters take it unscaled), unless it is no number.
    arg->value_ = std::isfinite(value) ? value : arg->min_;
    arg->defaultValue_ = arg->value_;
    return arg;
}

void VimraParameterArg::setValue(double value) {
    value_ = std::isfinite(value) ? std::clamp(value, min_, max_) : min_;
}

double VimraParameterArg::precent() const {
    const double range = max_ - min_;
    if (range <= 0) return 0;
    return std::clamp((value_ - min_) / range, 0.0, 1.0);
}

void VimraParameterArg::setPrecent(double precent) {
    const double p = std::isfinite(precent) ? std::clamp(precent, 0.0, 1.0) : 0.0;
    setValue(min_ + p * (max_ - min_));
    if (auto owner = owner_.lock()) owner->notifyUpdate(self<VimraParameterArg>());
}

void VimraParameterArg::reset() {
    value_ = defaultValue_;
}
