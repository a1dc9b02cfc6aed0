#pragma once
// The progress overlay: one shared view that shows a status text with a spinner, a progress
// ring, a success or error picture, or a plain message that fades out by itself.

#include <memory>
#include <optional>
#include <string>

#include "frameworks/core/OrvKit.h"
#include "orvviews/popup/OrvPopupMessageInterface.h"
#include "platform/gfx/Font.h"
#include "platform/gfx/Image.h"
#include "platform/rt/Notification.h"
#include "platform/ui/View.h"

namespace orv::rt {
class Timer;
}
namespace orv::ui {
class Control;
class Label;
class ImageView;
class ShapeLayer;
}  // namespace orv::ui
class ORVIndefiniteAnimatedView;

// What lies over the screen while the overlay shows.
enum OrvKitProgressHUDMaskType : unsigned {
    OrvKitProgressHUDMaskTypeNone = 1,      // touches reach the screen
    OrvKitProgressHUDMaskTypeClear = 2,     // touches stop at the overlay
    OrvKitProgressHUDMaskTypeBlack = 3,     // half-transparent black
    OrvKitProgressHUDMaskTypeGradient = 4,  // radial darkening
};

extern const char* const OrvKitProgressHUDDidReceiveTouchEventNotification;
extern const char* const OrvKitProgressHUDDidTouchDownInsideNotification;
extern const char* const OrvKitProgressHUDWillDisappearNotification;
extern const char* const OrvKitProgressHUDDidDisappearNotification;
extern const char* const OrvKitProgressHUDWillAppearNotification;
extern const char* const OrvKitProgressHUDDidAppearNotification;
extern const char* const OrvKitProgressHUDStatusUserInfoKey;

inline constexpr double OrvKitProgressHUDRingRadius = 18;
inline constexpr double OrvKitProgressHUDRingNoTextRadius = 24;
inline constexpr float OrvKitProgressHUDUndefinedProgress = -1;

class OrvPopupProgress : public ui::View {
    ORV_DECLARE_CLASS(OrvPopupProgress)
  public:
    // The one overlay, made at first use (from any thread) with the main screen's bounds.
    static std::shared_ptr<OrvPopupProgress> sharedView();

    // Settings shared by all shows. Each begins by making the overlay, whose set-up fills the
    // defaults, so that a setting made before the first show survives.
    static void setBackgroundColor(const gfx::Color& color);
    static void setForegroundColor(const gfx::Color& color);
    static void setFont(const gfx::Font& font);
    static void setRingThickness(double width);
    static void setSuccessImage(gfx::ImagePtr image);
    static void setErrorImage(gfx::ImagePtr image);
    static void setDefaultMaskType(unsigned maskType);
    static unsigned defaultMaskType();

    // Shows with a spinner (progress -1) or a ring; a missing mask is the default mask type.
    static void show();
    static void showWithMaskType(unsigned maskType);
    static void showWithStatus(const OrvText& status);
    static void showWithStatus(const OrvText& status, unsigned maskType);
    static void showProgress(float progress);
    static void showProgress(float progress, unsigned maskType);
    static void showProgress(float progress, const OrvText& status);
    static void showProgress(float progress, const OrvText& status, unsigned maskType);
    // Shows a picture (or the text alone) and fades out after a time that fits the text.
    static void showMessage(const OrvText& message);
    static void showSuccessWithStatus(const OrvText& status);
    static void showSuccessWithStatus(const OrvText& status, unsigned maskType);
    static void showErrorWithStatus(const OrvText& status);
    static void showErrorWithStatus(const OrvText& status, unsigned maskType);
    static void showImage(gfx::ImagePtr image, const OrvText& status);
    static void showImage(gfx::ImagePtr image, const OrvText& status, unsigned maskType);

