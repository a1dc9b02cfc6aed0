#include "platform/ui/ViewController.h"

#include <algorithm>
#include <utility>

#include "platform/rt/RunLoop.h"
#include "platform/ui/Application.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/Screen.h"
#include "platform/ui/Window.h"

namespace orv::ui {

ORV_DEFINE_CLASS(ViewController, Responder)

void ViewController::dealloc() {
    // Whatever still points here must stop doing so: the root view, the children, and what this
    // controller presents. Nothing here may reach self(): the last reference is already gone.
    if (presented_) {
        presented_->presenting_ = nullptr;
        if (View* shown = presented_->viewIfLoaded().get()) shown->removeFromSuperview();
        presented_.reset();
    }
    for (const Ptr& child : children_) child->parent_ = nullptr;
    children_.clear();
    if (view_ && view_->viewController() == this) view_->setViewController(nullptr);
    Responder::dealloc();
}

// --- View loading -------------------------------------------------------------------------

const View::Ptr& ViewController::view() {
    if (!view_) {
        loadView();
        // An override that forgets to set a view still leaves the controller usable.
        if (!view_) ViewController::loadView();
        viewDidLoad();
    }
    return view_;
}

void ViewController::setView(View::Ptr view) {
    if (view_ == view) return;
    if (view_ && view_->viewController() == this) view_->setViewController(nullptr);
    view_ = std::move(view);
    if (view_) view_->setViewController(this);
}

void ViewController::loadView() {
    setView(makeView<View>(Screen::main().bounds()));
}

void ViewController::setTitle(std::optional<std::string> title) {
    title_ = std::move(title);
    if (navigationItem_) navigationItem_->setTitle(title_);
}

// --- Appearance ---------------------------------------------------------------------------

void ViewController::beginAppearanceTransition(bool isAppearing, bool animated) {
    if (isAppearing) {
        if (appearance_ == Appearance::Appeared || appearance_ == Appearance::Appearing) return;
        view();  // viewDidLoad always comes before viewWillAppear
        appearance_ = Appearance::Appearing;
        appearanceAnimated_ = animated;
        viewWillAppear(animated);
    } else {
        if (appearance_ == Appearance::Disappeared || appearance_ == Appearance::Disappearing)
            return;
        appearance_ = Appearance::Disappearing;
        appearanceAnimated_ = animated;
        viewWillDisappear(animated);
    }
    for (const Ptr& child : childrenForAppearance())
        child->beginAppearanceTransition(isAppearing, animated);
}

void ViewController::endAppearanceTransition() {
    if (appearance_ == Appearance::Appearing) {
        appearance_ = Appearance::Appeared;
        viewDidAppear(appearanceAnimated_);
    } else if (appearance_ == Appearance::Disappearing) {
        appearance_ = Appearance::Disappeared;
        viewDidDisappear(appearanceAnimated_);
    } else {
        return;
    }
    for (const Ptr& child : childrenForAppearance()) child->endAppearanceTransition();
}

std::vector<ViewController::Ptr> ViewController::childrenForAppearance() const {
    std::vector<Ptr> shown;
    for (const Ptr& child : children_) {
        const View* childView = child->viewIfLoaded().get();
        if (childView && view_ && childView->isDescendantOfView(view_.get()))
            shown.push_back(child);
    }
    return shown;
}

// --- Status bar ---------------------------------------------------------------------------

void ViewController::setNeedsStatusBarAppearanceUpdate() {
    const ViewController* deciding = this;
    while (const ViewController* child = deciding->childViewControllerForStatusBarHidden())
        deciding = child;
    Application::shared().setStatusBarHidden(deciding->prefersStatusBarHidden());
}

// --- Navigation item and containment ------------------------------------------------------

const NavigationItem::Ptr& ViewController::navigationItem() {
    if (!navigationItem_) {
        navigationItem_ =
            rt::makeWith<NavigationItem>([&](NavigationItem& item) { item.initWithTitle(title_); });
    }
    return navigationItem_;
}

NavigationController* ViewController::navigationController() const {
    for (ViewController* p = parent_; p; p = p->parent_) {
        if (auto* nav = dynamic_cast<NavigationController*>(p)) return nav;
    }
    return nullptr;
}

void ViewController::addChildViewController(const Ptr& child) {
    if (!child || child.get() == this || child->parent_ == this) return;
    child->removeFromParentViewController();
    children_.push_back(child);
    child->parent_ = this;
}

void ViewController::removeFromParentViewController() {
    if (!parent_) return;
    ViewController* parent = std::exchange(parent_, nullptr);
    auto& siblings = parent->children_;
    auto it = std::find_if(siblings.begin(), siblings.end(),
                           [this](const Ptr& c) { return c.get() == this; });
    if (it == siblings.end()) return;
    Ptr keep = std::move(*it);
    siblings.erase(it);
    parent->didRemoveChildViewController(keep);
    // The parent may have held the last reference, and this call may come from our own method.
    releaseLater({std::move(keep)});
}

ViewController* ViewController::screen() {
    ViewController* outermost = this;
    while (outermost->parent_) outermost = outermost->parent_;
    return outermost;
}

const ViewController* ViewController::screen() const {
    return const_cast<ViewController*>(this)->screen();
}

Responder* ViewController::nextResponder() const {
    if (view_ && view_->superview()) return view_->superview();
    return parent_;
}

// --- Presentation -------------------------------------------------------------------------

ViewController::Ptr ViewController::presentedViewController() const {
    return screen()->presented_;
}

ViewController* ViewController::presentingViewController() const {
    return screen()->presenting_;
}

Window* ViewController::windowForPresentation() const {
    const ViewController* host = screen();
    if (host->view_ && host->view_->window()) return host->view_->window();
    return Application::shared().keyWindow().get();
}

void ViewController::presentViewController(const Ptr& controller, bool animated,
                                           Completion completion) {
    ViewController* host = screen();
    if (!controller || host->presented_ || controller->presenting_ || controller.get() == host)
        return;
    controller->removeFromParentViewController();
    host->presented_ = controller;
    controller->presenting_ = host;

    const View::Ptr& shown = controller->view();
    if (Window* window = host->windowForPresentation()) {
        shown->setFrame(window->bounds());
        window->addSubview(shown);
    }
    host->beginAppearanceTransition(false, animated);
    controller->beginAppearanceTransition(true, animated);
    host->runTransition(animated, [host, controller, completion = std::move(completion)] {
        host->endAppearanceTransition();
        controller->endAppearanceTransition();
        if (completion) completion();
    });
}

void ViewController::dismissViewControllerAnimated(bool animated, Completion completion) {
    dismissInternal(animated, std::move(completion));
}

void ViewController::dismissModalViewControllerAnimated(bool animated) {
    dismissInternal(animated, nullptr);
}

void ViewController::dismissInternal(bool animated, Completion completion) {
    ViewController* host = screen();
    ViewController* presenter = host->presented_ ? host : host->presenting_;
    if (!presenter) {
        if (completion) completion();
        return;
    }
    presenter->dismissPresented(animated, std::move(completion));
}

void ViewController::dismissPresented(bool animated, Completion completion) {
    // Everything presented above goes with it; only the screens that are up hear about it.
    std::vector<Ptr> leaving;
    for (ViewController* p = this; p->presented_; p = p->presented_.get())
        leaving.push_back(p->presented_);
    presented_.reset();
    for (const Ptr& gone : leaving) {
        gone->presenting_ = nullptr;
        gone->presented_.reset();
    }

    for (auto it = leaving.rbegin(); it != leaving.rend(); ++it)
        (*it)->beginAppearanceTransition(false, animated);
    const bool reappears = view_ && view_->window();
    if (reappears) beginAppearanceTransition(true, animated);

    runTransition(animated, [this, leaving, reappears, completion = std::move(completion)] {
        for (auto it = leaving.rbegin(); it != leaving.rend(); ++it) {
            if (View* gone = (*it)->viewIfLoaded().get()) gone->removeFromSuperview();
            (*it)->endAppearanceTransition();
        }
        if (reappears) endAppearanceTransition();
        releaseLater(leaving);
        if (completion) completion();
    });
}

// --- Transitions --------------------------------------------------------------------------

void ViewController::runTransition(bool animated, std::function<void()> finish) {
    if (!animated) {
        finish();
        return;
    }
    rt::RunLoop::main().postDelayed(
        kTransitionDuration,
        [keep = self<ViewController>(), finish = std::move(finish)] { finish(); });
}

void ViewController::releaseLater(std::vector<Ptr> controllers) {
    if (controllers.empty()) return;
    rt::RunLoop::main().post([held = std::move(controllers)]() mutable { held.clear(); });
}

}  // namespace orv::ui
