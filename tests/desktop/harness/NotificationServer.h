#pragma once

#include "desktop/harness/TestDesktop.h"

#include <string>
#include <vector>

namespace velmorand::desktop {

/// A notification as the user saw it.
struct ShownNotification {
    /// The server's number: one that takes the place of another has the same.
    std::string number;
    std::string title;
    std::string body;

    friend bool operator==(const ShownNotification&, const ShownNotification&) = default;
};

/// A real notification server (dunst) on a test desktop. It goes with the object.
class NotificationServer {
public:
    /// Returns when it is ready to show something. \p desktop must outlive it.
    [[nodiscard]] static std::expected<NotificationServer, HarnessError> start(TestDesktop& desktop);

    /// Everything that it has shown since its start, in order. Texts are on one line each: line feeds are "\n".
    [[nodiscard]] std::vector<ShownNotification> shown() const;

private:
    NotificationServer(ChildProcess process, std::filesystem::path record)
        : process_(std::move(process)), record_(std::move(record)) {}

    ChildProcess process_;
    std::filesystem::path record_;
};

}  // namespace velmorand::desktop
