#pragma once
// One named float argument of a filter: its value, its range and its default. The slider
// position `precent` is the value's place in the range from 0 to 1.

#include <memory>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class VimraParameters;

class VimraParameterArg : public rt::Object {
    ORV_DECLARE_CLASS(VimraParameterArg)
  public:
    // The range an argument has when none is given.
    static constexpr double kDefaultMin = 0;
    static constexpr double kDefaultMax = 1;

    static std::shared_ptr<VimraParameterArg> argWithKey(std::string key, double value,
                                                         double minValue = kDefaultMin,
                                                         double maxValue = kDefaultMax);

    const std::string& key() const { return key_; }
    double value() const { return value_; }
    void setValue(double value);  // clamped to the range
    double defaultValue() const { return defaultValue_; }
    double minFloatValue() const { return min_; }
    double maxFloatValue() const { return max_; }

    // The value's place in the range, 0 to 1 (0 for an empty range).
    double precent() const;
    // Moves the value to that place (clamped to 0 to 1) and tells the owner's listener.
    void setPrecent(double precent);
    // Back to the default value, without telling the listener.
    void reset();

    // The parameter object the argument belongs to (set when it is appended).
    void setOwner(std::weak_ptr<VimraParameters> owner) { owner_ = std::move(owner); }

  private:
    std::string key_;
    double value_ = 0;
    double defaultValue_ = 0;
    double min_ = kDefaultMin;
    double max_ = kDefaultMax;
    std::weak_ptr<VimraParameters> owner_;
};
