#pragma once
#include <memory>
#include <vector>

#include "platform/rt/Object.h"

namespace orv::ui {

class Touch;
class Event;
using TouchSet = std::vector<std::shared_ptr<Touch>>;

// Receives touches; views and controllers are responders and live on the main thread.
class Responder : public rt::Object {
    ORV_DECLARE_CLASS(Responder)
public:
    // The next responder up the chain (a view's controller, else its superview), or null.
    virtual Responder* nextResponder() const { return nullptr; }

    // The base forwards each to the next responder, as the platform does.
    virtual void touchesBegan(const TouchSet& touches, Event* event);
    virtual void touchesMoved(const TouchSet& touches, Event* event);
    virtual void touchesEnded(const TouchSet& touches, Event* event);
    virtual void touchesCancelled(const TouchSet& touches, Event* event);

    virtual bool canBecomeFirstResponder() const { return false; }
    virtual bool becomeFirstResponder();
    virtual bool resignFirstResponder();
    bool isFirstResponder() const;

    bool deallocatesOnMainThread() const override { return true; }
};

}  // namespace orv::ui
