#pragma once
#include <any>
#include <map>
#include <string>

#include "platform/rt/Object.h"

namespace orv::rt {

// Extra values of a notification by key: a status text, a keyboard height, an event pointer...
using NotificationUserInfo = std::map<std::string, std::any>;

// Who sent or observes a notification, compared by address. Objects are taken by their
// most-derived address, so a class seen through any of its bases is one identity.
struct Identity {
    Identity() = default;
    Identity(std::nullptr_t) {}
    Identity(const void* pointer) : address(pointer) {}
    Identity(const Object* object)
        : address(object ? dynamic_cast<const void*>(object) : nullptr) {}

    bool operator==(const Identity&) const = default;
    explicit operator bool() const { return address != nullptr; }

    const void* address = nullptr;
};

// A value delivered to observers. The object is an identity only: observers that need the
// sender hold it themselves.
struct Notification {
    std::string name;
    Identity object;
    NotificationUserInfo userInfo;

    // The value under `key` when it holds exactly a T; null otherwise.
    template <class T>
    const T* value(const std::string& key) const {
        auto it = userInfo.find(key);
        return it == userInfo.end() ? nullptr : std::any_cast<T>(&it->second);
    }
    // Text under `key` stored as std::string or const char*; empty otherwise.
    std::string stringForKey(const std::string& key) const;
    // A number under `key` stored as double, float, int or long; 0 otherwise.
    double doubleForKey(const std::string& key) const;
};

}  // namespace orv::rt
