#pragma once
// A component: the object an application holds while a flow runs. It knows the screen the flow
// started from and the block to call with the outcome.

#include <functional>
#include <memory>

#include "orvviews/widgets/OrvComponentErrorDelegate.h"

class OrvEditComponent : public orv::rt::Object, public OrvComponentErrorDelegate {
    ORV_DECLARE_CLASS(OrvEditComponent)
  public:
    using CallbackBlock = std::function<void(
        const std::shared_ptr<OrvResult>& result, const std::shared_ptr<rt::Error>& error,
        const std::shared_ptr<ui::ViewController>& controller)>;

    // A new component of class T (plain init) with its source controller and callback set.
    template <class T = OrvEditComponent>
    static std::shared_ptr<T> initWithSourceController(ui::ViewController* sourceController,
                                                       CallbackBlock callbackBlock) {
        static_assert(std::is_base_of_v<OrvEditComponent, T>);
        auto component = orv::rt::make<T>();
        component->setSourceController(sourceController);
        component->setCallbackBlock(std::move(callbackBlock));
        return component;
    }

    // Stored for concrete components: push rather than present. Nothing here reads it.
    bool autoPushViewController() const { return autoPushViewController_; }
    void setAutoPushViewController(bool on) { autoPushViewController_ = on; }
    // Dismiss the controller before calling back.
    bool autoDismissWhenCompelted() const { return autoDismissWhenCompelted_; }
    void setAutoDismissWhenCompelted(bool on) { autoDismissWhenCompelted_ = on; }
    // The screen that starts the flow; not owned (the application keeps it alive).
    ui::ViewController* sourceController() const { return sourceController_; }
    void setSourceController(ui::ViewController* controller) { sourceController_ = controller; }
    const CallbackBlock& callbackBlock() const { return callbackBlock_; }
    void setCallbackBlock(CallbackBlock block) { callbackBlock_ = std::move(block); }

    // Builds and shows the flow's controller; concrete components fill it.
    virtual void showComponent() {}

    // The error road: forwards to notifyResult() with the arguments reordered.
    void onComponent(const std::shared_ptr<ui::ViewController>& controller,
                     const std::shared_ptr<OrvResult>& result,
                     const std::shared_ptr<rt::Error>& error) override;

    // Dismisses first (when asked and there is a controller), then calls the block if any. The
    // block stays: a second notification calls it again.
    virtual void notifyResult(const std::shared_ptr<OrvResult>& result,
                              const std::shared_ptr<rt::Error>& error,
                              const std::shared_ptr<ui::ViewController>& controller);

  private:
    bool autoPushViewController_ = false;
    bool autoDismissWhenCompelted_ = false;
    ui::ViewController* sourceController_ = nullptr;
    CallbackBlock callbackBlock_;
};
