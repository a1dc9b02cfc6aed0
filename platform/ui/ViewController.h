#pragma once
// A screen's controller: it owns a root view made on first use, hears when that view appears and
// disappears, holds child controllers, and presents other controllers full screen.
//
// Timing of transitions. An animated transition takes kTransitionDuration on the main run
// loop's clock: the "will" calls go out at once, the "did" calls and the completion come when
// that time has passed. An unanimated one finishes before the call returns. Either way, the
// controllers a transition drops are released on a later turn of the main loop, never inside
// the call, so a controller may dismiss or pop itself from one of its own methods.
//
// Order of the appearance calls: the leaving controller's viewWillDisappear, then the arriving
// controller's viewWillAppear; later the leaving one's viewDidDisappear, then the arriving one's
// viewDidAppear. A container passes them on to the children it shows (a navigation controller
// to its top controller), after its own.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/gfx/Geometry.h"
#include "platform/ui/NavigationItem.h"
#include "platform/ui/Responder.h"
#include "platform/ui/View.h"

namespace orv::ui {

class NavigationController;
class Window;

// The platform's numbering of modal presentation styles.
enum ModalPresentationStyle : int {
    ModalPresentationFullScreen = 0,
};

class ViewController : public Responder {
    ORV_DECLARE_CLASS(ViewController)
  public:
    using Ptr = std::shared_ptr<ViewController>;
    using Completion = std::function<void()>;

    static constexpr double kTransitionDuration = 0.3;

    // The class operation that makes a controller with plain init().
    template <class T>
    static std::shared_ptr<T> controller() {
        return rt::make<T>();
    }

    void dealloc() override;

    // The root view, loaded on first use: loadView(), then viewDidLoad() once.
    const View::Ptr& view();
    const View::Ptr& viewIfLoaded() const { return view_; }
    bool isViewLoaded() const { return view_ != nullptr; }
    // Null unloads the view; the next view() loads a fresh one.
    void setView(View::Ptr view);
    // Makes the root view; the base makes a plain view the size of the screen. An override sets
    // its own with setView().
    virtual void loadView();
    virtual void viewDidLoad() {}

    const std::optional<std::string>& title() const { return title_; }
    // Also the navigation item's title, as on the platform.
    virtual void setTitle(std::optional<std::string> title);

    // Appearance. Overrides call the base.
    virtual void viewWillAppear(bool animated) {}
    virtual void viewDidAppear(bool animated) {}
    virtual void viewWillDisappear(bool animated) {}
    virtual void viewDidDisappear(bool animated) {}
    // Drives the calls above for containers and windows: begin sends the "will" call (once per
    // change), end sends the matching "did" call; both pass on to the shown children.
    void beginAppearanceTransition(bool isAppearing, bool animated);
    void endAppearanceTransition();
    // True between viewDidAppear and viewWillDisappear.
    bool isAppeared() const { return appearance_ == Appearance::Appeared; }
    // True from viewWillAppear to viewWillDisappear.
    bool isShown() const {
        return appearance_ == Appearance::Appeared || appearance_ == Appearance::Appearing;
    }

    // Status bar and layout preferences.
    virtual bool prefersStatusBarHidden() const { return false; }
    // The child whose preference counts instead of this controller's (a navigation controller's
    // top controller), or null.
    virtual ViewController* childViewControllerForStatusBarHidden() const { return nullptr; }
    // Applies the preference that counts to the application's status bar.
    void setNeedsStatusBarAppearanceUpdate();
    virtual bool automaticallyAdjustsScrollViewInsets() const { return adjustsInsets_; }
    virtual void setAutomaticallyAdjustsScrollViewInsets(bool on) { adjustsInsets_ = on; }
    bool wantsFullScreenLayout() const { return wantsFullScreenLayout_; }
    void setWantsFullScreenLayout(bool on) { wantsFullScreenLayout_ = on; }
    int modalPresentationStyle() const { return modalPresentationStyle_; }
    void setModalPresentationStyle(int style) { modalPresentationStyle_ = style; }

    // Made on first use, with the controller's title.
    const NavigationItem::Ptr& navigationItem();
    // The nearest navigation controller among the ancestors, or null.
    NavigationController* navigationController() const;

    // Containment. The parent holds its children strongly.
    ViewController* parentViewController() const { return parent_; }
    const std::vector<Ptr>& childViewControllers() const { return children_; }
    void addChildViewController(const Ptr& child);
    void removeFromParentViewController();

    // Presentation. Only one controller is presented at a time from the same screen (the
    // outermost container of this controller): a second request is ignored. The presented view
    // covers the presenter's window, or the key window; without either the presentation still
    // takes place, unseen. The presenter holds what it presents until the dismissal ends.
    virtual void presentViewController(const Ptr& controller, bool animated, Completion completion);
    // Dismisses what this controller (or its screen) presents, and all presented above it;
    // when it presents nothing, dismisses the screen this controller is part of. The presenter
    // hears it reappear only when its view is in a window. With nothing to dismiss, only the
    // completion runs.
    virtual void dismissViewControllerAnimated(bool animated, Completion completion);
    virtual void dismissModalViewControllerAnimated(bool animated);
    // What this controller's screen presents, or null.
    Ptr presentedViewController() const;
    // The controller that presented this controller's screen, or null.
    ViewController* presentingViewController() const;

    Responder* nextResponder() const override;

  protected:
    // The children whose views are shown, to which appearance calls are passed on. The base
    // answers the loaded children whose views lie inside this controller's view.
    virtual std::vector<Ptr> childrenForAppearance() const;

    // Tells a container that a child left it through removeFromParentViewController().
    virtual void didRemoveChildViewController(const Ptr& child) {}

    // Runs `finish` at once, or after kTransitionDuration on the main loop when animated;
    // the controller is kept alive until then.
    void runTransition(bool animated, std::function<void()> finish);
    // Lets the controllers go on a later turn of the main loop.
    static void releaseLater(std::vector<Ptr> controllers);

  private:
    enum class Appearance { Disappeared, Appearing, Appeared, Disappearing };

    // The outermost container of this controller: the unit that presents and is presented.
    ViewController* screen();
    const ViewController* screen() const;
    void dismissInternal(bool animated, Completion completion);
    void dismissPresented(bool animated, Completion completion);
    Window* windowForPresentation() const;

    View::Ptr view_;
    std::optional<std::string> title_;
    NavigationItem::Ptr navigationItem_;
    Appearance appearance_ = Appearance::Disappeared;
    bool appearanceAnimated_ = false;  // the flag of the "will" call, repeated in the "did" call
    bool adjustsInsets_ = true;
    bool wantsFullScreenLayout_ = false;
    int modalPresentationStyle_ = ModalPresentationFullScreen;
    ViewController* parent_ = nullptr;
    std::vector<Ptr> children_;
    Ptr presented_;
    ViewController* presenting_ = nullptr;

    friend class NavigationController;
};

}  // namespace orv::ui
