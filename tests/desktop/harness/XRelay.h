#pragma once

#include "desktop/harness/HarnessError.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace velmorand::desktop {

/// Stands between a client and its X server and passes everything on, request by request: so a test can act between
/// two requests of a call that does not return in between, and make a server look as if it were another one.
class XRelay {
public:
    struct Options {
        /// Of the real server, as in DISPLAY: ":7".
        std::string server = {};
        /// The server seems not to have these extensions.
        std::vector<std::string> hiddenExtensions = {};
    };

    [[nodiscard]] static std::expected<std::unique_ptr<XRelay>, HarnessError> start(Options options);
    /// Its clients lose their connection.
    ~XRelay();

    XRelay(const XRelay&) = delete;
    XRelay& operator=(const XRelay&) = delete;

    /// As in DISPLAY.
    [[nodiscard]] const std::string& displayName() const { return displayName_; }

    /// Lets \p count more requests pass, then calls \p action before the next one goes on. The call is made by a thread
    /// of the relay's own, while the client that sent the request waits or goes on.
    void interruptAfter(std::size_t count, std::function<void()> action);
    /// Takes the interruption back. Whether it had happened.
    bool endInterruption();

private:
    struct Link;

    XRelay(Options options, std::string displayName, int listener, int wakeUp);

    void run();
    void accept();
    [[nodiscard]] bool passRequests(Link& link);
    [[nodiscard]] static bool passReplies(Link& link);
    void prepare(std::vector<std::uint8_t>& request);

    Options options_;
    std::string displayName_;
    int listener_;
    int wakeUp_;
    std::list<Link> links_;
    std::mutex mutex_;
    std::size_t requestsLeft_ = 0;
    std::function<void()> action_;
    std::thread thread_;
};

}  // namespace velmorand::desktop
