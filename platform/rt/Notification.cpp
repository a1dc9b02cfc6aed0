#include "platform/rt/Notification.h"

namespace orv::rt {

std::string Notification::stringForKey(const std::string& key) const {
    if (auto* text = value<std::string>(key)) return *text;
    if (auto* text = value<const char*>(key); text && *text) return *text;
    return {};
}

double Notification::doubleForKey(const std::string& key) const {
    if (auto* number = value<double>(key)) return *number;
    if (auto* number = value<float>(key)) return *number;
    if (auto* number = value<int>(key)) return *number;
    if (auto* number = value<long>(key)) return static_cast<double>(*number);
    return 0;
}

}  // namespace orv::rt
