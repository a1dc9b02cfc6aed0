#include "platform/rt/NotificationCenter.h"

#include <algorithm>

#include "platform/rt/NoDestructor.h"

namespace orv::rt {

ORV_DEFINE_CLASS(NotificationCenter, Object)

NotificationCenter& NotificationCenter::defaultCenter() {
    static NoDestructor<std::shared_ptr<NotificationCenter>> center(make<NotificationCenter>());
    return **center;
}

ObserverToken NotificationCenter::addObserver(Identity observer, std::string name, Handler handler,
                                              Identity object) {
    auto registration = std::make_shared<Registration>();
    registration->observer = observer;
    registration->name = std::move(name);
    registration->object = object;
    registration->handler = std::move(handler);
    std::lock_guard lock(mutex_);
    registration->id = nextId_++;
    registrations_.push_back(registration);
    return ObserverToken{registration->id};
}

void NotificationCenter::removeObserver(ObserverToken token) {
    removeWhere([&](const Registration& r) { return r.id == token.id; });
}

void NotificationCenter::removeObserver(Identity observer) {
    removeWhere([&](const Registration& r) { return r.observer == observer; });
}

void NotificationCenter::removeObserver(Identity observer, const std::string& name,
                                        Identity object) {
    removeWhere([&](const Registration& r) {
        return r.observer == observer && (name.empty() || r.name == name) &&
               (!object || r.object == object);
    });
}

void NotificationCenter::removeWhere(const std::function<bool(const Registration&)>& matches) {
    // Handlers are released outside the lock: their captures may remove observers in turn.
    std::vector<std::shared_ptr<Registration>> removed;
    {
        std::lock_guard lock(mutex_);
        auto firstRemoved = std::stable_partition(registrations_.begin(), registrations_.end(),
                                                  [&](const auto& r) { return !matches(*r); });
        for (auto it = firstRemoved; it != registrations_.end(); ++it) {
            (*it)->active = false;
            removed.push_back(std::move(*it));
        }
        registrations_.erase(firstRemoved, registrations_.end());
    }
}

void NotificationCenter::postNotification(std::string name, Identity object,
                                          NotificationUserInfo userInfo) {
    postNotification(Notification{std::move(name), object, std::move(userInfo)});
}

void NotificationCenter::postNotification(const Notification& notification) {
    std::vector<std::shared_ptr<Registration>> receivers;
    {
        std::lock_guard lock(mutex_);
        for (const auto& r : registrations_) {
            if ((r->name.empty() || r->name == notification.name) &&
                (!r->object || r->object == notification.object)) {
                receivers.push_back(r);
            }
        }
    }
    for (const auto& receiver : receivers) {
        if (receiver->active) receiver->handler(notification);
    }
}

size_t NotificationCenter::observerCount() const {
    std::lock_guard lock(mutex_);
    return registrations_.size();
}

}  // namespace orv::rt
