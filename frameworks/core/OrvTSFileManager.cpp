#include "frameworks/core/OrvTSFileManager.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

#include "frameworks/core/OrvTSLog.h"

namespace fs = std::filesystem;

namespace {

// Writes the whole buffer, going on after short writes and interrupted calls.
bool writeAll(int fd, const std::vector<uint8_t>& data) {
    size_t done = 0;
    while (done < data.size()) {
        const ssize_t n = ::write(fd, data.data() + done, data.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += static_cast<size_t>(n);
    }
    return true;
}

// The hidden sibling template ".<name>.XXXXXX", so the temporary file is on the same file
// system as the target (rename stays atomic) and out of sight of folder listings.
std::string hiddenSiblingTemplate(const std::string& path) {
    const fs::path target(path);
    return (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
}

// Removes what a failed write left; always false, for the caller to return.
bool discardTemporary(const std::string& temp, const std::string& path, int error) {
    OrvTSLog::warn("cannot write %s: %s", path.c_str(), std::strerror(error));
    ::unlink(temp.c_str());
    return false;
}

}  // namespace

bool OrvTSFileManager::isExistFileAtPath(const std::optional<std::string>& path) {
    if (!path || path->empty()) return false;
    std::error_code ec;
    return fs::exists(*path, ec);
}

bool OrvTSFileManager::deletePath(const std::optional<std::string>& path) {
    if (!path || path->empty()) return true;
    std::error_code ec;
    fs::remove_all(*path, ec);
    if (ec) {
        OrvTSLog::warn("could not delete %s: %s", path->c_str(), ec.message().c_str());
        return false;
    }
    return true;
}

void OrvTSFileManager::deletePaths(const std::vector<std::string>& paths) {
    for (const auto& path : paths) deletePath(path);
}

bool OrvTSFileManager::createDirectoryAtPath(const std::string& path) {
    std::error_code ec;
    fs::create_directories(path, ec);
    return fs::is_directory(path, ec);
}

bool OrvTSFileManager::writeDataAtomically(const std::vector<uint8_t>& data,
                                           const std::string& path) {
    std::string temp = hiddenSiblingTemplate(path);
    const int fd = ::mkstemp(temp.data());
    if (fd < 0) {
        OrvTSLog::warn("cannot write %s: %s", path.c_str(), std::strerror(errno));
        return false;
    }
    // mkstemp makes the file 0600; a saved photo should be as readable as any other file.
    ::fchmod(fd, 0644);
    const bool written = writeAll(fd, data) && ::fsync(fd) == 0;
    const int writeError = errno;
    if (::close(fd) != 0 || !written)
        return discardTemporary(temp, path, written ? errno : writeError);
    if (::rename(temp.c_str(), path.c_str()) != 0) return discardTemporary(temp, path, errno);
    return true;
}

std::optional<std::vector<uint8_t>> OrvTSFileManager::readDataAtPath(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::vector<uint8_t> data((std::istreambuf_iterator<char>(in)),
                              std::istreambuf_iterator<char>());
    if (in.bad()) return std::nullopt;
    return data;
}

std::string OrvTSFileManager::temporaryDirectory() {
    const char* configured = std::getenv("ORV_TEMP_DIR");
    std::string dir;
    if (configured && *configured) {
        dir = configured;
    } else {
        std::error_code ec;
        fs::path system = fs::temp_directory_path(ec);
        dir = ((ec ? fs::path("/tmp") : system) / "orvviews").string();
    }
    createDirectoryAtPath(dir);
    return dir;
}

std::string OrvTSFileManager::newTemporaryPath(const std::string& extension) {
    // The counter makes names unique within the process, the pid across processes sharing the
    // folder, and the random part across runs that reuse a pid.
    static std::atomic<uint64_t> counter{0};
    static const uint64_t salt = std::random_device{}();
    const std::string dir = temporaryDirectory();
    const std::string dot = extension.empty() || extension[0] == '.' ? "" : ".";
    for (;;) {
        char name[96];
        std::snprintf(name, sizeof name, "orv-%d-%llx-%llu", static_cast<int>(::getpid()),
                      static_cast<unsigned long long>(salt & 0xffffffu),
                      static_cast<unsigned long long>(counter.fetch_add(1)));
        std::string path = dir + "/" + name + dot + extension;
        if (!isExistFileAtPath(path)) return path;
    }
}
