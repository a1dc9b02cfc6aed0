#pragma once
// Points the main bundle at a private, empty resources folder for one test, so that a package
// reads only the catalogue and pictures the test writes, and logs are captured.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "platform/rt/Bundle.h"
#include "tests/platform/rt/RtTestHelpers.h"
#include "tests/support/TestEnvironment.h"

namespace orv::test {

class ResourcesFolderFixture : public ::testing::Test {
  protected:
    // The package under test forgets what it read, before and after the test.
    virtual void reloadPackage() = 0;

    void SetUp() override {
        root = std::filesystem::path(TestEnvironment::tempDir()) / "package-resources";
        std::filesystem::remove_all(root);
        std::filesystem::create_directories(root);
        env.emplace("ORV_RESOURCES", root.c_str());
        reload();
    }
    void TearDown() override {
        env.reset();
        reload();
    }

    // Writes a file under the folder, making its parent folders.
    void write(const std::filesystem::path& relative, const std::string& text) const {
        std::filesystem::create_directories((root / relative).parent_path());
        std::ofstream(root / relative) << text;
    }
    size_t logged(const std::string& part) const {
        size_t count = 0;
        for (const std::string& line : capture.lines()) {
            count += line.find(part) != std::string::npos;
        }
        return count;
    }

    std::filesystem::path root;
    std::optional<rt::test::ScopedEnv> env;
    rt::test::LogCapture capture;

  private:
    void reload() {
        rt::Bundle::main().reloadForTesting();
        reloadPackage();
    }
};

}  // namespace orv::test
