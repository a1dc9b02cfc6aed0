#include "orvviews/popup/OrvPopupProgress.h"

#include <algorithm>
#include <cmath>
#include <mutex>

#include "frameworks/core/OrvBundleImage.h"
#include "orvviews/popup/ORVIndefiniteAnimatedView.h"
#include "platform/gfx/Canvas.h"
#include "platform/gfx/TextLayout.h"
#include "platform/rt/DispatchQueue.h"
#include "platform/rt/NotificationCenter.h"
#include "platform/rt/RunLoop.h"
#include "platform/rt/Timer.h"
#include "platform/ui/Animation.h"
#include "platform/ui/Application.h"
#include "platform/ui/Control.h"
#include "platform/ui/Event.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"
#include "platform/ui/Layer.h"
#include "platform/ui/Screen.h"
#include "platform/ui/ShapeLayer.h"
#include "platform/ui/Touch.h"
#include "platform/ui/Transaction.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"

ORV_DEFINE_CLASS(OrvPopupProgress, ui::View)

const char* const OrvKitProgressHUDDidReceiveTouchEventNotification =
    "OrvKitProgressHUDDidReceiveTouchEventNotification";
const char* const OrvKitProgressHUDDidTouchDownInsideNotification =
    "OrvKitProgressHUDDidTouchDownInsideNotification";
const char* const OrvKitProgressHUDWillDisappearNotification =
    "OrvKitProgressHUDWillDisappearNotification";
const char* const OrvKitProgressHUDDidDisappearNotification =
    "OrvKitProgressHUDDidDisappearNotification";
const char* const OrvKitProgressHUDWillAppearNotification =
    "OrvKitProgressHUDWillAppearNotification";
const char* const OrvKitProgressHUDDidAppearNotification = "OrvKitProgressHUDDidAppearNotification";
const char* const OrvKitProgressHUDStatusUserInfoKey = "OrvKitProgressHUDStatusUserInfoKey";

namespace {

// Settings shared by every show; filled by the overlay's own set-up.
gfx::Color OrvKitProgressHUDBackgroundColor;
gfx::Color OrvKitProgressHUDForegroundColor;
gfx::Font OrvKitProgressHUDFont;
double OrvKitProgressHUDRingThickness = 2;
gfx::ImagePtr OrvKitProgressHUDSuccessImage;
gfx::ImagePtr OrvKitProgressHUDErrorImage;
unsigned OrvKitProgressHUDDefaultMaskType = OrvKitProgressHUDMaskTypeNone;

constexpr double kAnimationDuration = 0.15;
constexpr unsigned kAnimationAllowUserInteraction = 1 << 1;
constexpr unsigned kAnimationBeginFromCurrentState = 1 << 2;
constexpr unsigned kAnimationLayoutSubviews = 1 << 0;
constexpr double kImageSide = 28;
constexpr double kHudCornerRadius = 14;

// A text's length as the platform counts it: UTF-16 code units.
size_t utf16Length(const std::string& utf8) {
    size_t units = 0;
    for (size_t i = 0; i < utf8.size();) {
        const unsigned char lead = static_cast<unsigned char>(utf8[i]);
        const size_t bytes = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        units += bytes == 4 ? 2 : 1;
        i += bytes;
    }
    return units;
}

// Where things stand in a box: its middle, or at y 36 above a text.
gfx::Point contentCenter(gfx::Size box, bool hasText) {
    return {box.width / 2, hasText ? 36 : box.height / 2};
}

}  // namespace

std::shared_ptr<OrvPopupProgress> OrvPopupProgress::sharedView() {
    static std::once_flag once;
    static std::shared_ptr<OrvPopupProgress> instance;
    std::call_once(once, [] {
        auto make = [] { instance = ui::makeView<OrvPopupProgress>(ui::Screen::main().bounds()); };
        // Views belong to the main thread: a first call elsewhere waits for the main loop.
        if (rt::RunLoop::isMainThread())
            make();
        else
            rt::mainQueue().sync(make);
    });
    return instance;
}

