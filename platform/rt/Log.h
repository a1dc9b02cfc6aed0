#pragma once
#include <functional>
#include <string>

namespace orv::rt {

// The process's diagnostic lines, "[level] message" on stderr by default. The minimum level
// comes from $ORV_LOG_LEVEL (debug, info, warn, error; info when unset). Thread-safe.
class Log {
  public:
    enum class Level { Debug, Info, Warn, Error };
    using Sink = std::function<void(Level, const std::string&)>;

    Log() = delete;

    static void write(Level level, const std::string& message);
    static void debugf(const char* format, ...) __attribute__((format(printf, 1, 2)));
    static void infof(const char* format, ...) __attribute__((format(printf, 1, 2)));
    static void warnf(const char* format, ...) __attribute__((format(printf, 1, 2)));
    static void errorf(const char* format, ...) __attribute__((format(printf, 1, 2)));

    static Level minimumLevel();
    static void setMinimumLevel(Level level);
    static bool isEnabled(Level level) { return level >= minimumLevel(); }

    // Routes lines to `sink` (null: back to stderr) and returns the sink it replaces. Lines
    // below the minimum level reach no sink.
    static Sink setSink(Sink sink);

    static const char* levelName(Level level);
};

}  // namespace orv::rt
