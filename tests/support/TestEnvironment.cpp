#include "tests/support/TestEnvironment.h"

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "platform/rt/RunLoop.h"

namespace orv::test {

namespace {
std::string& dir() {
    static std::string d;
    return d;
}
}  // namespace

const std::string& TestEnvironment::tempDir() {
    return dir();
}

void TestEnvironment::SetUp() {
    char pattern[] = "/tmp/orv-tests-XXXXXX";
    dir() = ::mkdtemp(pattern);
    ::setenv("ORV_DEFAULTS_PATH", (dir() + "/defaults.json").c_str(), 1);
    ::setenv("ORV_LOCALE", "zh_CN", 1);
    ::setenv("ORV_TEMP_DIR", (dir() + "/temp").c_str(), 1);
    ::setenv("ORV_ALBUM_PATH", (dir() + "/album").c_str(), 1);
    rt::RunLoop::main().setClock(std::make_shared<rt::ManualClock>());
}

void TestEnvironment::TearDown() {
    std::error_code ec;
    std::filesystem::remove_all(dir(), ec);
}

}  // namespace orv::test