void OrvPopupProgress::initWithFrame(const gfx::Rect& frame) {
    ui::View::initWithFrame(frame);
    setUserInteractionEnabled(false);
    View::setBackgroundColor(gfx::Color::clear());
    setAlpha(0);
    setAutoresizingMask(ui::AutoresizingFlexibleWidth | ui::AutoresizingFlexibleHeight);

    OrvKitProgressHUDBackgroundColor = gfx::Color::whiteColor();
    OrvKitProgressHUDForegroundColor = gfx::Color::black();
    OrvKitProgressHUDFont = gfx::Font::preferredSubheadline();
    OrvKitProgressHUDSuccessImage = imageORVBundleNamed("style_default_hud_success");
    OrvKitProgressHUDErrorImage = imageORVBundleNamed("style_default_hud_error");
    OrvKitProgressHUDRingThickness = 2;
    OrvKitProgressHUDDefaultMaskType = OrvKitProgressHUDMaskTypeNone;
}

// ---- settings ----

void OrvPopupProgress::setBackgroundColor(const gfx::Color& color) {
    auto view = sharedView();
    OrvKitProgressHUDBackgroundColor = color;
    if (view->hudView_) view->hudView_->setBackgroundColor(color);
}

void OrvPopupProgress::setForegroundColor(const gfx::Color& color) {
    sharedView();
    OrvKitProgressHUDForegroundColor = color;
}

void OrvPopupProgress::setFont(const gfx::Font& font) {
    sharedView();
    OrvKitProgressHUDFont = font;
}

void OrvPopupProgress::setRingThickness(double width) {
    sharedView();
    OrvKitProgressHUDRingThickness = width;
}

void OrvPopupProgress::setSuccessImage(gfx::ImagePtr image) {
    sharedView();
    OrvKitProgressHUDSuccessImage = std::move(image);
}

void OrvPopupProgress::setErrorImage(gfx::ImagePtr image) {
    sharedView();
    OrvKitProgressHUDErrorImage = std::move(image);
}

void OrvPopupProgress::setDefaultMaskType(unsigned maskType) {
    sharedView();
    OrvKitProgressHUDDefaultMaskType = maskType;
}

unsigned OrvPopupProgress::defaultMaskType() {
    return OrvKitProgressHUDDefaultMaskType;
}

// ---- class operations ----

void OrvPopupProgress::show() {
    showWithStatus(std::nullopt);
}
void OrvPopupProgress::showWithMaskType(unsigned maskType) {
    showProgress(OrvKitProgressHUDUndefinedProgress, std::nullopt, maskType);
}
void OrvPopupProgress::showWithStatus(const OrvText& status) {
    showProgress(OrvKitProgressHUDUndefinedProgress, status);
}
void OrvPopupProgress::showWithStatus(const OrvText& status, unsigned maskType) {
    showProgress(OrvKitProgressHUDUndefinedProgress, status, maskType);
}
void OrvPopupProgress::showProgress(float progress) {
    showProgress(progress, std::nullopt);
}
void OrvPopupProgress::showProgress(float progress, unsigned maskType) {
    showProgress(progress, std::nullopt, maskType);
}
void OrvPopupProgress::showProgress(float progress, const OrvText& status) {
    showProgress(progress, status, OrvKitProgressHUDDefaultMaskType);
}
void OrvPopupProgress::showProgress(float progress, const OrvText& status, unsigned maskType) {
    sharedView()->showProgressNow(progress, status, maskType);
}

void OrvPopupProgress::showMessage(const OrvText& message) {
    showImage(nullptr, message);
}
void OrvPopupProgress::showSuccessWithStatus(const OrvText& status) {
    showSuccessWithStatus(status, OrvKitProgressHUDDefaultMaskType);
}
void OrvPopupProgress::showSuccessWithStatus(const OrvText& status, unsigned maskType) {
    sharedView();
    showImage(OrvKitProgressHUDSuccessImage, status, maskType);
}
void OrvPopupProgress::showErrorWithStatus(const OrvText& status) {
    showErrorWithStatus(status, OrvKitProgressHUDDefaultMaskType);
}
void OrvPopupProgress::showErrorWithStatus(const OrvText& status, unsigned maskType) {
    sharedView();
    showImage(OrvKitProgressHUDErrorImage, status, maskType);
}
void OrvPopupProgress::showImage(gfx::ImagePtr image, const OrvText& status) {
    showImage(std::move(image), status, OrvKitProgressHUDDefaultMaskType);
}
void OrvPopupProgress::showImage(gfx::ImagePtr image, const OrvText& status, unsigned maskType) {
    sharedView()->showImageNow(std::move(image), status, displayDurationForString(status),
                               maskType);
}

