#pragma once
// Small scoped helpers the runtime tests share: an environment variable set for one test, and
// the log lines written while a capture is alive.

#include <cstdlib>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/rt/Log.h"

namespace orv::rt::test {

class ScopedEnv {
  public:
    // A null value unsets the variable for the scope.
    ScopedEnv(std::string name, const char* value) : name_(std::move(name)) {
        if (const char* old = std::getenv(name_.c_str())) old_ = old;
        if (value) {
            ::setenv(name_.c_str(), value, 1);
        } else {
            ::unsetenv(name_.c_str());
        }
    }
    ~ScopedEnv() {
        if (old_) {
            ::setenv(name_.c_str(), old_->c_str(), 1);
        } else {
            ::unsetenv(name_.c_str());
        }
    }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

  private:
    std::string name_;
    std::optional<std::string> old_;
};

class LogCapture {
  public:
    LogCapture() {
        previous_ = Log::setSink([this](Log::Level level, const std::string& message) {
            std::lock_guard lock(mutex_);
            lines_.push_back(std::string(Log::levelName(level)) + ": " + message);
        });
    }
    ~LogCapture() { Log::setSink(std::move(previous_)); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<std::string> lines() const {
        std::lock_guard lock(mutex_);
        return lines_;
    }

  private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
    Log::Sink previous_;
};

}  // namespace orv::rt::test
