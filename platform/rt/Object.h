#pragma once
// The object model every class of the system stands on.
//
// Objects are made in two phases and torn down in two phases, the way the platform our
// interfaces come from does it:
//   make:    a constructor that does nothing observable, then the virtual init() chain
//            (each override calls its base first) on an object already owned by a shared_ptr,
//            so init() may hand out shared_from_this().
//   release: when the last strong reference goes, the virtual dealloc() chain runs (each
//            override calls its base last) while the whole object is still alive, so a base's
//            dealloc() reaches a subclass's hooks; only then is the C++ object deleted.
//
// Classes are also values: each class registers an rt::Class (name, base, factory, protocols)
// with one macro pair, ORV_DECLARE_CLASS in the class body and ORV_DEFINE_CLASS in its source.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orv::rt {

class Object;
class Class;

// A named interface. Protocol classes (abstract C++ classes) declare theirs with
// ORV_DECLARE_PROTOCOL(Name); classes list the protocols they conform to in ORV_DEFINE_CLASS.
class Protocol {
  public:
    explicit Protocol(std::string name) : name_(std::move(name)) {}
    const std::string& name() const { return name_; }

  private:
    std::string name_;
};

class Class {
  public:
    using Factory = std::shared_ptr<Object> (*)();

    Class(std::string name, const Class* base, Factory factory,
          std::vector<const Protocol*> protocols);

    const std::string& name() const { return name_; }
    const Class* base() const { return base_; }
    // True when this class is `other` or inherits from it (the platform's isSubclassOfClass).
    bool isSubclassOf(const Class* other) const;
    // True when this class or one of its bases lists the protocol.
    bool conformsTo(const Protocol* protocol) const;
    // A new instance through the two-phase path; null for abstract classes.
    std::shared_ptr<Object> instantiate() const;
    bool isAbstract() const { return factory_ == nullptr; }

    // Every registered class by name; null when no class of that name was registered.
    static const Class* named(std::string_view name);

  private:
    std::string name_;
    const Class* base_;
    Factory factory_;
    std::vector<const Protocol*> protocols_;
};

class Object : public std::enable_shared_from_this<Object> {
  public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    // Second phase of creation. Overrides call the base first.
    virtual void init() {}
    // First phase of destruction, with the object whole. Overrides call the base last.
    virtual void dealloc() {}

    static const Class* staticClass();
    virtual const Class* getClass() const;

    const std::string& className() const { return getClass()->name(); }
    bool isKindOfClass(const Class* cls) const { return getClass()->isSubclassOf(cls); }
    bool conformsToProtocol(const Protocol* p) const { return getClass()->conformsTo(p); }
    // "<ClassName: 0x...>", the form the log lines and error texts print objects in.
    virtual std::string description() const;

    // Raises rt::Exception with the reason; nothing in the system catches it.
    [[noreturn]] void orvThrowWithReason(const std::string& reason) const;

    // Objects that belong to the main thread (views, controllers) are deallocated there even
    // when their last reference goes on another thread.
    virtual bool deallocatesOnMainThread() const { return false; }

    template <class T = Object>
    std::shared_ptr<T> self() {
        return std::static_pointer_cast<T>(shared_from_this());
    }
    template <class T = Object>
    std::shared_ptr<const T> self() const {
        return std::static_pointer_cast<const T>(shared_from_this());
    }
    template <class T = Object>
    std::weak_ptr<T> weakSelf() {
        return self<T>();
    }
};

namespace detail {
void destroy(Object* object);  // dealloc() chain, then delete; on the main thread when asked
struct Deleter {
    void operator()(Object* object) const { destroy(object); }
};
void registerClass(const Class* cls);
}  // namespace detail

// Makes an object: constructor, shared ownership, then init().
template <class T>
std::shared_ptr<T> make() {
    std::shared_ptr<T> object(new T(), detail::Deleter{});
    object->init();
    return object;
}

// Makes an object whose first initialiser is not plain init() (initWithFrame: and the like):
// constructor, shared ownership, then `initializer(object)`.
template <class T, class F>
std::shared_ptr<T> makeWith(F&& initializer) {
    std::shared_ptr<T> object(new T(), detail::Deleter{});
    initializer(*object);
    return object;
}

template <class T>
std::shared_ptr<Object> factoryFor() {
    if constexpr (std::is_abstract_v<T> || !std::is_default_constructible_v<T>) {
        return nullptr;
    } else {
        return make<T>();
    }
}

// The factory a class registers: null for classes that cannot be made (abstract ones, or those
// without a default constructor), which is what Class::isAbstract() reports.
template <class T>
constexpr Class::Factory factoryPointerFor() {
    if constexpr (std::is_abstract_v<T> || !std::is_default_constructible_v<T>) {
        return nullptr;
    } else {
        return &factoryFor<T>;
    }
}

template <class T>
std::shared_ptr<T> cast(const std::shared_ptr<Object>& object) {
    return std::dynamic_pointer_cast<T>(object);
}

}  // namespace orv::rt

// In the class body (public section).
#define ORV_DECLARE_CLASS(T)                           \
  public:                                              \
    static const ::orv::rt::Class* staticClass();      \
    const ::orv::rt::Class* getClass() const override; \
                                                       \
  private:

// In the body of a protocol (an abstract interface class).
#define ORV_DECLARE_PROTOCOL(P)                        \
  public:                                              \
    static const ::orv::rt::Protocol* protocol() {     \
        static const ::orv::rt::Protocol instance(#P); \
        return &instance;                              \
    }

// In the class's source file: ORV_DEFINE_CLASS(T, Base) or ORV_DEFINE_CLASS(T, Base, ProtoA, ...).
#define ORV_DEFINE_CLASS(T, Base, ...)                                                           \
    const ::orv::rt::Class* T::staticClass() {                                                   \
        static const ::orv::rt::Class* cls = [] {                                                \
            static_assert(std::is_base_of_v<Base, T>, #T " must derive from " #Base);            \
            auto* c =                                                                            \
                new ::orv::rt::Class(#T, Base::staticClass(), ::orv::rt::factoryPointerFor<T>(), \
                                     ::orv::rt::detail::protocolsOf<T, ##__VA_ARGS__>());        \
            ::orv::rt::detail::registerClass(c);                                                 \
            return c;                                                                            \
        }();                                                                                     \
        return cls;                                                                              \
    }                                                                                            \
    const ::orv::rt::Class* T::getClass() const {                                                \
        return staticClass();                                                                    \
    }                                                                                            \
    [[maybe_unused]] static const ::orv::rt::Class* const orvClassRegistration_##T =             \
        T::staticClass();

namespace orv::rt::detail {
template <class T, class... Protocols>
std::vector<const Protocol*> protocolsOf() {
    static_assert((std::is_base_of_v<Protocols, T> && ...),
                  "a class can only list protocols it derives from");
    return {Protocols::protocol()...};
}
}  // namespace orv::rt::detail