void OrvPopupProgress::setStatus(const OrvText& status) {
    sharedView()->setStatusNow(status);
}

void OrvPopupProgress::setOffsetFromCenter(gfx::Offset offset) {
    sharedView()->offsetFromCenter_ = offset;
}

void OrvPopupProgress::resetOffsetFromCenter() {
    setOffsetFromCenter({0, 0});
}

void OrvPopupProgress::popActivity() {
    auto view = sharedView();
    if (view->activityCount_ > 0) --view->activityCount_;
    if (view->activityCount_ == 0) view->dismissNow();
}

// Callers on other threads (download and analysis callbacks) reach the overlay too, so the
// dismissal hops to the main loop like every other show.
void OrvPopupProgress::dismiss() {
    if (rt::RunLoop::isMainThread()) {
        sharedView()->dismissNow();
    } else {
        rt::RunLoop::main().post([] { sharedView()->dismissNow(); });
    }
}

bool OrvPopupProgress::isVisible() {
    return sharedView()->alpha() == 1;
}

double OrvPopupProgress::displayDurationForString(const OrvText& text) {
    const double length = text ? static_cast<double>(utf16Length(*text)) : 0;
    return std::min(length * 0.06 + 0.5, 5.0);
}

// ---- thread bridge ----

void OrvPopupProgress::showMainThreadWithStatus(const OrvText& status) {
    rt::RunLoop::main().post([status] { showWithStatus(status, OrvKitProgressHUDMaskTypeClear); });
}

void OrvPopupProgress::showMainThreadWithMessage(const OrvText& message) {
    rt::RunLoop::main().post([message] { showMessage(message); });
}

void OrvPopupProgress::showMainThreadSuccessWithStatus(const OrvText& status) {
    rt::RunLoop::main().post([status] { showSuccessWithStatus(status); });
}

void OrvPopupProgress::showMainThreadErrorWithStatus(const OrvText& status) {
    rt::RunLoop::main().post([status] { showErrorWithStatus(status); });
}

void OrvPopupProgress::showMainThreadProgress(float progress, const OrvText& status) {
    rt::mainQueue().async([progress, status] { showProgress(progress, status); });
}

// ---- showing ----

bool OrvPopupProgress::isClear() const {
    return maskType_ == OrvKitProgressHUDMaskTypeNone ||
           maskType_ == OrvKitProgressHUDMaskTypeClear;
}

void OrvPopupProgress::showProgressNow(float progress, const OrvText& status, unsigned maskType) {
    auto overlay = overlayView();
    if (!overlay->superview()) {
        if (const auto& window = ui::Application::shared().keyWindow()) window->addSubview(overlay);
    } else {
        overlay->superview()->bringSubviewToFront(overlay.get());
    }
    if (!superview()) overlay->addSubview(self<View>());

    setFadeOutTimer(nullptr);
    imageView()->setImage(nullptr);
    imageView()->setHidden(false);
    maskType_ = maskType;
    progress_ = progress;
    stringLabel()->setText(status.value_or(""));
    status_ = status;
    updatePosition();

    if (progress >= 0) {
        indefiniteAnimatedView()->removeFromSuperview();
        backgroundRingLayer();
        ringLayer()->setStrokeEnd(progress);
        if (progress == 0) ++activityCount_;
        updatePosition();
    } else {
        ++activityCount_;
        cancelRingLayerAnimation();
        hudView()->addSubview(indefiniteAnimatedView());
    }

    overlay->setUserInteractionEnabled(maskType_ != OrvKitProgressHUDMaskTypeNone);
    overlay->setHidden(false);
    overlay->setBackgroundColor(gfx::Color::clear());
    positionHUD(nullptr);
    setNeedsDisplay();
    appear();
}

