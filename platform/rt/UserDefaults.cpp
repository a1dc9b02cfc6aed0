#include "platform/rt/UserDefaults.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

#include "platform/rt/Log.h"
#include "platform/rt/NoDestructor.h"

namespace orv::rt {

namespace fs = std::filesystem;
using nlohmann::json;

ORV_DEFINE_CLASS(UserDefaults, Object)

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// Writes `text` to `path` so that a reader sees either the old file or the whole new one.
bool writeAtomically(const std::string& path, const std::string& text) {
    std::error_code ec;
    const fs::path target(path);
    if (target.has_parent_path()) fs::create_directories(target.parent_path(), ec);
    std::string temp = path + ".tmp-XXXXXX";
    const int fd = ::mkstemp(temp.data());
    if (fd < 0) return false;
    bool ok = true;
    for (size_t written = 0; ok && written < text.size();) {
        const ssize_t n = ::write(fd, text.data() + written, text.size() - written);
        if (n < 0 && errno == EINTR) continue;
        ok = n > 0;
        if (ok) written += static_cast<size_t>(n);
    }
    ok = ok && ::fsync(fd) == 0;
    ok = (::close(fd) == 0) && ok;
    ok = ok && ::rename(temp.c_str(), path.c_str()) == 0;
    if (!ok) ::unlink(temp.c_str());
    return ok;
}

bool truthy(const json& value) {
    if (value.is_boolean()) return value.get<bool>();
    if (value.is_number()) return value.get<double>() != 0;
    if (!value.is_string()) return false;
    std::string text = value.get<std::string>();
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text == "true" || text == "yes" || text == "1";
}

double number(const json& value) {
    if (value.is_number()) return value.get<double>();
    if (value.is_boolean()) return value.get<bool>() ? 1 : 0;
    if (!value.is_string()) return 0;
    const std::string text = value.get<std::string>();
    char* end = nullptr;
    const double parsed = std::strtod(text.c_str(), &end);
    return end == text.c_str() ? 0 : parsed;
}

}  // namespace

UserDefaults& UserDefaults::standard() {
    static NoDestructor<std::shared_ptr<UserDefaults>> defaults(withPath(defaultPath()));
    return **defaults;
}

void UserDefaults::resetStandardForTesting() {
    UserDefaults& defaults = standard();
    std::lock_guard lock(defaults.mutex_);
    defaults.load(defaultPath());
}

std::shared_ptr<UserDefaults> UserDefaults::withPath(std::string path) {
    return makeWith<UserDefaults>([&path](UserDefaults& defaults) {
        defaults.init();
        std::lock_guard lock(defaults.mutex_);
        defaults.load(std::move(path));
    });
}

std::string UserDefaults::defaultPath() {
    if (auto path = environment("ORV_DEFAULTS_PATH"); !path.empty()) return path;
    std::string config = environment("XDG_CONFIG_HOME");
    if (config.empty()) config = environment("HOME") + "/.config";
    return config + "/orvviews/defaults.json";
}

std::string UserDefaults::path() const {
    std::lock_guard lock(mutex_);
    return path_;
}

void UserDefaults::load(std::string path) {
    path_ = std::move(path);
    values_ = json::object();
    dirty_ = false;
    std::error_code ec;
    if (!fs::exists(path_, ec)) return;
    if (!fs::is_regular_file(path_, ec)) {
        Log::warnf("user defaults: %s is not a file; starting empty", path_.c_str());
        return;
    }
    std::ifstream in(path_, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    if (!in) {
        putAside("it cannot be read");
        return;
    }
    json parsed = json::parse(text.str(), nullptr, /*allow_exceptions=*/false);
    if (!parsed.is_object()) {
        putAside("it is not a JSON object");
        return;
    }
    values_ = std::move(parsed);
}

void UserDefaults::putAside(const std::string& reason) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(
                             std::chrono::system_clock::now().time_since_epoch())
                             .count();
    std::string aside = path_ + ".corrupt-" + std::to_string(seconds);
    std::error_code ec;
    for (int n = 1; fs::exists(aside, ec); ++n) {
        aside = path_ + ".corrupt-" + std::to_string(seconds) + "-" + std::to_string(n);
    }
    if (std::rename(path_.c_str(), aside.c_str()) == 0) {
        Log::warnf("user defaults: %s is unusable (%s); kept as %s, starting empty", path_.c_str(),
                   reason.c_str(), aside.c_str());
    } else {
        Log::warnf(
            "user defaults: %s is unusable (%s) and could not be moved aside (%s); "
            "starting empty",
            path_.c_str(), reason.c_str(), std::strerror(errno));
    }
}

bool UserDefaults::save() {
    const std::string text = values_.dump(2, ' ', false, json::error_handler_t::replace);
    dirty_ = !writeAtomically(path_, text + "\n");
    if (dirty_) Log::warnf("user defaults: could not write %s", path_.c_str());
    return !dirty_;
}

void UserDefaults::setObject(const std::string& key, json value) {
    std::lock_guard lock(mutex_);
    if (value.is_null()) {
        if (values_.erase(key) == 0) return;
    } else {
        values_[key] = std::move(value);
    }
    save();
}

void UserDefaults::removeObjectForKey(const std::string& key) {
    setObject(key, nullptr);
}

json UserDefaults::objectForKey(const std::string& key) const {
    std::lock_guard lock(mutex_);
    auto it = values_.find(key);
    return it == values_.end() ? json() : *it;
}

std::optional<std::string> UserDefaults::stringForKey(const std::string& key) const {
    json value = objectForKey(key);
    if (!value.is_string()) return std::nullopt;
    return value.get<std::string>();
}

json UserDefaults::arrayForKey(const std::string& key) const {
    json value = objectForKey(key);
    return value.is_array() ? value : json::array();
}

std::vector<std::string> UserDefaults::stringArrayForKey(const std::string& key) const {
    std::vector<std::string> strings;
    for (const auto& element : arrayForKey(key)) {
        if (element.is_string()) strings.push_back(element.get<std::string>());
    }
    return strings;
}

bool UserDefaults::boolForKey(const std::string& key) const {
    return truthy(objectForKey(key));
}

long UserDefaults::integerForKey(const std::string& key) const {
    const json value = objectForKey(key);
    if (value.is_number_integer()) return value.get<long>();
    const double n = number(value);
    if (std::isnan(n)) return 0;
    // Out-of-range doubles saturate instead of overflowing the conversion.
    constexpr double kLimit = static_cast<double>(std::numeric_limits<long>::max());
    if (n >= kLimit) return std::numeric_limits<long>::max();
    if (n <= -kLimit) return std::numeric_limits<long>::min();
    return static_cast<long>(n);
}

double UserDefaults::doubleForKey(const std::string& key) const {
    return number(objectForKey(key));
}

bool UserDefaults::synchronize() {
    std::lock_guard lock(mutex_);
    return dirty_ ? save() : true;
}

}  // namespace orv::rt
