#include "orvviews/views/OrvViewController.h"

#include "frameworks/core/OrvDevice.h"
#include "frameworks/core/OrvLocalized.h"
#include "frameworks/core/OrvTSLog.h"
#include "orvviews/OrvViews.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationItem.h"

ORV_DEFINE_CLASS(OrvViewController, ui::ViewController)

namespace {

// Titles are counted in characters as the user sees them, not in bytes.
size_t characterCount(const std::string& utf8) {
    size_t count = 0;
    for (unsigned char c : utf8) count += (c & 0xC0) != 0x80;
    return count;
}

}  // namespace

void OrvViewController::viewWillAppear(bool animated) {
    ui::ViewController::viewWillAppear(animated);
    setNavigationBarHidden(*this, true, false);
    if (orvIsDeviceiPhoneX()) {
        setStatusBarHidden(*this, false);
    } else {
        setStatusBarHidden(*this, true, 0);
    }
}

void OrvViewController::viewWillDisappear(bool animated) {
    ui::ViewController::viewWillDisappear(animated);
}

bool OrvViewController::prefersStatusBarHidden() const {
    return !orvIsDeviceiPhoneX();
}

bool OrvViewController::automaticallyAdjustsScrollViewInsets() const {
    return orvSystemFloatVersion() > 7.0 &&
           ui::ViewController::automaticallyAdjustsScrollViewInsets();
}

void OrvViewController::setAutomaticallyAdjustsScrollViewInsets(bool on) {
    if (orvSystemFloatVersion() > 7.0)
        ui::ViewController::setAutomaticallyAdjustsScrollViewInsets(on);
}

// ---- bar buttons ----

void OrvViewController::setBarButton(bool left, const std::optional<std::string>& title,
                                     const std::optional<gfx::Color>& color, Action action) {
    auto item = ui::BarButtonItem::itemWithTitle(title, ui::BarButtonItemStylePlain, self(),
                                                 std::move(action));
    if (color) item->setTitleTextAttributes({.foregroundColor = *color, .font = std::nullopt}, 0);
    if (left)
        navigationItem()->setLeftBarButtonItem(item);
    else
        navigationItem()->setRightBarButtonItem(item);
}

void OrvViewController::orvNavLeftButtonWithTitle(const std::optional<std::string>& title,
                                                  Action action) {
    setBarButton(true, title, std::nullopt, std::move(action));
}

void OrvViewController::orvNavRightButtonWithTitle(const std::optional<std::string>& title,
                                                   Action action) {
    setBarButton(false, title, std::nullopt, std::move(action));
}

void OrvViewController::orvNavLeftButtonWithTitle(const std::optional<std::string>& title,
                                                  const gfx::Color& textColor, Action action) {
    setBarButton(true, title, textColor, std::move(action));
}

void OrvViewController::orvNavRightButtonWithTitle(const std::optional<std::string>& title,
                                                   const gfx::Color& textColor, Action action) {
    setBarButton(false, title, textColor, std::move(action));
}

void OrvViewController::orvSetNavLeftCancelButton() {
    orvNavLeftButtonWithTitle(orvLocalized("orv_nav_cancel", "取消"), [this] { cancelAction(); });
}

void OrvViewController::orvSetNavRightCancelButton() {
    orvNavRightButtonWithTitle(orvLocalized("orv_nav_cancel", "取消"), [this] { cancelAction(); });
}

void OrvViewController::orvSetNavLeftCancelButtonWithColor(const gfx::Color& color) {
    orvNavLeftButtonWithTitle(orvLocalized("orv_nav_cancel", "取消"), color,
                              [this] { cancelAction(); });
}

void OrvViewController::orvSetNavRightCancelButtonWithColor(const gfx::Color& color) {
    orvNavRightButtonWithTitle(orvLocalized("orv_nav_cancel", "取消"), color,
                               [this] { cancelAction(); });
}

void OrvViewController::cancelAction() {
    orvDismissModalViewControllerAnimated();
}

void OrvViewController::setBackButton() {
    const auto& own = title();
    const std::string text =
        own && characterCount(*own) < 4 ? *own : orvLocalized("orv_nav_back", "返回");
    auto item =
        ui::BarButtonItem::itemWithTitle(text, ui::BarButtonItemStylePlain, nullptr, nullptr);
    navigationItem()->setBackBarButtonItem(item);
}

// ---- hub ----

void OrvViewController::showHubWithStatus(const OrvText& status) {
    OrvViews::shared()->messageHub()->setStatus(status);
}

void OrvViewController::showHubProgress(float progress, const OrvText& status) {
    OrvViews::shared()->messageHub()->showProgress(progress, status);
}

void OrvViewController::showHubSuccessWithStatus(const OrvText& status) {
    OrvViews::shared()->messageHub()->showSuccess(status);
}

void OrvViewController::showHubErrorWithStatus(const OrvText& status) {
    OrvViews::shared()->messageHub()->showError(status);
}

void OrvViewController::dismissHub() {
    OrvViews::shared()->messageHub()->dismiss();
}

// ---- leaving ----

bool OrvViewController::beginLeaving() {
    isBacked = true;
    if (!transAnim_ || !transAnim_->outTran()) return false;
    orvAddWindowAnimation(*this, transAnim_->outTran(), kOrvOutAnimationKey);
    return true;
}

void OrvViewController::dismissModalViewControllerAnimated(bool animated) {
    const bool custom = beginLeaving();
    ui::ViewController::dismissModalViewControllerAnimated(custom ? false : animated);
}

void OrvViewController::dismissViewControllerAnimated(bool animated, Completion completion) {
    const bool custom = beginLeaving();
    ui::ViewController::dismissViewControllerAnimated(custom ? false : animated,
                                                      std::move(completion));
}

ui::ViewController::Ptr OrvViewController::orvPopViewControllerAnimated(bool animated) {
    const bool custom = beginLeaving();
    return orvBasePopViewControllerAnimated(*this, custom ? false : animated);
}

OrvControllerList OrvViewController::orvPopToViewController(const Ptr& controller, bool animated) {
    const bool custom = beginLeaving();
    return orvBasePopToViewController(*this, controller, custom ? false : animated);
}

OrvControllerList OrvViewController::orvPopToRootViewControllerAnimated(bool animated) {
    const bool custom = beginLeaving();
    return orvBasePopToRootViewControllerAnimated(*this, custom ? false : animated);
}

void OrvViewController::orvDismissModalViewControllerAnimated() {
    isBacked = true;
    // The extension's body, which dispatches to this class's own dismissal.
    dismissModalViewControllerAnimated(true);
}

// ---- end ----

void OrvViewController::dealloc() {
    controllerWillDestory();
    if (const auto& view = viewIfLoaded()) {
        view->viewWillDestory();
        setView(nullptr);
    }
    OrvTSLog::debug("dealloc controller %s: %s", title().value_or("(null)").c_str(),
                    description().c_str());
    ui::ViewController::dealloc();
}