void OrvPopupProgress::appear() {
    if (alpha() == 1 && hudView()->alpha() == 1) return;
    postNotification(OrvKitProgressHUDWillAppearNotification, notificationUserInfo());
    registerNotifications();
    auto hud = hudView();
    hud->setTransform(hud->transform().scaled(1.3, 1.3));
    if (isClear()) {
        setAlpha(1);
        hud->setAlpha(0);
    }
    auto me = self<OrvPopupProgress>();
    ui::View::animateWithDuration(
        kAnimationDuration, 0, kAnimationAllowUserInteraction | kAnimationBeginFromCurrentState,
        [me, hud] {
            hud->setTransform(hud->transform().scaled(1 / 1.3, 1 / 1.3));
            if (me->isClear())
                hud->setAlpha(1);
            else
                me->setAlpha(1);
        },
        [me](bool) {
            me->postNotification(OrvKitProgressHUDDidAppearNotification,
                                 me->notificationUserInfo());
        });
}

void OrvPopupProgress::showImageNow(gfx::ImagePtr image, const OrvText& status, double duration,
                                    unsigned maskType) {
    progress_ = OrvKitProgressHUDUndefinedProgress;
    cancelRingLayerAnimation();
    if (!isVisible()) show();

    auto picture = imageView();
    picture->setTintColor(OrvKitProgressHUDForegroundColor);
    if (!image) {
        picture->setHidden(true);
    } else {
        picture->setImage(image);
        picture->setHidden(false);
    }

    maskType_ = maskType;
    stringLabel()->setText(status.value_or(""));
    status_ = status;
    updatePosition();
    indefiniteAnimatedView()->removeFromSuperview();

    // The timer holds the overlay until it fires, as the dismissal needs it.
    auto me = self<OrvPopupProgress>();
    setFadeOutTimer(
        rt::RunLoop::main().scheduleTimer(duration, false, [me](rt::Timer&) { me->dismissNow(); }));
}

void OrvPopupProgress::setStatusNow(const OrvText& status) {
    stringLabel()->setText(status.value_or(""));
    status_ = status;
    updatePosition();
}

void OrvPopupProgress::setFadeOutTimer(std::shared_ptr<rt::Timer> timer) {
    if (fadeOutTimer_) fadeOutTimer_->invalidate();
    fadeOutTimer_ = std::move(timer);
}

// ---- dismissing ----

void OrvPopupProgress::dismissNow() {
    postNotification(OrvKitProgressHUDWillDisappearNotification, notificationUserInfo());
    activityCount_ = 0;
    auto me = self<OrvPopupProgress>();
    auto hud = hudView_;
    ui::View::animateWithDuration(
        kAnimationDuration, 0, kAnimationLayoutSubviews | kAnimationAllowUserInteraction,
        [me, hud] {
            if (hud) hud->setTransform(hud->transform().scaled(0.8, 0.8));
            if (me->isClear()) {
                if (hud) hud->setAlpha(0);
            } else {
                me->setAlpha(0);
            }
        },
        [me, hud](bool) {
            if (me->alpha() == 0 || (hud && hud->alpha() == 0)) me->finishDismissal();
        });
}

void OrvPopupProgress::finishDismissal() {
    setAlpha(0);
    if (hudView_) hudView_->setAlpha(0);
    rt::NotificationCenter::defaultCenter().removeObserver(rt::Identity(this));
    cancelRingLayerAnimation();
    if (imageView_) imageView_->removeFromSuperview();
    imageView_ = nullptr;
    if (stringLabel_) stringLabel_->removeFromSuperview();
    stringLabel_ = nullptr;
    if (hudView_) hudView_->removeFromSuperview();
    hudView_ = nullptr;
    removeFromSuperview();
    if (overlayView_) overlayView_->removeFromSuperview();
    overlayView_ = nullptr;
    if (indefiniteAnimatedView_) indefiniteAnimatedView_->removeFromSuperview();
    indefiniteAnimatedView_ = nullptr;
    postNotification(OrvKitProgressHUDDidDisappearNotification, notificationUserInfo());

    if (const auto& window = ui::Application::shared().keyWindow()) {
        if (auto root = window->rootViewController()) root->setNeedsStatusBarAppearanceUpdate();
    }
}

// ---- geometry ----

