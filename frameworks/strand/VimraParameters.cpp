#include "frameworks/strand/VimraParameters.h"

#include <algorithm>
#include <utility>

ORV_DEFINE_CLASS(VimraParameters, rt::Object)

std::shared_ptr<VimraParameters> VimraParameters::parameterWithCode(std::string code, long model) {
    auto parameters = rt::make<VimraParameters>();
    parameters->code_ = std::move(code);
    parameters->model_ = model;
    return parameters;
}

std::vector<std::string> VimraParameters::argKeys() const {
    std::vector<std::string> keys;
    keys.reserve(args_.size());
    for (const auto& arg : args_) keys.push_back(arg->key());
    return keys;
}

std::shared_ptr<VimraParameterArg> VimraParameters::argWithKey(const std::string& key) const {
    auto it = std::find_if(args_.begin(), args_.end(),
                           [&](const auto& arg) { return arg->key() == key; });
    return it == args_.end() ? nullptr : *it;
}

void VimraParameters::appendFloatArgWithKey(const std::string& key, double value) {
    insert(VimraParameterArg::argWithKey(key, value), -1);
}

void VimraParameters::appendFloatArgWithKey(const std::string& key, double value, double minValue,
                                            double maxValue) {
    insert(VimraParameterArg::argWithKey(key, value, minValue, maxValue), -1);
}

void VimraParameters::appendFloatArgWithKey(const std::string& key, double value, long index) {
    insert(VimraParameterArg::argWithKey(key, value), index);
}

void VimraParameters::setArgWithKey(const std::string& key, double precent) {
    if (auto arg = argWithKey(key)) arg->setPrecent(precent);
}

void VimraParameters::stepArgWithKey(const std::string& key, double precent) {
    if (auto arg = argWithKey(key)) arg->setPrecent(arg->precent() + precent);
}

void VimraParameters::reset() {
    for (const auto& arg : args_) arg->reset();
}

void VimraParameters::resetWithKey(const std::string& key) {
    if (auto arg = argWithKey(key)) arg->reset();
}

void VimraParameters::notifyUpdate(const std::shared_ptr<VimraParameterArg>& arg) {
    if (auto listener = listener_.lock()) listener->onVimraParametersUpdate(model_, code_, arg);
}

void VimraParameters::insert(std::shared_ptr<VimraParameterArg> arg, long index) {
    arg->setOwner(weakSelf<VimraParameters>());
    const bool atEnd = index < 0 || static_cast<size_t>(index) >= args_.size();
    args_.insert(atEnd ? args_.end() : args_.begin() + index, std::move(arg));
}
