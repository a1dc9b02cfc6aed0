#pragma once
// The application object: the key window, the status bar and the device facts the screens ask
// about. Headless, the status bar is a height (20 points when shown), the keyboard a settable
// height (0: no keyboard), and the device a modern phone that is not a notched model.

#include <memory>
#include <string>

#include "platform/gfx/Geometry.h"
#include "platform/rt/Object.h"

namespace orv::ui {

class Window;

// The platform's numbering.
enum StatusBarStyle : int {
    StatusBarStyleDefault = 0,
    StatusBarStyleLightContent = 1,
    StatusBarStyleDarkContent = 2
};
enum StatusBarAnimation : int {
    StatusBarAnimationNone = 0,
    StatusBarAnimationFade = 1,
    StatusBarAnimationSlide = 2
};

class Application : public rt::Object {
    ORV_DECLARE_CLASS(Application)
  public:
    static constexpr double kStatusBarHeight = 20;

    // Notifications of the keyboard and the status bar, with the keys of their user info: the
    // height of the keyboard's end frame and the duration of its animation, as doubles.
    static constexpr const char* keyboardWillShowNotification = "UIKeyboardWillShowNotification";
    static constexpr const char* keyboardDidShowNotification = "UIKeyboardDidShowNotification";
    static constexpr const char* keyboardWillHideNotification = "UIKeyboardWillHideNotification";
    static constexpr const char* keyboardDidHideNotification = "UIKeyboardDidHideNotification";
    static constexpr const char* didChangeStatusBarOrientationNotification =
        "UIApplicationDidChangeStatusBarOrientationNotification";
    static constexpr const char* keyboardHeightKey = "UIKeyboardFrameEndUserInfoKey.height";
    static constexpr const char* keyboardDurationKey = "UIKeyboardAnimationDurationUserInfoKey";

    static Application& shared();
    // Puts a fresh application in place: no key window, status bar shown, no keyboard (tests).
    static void resetShared();

    // The window that gets touches and holds overlays; held strongly, as the platform's
    // application holds its windows.
    const std::shared_ptr<Window>& keyWindow() const { return keyWindow_; }
    void setKeyWindow(std::shared_ptr<Window> window) { keyWindow_ = std::move(window); }

    bool isStatusBarHidden() const { return statusBarHidden_; }
    bool statusBarHidden() const { return statusBarHidden_; }
    void setStatusBarHidden(bool hidden) { statusBarHidden_ = hidden; }
    void setStatusBarHidden(bool hidden, int animation) { statusBarHidden_ = hidden; }
    int statusBarStyle() const { return statusBarStyle_; }
    void setStatusBarStyle(int style, bool animated = false) { statusBarStyle_ = style; }
    // The strip at the top of the screen; zero high when hidden.
    gfx::Rect statusBarFrame() const;

    double keyboardHeight() const { return keyboardHeight_; }
    void setKeyboardHeight(double height) { keyboardHeight_ = height; }

    bool isDeviceIPhoneX() const { return false; }
    double systemVersion() const { return 11.0; }
    std::string systemVersionString() const { return "11.0"; }

  private:
    std::shared_ptr<Window> keyWindow_;
    bool statusBarHidden_ = false;
    int statusBarStyle_ = StatusBarStyleDefault;
    double keyboardHeight_ = 0;
};

}  // namespace orv::ui
