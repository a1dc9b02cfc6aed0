#include "examples/orvdemo/LoopbackHttpServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <sstream>

namespace orvdemo {

namespace {

// The path of "GET <path> HTTP/1.x"; empty for anything else.
std::string requestedPath(int fd) {
    std::string head;
    char buffer[1024];
    while (head.find("\r\n\r\n") == std::string::npos && head.size() < 16 * 1024) {
        const ssize_t n = ::recv(fd, buffer, sizeof buffer, 0);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        head.append(buffer, static_cast<size_t>(n));
    }
    std::istringstream line(head.substr(0, head.find("\r\n")));
    std::string method, path;
    line >> method >> path;
    return method == "GET" ? path : std::string();
}

}  // namespace

LoopbackHttpServer::~LoopbackHttpServer() {
    stop();
}

bool LoopbackHttpServer::start() {
    if (running_) return true;
    listenFd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (listenFd_ < 0) return false;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;  // any free port
    socklen_t length = sizeof address;
    if (::bind(listenFd_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listenFd_, 16) != 0 ||
        ::getsockname(listenFd_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        ::close(listenFd_);
        listenFd_ = -1;
        return false;
    }
    port_ = ntohs(address.sin_port);
    running_ = true;
    acceptThread_ = std::thread([this] { acceptLoop(); });
    return true;
}

void LoopbackHttpServer::stop() {
    if (!running_.exchange(false)) return;
    // shutdown() wakes the accept() and any send() in progress; the threads then close up.
    ::shutdown(listenFd_, SHUT_RDWR);
    acceptThread_.join();
    ::close(listenFd_);
    listenFd_ = -1;
    std::vector<std::thread> connections;
    {
        std::lock_guard lock(mutex_);
        for (int fd : openSockets_) ::shutdown(fd, SHUT_RDWR);
        connections.swap(connections_);
    }
    for (auto& connection : connections) connection.join();
}

std::string LoopbackHttpServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
}

void LoopbackHttpServer::addFile(const std::string& path, std::vector<uint8_t> bytes,
                                 std::string contentType, Options options) {
    std::lock_guard lock(mutex_);
    files_[path] = File{std::move(bytes), std::move(contentType), options};
}

void LoopbackHttpServer::addFile(const std::string& path, std::vector<uint8_t> bytes,
                                 std::string contentType) {
    addFile(path, std::move(bytes), std::move(contentType), Options{});
}

int LoopbackHttpServer::requestCount(const std::string& path) const {
    std::lock_guard lock(mutex_);
    auto it = requests_.find(path);
    return it == requests_.end() ? 0 : it->second;
}

void LoopbackHttpServer::acceptLoop() {
    while (running_) {
        const int fd = ::accept4(listenFd_, nullptr, nullptr, SOCK_CLOEXEC);
        if (fd < 0) {
            if (errno == EINTR || errno == ECONNABORTED) continue;
            return;
        }
        std::lock_guard lock(mutex_);
        if (!running_) {
            ::close(fd);
            return;
        }
        openSockets_.insert(fd);
        connections_.emplace_back([this, fd] { serve(fd); });
    }
}

void LoopbackHttpServer::serve(int fd) {
    const std::string path = requestedPath(fd);
    std::optional<File> file;
    {
        std::lock_guard lock(mutex_);
        if (!path.empty()) ++requests_[path];
        auto it = files_.find(path);
        if (it != files_.end()) file = it->second;
    }
    if (file) {
        sendFile(fd, *file);
    } else {
        const std::string notFound =
            "HTTP/1.0 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
        sendAll(fd, notFound.data(), notFound.size());
    }
    std::lock_guard lock(mutex_);
    openSockets_.erase(fd);
    ::close(fd);
}

void LoopbackHttpServer::sendFile(int fd, const File& file) {
    const std::string head = "HTTP/1.0 200 OK\r\nContent-Type: " + file.contentType +
                             "\r\nContent-Length: " + std::to_string(file.bytes.size()) +
                             "\r\nConnection: close\r\n\r\n";
    if (!sendAll(fd, head.data(), head.size())) return;
    const size_t total = std::min(file.bytes.size(), file.options.failAfter.value_or(SIZE_MAX));
    const size_t chunk = file.options.chunkSize > 0 ? file.options.chunkSize : total;
    for (size_t sent = 0; sent < total && running_;) {
        const size_t n = std::min(chunk, total - sent);
        if (!sendAll(fd, file.bytes.data() + sent, n)) return;
        sent += n;
        if (file.options.delay.count() > 0) std::this_thread::sleep_for(file.options.delay);
    }
}

bool LoopbackHttpServer::sendAll(int fd, const void* data, size_t size) {
    const auto* bytes = static_cast<const uint8_t*>(data);
    while (size > 0) {
        const ssize_t n = ::send(fd, bytes, size, MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        bytes += n;
        size -= static_cast<size_t>(n);
    }
    return true;
}

}  // namespace orvdemo
