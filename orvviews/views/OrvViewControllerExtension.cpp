#include "orvviews/views/OrvViewControllerExtension.h"

#include "orvviews/views/OrvNavigationController.h"
#include "orvviews/views/OrvViewController.h"
#include "platform/ui/Application.h"
#include "platform/ui/Layer.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/Window.h"

namespace {

OrvViewController* asOrv(ui::ViewController& controller) {
    return dynamic_cast<OrvViewController*>(&controller);
}

}  // namespace

size_t orvNavCount(const ui::ViewController& controller) {
    const ui::NavigationController* navigation = controller.navigationController();
    return navigation ? navigation->viewControllers().size() : 0;
}

void orvBackActionHadAnimated(ui::ViewController& controller) {
    orvBackActionWithAnimated(controller, true);
}

void orvBackActionWithAnimated(ui::ViewController& controller, bool animated) {
    if (orvNavCount(controller) == 1) {
        controller.dismissModalViewControllerAnimated(animated);
    } else {
        orvPopViewControllerAnimated(controller, animated);
    }
}

void orvBackActionWithAnim(ui::ViewController& controller, const OrvAnimationPtr& animation) {
    orvAddWindowAnimation(controller, animation, kOrvOutAnimationKey);
    orvBackActionWithAnimated(controller, false);
}

void orvDismissModalViewControllerAnimated(ui::ViewController& controller) {
    if (OrvViewController* orv = asOrv(controller)) {
        orv->orvDismissModalViewControllerAnimated();
    } else {
        controller.dismissModalViewControllerAnimated(true);
    }
}

void orvDismissModalViewControllerWithAnim(ui::ViewController& controller,
                                           const OrvAnimationPtr& animation) {
    orvAddWindowAnimation(controller, animation, kOrvOutAnimationKey);
    controller.dismissModalViewControllerAnimated(false);
}

void orvDismissViewControllerWithAnim(ui::ViewController& controller,
                                      const OrvAnimationPtr& animation,
                                      std::function<void()> completion) {
    orvAddWindowAnimation(controller, animation, kOrvOutAnimationKey);
    controller.dismissViewControllerAnimated(false, std::move(completion));
}

void orvPushViewController(ui::ViewController& controller, const ui::ViewController::Ptr& pushed,
                           bool animated) {
    if (ui::NavigationController* navigation = controller.navigationController()) {
        navigation->pushViewController(pushed, animated);
    }
}

void orvPushViewController(ui::ViewController& controller, const ui::ViewController::Ptr& pushed,
                           const OrvAnimationPtr& animation) {
    orvAddWindowAnimation(controller, animation, kOrvOutAnimationKey);
    orvPushViewController(controller, pushed, false);
}

ui::ViewController::Ptr orvPopViewControllerAnimated(ui::ViewController& controller,
                                                     bool animated) {
    if (OrvViewController* orv = asOrv(controller))
        return orv->orvPopViewControllerAnimated(animated);
    return orvBasePopViewControllerAnimated(controller, animated);
}

ui::ViewController::Ptr orvPopViewControllerWithAnim(ui::ViewController& controller,
                                                     const OrvAnimationPtr& animation) {
    orvAddWindowAnimation(controller, animation, kOrvOutAnimationKey);
    return orvPopViewControllerAnimated(controller, false);
}

OrvControllerList orvPopToViewController(ui::ViewController& controller,
                                         const ui::ViewController::Ptr& target, bool animated) {
    if (OrvViewController* orv = asOrv(controller)) {
        return orv->orvPopToViewController(target, animated);
    }
    return orvBasePopToViewController(controller, target, animated);
}

OrvControllerList orvPopToViewController(ui::ViewController& controller,
                                         const ui::ViewController::Ptr& target,
                                         const OrvAnimationPtr& animation) {
    orvAddWindowAnimation(controller, animation, kOrvOutAnimationKey);
    return orvPopToViewController(controller, target, false);
}