void OrvPopupProgress::updatePosition() {
    auto hud = hudView();
    double hudWidth = 100;
    double hudHeight = 100;
    const bool hasText = status_.has_value();
    const bool hasImage = imageView_ && imageView_->image() && !imageView_->isHidden();
    const bool hasProgress = progress_ != OrvKitProgressHUDUndefinedProgress && progress_ >= 0;
    gfx::Rect labelRect;

    if (hasText) {
        gfx::TextStyle style;
        style.font = OrvKitProgressHUDFont;
        const gfx::Size measured = gfx::TextLayout(*status_, style, {200, 300}).size();
        const double stringWidth = measured.width;
        const double stringHeight = std::trunc(measured.height);
        hudHeight = (hasImage || hasProgress ? 80 : 20) + stringHeight;
        if (stringWidth > hudWidth) hudWidth = std::floor(stringWidth / 2) * 2;
        const double labelY = hasImage || hasProgress ? 68 : 9;
        if (hudHeight > 100) {
            labelRect = {12, labelY, hudWidth, stringHeight};
            hudWidth += 24;
        } else {
            hudWidth += 24;
            labelRect = {0, labelY, hudWidth, stringHeight};
        }
    }

    hud->setBounds({0, 0, hudWidth, hudHeight});
    const gfx::Size box{hudWidth, hudHeight};
    imageView()->setCenter(contentCenter(box, hasText));

    stringLabel()->setHidden(!hasText);
    stringLabel()->setFrame(labelRect);

    ui::Transaction::begin();
    ui::Transaction::setDisableActions(true);
    auto spinner = indefiniteAnimatedView();
    spinner->setRadius(hasText ? OrvKitProgressHUDRingRadius : OrvKitProgressHUDRingNoTextRadius);
    spinner->sizeToFit();
    spinner->setCenter(contentCenter(box, hasText));
    if (hasProgress) {
        const gfx::Point center = contentCenter(box, hasText);
        for (const auto& ring : {backgroundRingLayer(), ringLayer()}) {
            const gfx::Rect frame = ring->frame();
            ring->setFrame({center.x - frame.size.width / 2, center.y - frame.size.height / 2,
                            frame.size.width, frame.size.height});
        }
    }
    ui::Transaction::commit();
}

void OrvPopupProgress::positionHUD(const rt::Notification* notification) {
    const gfx::Rect screen = ui::Screen::main().bounds();
    setFrame(screen);

    double keyboardHeight = 0;
    double animationDuration = 0;
    if (notification) {
        const bool showing = notification->name == ui::Application::keyboardWillShowNotification ||
                             notification->name == ui::Application::keyboardDidShowNotification;
        if (showing)
            keyboardHeight = notification->doubleForKey(ui::Application::keyboardHeightKey);
        animationDuration = notification->doubleForKey(ui::Application::keyboardDurationKey);
    } else {
        keyboardHeight = visibleKeyboardHeight();
    }

    double activeHeight = screen.size.height;
    if (keyboardHeight > 0) {
        activeHeight += ui::Application::shared().statusBarFrame().size.height * 2;
    }
    activeHeight -= keyboardHeight;

    // Screen bounds follow the orientation here, so the box never turns.
    const gfx::Point center{screen.size.width / 2, std::floor(activeHeight * 0.45)};
    if (!notification) {
        moveToPoint(center, 0);
        return;
    }
    auto me = self<OrvPopupProgress>();
    ui::View::animateWithDuration(
        animationDuration, 0, kAnimationAllowUserInteraction,
        [me, center] { me->moveToPoint(center, 0); }, nullptr);
}

void OrvPopupProgress::moveToPoint(gfx::Point center, double angle) {
    auto hud = hudView();
    hud->setTransform(gfx::AffineTransform::rotation(angle));
    hud->setCenter(
        {center.x + offsetFromCenter_.horizontal, center.y + offsetFromCenter_.vertical});
}

double OrvPopupProgress::visibleKeyboardHeight() const {
    const auto& window = ui::Application::shared().keyWindow();
    if (window) {
        for (const auto& view : window->subviews()) {
            const std::string& name = view->className();
            if (name == "UIPeripheralHostView" || name == "UIKeyboard") {
                return view->bounds().size.height;
            }
            if (name == "UIInputSetContainerView") {
                for (const auto& child : view->subviews()) {
                    if (child->className() == "UIInputSetHostView") {
                        return child->bounds().size.height;
                    }
                }
            }
        }
    }
    return ui::Application::shared().keyboardHeight();
}

