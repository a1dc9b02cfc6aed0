#pragma once
// The top of a view tree: window coordinates are its bounds space. It shows its root
// controller's view filling it, and lays itself out once per turn of the main loop when any of
// its views asks for layout.

#include <memory>

#include "platform/ui/View.h"

namespace orv::ui {

class ViewController;

class Window : public View {
    ORV_DECLARE_CLASS(Window)
  public:
    // A window the size of the main screen.
    void init() override;
    void initWithFrame(const gfx::Rect& frame) override;

    const std::shared_ptr<ViewController>& rootViewController() const {
        return rootViewController_;
    }
    // Installs the controller's view as the first subview, filling the window; on a visible
    // window the old root disappears and the new one appears.
    void setRootViewController(std::shared_ptr<ViewController> controller);

    // Makes this the application's key window and shows it (the root controller appears).
    void makeKeyAndVisible();
    void makeKeyWindow();
    bool isKeyWindow() const;
    bool isVisible() const { return visible_; }

    // Lays out the window on the next turn of the main loop (once, however many views ask).
    void setNeedsLayoutPass();

  private:
    void installRootView();

    std::shared_ptr<ViewController> rootViewController_;
    bool visible_ = false;
    bool layoutPassPending_ = false;
};

}  // namespace orv::ui
