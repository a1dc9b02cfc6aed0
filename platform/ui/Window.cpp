#include "platform/ui/Window.h"

#include "platform/rt/RunLoop.h"
#include "platform/ui/Application.h"
#include "platform/ui/Screen.h"
#include "platform/ui/ViewController.h"

namespace orv::ui {

ORV_DEFINE_CLASS(Window, View)

void Window::init() {
    initWithFrame(Screen::main().bounds());
}

void Window::initWithFrame(const gfx::Rect& frame) {
    View::initWithFrame(frame);
    window_ = this;
}

void Window::setRootViewController(std::shared_ptr<ViewController> controller) {
    if (controller == rootViewController_) return;
    auto old = std::move(rootViewController_);
    rootViewController_ = std::move(controller);
    if (visible_ && old) old->beginAppearanceTransition(false, false);
    if (visible_ && rootViewController_)
        rootViewController_->beginAppearanceTransition(true, false);
    if (old && old->isViewLoaded() && old->viewIfLoaded()->superview() == this) {
        old->viewIfLoaded()->removeFromSuperview();
    }
    installRootView();
    if (visible_ && old) old->endAppearanceTransition();
    if (visible_ && rootViewController_) rootViewController_->endAppearanceTransition();
}

void Window::installRootView() {
    if (!rootViewController_) return;
    const View::Ptr& view = rootViewController_->view();
    if (!view) return;
    view->setFrame(bounds());
    view->setAutoresizingMask(AutoresizingFlexibleWidth | AutoresizingFlexibleHeight);
    insertSubview(view, 0);
}

void Window::makeKeyAndVisible() {
    makeKeyWindow();
    setHidden(false);
    if (visible_) return;
    visible_ = true;
    if (!rootViewController_) return;
    rootViewController_->beginAppearanceTransition(true, false);
    installRootView();
    rootViewController_->endAppearanceTransition();
}

void Window::makeKeyWindow() {
    Application::shared().setKeyWindow(self<Window>());
}

bool Window::isKeyWindow() const {
    return Application::shared().keyWindow().get() == this;
}

void Window::setNeedsLayoutPass() {
    if (layoutPassPending_) return;
    auto strong = std::static_pointer_cast<Window>(weak_from_this().lock());
    if (!strong) return;  // going away
    layoutPassPending_ = true;
    std::weak_ptr<Window> weak = strong;
    rt::RunLoop::main().post([weak] {
        if (auto window = weak.lock()) {
            window->layoutPassPending_ = false;
            window->layoutIfNeeded();
        }
    });
}

}  // namespace orv::ui
