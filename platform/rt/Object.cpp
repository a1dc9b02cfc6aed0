#include "platform/rt/Object.h"

#include <cstdio>
#include <mutex>
#include <unordered_map>

#include "platform/rt/Exception.h"
#include "platform/rt/RunLoop.h"

namespace orv::rt {

namespace {

std::mutex& registryMutex() {
    static std::mutex m;
    return m;
}

std::unordered_map<std::string, const Class*>& registry() {
    static std::unordered_map<std::string, const Class*> r;
    return r;
}

}  // namespace

Class::Class(std::string name, const Class* base, Factory factory,
             std::vector<const Protocol*> protocols)
    : name_(std::move(name)), base_(base), factory_(factory), protocols_(std::move(protocols)) {}

bool Class::isSubclassOf(const Class* other) const {
    for (const Class* c = this; c != nullptr; c = c->base_) {
        if (c == other) return true;
    }
    return false;
}

bool Class::conformsTo(const Protocol* protocol) const {
    for (const Class* c = this; c != nullptr; c = c->base_) {
        for (const Protocol* p : c->protocols_) {
            if (p == protocol) return true;
        }
    }
    return false;
}

std::shared_ptr<Object> Class::instantiate() const {
    return factory_ ? factory_() : nullptr;
}

const Class* Class::named(std::string_view name) {
    std::lock_guard lock(registryMutex());
    auto it = registry().find(std::string(name));
    return it == registry().end() ? nullptr : it->second;
}

void detail::registerClass(const Class* cls) {
    std::lock_guard lock(registryMutex());
    registry().emplace(cls->name(), cls);
}

const Class* Object::staticClass() {
    static const Class* cls = [] {
        auto* c = new Class("Object", nullptr, &factoryFor<Object>, {});
        detail::registerClass(c);
        return c;
    }();
    return cls;
}

const Class* Object::getClass() const {
    return staticClass();
}

std::string Object::description() const {
    char address[32];
    std::snprintf(address, sizeof address, "%p", static_cast<const void*>(this));
    return "<" + className() + ": " + address + ">";
}

void Object::orvThrowWithReason(const std::string& reason) const {
    throw Exception(reason);
}

void detail::destroy(Object* object) {
    auto finish = [object] {
        object->dealloc();
        delete object;
    };
    if (object->deallocatesOnMainThread() && RunLoop::hasMain() && !RunLoop::isMainThread()) {
        RunLoop::main().post(finish);
        return;
    }
    finish();
}

}  // namespace orv::rt
