#include "platform/rt/Log.h"

#include <strings.h>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace orv::rt {

namespace {

Log::Level levelFromEnvironment() {
    const char* text = std::getenv("ORV_LOG_LEVEL");
    if (!text) return Log::Level::Info;
    if (::strcasecmp(text, "debug") == 0) return Log::Level::Debug;
    if (::strcasecmp(text, "warn") == 0 || ::strcasecmp(text, "warning") == 0) {
        return Log::Level::Warn;
    }
    if (::strcasecmp(text, "error") == 0) return Log::Level::Error;
    return Log::Level::Info;
}

std::atomic<Log::Level>& minimum() {
    static std::atomic<Log::Level> level{levelFromEnvironment()};
    return level;
}

// The sink is swapped under a lock but called outside it, so a sink may log in turn.
struct SinkSlot {
    std::mutex mutex;
    std::shared_ptr<const Log::Sink> sink;
};

SinkSlot& slot() {
    static SinkSlot s;
    return s;
}

void writeToStderr(Log::Level level, const std::string& message) {
    std::fprintf(stderr, "[%s] %s\n", Log::levelName(level), message.c_str());
}

std::string format(const char* format, va_list args) {
    va_list copy;
    va_copy(copy, args);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (length <= 0) return {};
    std::vector<char> buffer(static_cast<size_t>(length) + 1);
    std::vsnprintf(buffer.data(), buffer.size(), format, args);
    return std::string(buffer.data(), static_cast<size_t>(length));
}

void writeFormatted(Log::Level level, const char* fmt, va_list args) {
    if (!Log::isEnabled(level)) return;
    Log::write(level, format(fmt, args));
}

}  // namespace

void Log::write(Level level, const std::string& message) {
    if (!isEnabled(level)) return;
    std::shared_ptr<const Sink> sink;
    {
        std::lock_guard lock(slot().mutex);
        sink = slot().sink;
    }
    if (sink) {
        (*sink)(level, message);
    } else {
        writeToStderr(level, message);
    }
}

#define ORV_LOG_FORMATTED(level)         \
    va_list args;                        \
    va_start(args, format);              \
    writeFormatted(level, format, args); \
    va_end(args)

void Log::debugf(const char* format, ...) {
    ORV_LOG_FORMATTED(Level::Debug);
}
void Log::infof(const char* format, ...) {
    ORV_LOG_FORMATTED(Level::Info);
}
void Log::warnf(const char* format, ...) {
    ORV_LOG_FORMATTED(Level::Warn);
}
void Log::errorf(const char* format, ...) {
    ORV_LOG_FORMATTED(Level::Error);
}

#undef ORV_LOG_FORMATTED

Log::Level Log::minimumLevel() {
    return minimum().load();
}

void Log::setMinimumLevel(Level level) {
    minimum() = level;
}

Log::Sink Log::setSink(Sink sink) {
    auto next = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
    std::lock_guard lock(slot().mutex);
    auto previous = std::exchange(slot().sink, std::move(next));
    return previous ? *previous : Sink{};
}

const char* Log::levelName(Level level) {
    switch (level) {
        case Level::Debug:
            return "debug";
        case Level::Info:
            return "info";
        case Level::Warn:
            return "warn";
        case Level::Error:
            return "error";
    }
    return "?";
}

}  // namespace orv::rt
