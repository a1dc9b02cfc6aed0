#include "platform/ui/Responder.h"

#include <gtest/gtest.h>

#include "platform/ui/View.h"
#include "platform/ui/Window.h"
#include "tests/platform/ui/ViewTestSupport.h"

namespace orv::ui::test {
namespace {

class FocusableView : public View {
    ORV_DECLARE_CLASS(FocusableView)
  public:
    bool canBecomeFirstResponder() const override { return true; }
    int touchesSeen = 0;
    void touchesBegan(const TouchSet& touches, Event* event) override { ++touchesSeen; }
};
ORV_DEFINE_CLASS(FocusableView, View)

TEST_F(ViewTest, OneFirstResponderAtATime) {
    auto window = makeView<Window>({0, 0, 100, 100});
    auto a = makeView<FocusableView>(), b = makeView<FocusableView>();
    auto plain = makeView();
    window->addSubview(a);
    window->addSubview(b);
    EXPECT_FALSE(plain->becomeFirstResponder());
    EXPECT_TRUE(a->becomeFirstResponder());
    EXPECT_TRUE(b->becomeFirstResponder());
    EXPECT_FALSE(a->isFirstResponder());
    EXPECT_TRUE(b->isFirstResponder());
    b->removeFromSuperview();  // leaving the window gives it up
    EXPECT_FALSE(b->isFirstResponder());
}

TEST_F(ViewTest, TouchesTravelUpTheResponderChain) {
    auto parent = makeView<FocusableView>();
    auto child = makeView();
    parent->addSubview(child);
    EXPECT_EQ(child->nextResponder(), parent.get());
    child->touchesBegan({}, nullptr);
    EXPECT_EQ(parent->touchesSeen, 1);
}

}  // namespace
}  // namespace orv::ui::test
