#include <gtest/gtest.h>

#include <fstream>

#include <nlohmann/json.hpp>

#include "frameworks/core/OrvStatistics.h"
#include "tests/support/TestEnvironment.h"

namespace {

TEST(OrvStatistics, FlushAddsToTheStoredTotals) {
    const std::string path = orv::test::TestEnvironment::tempDir() + "/stats.json";
    ::setenv("ORV_STATISTICS_PATH", path.c_str(), 1);
    OrvStatistics::resetForTesting();

    OrvStatistics::appendWithComponentIdt(0x405000);
    OrvStatistics::appendWithComponentIdt(0x405000);
    OrvStatistics::flushData();
    EXPECT_TRUE(OrvStatistics::pendingCounts().empty());
    OrvStatistics::appendWithComponentIdt(0x405000);
    OrvStatistics::appendWithComponentIdt(0x201000);
    OrvStatistics::flushData();

    std::ifstream in(path);
    const auto totals = nlohmann::json::parse(in);
    EXPECT_EQ(totals["0x405000"], 3);
    EXPECT_EQ(totals["0x201000"], 1);
    ::unsetenv("ORV_STATISTICS_PATH");
}

}  // namespace
