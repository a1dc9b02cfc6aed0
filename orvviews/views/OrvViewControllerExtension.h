#pragma once
// One vocabulary of navigation calls for every controller, each in two forms: with a plain
// animated flag, or with an animation run on the window first (key "outanim" for leaving,
// "inanim" for entering) and the call itself unanimated.
//
// These work on any controller. Where OrvViewController has its own version of a call (the pop
// forms, the modal dismissal, controllerWillDestory), that version is the one that runs, as an
// override of an extension method would.

#include <functional>
#include <memory>
#include <vector>

#include "frameworks/core/OrvKit.h"
#include "platform/ui/ViewController.h"

namespace orv::ui {
class Animation;
}

using OrvAnimationPtr = std::shared_ptr<ui::Animation>;
using OrvControllerList = std::vector<ui::ViewController::Ptr>;

inline constexpr const char* kOrvOutAnimationKey = "outanim";
inline constexpr const char* kOrvInAnimationKey = "inanim";

// Number of controllers of the navigation controller; 0 without one.
size_t orvNavCount(const ui::ViewController& controller);
void orvBackActionHadAnimated(ui::ViewController& controller);
// Dismisses when the navigation stack holds exactly one controller, pops otherwise (and so does
// nothing for a controller shown without a navigation controller).
void orvBackActionWithAnimated(ui::ViewController& controller, bool animated);
void orvBackActionWithAnim(ui::ViewController& controller, const OrvAnimationPtr& animation);

void orvDismissModalViewControllerAnimated(ui::ViewController& controller);
void orvDismissModalViewControllerWithAnim(ui::ViewController& controller,
                                           const OrvAnimationPtr& animation);
void orvDismissViewControllerWithAnim(ui::ViewController& controller,
                                      const OrvAnimationPtr& animation,
                                      std::function<void()> completion);

void orvPushViewController(ui::ViewController& controller, const ui::ViewController::Ptr& pushed,
                           bool animated);
void orvPushViewController(ui::ViewController& controller, const ui::ViewController::Ptr& pushed,
                           const OrvAnimationPtr& animation);
ui::ViewController::Ptr orvPopViewControllerAnimated(ui::ViewController& controller, bool animated);
ui::ViewController::Ptr orvPopViewControllerWithAnim(ui::ViewController& controller,
                                                     const OrvAnimationPtr& animation);
OrvControllerList orvPopToViewController(ui::ViewController& controller,
                                         const ui::ViewController::Ptr& target, bool animated);
OrvControllerList orvPopToViewController(ui::ViewController& controller,
                                         const ui::ViewController::Ptr& target,
                                         const OrvAnimationPtr& animation);
OrvControllerList orvPopToRootViewControllerAnimated(ui::ViewController& controller, bool animated);
OrvControllerList orvPopToRootViewControllerWithAnim(ui::ViewController& controller,
                                                     const OrvAnimationPtr& animation);

// Wraps the controller in a new OrvNavigationController and presents it full screen.
void orvPresentModalNavigationController(ui::ViewController& controller,
                                         const ui::ViewController::Ptr& presented, bool animated,
                                         bool hiddenNav = false);
void orvPresentModalNavigationController(ui::ViewController& controller,
                                         const ui::ViewController::Ptr& presented,
                                         const OrvAnimationPtr& animation, bool hiddenNav = false);

// Full-screen layout with the status bar style 1 (true) or 2 (false), unanimated.
void setFullScreenLayout(ui::ViewController& controller, bool fullScreen);
void setStatusBarHidden(ui::ViewController& controller, bool hidden, int animation);
void setStatusBarHidden(ui::ViewController& controller, bool hidden);
void setNavigationBarHidden(ui::ViewController& controller, bool hidden);
void setNavigationBarHidden(ui::ViewController& controller, bool hidden, bool animated);

// The last clean-up hook; may run more than once on the same controller.
void controllerWillDestory(ui::ViewController& controller);

// Sends removeFromParentViewController to every controller of the stack.
void orvRemoveAllControllers(ui::NavigationController& navigation);

// The plain forms the overrides fall back on.
ui::ViewController::Ptr orvBasePopViewControllerAnimated(ui::ViewController& controller,
                                                         bool animated);
OrvControllerList orvBasePopToViewController(ui::ViewController& controller,
                                             const ui::ViewController::Ptr& target, bool animated);
OrvControllerList orvBasePopToRootViewControllerAnimated(ui::ViewController& controller,
                                                         bool animated);
// Adds the animation to the layer of the window the controller's view is in, under the key.
void orvAddWindowAnimation(ui::ViewController& controller, const OrvAnimationPtr& animation,
                           const char* key);
