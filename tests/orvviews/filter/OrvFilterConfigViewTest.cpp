#include "orvviews/filter/OrvFilterConfigView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "frameworks/strand/VimraParameters.h"
#include "platform/ui/EventInjector.h"
#include "platform/ui/Label.h"
#include "tests/support/ScreenFixture.h"

namespace {

class Picture : public ui::View {
  public:
    void touchesBegan(const ui::TouchSet&, ui::Event*) override { ++touches; }
    int touches = 0;
};

class Listener : public orv::rt::Object, public VimraParametersListener {
  public:
    void onVimraParametersUpdate(long, const std::string&,
                                 const std::shared_ptr<VimraParameterArg>& arg) override {
        seen.push_back(arg->key() + "=" + std::to_string(std::lround(arg->value())));
    }
    std::vector<std::string> seen;
};

// A picture filling the window with the panel over its top part; the sliders' area starts
// at y 159 of the window (panel at 100, sliders 59 below its top), each slider 50 high.
class OrvFilterConfigViewTest : public orv::test::ScreenFixture {
  protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        window->makeKeyAndVisible();
        picture = ui::makeView<Picture>(window->bounds());
        window->addSubview(picture);
        panel = ui::makeView<OrvFilterConfigView>({0, 100, 375, 300});
        picture->addSubview(panel);
        injector = ui::EventInjector::injectorForWindow(window);

        params = VimraParameters::parameterWithCode("_IEBAperture", 3);
        params->appendFloatArgWithKey("blurSize", 20, 0, 40);
        params->appendFloatArgWithKey("unknownKey", 0.3);
        params->setListener(listener);
        panel->setFilterParams(params);
    }

    OrvFilterSeekbar& slider(size_t i) { return *panel->seekBars().at(i); }
    // The window point at `progress` of a slider's seek bar, by the touch's reckoning.
    gfx::Point onSlider(size_t i, double progress) {
        const OrvSeekBar& bar = *slider(i).seekBar();
        return bar.convertPointToView({bar.bounds().size.width * progress, 15}, nullptr);
    }
    void tapStateButton(double dx = 0) { injector->tap({347 + dx, 127}); }

    std::shared_ptr<Picture> picture;
    std::shared_ptr<OrvFilterConfigView> panel;
    std::shared_ptr<VimraParameters> params;
    std::shared_ptr<Listener> listener = orv::rt::make<Listener>();
    std::shared_ptr<ui::EventInjector> injector;
};

TEST_F(OrvFilterConfigViewTest, ParametersBuildOneSliderEachAndNoneHideThePanel) {
    EXPECT_FALSE(panel->isHidden());
    ASSERT_EQ(panel->seekBars().size(), 2u);
    EXPECT_EQ(slider(1).frame(), gfx::Rect(20, 50, 335, 50));
    EXPECT_EQ(slider(0).seekBar()->frame(), gfx::Rect(0, 10, 275, 30));
    EXPECT_EQ(panel->configWrap()->frame(), gfx::Rect(10, 59, 355, 100));
    EXPECT_EQ(slider(0).titleView()->text(), "模糊");
    EXPECT_EQ(slider(1).titleView()->text(), "unknownKey");
    EXPECT_DOUBLE_EQ(slider(1).seekBar()->progress(), 0.3);
    EXPECT_TRUE(panel->configWrap()->isHidden());  // folded until the state button opens it

    panel->setFilterParams(VimraParameters::parameterWithCode("_IEBGaussian", 3));
    EXPECT_TRUE(panel->isHidden());
    EXPECT_TRUE(panel->configWrap()->subviews().empty());
    panel->setFilterParams(params);
    panel->setFilterParams(nullptr);
    EXPECT_TRUE(panel->isHidden());
}

TEST_F(OrvFilterConfigViewTest, ProgressWritesTheArgumentAndShowsTwoDigits) {
    listener->seen.clear();
    slider(0).setProgress(2);
    EXPECT_EQ(slider(0).numberView()->text(), "100");
    EXPECT_DOUBLE_EQ(params->args()[0]->precent(), 1);
    slider(0).setProgress(0.05);
    EXPECT_EQ(slider(0).numberView()->text(), "05");
    slider(1).setProgress(0.29);
    EXPECT_EQ(slider(1).numberView()->text(), "29");
    EXPECT_EQ(listener->seen,
              (std::vector<std::string>{"blurSize=40", "blurSize=2", "unknownKey=0"}));
}

TEST_F(OrvFilterConfigViewTest, DraggingASliderReRendersAndResetBringsTheDefaultBack) {
    tapStateButton();
    settle();
    listener->seen.clear();
    injector->drag({onSlider(0, 0.5), onSlider(0, 0.75)}, 0.1);
    EXPECT_EQ(listener->seen.back(), "blurSize=30");
    EXPECT_EQ(slider(0).numberView()->text(), "75");
    EXPECT_EQ(picture->touches, 0);

    injector->tap({30, 125});  // the reset button
    EXPECT_EQ(slider(0).numberView()->text(), "50");
    EXPECT_DOUBLE_EQ(params->args()[0]->value(), 20);
    EXPECT_DOUBLE_EQ(slider(0).seekBar()->dragView()->center().x, 10 + 255 * 0.5);
}

TEST_F(OrvFilterConfigViewTest, TheStateButtonFoldsAndIgnoresTapsWhileAnimating) {
    tapStateButton(-12);
    EXPECT_TRUE(panel->isAniming());
    EXPECT_FALSE(panel->resetButton()->isHidden());
    tapStateButton(12);  // far enough apart to be a fresh tap, inside the animation
    settle();
    EXPECT_FALSE(panel->isAniming());
    EXPECT_FALSE(panel->configWrap()->isHidden());
    EXPECT_DOUBLE_EQ(panel->configWrap()->alpha(), 1);
    EXPECT_NEAR(panel->stateButton()->transform().b, 1, 1e-12);  // a quarter turn
    EXPECT_DOUBLE_EQ(panel->stateBg()->frame().size.height, 159);

    tapStateButton();
    EXPECT_TRUE(panel->resetButton()->isHidden());
    EXPECT_FALSE(panel->configWrap()->isHidden());  // fades out first
    settle();
    EXPECT_TRUE(panel->configWrap()->isHidden());
    EXPECT_DOUBLE_EQ(panel->stateBg()->alpha(), 0);
    EXPECT_DOUBLE_EQ(panel->stateBg()->frame().size.height, 44);
}

TEST_F(OrvFilterConfigViewTest, TouchesBesideTheControlsReachThePicture) {
    injector->tap({200, 120});  // between the reset and state buttons
    injector->tap({200, 380});  // below the sliders
    EXPECT_EQ(picture->touches, 2);
    tapStateButton();
    EXPECT_EQ(picture->touches, 2);
    panel->setFilterParams(nullptr);
    injector->tap({347, 127});
    EXPECT_EQ(picture->touches, 3);
}

}  // namespace
