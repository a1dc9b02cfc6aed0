#pragma once
// The named float arguments of one filter, in order, with the one listener that re-renders
// when a slider moves one of them. `model` is the slot of the pipe the filter lives in.

#include <memory>
#include <string>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "frameworks/strand/VimraParameterArg.h"
#include "frameworks/strand/VimraParametersListener.h"
#include "platform/rt/Object.h"

class VimraParameters : public rt::Object {
    ORV_DECLARE_CLASS(VimraParameters)
  public:
    static std::shared_ptr<VimraParameters> parameterWithCode(std::string code, long model);

    const std::string& code() const { return code_; }
    long model() const { return model_; }
    const std::vector<std::shared_ptr<VimraParameterArg>>& args() const { return args_; }
    std::vector<std::string> argKeys() const;
    std::shared_ptr<VimraParameterArg> argWithKey(const std::string& key) const;

    // An argument with the default range 0 to 1, at the end.
    void appendFloatArgWithKey(const std::string& key, double value);
    void appendFloatArgWithKey(const std::string& key, double value, double minValue,
                               double maxValue);
    // `index` is the place the argument takes among the others (0 first); a negative index, or
    // one past the end, appends it.
    void appendFloatArgWithKey(const std::string& key, double value, long index);

    // The slider traffic of the tools: moves the argument with that key to a place in its
    // range, or by a step of its place (both clamped to 0 to 1), telling the listener; a
    // missing key does nothing.
    void setArgWithKey(const std::string& key, double precent);
    void stepArgWithKey(const std::string& key, double precent);

    // Not owned: the listener must outlive its use here (the shower clears it at its end).
    void setListener(std::weak_ptr<VimraParametersListener> listener) {
        listener_ = std::move(listener);
    }
    std::shared_ptr<VimraParametersListener> listener() const { return listener_.lock(); }

    // Ready for the sliders: it has arguments.
    bool isInited() const { return !args_.empty(); }
    void reset();
    void resetWithKey(const std::string& key);

    // Tells the listener of a change of `arg` (the argument calls this from setPrecent).
    void notifyUpdate(const std::shared_ptr<VimraParameterArg>& arg);

  private:
    void insert(std::shared_ptr<VimraParameterArg> arg, long index);

    std::string code_;
    long model_ = 0;
    std::vector<std::shared_ptr<VimraParameterArg>> args_;
    std::weak_ptr<VimraParametersListener> listener_;
};
