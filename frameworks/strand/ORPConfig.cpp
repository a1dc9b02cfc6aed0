#include "frameworks/strand/ORPConfig.h"

ORV_DEFINE_CLASS(ORPConfig, rt::Object)

std::optional<std::string> ORPConfig::stringForKey(const std::string& key) const {
    auto it = strings_.find(key);
    if (it == strings_.end()) return std::nullopt;
    return it->second;
}
