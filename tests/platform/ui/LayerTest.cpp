#include "platform/ui/Layer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "platform/ui/Animation.h"
#include "platform/ui/View.h"
#include "tests/platform/ui/ViewTestSupport.h"

namespace orv::ui::test {
namespace {

using Results = std::shared_ptr<std::vector<bool>>;

std::shared_ptr<BasicAnimation> strokeEnd(double from, double to, double duration,
                                          const Results& results) {
    auto animation = BasicAnimation::withKeyPath("strokeEnd");
    animation->setFromValue(from);
    animation->setToValue(to);
    animation->setDuration(duration);
    animation->setOnStop([results](bool finished) { results->push_back(finished); });
    return animation;
}

class LayerAnimationTest : public ViewTest {
  protected:
    std::shared_ptr<Layer> layer = rt::make<Layer>();
    Results stops = std::make_shared<std::vector<bool>>();
};

TEST_F(LayerAnimationTest, RunsForItsDurationThenGoes) {
    layer->addAnimation(strokeEnd(0, 1, 2, stops), "grow");
    EXPECT_EQ(layer->animationKeys(), std::vector<std::string>{"grow"});
    runFor(0.5);
    EXPECT_NEAR(layer->presentationValue("strokeEnd", 0.3), 0.25, 1e-9);
    EXPECT_EQ(layer->presentationValue("strokeStart", 0.3), 0.3);
    runFor(1.49);
    EXPECT_TRUE(stops->empty());
    runFor(0.02);
    EXPECT_EQ(*stops, std::vector<bool>{true});
    EXPECT_TRUE(layer->animationKeys().empty());
    EXPECT_EQ(layer->presentationValue("strokeEnd", 0.3), 0.3);
}

TEST_F(LayerAnimationTest, KeptAnimationsStayAndHoldTheirEndWhenFilledForwards) {
    auto animation = strokeEnd(0, 0.8, 1, stops);
    animation->setRemovedOnCompletion(false);
    animation->setFillMode(kFillModeForwards);
    layer->addAnimation(animation, "grow");
    runFor(5);
    EXPECT_EQ(*stops, std::vector<bool>{true});
    EXPECT_EQ(layer->animationForKey("grow"), animation);
    EXPECT_NEAR(layer->presentationValue("strokeEnd", 0), 0.8, 1e-9);
}

TEST_F(LayerAnimationTest, EndlessAnimationsRunUntilRemoved) {
    auto spin = BasicAnimation::withKeyPath("transform.rotation");
    spin->setToValue(2 * M_PI);
    spin->setDuration(1);
    spin->setRepeatCount(HUGE_VALF);
    spin->setOnStop([this](bool finished) { stops->push_back(finished); });
    layer->addAnimation(spin, "rotate");
    runFor(100.25);
    EXPECT_TRUE(stops->empty());
    const auto turned = layer->presentationTransform({});
    EXPECT_NEAR(turned.b, 1, 1e-6);  // a quarter turn into its 101st cycle

    layer->removeAnimationForKey("rotate");
    EXPECT_TRUE(stops->empty());  // told on the next turn, not inside the call
    runPending();
    EXPECT_EQ(*stops, std::vector<bool>{false});
    EXPECT_TRUE(layer->presentationTransform({}).isIdentity());
}

TEST_F(LayerAnimationTest, ASecondAnimationUnderTheSameKeyReplacesTheFirst) {
    Results later = std::make_shared<std::vector<bool>>();
    layer->addAnimation(strokeEnd(0, 1, 1, stops), "grow");
    layer->addAnimation(strokeEnd(1, 0, 1, later), "grow");
    EXPECT_EQ(layer->animationKeys().size(), 1u);
    runFor(1.01);
    EXPECT_EQ(*stops, std::vector<bool>{false});
    EXPECT_EQ(*later, std::vector<bool>{true});
}

TEST_F(LayerAnimationTest, GroupsRunTheirChildrenOnTheGroupClock) {
    auto start = BasicAnimation::withKeyPath("strokeStart");
    start->setFromValue(0);
    start->setToValue(0.5);
    start->setDuration(1);
    auto end = strokeEnd(0.5, 1, 1, stops);
    auto group = rt::make<AnimationGroup>();
    group->setAnimations({start, end});
    group->setDuration(1);
    group->setRepeatCount(HUGE_VALF);
    layer->addAnimation(group, "stroke");
    runFor(3.5);
    EXPECT_NEAR(layer->presentationValue("strokeStart", 0), 0.25, 1e-9);
    EXPECT_NEAR(layer->presentationValue("strokeEnd", 0), 0.75, 1e-9);
    layer->removeAllAnimations();
    EXPECT_EQ(layer->presentationValue("strokeEnd", 0), 0);
}

TEST_F(LayerAnimationTest, AViewsLayerFollowsTheView) {
    auto view = makeView({10, 10, 40, 20});
    Layer& viewLayer = view->layer();
    EXPECT_EQ(viewLayer.delegateView(), view.get());
    EXPECT_EQ(viewLayer.bounds(), gfx::Rect(0, 0, 40, 20));
    viewLayer.setPosition({100, 100});
    EXPECT_EQ(view->frame(), gfx::Rect(80, 90, 40, 20));
    viewLayer.setFrame({0, 0, 10, 10});
    EXPECT_EQ(view->frame(), gfx::Rect(0, 0, 10, 10));
    EXPECT_EQ(viewLayer.frame(), view->frame());
    view->setClipsToBounds(true);
    EXPECT_TRUE(viewLayer.masksToBounds());
    view->setAlpha(0.25);
    EXPECT_EQ(viewLayer.presentationOpacity(), 0.25);
}

TEST_F(LayerAnimationTest, SublayersChangeParents) {
    auto a = rt::make<Layer>();
    auto child = rt::make<Layer>();
    layer->addSublayer(child);
    a->addSublayer(child);
    EXPECT_TRUE(layer->sublayers().empty());
    EXPECT_EQ(child->superlayer(), a.get());
    child->removeFromSuperlayer();
    EXPECT_EQ(child->superlayer(), nullptr);
    EXPECT_TRUE(a->sublayers().empty());
}

}  // namespace
}  // namespace orv::ui::test
