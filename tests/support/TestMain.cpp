#include <gtest/gtest.h>

#include "tests/support/TestEnvironment.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new orv::test::TestEnvironment);
    return RUN_ALL_TESTS();
}