    // Changes the text of what is showing.
    static void setStatus(const OrvText& status);
    static void setOffsetFromCenter(gfx::Offset offset);
    static void resetOffsetFromCenter();
    // Lowers the activity count; at 0 the overlay goes.
    static void popActivity();
    static void dismiss();
    static bool isVisible();

    // Seconds a text stays: 0.06 s a character plus 0.5 s, at most 5 s.
    static double displayDurationForString(const OrvText& text);

    // The thread bridge: callable from any thread, always served on a later turn of the main
    // loop. The status form uses the clear mask whatever the default; the others the default.
    static void showMainThreadWithStatus(const OrvText& status);
    static void showMainThreadWithMessage(const OrvText& message);
    static void showMainThreadSuccessWithStatus(const OrvText& status);
    static void showMainThreadErrorWithStatus(const OrvText& status);
    static void showMainThreadProgress(float progress, const OrvText& status);

    // State, for the screens and tests that look at the overlay.
    unsigned maskType() const { return maskType_; }
    float progress() const { return progress_; }
    unsigned activityCount() const { return activityCount_; }
    gfx::Offset offsetFromCenter() const { return offsetFromCenter_; }
    const OrvText& status() const { return status_; }
    std::shared_ptr<rt::Timer> fadeOutTimer() const { return fadeOutTimer_; }
    bool isClear() const;

    // The parts, made at first read and destroyed at the end of each dismissal.
    std::shared_ptr<ui::Control> overlayView();
    std::shared_ptr<ui::View> hudView();
    std::shared_ptr<ui::Label> stringLabel();
    std::shared_ptr<ui::ImageView> imageView();
    std::shared_ptr<ORVIndefiniteAnimatedView> indefiniteAnimatedView();
    std::shared_ptr<ui::ShapeLayer> ringLayer();
    std::shared_ptr<ui::ShapeLayer> backgroundRingLayer();
    bool hasHudView() const { return hudView_ != nullptr; }

    void initWithFrame(const gfx::Rect& frame) override;
    bool hasCustomDrawing() const override { return true; }
    void drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) override;

    // Sizes the box for the text, picture, ring or spinner.
    void updatePosition();
    // Places the box above the keyboard; a notification of the keyboard moves it with its
    // animation.
    void positionHUD(const rt::Notification* notification);

  private:
    void setFadeOutTimer(std::shared_ptr<rt::Timer> timer);
    void showProgressNow(float progress, const OrvText& status, unsigned maskType);
    void showImageNow(gfx::ImagePtr image, const OrvText& status, double duration,
                      unsigned maskType);
    void setStatusNow(const OrvText& status);
    void dismissNow();
    void appear();
    void finishDismissal();
    void moveToPoint(gfx::Point center, double angle);
    double visibleKeyboardHeight() const;
    void registerNotifications();
    void cancelRingLayerAnimation();
    std::shared_ptr<ui::ShapeLayer> createRingLayer(gfx::Point center, double radius,
                                                    double lineWidth, const gfx::Color& color);
    rt::NotificationUserInfo notificationUserInfo() const;
    void postNotification(const char* name, rt::NotificationUserInfo info = {});
    void overlayTouched(rt::Object* event, gfx::Point location);

    unsigned maskType_ = OrvKitProgressHUDMaskTypeNone;
    std::shared_ptr<rt::Timer> fadeOutTimer_;
    std::shared_ptr<ui::Control> overlayView_;
    std::shared_ptr<ui::View> hudView_;
    std::shared_ptr<ui::Label> stringLabel_;
    std::shared_ptr<ui::ImageView> imageView_;
    std::shared_ptr<ORVIndefiniteAnimatedView> indefiniteAnimatedView_;
    float progress_ = OrvKitProgressHUDUndefinedProgress;
    unsigned activityCount_ = 0;
    std::shared_ptr<ui::ShapeLayer> backgroundRingLayer_;
    std::shared_ptr<ui::ShapeLayer> ringLayer_;
    gfx::Offset offsetFromCenter_;
    OrvText status_;
};