void OrvPopupProgress::registerNotifications() {
    auto& center = rt::NotificationCenter::defaultCenter();
    std::weak_ptr<OrvPopupProgress> weak = self<OrvPopupProgress>();
    for (const char* name : {ui::Application::didChangeStatusBarOrientationNotification,
                             ui::Application::keyboardWillHideNotification,
                             ui::Application::keyboardDidHideNotification,
                             ui::Application::keyboardWillShowNotification,
                             ui::Application::keyboardDidShowNotification}) {
        center.removeObserver(rt::Identity(this), name);
        center.addObserver(rt::Identity(this), name, [weak](const rt::Notification& n) {
            if (auto me = weak.lock()) me->positionHUD(&n);
        });
    }
}

// ---- drawing ----

void OrvPopupProgress::drawRect(gfx::Canvas& canvas, const gfx::Rect& rect) {
    const gfx::Rect b = bounds();
    if (maskType_ == OrvKitProgressHUDMaskTypeBlack) {
        canvas.fillRect(b, gfx::Color::rgb(0, 0, 0, 0.5));
    } else if (maskType_ == OrvKitProgressHUDMaskTypeGradient) {
        const gfx::Point center{b.size.width / 2, (b.size.height - visibleKeyboardHeight()) / 2};
        const double radius = std::min(b.size.width, b.size.height);
        canvas.drawRadialGradient(center, radius, gfx::Color::rgb(0, 0, 0, 0),
                                  gfx::Color::rgb(0, 0, 0, 0.75));
    }
}

// ---- parts ----

std::shared_ptr<ui::Control> OrvPopupProgress::overlayView() {
    if (!overlayView_) {
        overlayView_ = ui::makeView<ui::Control>(ui::Screen::main().bounds());
        overlayView_->setAutoresizingMask(ui::AutoresizingFlexibleWidth |
                                          ui::AutoresizingFlexibleHeight);
        overlayView_->setBackgroundColor(gfx::Color::clear());
        std::weak_ptr<OrvPopupProgress> weak = self<OrvPopupProgress>();
        overlayView_->addTarget(
            weak,
            [weak](ui::Control& control, ui::Event* event) {
                auto me = weak.lock();
                if (!me || !event) return;
                const auto touches = event->allTouches();
                const gfx::Point location =
                    touches.empty() ? gfx::Point{} : touches.front()->locationInView(me.get());
                me->overlayTouched(event, location);
            },
            ui::ControlEventTouchDown);
    }
    return overlayView_;
}

void OrvPopupProgress::overlayTouched(rt::Object* event, gfx::Point location) {
    auto& center = rt::NotificationCenter::defaultCenter();
    center.postNotification(OrvKitProgressHUDDidReceiveTouchEventNotification, rt::Identity(event));
    if (hudView_ && gfx::rectContainsPoint(hudView_->frame(), location)) {
        center.postNotification(OrvKitProgressHUDDidTouchDownInsideNotification,
                                rt::Identity(event));
    }
}

std::shared_ptr<ui::View> OrvPopupProgress::hudView() {
    if (!hudView_) {
        hudView_ = ui::makeView<ui::View>();
        hudView_->layer().setCornerRadius(kHudCornerRadius);
        hudView_->layer().setMasksToBounds(true);
        hudView_->setBackgroundColor(OrvKitProgressHUDBackgroundColor);
        hudView_->setAutoresizingMask(
            ui::AutoresizingFlexibleBottomMargin | ui::AutoresizingFlexibleTopMargin |
            ui::AutoresizingFlexibleRightMargin | ui::AutoresizingFlexibleLeftMargin);
        addSubview(hudView_);
    }
    return hudView_;
}

std::shared_ptr<ui::Label> OrvPopupProgress::stringLabel() {
    if (!stringLabel_) {
        stringLabel_ = ui::makeView<ui::Label>();
        stringLabel_->setBackgroundColor(gfx::Color::clear());
        stringLabel_->setTextAlignment(gfx::TextAlignment::Center);
        stringLabel_->setNumberOfLines(0);
    }
    if (!stringLabel_->superview()) hudView()->addSubview(stringLabel_);
    stringLabel_->setTextColor(OrvKitProgressHUDForegroundColor);
    stringLabel_->setFont(OrvKitProgressHUDFont);
    return stringLabel_;
}

