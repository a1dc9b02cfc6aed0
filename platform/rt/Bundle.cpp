#include "platform/rt/Bundle.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "platform/rt/Log.h"
#include "platform/rt/NoDestructor.h"

#ifndef ORV_SOURCE_RESOURCES
#define ORV_SOURCE_RESOURCES "resources"
#endif

namespace orv::rt {

namespace fs = std::filesystem;

ORV_DEFINE_CLASS(Bundle, Object)

namespace {

std::string mainResourcePath() {
    const char* path = std::getenv("ORV_RESOURCES");
    return path && *path ? path : ORV_SOURCE_RESOURCES;
}

}  // namespace

Bundle& Bundle::main() {
    static NoDestructor<std::shared_ptr<Bundle>> bundle([] {
        auto made = withResourcePath(mainResourcePath());
        made->followsEnvironment_ = true;
        return made;
    }());
    return **bundle;
}

std::shared_ptr<Bundle> Bundle::withResourcePath(std::string resourcePath) {
    return makeWith<Bundle>([&resourcePath](Bundle& bundle) {
        bundle.init();
        bundle.resourcePath_ = std::move(resourcePath);
        bundle.language_ = languageFromEnvironment();
    });
}

std::string Bundle::languageFromEnvironment() {
    for (const char* name : {"ORV_LOCALE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (!value || !*value) continue;
        return std::string_view(value).starts_with("en") ? "en" : "zh-Hans";
    }
    return "zh-Hans";
}

std::string Bundle::resourcePath() const {
    std::lock_guard lock(mutex_);
    return resourcePath_;
}

std::string Bundle::language() const {
    std::lock_guard lock(mutex_);
    return language_;
}

std::optional<std::string> Bundle::pathForResource(const std::string& name, const std::string& type,
                                                   const std::string& directory) const {
    if (name.empty()) return std::nullopt;
    std::string file = name;
    if (!type.empty()) file += type.front() == '.' ? type : "." + type;
    fs::path path = resourcePath();
    if (!directory.empty()) path /= directory;
    path /= file;
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return std::nullopt;
    return path.string();
}

std::string Bundle::localizedStringForKey(const std::string& key, const std::string& value,
                                          const std::string& table) const {
    std::lock_guard lock(mutex_);
    const Table& strings = tableNamed(table.empty() ? "Localizable" : table);
    if (auto it = strings.find(key); it != strings.end()) return it->second;
    return value.empty() ? key : value;
}

void Bundle::reloadForTesting() {
    std::lock_guard lock(mutex_);
    if (followsEnvironment_) resourcePath_ = mainResourcePath();
    language_ = languageFromEnvironment();
    tables_.clear();
}

const Bundle::Table& Bundle::tableNamed(const std::string& table) const {
    auto it = tables_.find(table);
    if (it == tables_.end()) it = tables_.emplace(table, loadTable(table)).first;
    return it->second;
}

Bundle::Table Bundle::loadTable(const std::string& table) const {
    const fs::path path = fs::path(resourcePath_) / "strings" / language_ / (table + ".json");
    std::error_code ec;
    if (!fs::exists(path, ec)) return {};
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    const auto parsed = nlohmann::json::parse(text.str(), nullptr, /*allow_exceptions=*/false);
    if (!in || !parsed.is_object()) {
        Log::warnf("strings: %s is not a JSON object of texts; using the built-in texts",
                   path.c_str());
        return {};
    }
    Table strings;
    for (const auto& [key, entry] : parsed.items()) {
        if (entry.is_string()) strings.emplace(key, entry.get<std::string>());
    }
    return strings;
}

}  // namespace orv::rt
