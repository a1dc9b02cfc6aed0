#include "frameworks/core/OrvTSLog.h"

#include <cstdarg>
#include <cstdio>
#include <string>

#include "platform/rt/Log.h"

namespace {

std::string formatted(const char* format, va_list args) {
    va_list copy;
    va_copy(copy, args);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (length <= 0) return {};
    std::string text(static_cast<size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, args);
    return text;
}

}  // namespace

#define ORV_TS_LOG_LEVEL(fn, level)                          \
    void OrvTSLog::fn(const char* format, ...) {             \
        va_list args;                                        \
        va_start(args, format);                              \
        orv::rt::Log::write(level, formatted(format, args)); \
        va_end(args);                                        \
    }

ORV_TS_LOG_LEVEL(debug, orv::rt::Log::Level::Debug)
ORV_TS_LOG_LEVEL(info, orv::rt::Log::Level::Info)
ORV_TS_LOG_LEVEL(warn, orv::rt::Log::Level::Warn)
ORV_TS_LOG_LEVEL(error, orv::rt::Log::Level::Error)
