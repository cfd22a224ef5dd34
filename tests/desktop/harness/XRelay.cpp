#include "desktop/harness/XRelay.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace velmorand::desktop {

namespace {

constexpr std::uint8_t queryExtension = 98;
constexpr std::size_t queryExtensionHeader = 8;
constexpr std::size_t setupHeader = 12;

std::size_t number16(std::span<const std::uint8_t> bytes, std::size_t place) {
    std::uint16_t value = 0;
    std::memcpy(&value, bytes.data() + place, sizeof(value));
    return value;
}

std::size_t number32(std::span<const std::uint8_t> bytes, std::size_t place) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + place, sizeof(value));
    return value;
}

constexpr std::size_t padded(std::size_t length) {
    return (length + 3) / 4 * 4;
}

/// The length of what a client sends first; absent when too little of it is there.
std::optional<std::size_t> setupLength(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < setupHeader) return std::nullopt;
    return setupHeader + padded(number16(bytes, 6)) + padded(number16(bytes, 8));
}

/// The length of the request that the bytes begin with, which may be a long one; absent when too little is there.
std::optional<std::size_t> requestLength(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t header = 4;
    if (bytes.size() < header) return std::nullopt;
    if (const std::size_t words = number16(bytes, 2); words > 0) return words * 4;
    if (bytes.size() < 2 * header) return std::nullopt;
    return number32(bytes, header) * 4;
}

bool writeAll(int file, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = send(file, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

/// Adds what has arrived; false at the end of the connection.
bool readSome(int file, std::vector<std::uint8_t>& bytes) {
    std::array<std::uint8_t, 65536> buffer{};
    const ssize_t count = read(file, buffer.data(), buffer.size());
    if (count <= 0) return false;
    bytes.insert(bytes.end(), buffer.begin(), buffer.begin() + count);
    return true;
}

/// The address of a display (":7"), as the X library looks for it first: not in the file system but among the names
/// that end with their sockets.
std::string nameOf(std::string_view display) {
    return std::string(1, '\0') + "/tmp/.X11-unix/X" + std::string(display.substr(1));
}

/// A socket put to use under that name; -1 when it cannot be.
template <typename Use>
int openSocket(const std::string& name, const Use& use) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(name, address.sun_path);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (file < 0 || use(file, reinterpret_cast<const sockaddr*>(&address), length)) return file;
    close(file);
    return -1;
}

int listenAt(std::string_view display) {
    constexpr int mostWaiting = 4;
    return openSocket(nameOf(display), [](int file, const sockaddr* address, socklen_t length) {
        return bind(file, address, length) == 0 && listen(file, mostWaiting) == 0;
    });
}

int connectTo(std::string_view display) {
    return openSocket(nameOf(display), [](int file, const sockaddr* address, socklen_t length) {
        return connect(file, address, length) == 0;
    });
}

}  // namespace

/// One client with its connection to the server.
struct XRelay::Link {
    Link(int clientFile, int serverFile) : client(clientFile), server(serverFile) {}
    ~Link() {
        close(client);
        if (server >= 0) close(server);
    }
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    int client;
    int server;
    bool isSetUp = false;
    std::vector<std::uint8_t> unsent;
};

std::expected<std::unique_ptr<XRelay>, HarnessError> XRelay::start(Options options) {
    // Servers take the lowest number that is free.
    constexpr int firstDisplay = 1000;
    constexpr int lastDisplay = 1999;
    for (int number = firstDisplay; number <= lastDisplay; ++number) {
        auto display = fmt::format(":{}", number);
        const int listener = listenAt(display);
        if (listener < 0) continue;
        const int wakeUp = eventfd(0, EFD_CLOEXEC);
        return std::unique_ptr<XRelay>(new XRelay(std::move(options), std::move(display), listener, wakeUp));
    }
    return std::unexpected(HarnessError{"no display is free for a relay"});
}

XRelay::XRelay(Options options, std::string displayName, int listener, int wakeUp)
    : options_(std::move(options)),
      displayName_(std::move(displayName)),
      listener_(listener),
      wakeUp_(wakeUp),
      thread_([this] { run(); }) {}

XRelay::~XRelay() {
    eventfd_write(wakeUp_, 1);
    thread_.join();
    links_.clear();
    close(listener_);
    close(wakeUp_);
}

void XRelay::interruptAfter(std::size_t count, std::function<void()> action) {
    const std::scoped_lock lock(mutex_);
    requestsLeft_ = count;
    action_ = std::move(action);
}

bool XRelay::endInterruption() {
    const std::scoped_lock lock(mutex_);
    return !std::exchange(action_, nullptr);
}

void XRelay::run() {
    for (;;) {
        std::vector<pollfd> files{{wakeUp_, POLLIN, 0}, {listener_, POLLIN, 0}};
        for (const Link& link : links_) {
            files.push_back({link.client, POLLIN, 0});
            files.push_back({link.server, POLLIN, 0});
        }
        if (poll(files.data(), files.size(), -1) < 0 || files[0].revents != 0) return;
        auto file = files.begin() + 2;
        std::erase_if(links_, [&](Link& link) {
            const bool fromClient = (file++)->revents != 0;
            const bool fromServer = (file++)->revents != 0;
            return (fromClient && !passRequests(link)) || (fromServer && !passReplies(link));
        });
        if (files[1].revents != 0) accept();
    }
}

void XRelay::accept() {
    const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (client < 0) return;
    const int server = connectTo(options_.server);
    if (server < 0)
        close(client);
    else
        links_.emplace_back(client, server);
}

bool XRelay::passRequests(Link& link) {
    if (!readSome(link.client, link.unsent)) return false;
    for (;;) {
        const auto length = link.isSetUp ? requestLength(link.unsent) : setupLength(link.unsent);
        if (!length || link.unsent.size() < *length) return true;
        const auto end = link.unsent.begin() + static_cast<std::ptrdiff_t>(*length);
        std::vector<std::uint8_t> request(link.unsent.begin(), end);
        link.unsent.erase(link.unsent.begin(), end);
        if (std::exchange(link.isSetUp, true)) prepare(request);
        if (!writeAll(link.server, request)) return false;
    }
}

bool XRelay::passReplies(Link& link) {
    std::vector<std::uint8_t> bytes;
    return readSome(link.server, bytes) && writeAll(link.client, bytes);
}

/// Does what is to be done before the request goes on.
void XRelay::prepare(std::vector<std::uint8_t>& request) {
    if (request.front() == queryExtension) {
        const std::string_view name(reinterpret_cast<const char*>(request.data()) + queryExtensionHeader,
                                    number16(request, 4));
        // No server knows an extension that begins like this.
        if (std::ranges::count(options_.hiddenExtensions, name) > 0) request[queryExtensionHeader] = '?';
    }
    const std::scoped_lock lock(mutex_);
    if (!action_) return;
    if (requestsLeft_ > 0)
        --requestsLeft_;
    else
        std::exchange(action_, nullptr)();
}

}  // namespace velmorand::desktop
