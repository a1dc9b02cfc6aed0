#include "platform/ui/NavigationController.h"

#include <algorithm>

#include "platform/ui/NavigationBar.h"

namespace orv::ui {

ORV_DEFINE_CLASS(NavigationController, ViewController)

namespace {

bool contains(const std::vector<ViewController::Ptr>& list, const ViewController::Ptr& c) {
    return std::find(list.begin(), list.end(), c) != list.end();
}

}  // namespace

void NavigationController::initWithRootViewController(const Ptr& root) {
    init();
    if (root) replaceStack({root}, false);
}

std::shared_ptr<NavigationController> NavigationController::withRootViewController(
    const Ptr& root) {
    return rt::makeWith<NavigationController>(
        [&](NavigationController& nav) { nav.initWithRootViewController(root); });
}

void NavigationController::dealloc() {
    // The children may outlive this container; their views must not stay inside its view.
    for (const Ptr& child : children_) detach(child);
    if (bar_) bar_->setItems(nullptr, nullptr);
    ViewController::dealloc();
}

// --- The stack ----------------------------------------------------------------------------

void NavigationController::setViewControllers(const std::vector<Ptr>& controllers, bool animated) {
    std::vector<Ptr> stack;
    for (const Ptr& c : controllers) {
        if (c && c.get() != this && !contains(stack, c)) stack.push_back(c);
    }
    replaceStack(std::move(stack), animated);
}

ViewController::Ptr NavigationController::topViewController() const {
    return children_.empty() ? nullptr : children_.back();
}

ViewController::Ptr NavigationController::visibleViewController() const {
    if (Ptr presented = presentedViewController()) return presented;
    return topViewController();
}

void NavigationController::pushViewController(const Ptr& controller, bool animated) {
    if (!controller || controller.get() == this || contains(children_, controller)) return;
    std::vector<Ptr> stack = children_;
    stack.push_back(controller);
    replaceStack(std::move(stack), animated);
}

ViewController::Ptr NavigationController::popViewControllerAnimated(bool animated) {
    if (children_.size() < 2) return nullptr;
    return popToIndex(children_.size() - 2, animated).back();
}

std::vector<ViewController::Ptr> NavigationController::popToViewController(const Ptr& controller,
                                                                           bool animated) {
    auto it = std::find(children_.begin(), children_.end(), controller);
    if (it == children_.end()) return {};
    return popToIndex(static_cast<size_t>(it - children_.begin()), animated);
}

std::vector<ViewController::Ptr> NavigationController::popToRootViewControllerAnimated(
    bool animated) {
    if (children_.empty()) return {};
    return popToIndex(0, animated);
}

std::vector<ViewController::Ptr> NavigationController::popToIndex(size_t index, bool animated) {
    std::vector<Ptr> popped(children_.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                            children_.end());
    if (popped.empty()) return popped;
    replaceStack(std::vector<Ptr>(children_.begin(),
                                  children_.begin() + static_cast<std::ptrdiff_t>(index) + 1),
                 animated);
    return popped;
}

void NavigationController::replaceStack(std::vector<Ptr> stack, bool animated) {
    const std::vector<Ptr> old = children_;
    const Ptr from = old.empty() ? nullptr : old.back();
    const Ptr to = stack.empty() ? nullptr : stack.back();

    for (const Ptr& c : stack) {
        if (c->parent_ != this) c->removeFromParentViewController();
    }
    children_ = std::move(stack);
    for (const Ptr& c : children_) c->parent_ = this;

    std::vector<Ptr> dropped;
    for (const Ptr& c : old) {
        if (contains(children_, c)) continue;
        dropped.push_back(c);
        // The leaving top stays in place (and keeps its parent) until the transition ends.
        if (c != from || !isViewLoaded()) detach(c);
    }
    updateNavigationBar();
    if (!isViewLoaded() || from == to) {
        releaseLater(std::move(dropped));
        return;
    }

    installTopView(to, from, !from || contains(children_, from));
    const bool onScreen = isShown();
    if (onScreen) {
        if (from) from->beginAppearanceTransition(false, animated);
        if (to) to->beginAppearanceTransition(true, animated);
    }
    runTransition(animated && onScreen, [this, from, to, onScreen, dropped = std::move(dropped)] {
        finishStackChange(from, to, onScreen, dropped);
    });
}

void NavigationController::installTopView(const Ptr& top, const Ptr& previous, bool above) {
    if (!top) return;
    View& container = *viewIfLoaded();
    const View::Ptr& shown = top->view();
    shown->setFrame(container.bounds());
    shown->setAutoresizingMask(AutoresizingFlexibleWidth | AutoresizingFlexibleHeight);

    const View* previousView = previous ? previous->viewIfLoaded().get() : nullptr;
    if (!above && previousView && previousView->superview() == &container) {
        container.insertSubviewBelow(shown, previousView);
    } else if (bar_ && bar_->superview() == &container) {
        container.insertSubviewBelow(shown, bar_.get());
    } else {
        container.addSubview(shown);
    }
}

void NavigationController::finishStackChange(const Ptr& from, const Ptr& to, bool onScreen,
                                             std::vector<Ptr> dropped) {
    // A newer change may have brought `from` back on top in the meantime.
    if (from && from != topViewController()) {
        if (View* old = from->viewIfLoaded().get(); old && old->superview() == viewIfLoaded().get())
            old->removeFromSuperview();
        if (!contains(children_, from) && from->parent_ == this) from->parent_ = nullptr;
    }
    if (onScreen) {
        if (from) from->endAppearanceTransition();
        if (to) to->endAppearanceTransition();
    }
    releaseLater(std::move(dropped));
}

void NavigationController::detach(const Ptr& controller) {
    if (View* v = controller->viewIfLoaded().get();
        v && isViewLoaded() && v->superview() == viewIfLoaded().get())
        v->removeFromSuperview();
    if (controller->parent_ == this) controller->parent_ = nullptr;
}

void NavigationController::didRemoveChildViewController(const Ptr& child) {
    // Taken off the stack behind our back: what shows must still be the top of the stack.
    const bool wasShown = isViewLoaded() && child->isViewLoaded() &&
                          child->viewIfLoaded()->superview() == viewIfLoaded().get();
    detach(child);
    if (wasShown) installTopView(topViewController(), nullptr, true);
    updateNavigationBar();
}

// --- View and bar -------------------------------------------------------------------------

void NavigationController::viewDidLoad() {
    ViewController::viewDidLoad();
    View& container = *viewIfLoaded();
    const gfx::Rect bounds = container.bounds();
    bar_ = makeView<NavigationBar>(gfx::Rect(0, 0, bounds.size.width, kNavigationBarHeight));
    bar_->setAutoresizingMask(AutoresizingFlexibleWidth | AutoresizingFlexibleBottomMargin);
    bar_->setBackAction([weak = weakSelf<NavigationController>()] {
        if (auto nav = weak.lock()) nav->popViewControllerAnimated(true);
    });
    container.addSubview(bar_);
    installTopView(topViewController(), nullptr, true);
    updateNavigationBar();
}

void NavigationController::setNavigationBarHidden(bool hidden, bool animated) {
    navigationBarHidden_ = hidden;
    updateNavigationBar();
}

void NavigationController::updateNavigationBar() {
    if (!bar_) return;
    bar_->setHidden(navigationBarHidden_);
    const size_t n = children_.size();
    bar_->setItems(n > 0 ? children_[n - 1]->navigationItem() : nullptr,
                   n > 1 ? children_[n - 2]->navigationItem() : nullptr);
}

ViewController* NavigationController::childViewControllerForStatusBarHidden() const {
    return topViewController().get();
}

std::vector<ViewController::Ptr> NavigationController::childrenForAppearance() const {
    if (Ptr top = topViewController()) return {top};
    return {};
}

}  // namespace orv::ui
