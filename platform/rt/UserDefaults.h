#pragma once
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/rt/Object.h"

namespace orv::rt {

// Small settings that survive the process: a JSON object of key → value, kept in one file and
// rewritten atomically after every change. A file that cannot be read as such an object is put
// aside (renamed "<path>.corrupt-<seconds>") and the store starts empty. Thread-safe.
class UserDefaults : public Object {
    ORV_DECLARE_CLASS(UserDefaults)
  public:
    // The process's store at defaultPath().
    static UserDefaults& standard();
    // Makes standard() read again from defaultPath() (which follows the environment).
    static void resetStandardForTesting();
    // A store over its own file.
    static std::shared_ptr<UserDefaults> withPath(std::string path);
    // $ORV_DEFAULTS_PATH, else $XDG_CONFIG_HOME/orvviews/defaults.json, else
    // ~/.config/orvviews/defaults.json.
    static std::string defaultPath();

    std::string path() const;

    // A null value removes the key.
    void setObject(const std::string& key, nlohmann::json value);
    void removeObjectForKey(const std::string& key);
    // Null when absent.
    nlohmann::json objectForKey(const std::string& key) const;

    // Absent or not a string: nullopt.
    std::optional<std::string> stringForKey(const std::string& key) const;
    // The value when it is an array, else an empty array.
    nlohmann::json arrayForKey(const std::string& key) const;
    // The string elements of an array value, in order; other elements are skipped.
    std::vector<std::string> stringArrayForKey(const std::string& key) const;
    // Booleans, numbers (non-zero) and the strings "true", "yes", "1" (any case) read as true.
    bool boolForKey(const std::string& key) const;
    // Numbers (truncated), booleans and numeric strings; anything else reads as 0.
    long integerForKey(const std::string& key) const;
    double doubleForKey(const std::string& key) const;

    // Writes the file if an earlier write failed; true when the file holds the current values.
    bool synchronize();

  private:
    void load(std::string path);  // with mutex_ held
    bool save();                  // with mutex_ held
    void putAside(const std::string& reason);

    mutable std::mutex mutex_;
    std::string path_;
    nlohmann::json values_ = nlohmann::json::object();
    bool dirty_ = false;
};

}  // namespace orv::rt
