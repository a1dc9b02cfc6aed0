#include "platform/rt/NotificationCenter.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace orv::rt {
namespace {

class NotificationCenterTest : public ::testing::Test {
  protected:
    std::shared_ptr<NotificationCenter> center = make<NotificationCenter>();
    std::vector<std::string> heard;
    int a = 0, b = 0, c = 0;  // observers and senders are identities only

    NotificationCenter::Handler note(std::string who) {
        return [this, who](const Notification& n) { heard.push_back(who + ":" + n.name); };
    }
};

TEST_F(NotificationCenterTest, DeliversByNameAndSenderWithUserInfo) {
    center->addObserver(&a, "Show", note("a"));
    center->addObserver(&b, "Show", note("b-from-c"), &c);
    center->addObserver(&c, "", note("c-all"));
    std::string status;
    double height = -1;
    center->addObserver(&a, "Show", [&](const Notification& n) {
        status = n.stringForKey("status");
        height = n.doubleForKey("height");
    });

    center->postNotification("Show", &b, {{"status", std::string("Loading")}, {"height", 216.0}});
    EXPECT_EQ(status, "Loading");
    EXPECT_EQ(height, 216);
    center->postNotification("Hide", &c);
    center->postNotification("Show", &c);

    EXPECT_EQ(heard, (std::vector<std::string>{"a:Show", "c-all:Show", "c-all:Hide", "a:Show",
                                               "b-from-c:Show", "c-all:Show"}));
    EXPECT_EQ(status, "") << "the last post had no user info";
}

TEST_F(NotificationCenterTest, UserInfoCarriesTextsNumbersAndPointers) {
    const Notification n{
        "Touch", &a, {{"status", "plain"}, {"event", static_cast<const void*>(&b)}}};
    EXPECT_EQ(n.stringForKey("status"), "plain");
    ASSERT_NE(n.value<const void*>("event"), nullptr);
    EXPECT_EQ(*n.value<const void*>("event"), &b);
    EXPECT_EQ(n.value<std::string>("event"), nullptr);
    EXPECT_EQ(n.doubleForKey("missing"), 0);
}

TEST_F(NotificationCenterTest, RemovalDuringDeliveryIsSafeAndTakesEffectAtOnce) {
    ObserverToken self;
    self = center->addObserver(&a, "Tick", [&](const Notification& n) {
        heard.push_back("a");
        center->removeObserver(self);
        center->removeObserver(&c);  // later in this same post
    });
    center->addObserver(&b, "Tick", note("b"));
    center->addObserver(&c, "Tick", note("c"));

    center->postNotification("Tick");
    center->postNotification("Tick");
    EXPECT_EQ(heard, (std::vector<std::string>{"a", "b:Tick", "b:Tick"}));
}

TEST_F(NotificationCenterTest, RemoveByNameKeepsTheObserversOtherNames) {
    center->addObserver(&a, "Show", note("a"));
    center->addObserver(&a, "Hide", note("a"));
    center->addObserver(&b, "Show", note("b"));
    center->removeObserver(&a, "Show");
    center->postNotification("Show");
    center->postNotification("Hide");
    center->removeObserver(&a);
    center->postNotification("Hide");
    EXPECT_EQ(heard, (std::vector<std::string>{"b:Show", "a:Hide"}));
    EXPECT_EQ(center->observerCount(), 1u);
}

// Object second among the bases: its address differs from the listener's own.
class Interface {
  public:
    virtual ~Interface() = default;
    int padding = 0;
};
class Listener : public Interface, public Object {
    ORV_DECLARE_CLASS(Listener)
};
ORV_DEFINE_CLASS(Listener, Object)

TEST_F(NotificationCenterTest, AnObjectIsOneIdentityThroughAnyOfItsBases) {
    auto listener = make<Listener>();
    const Object* asObject = listener.get();
    ASSERT_NE(static_cast<const void*>(asObject), static_cast<const void*>(listener.get()));
    center->addObserver(asObject, "Show", note("listener"), listener.get());
    center->postNotification("Show", asObject);
    center->removeObserver(listener.get());
    center->postNotification("Show", asObject);
    EXPECT_EQ(heard, std::vector<std::string>{"listener:Show"});
}

TEST_F(NotificationCenterTest, PostingFromManyThreadsWhileObserversComeAndGo) {
    std::atomic<int> deliveries{0};
    center->addObserver(&a, "Ping", [&](const Notification&) { ++deliveries; });
    std::vector<std::thread> posters;
    for (int t = 0; t < 3; ++t) {
        posters.emplace_back([&] {
            for (int i = 0; i < 500; ++i) center->postNotification("Ping");
        });
    }
    for (int i = 0; i < 500; ++i) {
        auto token = center->addObserver(&b, "Ping", [](const Notification&) {});
        center->removeObserver(token);
    }
    for (auto& poster : posters) poster.join();
    EXPECT_EQ(deliveries, 1500);
    EXPECT_EQ(center->observerCount(), 1u);
}

}  // namespace
}  // namespace orv::rt
