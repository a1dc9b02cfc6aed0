#include <gtest/gtest.h>

#include <thread>

#include "orvviews/OrvViews.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "orvviews/views/OrvViewController.h"
#include "platform/gfx/TextLayout.h"
#include "platform/rt/NotificationCenter.h"
#include "platform/ui/Control.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"
#include "platform/ui/Renderer.h"
#include "tests/support/ScreenFixture.h"

namespace {

class OrvPopupProgressTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        showRoot(orv::rt::make<OrvViewController>());
        window->rootViewController()->view()->setBackgroundColor(gfx::Color::whiteColor());
        OrvPopupProgress::setDefaultMaskType(OrvKitProgressHUDMaskTypeNone);
    }
    void TearDown() override {
        OrvPopupProgress::dismiss();
        settle(1);
        ScreenFixture::TearDown();
    }
    static std::shared_ptr<OrvPopupProgress> hud() { return OrvPopupProgress::sharedView(); }
};

TEST_F(OrvPopupProgressTest, DisplayDurationGrowsWithTheTextUpToFiveSeconds) {
    EXPECT_DOUBLE_EQ(OrvPopupProgress::displayDurationForString(std::string(100, 'a')), 5.0);
    EXPECT_NEAR(OrvPopupProgress::displayDurationForString("0123456789"), 1.1, 1e-9);
    EXPECT_NEAR(OrvPopupProgress::displayDurationForString("处理完成"), 0.74, 1e-9);
    EXPECT_DOUBLE_EQ(OrvPopupProgress::displayDurationForString(""), 0.5);
    EXPECT_DOUBLE_EQ(OrvPopupProgress::displayDurationForString(std::nullopt), 0.5);
}

TEST_F(OrvPopupProgressTest, ActivityCountsSpinnersAndProgressStarts) {
    OrvPopupProgress::showProgress(0.5f, "half");
    OrvPopupProgress::showProgress(0.5f, "half");
    EXPECT_EQ(hud()->activityCount(), 0u);
    OrvPopupProgress::showProgress(0.0f, "start");
    OrvPopupProgress::showProgress(0.0f, "start");
    EXPECT_EQ(hud()->activityCount(), 2u);
    OrvPopupProgress::showWithStatus("busy");
    EXPECT_EQ(hud()->activityCount(), 3u);

    OrvPopupProgress::popActivity();
    OrvPopupProgress::popActivity();
    settle();
    EXPECT_TRUE(OrvPopupProgress::isVisible());
    OrvPopupProgress::popActivity();
    settle();
    EXPECT_FALSE(OrvPopupProgress::isVisible());
    EXPECT_FALSE(hud()->hasHudView());

    // At 0 already, a pop still dismisses.
    OrvPopupProgress::showProgress(0.3f);
    EXPECT_EQ(hud()->activityCount(), 0u);
    OrvPopupProgress::popActivity();
    settle();
    EXPECT_FALSE(OrvPopupProgress::isVisible());
}

TEST_F(OrvPopupProgressTest, SettingsSurviveAndTheHubStatusUsesTheClearMask) {
    OrvPopupProgress::setDefaultMaskType(OrvKitProgressHUDMaskTypeBlack);
    EXPECT_EQ(OrvPopupProgress::defaultMaskType(), OrvKitProgressHUDMaskTypeBlack);

    OrvViews::shared()->messageHub()->setStatus("loading");
    EXPECT_FALSE(hud()->hasHudView());  // served on the next turn of the main loop
    orv::rt::RunLoop::main().runPending();
    EXPECT_EQ(hud()->maskType(), OrvKitProgressHUDMaskTypeClear);
    EXPECT_FALSE(hud()->overlayView()->isHidden());
    EXPECT_TRUE(hud()->overlayView()->isUserInteractionEnabled());

    OrvViews::shared()->messageHub()->showError("failed");
    orv::rt::RunLoop::main().runPending();
    EXPECT_EQ(hud()->maskType(), OrvKitProgressHUDMaskTypeBlack);
}

