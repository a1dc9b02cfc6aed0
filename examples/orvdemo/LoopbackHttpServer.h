#pragma once
// A small HTTP server on 127.0.0.1 that serves files held in memory: the cloud copies of the
// demo's album, and the downloads of the tests. One request per connection (HTTP/1.0 style),
// GET only, a thread per connection. A file can be sent slowly, in chunks with a pause between
// them, or cut off part-way to act out a connection that drops.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace orvdemo {

class LoopbackHttpServer {
  public:
    struct Options {
        size_t chunkSize = 0;                // 0 sends the body in one write
        std::chrono::milliseconds delay{0};  // pause after each chunk
        // Announces the whole length, sends this many bytes of the body, then hangs up.
        std::optional<size_t> failAfter;
    };

    LoopbackHttpServer() = default;
    ~LoopbackHttpServer();
    LoopbackHttpServer(const LoopbackHttpServer&) = delete;
    LoopbackHttpServer& operator=(const LoopbackHttpServer&) = delete;

    // Binds a free port and starts serving; false when the socket cannot be set up.
    bool start();
    // Closes the listening socket and every open connection, and waits for their threads.
    void stop();

    uint16_t port() const { return port_; }
    // "http://127.0.0.1:<port><path>"; `path` starts with "/".
    std::string url(const std::string& path) const;

    // Any thread, also while serving. Paths not added answer 404.
    void addFile(const std::string& path, std::vector<uint8_t> bytes, std::string contentType,
                 Options options);
    void addFile(const std::string& path, std::vector<uint8_t> bytes, std::string contentType);
    // How many GET requests reached the path.
    int requestCount(const std::string& path) const;

  private:
    struct File {
        std::vector<uint8_t> bytes;
        std::string contentType;
        Options options;
    };

    void acceptLoop();
    void serve(int fd);
    void sendFile(int fd, const File& file);
    bool sendAll(int fd, const void* data, size_t size);

    mutable std::mutex mutex_;
    std::map<std::string, File> files_;
    std::map<std::string, int> requests_;
    std::vector<std::thread> connections_;  // joined by stop()
    std::set<int> openSockets_;             // shut down by stop() to end slow sends
    std::atomic<bool> running_{false};
    int listenFd_ = -1;
    uint16_t port_ = 0;
    std::thread acceptThread_;
};

}  // namespace orvdemo
