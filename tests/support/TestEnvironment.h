#pragma once
#include <gtest/gtest.h>

#include <string>

namespace orv::test {

// Binds the main run loop to the test thread, on a manual clock, and points the user defaults,
// the library's temporary files and the album at a private temporary folder, so that tests
// never touch the user's own files.
class TestEnvironment : public ::testing::Environment {
  public:
    void SetUp() override;
    void TearDown() override;

    static const std::string& tempDir();
};

}  // namespace orv::test