TEST_F(OrvPopupProgressTest, NotificationsComeInOrderWithTheText) {
    std::vector<std::string> seen;
    auto& center = orv::rt::NotificationCenter::defaultCenter();
    int token;
    for (const char* name :
         {OrvKitProgressHUDWillAppearNotification, OrvKitProgressHUDDidAppearNotification,
          OrvKitProgressHUDWillDisappearNotification, OrvKitProgressHUDDidDisappearNotification}) {
        center.addObserver(&token, name, [&seen](const orv::rt::Notification& n) {
            seen.push_back(n.name + ":" + n.stringForKey(OrvKitProgressHUDStatusUserInfoKey));
        });
    }
    OrvPopupProgress::showSuccessWithStatus("done");
    settle(0.2);
    settle(OrvPopupProgress::displayDurationForString("done") + 0.3);
    center.removeObserver(&token);
    EXPECT_EQ(seen, (std::vector<std::string>{
                        // the picture show first shows the bare overlay, then sets the text
                        "OrvKitProgressHUDWillAppearNotification:",
                        "OrvKitProgressHUDDidAppearNotification:done",
                        "OrvKitProgressHUDWillDisappearNotification:done",
                        "OrvKitProgressHUDDidDisappearNotification:done"}));
    EXPECT_FALSE(OrvPopupProgress::isVisible());
}

TEST_F(OrvPopupProgressTest, AMessageFadesOutAfterItsDuration) {
    OrvPopupProgress::showMessage("0123456789");  // 1.1 s
    settle(1.0);
    EXPECT_TRUE(OrvPopupProgress::isVisible());
    EXPECT_TRUE(hud()->imageView()->isHidden());
    settle(0.5);
    EXPECT_FALSE(OrvPopupProgress::isVisible());
}

TEST_F(OrvPopupProgressTest, CallsFromOtherThreadsAreServedOnTheMainLoop) {
    std::thread([] {
        OrvViews::shared()->messageHub()->showProgress(0.4f, "copying");
        OrvViews::shared()->messageHub()->dismiss();
    }).join();
    orv::rt::RunLoop::main().runPending();
    EXPECT_FLOAT_EQ(hud()->progress(), 0.4f);
    settle();
    EXPECT_FALSE(OrvPopupProgress::isVisible());
}

TEST_F(OrvPopupProgressTest, BoxIsSizedForItsTextAndPlacedAboveTheMiddle) {
    OrvPopupProgress::showWithStatus("正在处理...", OrvKitProgressHUDMaskTypeBlack);
    settle();
    auto box = hud()->hudView();

    gfx::TextStyle style;
    style.font = gfx::Font::preferredSubheadline();
    const gfx::Size text = gfx::TextLayout("正在处理...", style, {200, 300}).size();
    // A spinner is neither a picture nor a progress: the box only grows by 20 for the text.
    const double height = 20 + std::trunc(text.height);
    const double width = (text.width > 100 ? std::floor(text.width / 2) * 2 : 100) + 24;
    EXPECT_DOUBLE_EQ(box->bounds().size.height, height);
    EXPECT_DOUBLE_EQ(box->bounds().size.width, width);
    EXPECT_DOUBLE_EQ(box->center().x, 375 / 2.0);
    EXPECT_DOUBLE_EQ(box->center().y, std::floor(667 * 0.45));

    EXPECT_DOUBLE_EQ(hud()->stringLabel()->frame().origin.y, 9);

    // Pixels: the mask darkens the white screen by half and the box stays white.
    const auto bitmap = ui::Renderer::render(*window);
    const double scale = 2;
    auto pixel = [&](double x, double y) { return bitmap->pixel(int(x * scale), int(y * scale)); };
    const uint8_t* outside = pixel(20, 20);
    EXPECT_NEAR(outside[0], 128, 2);
    EXPECT_EQ(outside[3], 255);
    const gfx::Rect frame = box->frame();
    const uint8_t* insideCorner = pixel(frame.origin.x + 8, frame.origin.y + frame.size.height - 6);
    EXPECT_GE(insideCorner[0], 250);
    const uint8_t* justOutside = pixel(frame.origin.x - 3, gfx::rectGetMidY(frame));
    EXPECT_NEAR(justOutside[0], 128, 2);
}

}  // namespace
