#pragma once
// Hears every change of an argument made through its `precent`.

#include <string>

#include "frameworks/core/OrvKit.h"
#include "platform/rt/Object.h"

class VimraParameterArg;

class VimraParametersListener {
    ORV_DECLARE_PROTOCOL(VimraParametersListener)
  public:
    virtual ~VimraParametersListener() = default;
    virtual void onVimraParametersUpdate(long model, const std::string& code,
                                         const std::shared_ptr<VimraParameterArg>& arg) = 0;
};
