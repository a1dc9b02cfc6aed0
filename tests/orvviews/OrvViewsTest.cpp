#include <gtest/gtest.h>

#include "orvviews/OrvViews.h"
#include "orvviews/popup/OrvPopupMessage.h"

namespace {

TEST(OrvViews, HubIsMadeOnceAndCanBeReplaced) {
    auto views = OrvViews::shared();
    EXPECT_EQ(views, OrvViews::shared());
    auto first = views->messageHub();
    EXPECT_EQ(first, views->messageHub());
    EXPECT_TRUE(std::dynamic_pointer_cast<OrvPopupMessage>(first));

    auto own = orv::rt::make<OrvPopupMessage>();
    views->setMessageHub(own);
    EXPECT_EQ(views->messageHub(), own);

    views->setMessageHub(nullptr);
    auto fresh = views->messageHub();
    EXPECT_TRUE(fresh);
    EXPECT_NE(fresh, own);
    EXPECT_NE(fresh, first);
}

}  // namespace
