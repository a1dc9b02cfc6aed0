#include "frameworks/core/OrvUserDefaults.h"

#include "platform/rt/UserDefaults.h"

void orvSaveKey(const std::string& key, const nlohmann::json& value) {
    orv::rt::UserDefaults::standard().setObject(key, value);
}

nlohmann::json orvLoadForKey(const std::string& key) {
    return orv::rt::UserDefaults::standard().objectForKey(key);
}
