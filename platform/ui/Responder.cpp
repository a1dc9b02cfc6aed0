#include "platform/ui/Responder.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Responder, rt::Object)

namespace {

// The one first responder of the application; weak, so a responder that goes away stops being it.
std::weak_ptr<rt::Object>& currentFirstResponder() {
    static std::weak_ptr<rt::Object> current;
    return current;
}

}  // namespace

void Responder::touchesBegan(const TouchSet& touches, Event* event) {
    if (Responder* next = nextResponder()) next->touchesBegan(touches, event);
}

void Responder::touchesMoved(const TouchSet& touches, Event* event) {
    if (Responder* next = nextResponder()) next->touchesMoved(touches, event);
}

void Responder::touchesEnded(const TouchSet& touches, Event* event) {
    if (Responder* next = nextResponder()) next->touchesEnded(touches, event);
}

void Responder::touchesCancelled(const TouchSet& touches, Event* event) {
    if (Responder* next = nextResponder()) next->touchesCancelled(touches, event);
}

bool Responder::becomeFirstResponder() {
    if (isFirstResponder()) return true;
    if (!canBecomeFirstResponder()) return false;
    auto previous = currentFirstResponder().lock();
    if (previous) {
        auto* responder = static_cast<Responder*>(previous.get());
        if (!responder->resignFirstResponder()) return false;
    }
    currentFirstResponder() = weak_from_this();
    return true;
}

bool Responder::resignFirstResponder() {
    if (isFirstResponder()) currentFirstResponder().reset();
    return true;
}

bool Responder::isFirstResponder() const {
    auto current = currentFirstResponder().lock();
    return current && current.get() == this;
}

}  // namespace orv::ui
