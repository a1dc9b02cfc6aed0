#include "platform/rt/Object.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/rt/Exception.h"
#include "platform/rt/RunLoop.h"

// A named namespace: the registry keeps every class, including ones no test instantiates.
namespace orv::rt::object_test {

std::vector<std::string> journal;

class Drawable {
    ORV_DECLARE_PROTOCOL(Drawable)
  public:
    virtual ~Drawable() = default;
    virtual void draw() = 0;
};

class Closable {
    ORV_DECLARE_PROTOCOL(Closable)
  public:
    virtual ~Closable() = default;
};

class Shape : public Object, public Drawable {
    ORV_DECLARE_CLASS(Shape)
  public:
    void init() override {
        Object::init();
        journal.push_back("Shape.init");
    }
    void dealloc() override {
        willDestroy();
        journal.push_back("Shape.dealloc");
        Object::dealloc();
    }
    virtual void willDestroy() { journal.push_back("Shape.willDestroy"); }
};
ORV_DEFINE_CLASS(Shape, Object, Drawable)

class Circle : public Shape {
    ORV_DECLARE_CLASS(Circle)
  public:
    std::string part;
    void init() override {
        Shape::init();
        part = "rim";
        journal.push_back("Circle.init");
    }
    void dealloc() override {
        journal.push_back("Circle.dealloc");
        Shape::dealloc();
    }
    // Reached from the base's dealloc while the subclass's members are still there.
    void willDestroy() override { journal.push_back("Circle.willDestroy:" + part); }
    void draw() override {}
};
ORV_DEFINE_CLASS(Circle, Shape)

class Lid : public Circle, public Closable {
    ORV_DECLARE_CLASS(Lid)
};
ORV_DEFINE_CLASS(Lid, Circle, Closable)

// Abstract: draw() stays pure.
class Blank : public Shape {
    ORV_DECLARE_CLASS(Blank)
};
ORV_DEFINE_CLASS(Blank, Shape)

class MainBound : public Object {
    ORV_DECLARE_CLASS(MainBound)
  public:
    std::optional<bool>* onMain = nullptr;  // set by dealloc: was it the main thread?
    bool deallocatesOnMainThread() const override { return true; }
    void dealloc() override {
        *onMain = RunLoop::isMainThread();
        Object::dealloc();
    }
};
ORV_DEFINE_CLASS(MainBound, Object)

TEST(ObjectTest, InitRunsBaseFirstAndDeallocReachesSubclassHooksBeforeTheBaseFinishes) {
    journal.clear();
    auto circle = make<Circle>();
    EXPECT_EQ(journal, (std::vector<std::string>{"Shape.init", "Circle.init"}));
    journal.clear();
    circle.reset();
    EXPECT_EQ(journal, (std::vector<std::string>{"Circle.dealloc", "Circle.willDestroy:rim",
                                                 "Shape.dealloc"}));
}

TEST(ObjectTest, ClassesAnswerKindProtocolAndName) {
    auto lid = make<Lid>();
    EXPECT_TRUE(lid->isKindOfClass(Circle::staticClass()));
    EXPECT_TRUE(lid->isKindOfClass(Object::staticClass()));
    EXPECT_FALSE(make<Circle>()->isKindOfClass(Lid::staticClass()));
    EXPECT_TRUE(lid->conformsToProtocol(Drawable::protocol())) << "inherited from Shape";
    EXPECT_TRUE(lid->conformsToProtocol(Closable::protocol()));
    EXPECT_FALSE(make<Circle>()->conformsToProtocol(Closable::protocol()));
    EXPECT_EQ(lid->className(), "Lid");
    EXPECT_EQ(Class::named("Circle"), Circle::staticClass());
    EXPECT_EQ(Class::named("NoSuchClass"), nullptr);
    EXPECT_EQ(lid->description().rfind("<Lid: 0x", 0), 0u) << lid->description();
}

TEST(ObjectTest, InstantiateRunsTheTwoPhasePathAndGivesNullForAbstractClasses) {
    journal.clear();
    auto made = Class::named("Circle")->instantiate();
    ASSERT_NE(cast<Circle>(made), nullptr);
    EXPECT_EQ(cast<Circle>(made)->part, "rim");
    EXPECT_TRUE(Blank::staticClass()->isAbstract());
    EXPECT_EQ(Blank::staticClass()->instantiate(), nullptr);
}

TEST(ObjectTest, WeakDelegatesExpireWithTheirObject) {
    auto circle = make<Circle>();
    std::weak_ptr<Drawable> delegate = circle;
    std::weak_ptr<Circle> self = circle->weakSelf<Circle>();
    EXPECT_EQ(self.lock(), circle);
    circle.reset();
    EXPECT_TRUE(delegate.expired());
    EXPECT_TRUE(self.expired());
}

TEST(ObjectTest, ThrowRaisesTheReason) {
    auto circle = make<Circle>();
    try {
        circle->orvThrowWithReason("You need overwrite it");
        FAIL() << "no exception";
    } catch (const Exception& e) {
        EXPECT_EQ(e.reason(), "You need overwrite it");
    }
}

TEST(ObjectTest, MainThreadObjectsReleasedOnAWorkerDeallocOnTheMainThread) {
    std::optional<bool> onMain;
    auto object = make<MainBound>();
    object->onMain = &onMain;
    std::thread worker([last = std::move(object)]() mutable { last.reset(); });
    worker.join();
    EXPECT_FALSE(onMain.has_value()) << "dealloc must wait for the main thread";
    RunLoop::main().runPending();
    ASSERT_TRUE(onMain.has_value());
    EXPECT_TRUE(*onMain);
}

}  // namespace orv::rt::object_test