std::shared_ptr<ui::ImageView> OrvPopupProgress::imageView() {
    if (!imageView_) imageView_ = ui::makeView<ui::ImageView>({0, 0, kImageSide, kImageSide});
    if (!imageView_->superview()) hudView()->addSubview(imageView_);
    return imageView_;
}

std::shared_ptr<ORVIndefiniteAnimatedView> OrvPopupProgress::indefiniteAnimatedView() {
    if (!indefiniteAnimatedView_) {
        indefiniteAnimatedView_ = ui::makeView<ORVIndefiniteAnimatedView>();
    }
    indefiniteAnimatedView_->setStrokeThickness(OrvKitProgressHUDRingThickness);
    indefiniteAnimatedView_->setStrokeColor(OrvKitProgressHUDForegroundColor);
    indefiniteAnimatedView_->sizeToFit();
    return indefiniteAnimatedView_;
}

std::shared_ptr<ui::ShapeLayer> OrvPopupProgress::ringLayer() {
    if (!ringLayer_) {
        const gfx::Point center = contentCenter(hudView()->bounds().size, status_.has_value());
        ringLayer_ = createRingLayer(
            center, status_ ? OrvKitProgressHUDRingRadius : OrvKitProgressHUDRingNoTextRadius,
            OrvKitProgressHUDRingThickness, OrvKitProgressHUDForegroundColor);
        ringLayer_->setStrokeEnd(0);
        hudView()->layer().addSublayer(ringLayer_);
    }
    return ringLayer_;
}

std::shared_ptr<ui::ShapeLayer> OrvPopupProgress::backgroundRingLayer() {
    if (!backgroundRingLayer_) {
        const gfx::Point center = contentCenter(hudView()->bounds().size, status_.has_value());
        backgroundRingLayer_ = createRingLayer(
            center, status_ ? OrvKitProgressHUDRingRadius : OrvKitProgressHUDRingNoTextRadius,
            OrvKitProgressHUDRingThickness, OrvKitProgressHUDForegroundColor.withAlpha(0.1));
        backgroundRingLayer_->setStrokeEnd(1);
        hudView()->layer().addSublayer(backgroundRingLayer_);
    }
    return backgroundRingLayer_;
}

std::shared_ptr<ui::ShapeLayer> OrvPopupProgress::createRingLayer(gfx::Point center, double radius,
                                                                  double lineWidth,
                                                                  const gfx::Color& color) {
    auto ring = orv::rt::make<ui::ShapeLayer>();
    ring->setFrame({center.x - radius, center.y - radius, radius * 2, radius * 2});
    ring->setFillColor(gfx::Color::clear());
    ring->setStrokeColor(color);
    ring->setLineWidth(lineWidth);
    ring->setLineCap(gfx::LineCap::Round);
    ring->setLineJoin(gfx::LineJoin::Bevel);
    ring->setPath(gfx::Path::arc({radius, radius}, radius, -M_PI / 2, M_PI * 3 / 2, true));
    return ring;
}

void OrvPopupProgress::cancelRingLayerAnimation() {
    ui::Transaction::begin();
    ui::Transaction::setDisableActions(true);
    if (hudView_) hudView_->layer().removeAllAnimations();
    if (ringLayer_) ringLayer_->setStrokeEnd(0);
    ui::Transaction::commit();
    if (ringLayer_) ringLayer_->removeFromSuperlayer();
    if (backgroundRingLayer_) backgroundRingLayer_->removeFromSuperlayer();
    ringLayer_ = nullptr;
    backgroundRingLayer_ = nullptr;
}

// ---- notifications ----

rt::NotificationUserInfo OrvPopupProgress::notificationUserInfo() const {
    if (!status_) return {};
    return {{OrvKitProgressHUDStatusUserInfoKey, *status_}};
}

void OrvPopupProgress::postNotification(const char* name, rt::NotificationUserInfo info) {
    rt::NotificationCenter::defaultCenter().postNotification(name, rt::Identity(this),
                                                             std::move(info));
}
