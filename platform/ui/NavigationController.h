#pragma once
// A stack of controllers of which the top one is shown, filling the container's view, with a
// navigation bar above it showing the top controller's navigation item.
//
// The stack is the container's children: pushing adds a child, popping removes one. Appearance
// calls go to the top controllers that change, and only while the container itself is shown; a
// container that is not on screen swaps its children silently, and its top controller hears
// about appearing together with the container. Popped controllers are released on a later turn
// of the main loop (see ViewController for the timing of transitions).

#include <memory>
#include <vector>

#include "platform/ui/ViewController.h"

namespace orv::ui {

class NavigationBar;

class NavigationController : public ViewController {
    ORV_DECLARE_CLASS(NavigationController)
  public:
    static constexpr double kNavigationBarHeight = 44;

    void initWithRootViewController(const Ptr& root);
    static std::shared_ptr<NavigationController> withRootViewController(const Ptr& root);
    void dealloc() override;

    const std::vector<Ptr>& viewControllers() const { return childViewControllers(); }
    // Controllers already elsewhere leave their old parent; a controller listed twice keeps its
    // first place.
    virtual void setViewControllers(const std::vector<Ptr>& controllers, bool animated);
    Ptr topViewController() const;
    // What is on screen: the top controller, or what it (or this container) presents.
    Ptr visibleViewController() const;

    // Pushing a controller that is already on the stack, or null, does nothing.
    virtual void pushViewController(const Ptr& controller, bool animated);
    // The popped controller, or null when only the root is left.
    virtual Ptr popViewControllerAnimated(bool animated);
    // The controllers taken off above `controller`, bottom first; nothing when it is not on the
    // stack or already on top.
    virtual std::vector<Ptr> popToViewController(const Ptr& controller, bool animated);
    virtual std::vector<Ptr> popToRootViewControllerAnimated(bool animated);

    bool isNavigationBarHidden() const { return navigationBarHidden_; }
    virtual void setNavigationBarHidden(bool hidden, bool animated);
    // The bar view, made with the container's view; null before it is loaded.
    NavigationBar* navigationBar() const { return bar_.get(); }

    void viewDidLoad() override;
    ViewController* childViewControllerForStatusBarHidden() const override;

  protected:
    std::vector<Ptr> childrenForAppearance() const override;
    void didRemoveChildViewController(const Ptr& child) override;

  private:
    // Every stack change goes through here: it installs the new top's view, sends the
    // appearance calls, and lets go of what left the stack.
    void replaceStack(std::vector<Ptr> stack, bool animated);
    std::vector<Ptr> popToIndex(size_t index, bool animated);
    void installTopView(const Ptr& top, const Ptr& previous, bool above);
    void finishStackChange(const Ptr& from, const Ptr& to, bool onScreen, std::vector<Ptr> dropped);
    void detach(const Ptr& controller);
    void updateNavigationBar();

    bool navigationBarHidden_ = false;
    std::shared_ptr<NavigationBar> bar_;
};

}  // namespace orv::ui
