#pragma once
// One key path moving from a value to another, linearly through each cycle.

#include <optional>
#include <string>

#include "platform/ui/Animation.h"

namespace orv::ui {

class BasicAnimation : public Animation {
    ORV_DECLARE_CLASS(BasicAnimation)
  public:
    static std::shared_ptr<BasicAnimation> withKeyPath(std::string keyPath);

    const std::string& keyPath() const { return keyPath_; }
    void setKeyPath(std::string keyPath) { keyPath_ = std::move(keyPath); }
    // A missing start is the model value; a missing end is start + byValue, else the model value.
    std::optional<double> fromValue() const { return fromValue_; }
    void setFromValue(std::optional<double> v) { fromValue_ = v; }
    std::optional<double> toValue() const { return toValue_; }
    void setToValue(std::optional<double> v) { toValue_ = v; }
    std::optional<double> byValue() const { return byValue_; }
    void setByValue(std::optional<double> v) { byValue_ = v; }

  protected:
    std::optional<double> valueAtProgress(const std::string& keyPath, double progress,
                                          double modelValue) const override;

  private:
    std::string keyPath_;
    std::optional<double> fromValue_;
    std::optional<double> toValue_;
    std::optional<double> byValue_;
};

}  // namespace orv::ui
