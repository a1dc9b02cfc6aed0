#pragma once
// The base of the screens a component shows: a fixed background, the two-step view build that
// all tools follow, and the error road back to the component.

#include <memory>

#include "orvviews/views/OrvViewController.h"
#include "orvviews/widgets/OrvComponentErrorDelegate.h"

class OrvComponentsViewController : public OrvViewController {
    ORV_DECLARE_CLASS(OrvComponentsViewController)
  public:
    const std::weak_ptr<OrvComponentErrorDelegate>& errorDelegate() const { return errorDelegate_; }
    void setErrorDelegate(std::weak_ptr<OrvComponentErrorDelegate> delegate) {
        errorDelegate_ = std::move(delegate);
    }

    // Dark grey background, then buildDefaultStyleView().
    void viewDidLoad() override;
    // A subclass builds its view here and then calls configDefaultStyleView() on it.
    virtual void buildDefaultStyleView() {}
    virtual void configDefaultStyleView(const std::shared_ptr<ui::View>& view) {}

    // From any thread: hops to the main loop, then tells the error delegate, if there is one.
    virtual void notifyError(const std::shared_ptr<rt::Error>& error,
                             const std::shared_ptr<OrvResult>& result);

    void dealloc() override;

  private:
    std::weak_ptr<OrvComponentErrorDelegate> errorDelegate_;
};
