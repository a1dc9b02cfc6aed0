#include "orvviews/views/OrvAlertView.h"

#include <gtest/gtest.h>

#include "orvviews/views/OrvKitICAlertViewInstance.h"
#include "platform/ui/EventInjector.h"
#include "platform/ui/Renderer.h"
#include "tests/support/ScreenFixture.h"

namespace {

class OrvAlertViewTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        root = rt::make<ui::ViewController>();
        showRoot(root);
    }
    void tapButton(const std::shared_ptr<ui::Button>& button) {
        const gfx::Rect frame = button->convertRectToView(button->bounds(), nullptr);
        ui::EventInjector::injectorForWindow(window)->tap(
            {gfx::rectGetMidX(frame), gfx::rectGetMidY(frame)});
        settle(0.5);
    }
    std::shared_ptr<ui::ViewController> root;
};

TEST_F(OrvAlertViewTest, AnAlertRunsTheTappedActionOnceAndGoesAway) {
    std::vector<std::string> chosen;
    auto record = [&](OrvAlertAction& action) { chosen.push_back(action.title()); };
    auto alert = OrvAlertView::alertWithController(root, std::string("Remove this group?"),
                                                   std::string("Its looks will be deleted."));
    alert->addAction(OrvAlertAction::actionCancelWithTitle("Cancel", record));
    alert->addAction(nullptr);
    alert->addAction(OrvAlertAction::actionDestructiveWithTitle("Remove", record));
    alert->addAction(OrvAlertAction::actionWithTitle("Later", record));
    EXPECT_EQ(alert->actions().size(), 3u);
    alert->show();
    settle(0.5);
    ASSERT_EQ(root->presentedViewController(), alert->presented());
    const auto& buttons = alert->presented()->buttons();
    ASSERT_EQ(buttons.size(), 3u);
    ui::Renderer::writePNG(*window, "/tmp/orv_alert.png");
    tapButton(buttons[1]);
    EXPECT_EQ(chosen, std::vector<std::string>{"Remove"});
    EXPECT_EQ(root->presentedViewController(), nullptr);
}

TEST_F(OrvAlertViewTest, SheetsKeepCancelApartAndOtherStylesShowNothing) {
    std::vector<std::string> chosen;
    auto record = [&](OrvAlertAction& action) { chosen.push_back(action.title()); };
    auto sheet = OrvAlertView::actionSheetWithController(root, std::nullopt, std::nullopt);
    sheet->addAction(OrvAlertAction::actionWithTitle("Camera", record));
    sheet->addAction(OrvAlertAction::actionCancelWithTitle("Cancel", record));
    sheet->addAction(OrvAlertAction::actionCancelWithTitle("Second cancel", record));
    sheet->show();
    settle(0.5);
    ASSERT_TRUE(sheet->presented());
    // The first cancel button lies at the bottom of the screen, apart from the others.
    const auto& cancel = sheet->presented()->buttons()[1];
    const gfx::Rect frame = cancel->convertRectToView(cancel->bounds(), nullptr);
    EXPECT_GT(gfx::rectGetMaxY(frame), 667 - 20);
    ui::Renderer::writePNG(*window, "/tmp/orv_sheet.png");
    tapButton(cancel);
    EXPECT_EQ(chosen, std::vector<std::string>{"Cancel"});
    // The cancel handler runs the first cancel action; indices out of range do nothing.
    sheet->handleCancelAction();
    sheet->handleActionWithIndex(7);
    sheet->handleActionWithIndex(-1);
    sheet->handleActionWithIndex(0);
    EXPECT_EQ(chosen, (std::vector<std::string>{"Cancel", "Cancel", "Camera"}));

    auto odd = rt::make<OrvAlertView>();
    odd->initWithController(root, std::string("?"), std::nullopt, 2);
    odd->show();
    settle(0.3);
    EXPECT_EQ(odd->presented(), nullptr);
    EXPECT_EQ(root->presentedViewController(), nullptr);
}

TEST_F(OrvAlertViewTest, TheKeeperLetsAnAlertGoOnTheSecondClear) {
    auto& keeper = OrvKitICAlertViewInstance::instance();
    auto alert = OrvAlertView::alertWithController(root, std::nullopt, std::string("Hi"));
    keeper.setAlertView(alert);
    keeper.clear();
    EXPECT_EQ(keeper.alertView(), alert);
    keeper.clear();
    EXPECT_EQ(keeper.alertView(), nullptr);
    // A ready-made alert with one "Done" button.
    auto done = OrvAlertView::alertShowWithController(root, std::string("Saved"));
    settle(0.5);
    ASSERT_TRUE(done->presented());
    ASSERT_EQ(done->presented()->buttons().size(), 1u);
    tapButton(done->presented()->buttons()[0]);
    EXPECT_EQ(root->presentedViewController(), nullptr);
}

}  // namespace
