#pragma once
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/rt/Notification.h"
#include "platform/rt/Object.h"

namespace orv::rt {

// Names one registration, for removing exactly that one.
struct ObserverToken {
    uint64_t id = 0;
    explicit operator bool() const { return id != 0; }
};

// Broadcasts named notifications to registered closures. Delivery is synchronous, on the
// posting thread, to the observers registered when the post began; an observer removed while a
// post is under way (by itself or another) is not called after its removal. Thread-safe.
class NotificationCenter : public Object {
    ORV_DECLARE_CLASS(NotificationCenter)
  public:
    using Handler = std::function<void(const Notification&)>;

    static NotificationCenter& defaultCenter();

    // An empty name observes every name; a null object observes every sender.
    ObserverToken addObserver(Identity observer, std::string name, Handler handler,
                              Identity object = nullptr);
    void removeObserver(ObserverToken token);
    // Every registration of the observer.
    void removeObserver(Identity observer);
    // The observer's registrations for that name (and that sender, when one is given).
    void removeObserver(Identity observer, const std::string& name, Identity object = nullptr);

    void postNotification(std::string name, Identity object = nullptr,
                          NotificationUserInfo userInfo = {});
    void postNotification(const Notification& notification);

    size_t observerCount() const;

  private:
    struct Registration {
        uint64_t id;
        Identity observer;
        std::string name;
        Identity object;
        Handler handler;
        std::atomic<bool> active{true};
    };
    void removeWhere(const std::function<bool(const Registration&)>& matches);

    mutable std::mutex mutex_;
    std::vector<std::shared_ptr<Registration>> registrations_;
    uint64_t nextId_ = 1;
};

}  // namespace orv::rt
