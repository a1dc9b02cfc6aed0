#pragma once
// The base of every screen of the library: the hub calls, the rules of the bars, leaving with a
// custom transition, and the last clean-up hook.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvKitTSCControllerTrans.h"
#include "orvviews/popup/OrvPopupMessageInterface.h"
#include "orvviews/views/OrvViewControllerExtension.h"
#include "platform/gfx/Color.h"
#include "platform/ui/ViewController.h"

class OrvViewController : public ui::ViewController {
    ORV_DECLARE_CLASS(OrvViewController)
  public:
    using Action = std::function<void()>;

    // Set by every dismissal and pop below; nothing reads it yet.
    bool isBacked = false;

    const std::shared_ptr<OrvKitTSCControllerTrans>& transAnim() const { return transAnim_; }
    void setTransAnim(std::shared_ptr<OrvKitTSCControllerTrans> trans) {
        transAnim_ = std::move(trans);
    }

    // Hides the navigation bar, and the status bar except on a notched device.
    void viewWillAppear(bool animated) override;
    void viewWillDisappear(bool animated) override;
    bool prefersStatusBarHidden() const override;
    bool automaticallyAdjustsScrollViewInsets() const override;
    void setAutomaticallyAdjustsScrollViewInsets(bool on) override;

    // Plain bar buttons with this controller as target.
    void orvNavLeftButtonWithTitle(const std::optional<std::string>& title, Action action);
    void orvNavRightButtonWithTitle(const std::optional<std::string>& title, Action action);
    void orvNavLeftButtonWithTitle(const std::optional<std::string>& title,
                                   const gfx::Color& textColor, Action action);
    void orvNavRightButtonWithTitle(const std::optional<std::string>& title,
                                    const gfx::Color& textColor, Action action);
    // A bar button with the cancel text and the action cancelAction().
    void orvSetNavLeftCancelButton();
    void orvSetNavRightCancelButton();
    void orvSetNavLeftCancelButtonWithColor(const gfx::Color& color);
    void orvSetNavRightCancelButtonWithColor(const gfx::Color& color);
    virtual void cancelAction();
    // The back item: the title when it is shorter than 4 characters, else the back text.
    void setBackButton();

    // The hub of OrvViews, read at each call.
    void showHubWithStatus(const OrvText& status);
    void showHubProgress(float progress, const OrvText& status);
    void showHubSuccessWithStatus(const OrvText& status);
    void showHubErrorWithStatus(const OrvText& status);
    void dismissHub();

    // Leaving: with a transAnim that has an outTran, the animation runs on the window and the
    // call itself is unanimated.
    void dismissModalViewControllerAnimated(bool animated) override;
    void dismissViewControllerAnimated(bool animated, Completion completion) override;
    virtual Ptr orvPopViewControllerAnimated(bool animated);
    virtual OrvControllerList orvPopToViewController(const Ptr& controller, bool animated);
    virtual OrvControllerList orvPopToRootViewControllerAnimated(bool animated);
    virtual void orvDismissModalViewControllerAnimated();

    // The last clean-up; called more than once on the same controller, so overrides must
    // tolerate repeats.
    virtual void controllerWillDestory() {}

    void dealloc() override;

  private:
    // Marks the leave and runs the window animation when there is one; answers whether the
    // call that follows must be unanimated.
    bool beginLeaving();
    void setBarButton(bool left, const std::optional<std::string>& title,
                      const std::optional<gfx::Color>& color, Action action);

    std::shared_ptr<OrvKitTSCControllerTrans> transAnim_;
};