OrvControllerList orvPopToRootViewControllerAnimated(ui::ViewController& controller,
                                                     bool animated) {
    if (OrvViewController* orv = asOrv(controller)) {
        return orv->orvPopToRootViewControllerAnimated(animated);
    }
    return orvBasePopToRootViewControllerAnimated(controller, animated);
}

OrvControllerList orvPopToRootViewControllerWithAnim(ui::ViewController& controller,
                                                     const OrvAnimationPtr& animation) {
    orvAddWindowAnimation(controller, animation, kOrvOutAnimationKey);
    return orvPopToRootViewControllerAnimated(controller, false);
}

void orvPresentModalNavigationController(ui::ViewController& controller,
                                         const ui::ViewController::Ptr& presented, bool animated,
                                         bool hiddenNav) {
    auto navigation = orv::rt::makeWith<OrvNavigationController>(
        [&](OrvNavigationController& n) { n.initWithRootViewController(presented); });
    setNavigationBarHidden(*navigation, hiddenNav);
    navigation->setModalPresentationStyle(ui::ModalPresentationFullScreen);
    controller.presentViewController(navigation, animated, nullptr);
}

void orvPresentModalNavigationController(ui::ViewController& controller,
                                         const ui::ViewController::Ptr& presented,
                                         const OrvAnimationPtr& animation, bool hiddenNav) {
    orvAddWindowAnimation(controller, animation, kOrvInAnimationKey);
    orvPresentModalNavigationController(controller, presented, false, hiddenNav);
}

void setFullScreenLayout(ui::ViewController& controller, bool fullScreen) {
    controller.setWantsFullScreenLayout(fullScreen);
    ui::Application::shared().setStatusBarStyle(fullScreen ? 1 : 2, false);
}

void setStatusBarHidden(ui::ViewController&, bool hidden, int animation) {
    ui::Application::shared().setStatusBarHidden(hidden, animation);
}

void setStatusBarHidden(ui::ViewController&, bool hidden) {
    ui::Application::shared().setStatusBarHidden(hidden);
}

void setNavigationBarHidden(ui::ViewController& controller, bool hidden) {
    setNavigationBarHidden(controller, hidden, false);
}

void setNavigationBarHidden(ui::ViewController& controller, bool hidden, bool animated) {
    // The controller may be the navigation controller itself (a freshly made modal wrapper).
    auto* navigation = dynamic_cast<ui::NavigationController*>(&controller);
    if (!navigation) navigation = controller.navigationController();
    if (navigation) navigation->setNavigationBarHidden(hidden, animated);
}

void controllerWillDestory(ui::ViewController& controller) {
    if (OrvViewController* orv = asOrv(controller)) orv->controllerWillDestory();
}

void orvRemoveAllControllers(ui::NavigationController& navigation) {
    const OrvControllerList controllers = navigation.viewControllers();
    for (const auto& child : controllers) child->removeFromParentViewController();
}

ui::ViewController::Ptr orvBasePopViewControllerAnimated(ui::ViewController& controller,
                                                         bool animated) {
    ui::NavigationController* navigation = controller.navigationController();
    return navigation ? navigation->popViewControllerAnimated(animated) : nullptr;
}

OrvControllerList orvBasePopToViewController(ui::ViewController& controller,
                                             const ui::ViewController::Ptr& target, bool animated) {
    ui::NavigationController* navigation = controller.navigationController();
    return navigation ? navigation->popToViewController(target, animated) : OrvControllerList{};
}

OrvControllerList orvBasePopToRootViewControllerAnimated(ui::ViewController& controller,
                                                         bool animated) {
    ui::NavigationController* navigation = controller.navigationController();
    return navigation ? navigation->popToRootViewControllerAnimated(animated) : OrvControllerList{};
}

void orvAddWindowAnimation(ui::ViewController& controller, const OrvAnimationPtr& animation,
                           const char* key) {
    if (!animation) return;
    const auto& view = controller.viewIfLoaded();
    ui::Window* window = view ? view->window() : nullptr;
    if (!window) window = ui::Application::shared().keyWindow().get();
    if (window) window->layer().addAnimation(animation, key);
}
