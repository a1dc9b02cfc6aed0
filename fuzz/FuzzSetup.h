#pragma once
// What every decoder fuzzer does once before its first input.

#include "platform/rt/Log.h"

namespace orv::fuzz {

// The decoders log a reason for every input they refuse; millions of those lines would only
// slow the fuzzer down.
inline int quietLogs() {
    rt::Log::setMinimumLevel(rt::Log::Level::Error);
    return 0;
}

}  // namespace orv::fuzz
