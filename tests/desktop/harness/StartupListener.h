#pragma once

#include "desktop/harness/XConnection.h"

namespace velmorand::desktop {

/// Hears what programs tell launchers and taskbars about starts, as those hear it.
class StartupListener {
public:
    /// \p displayName as in DISPLAY. Hears what is said from now on.
    [[nodiscard]] static std::expected<StartupListener, HarnessError> connect(const std::string& displayName);

    /// The whole texts heard so far, in the order of their ends.
    [[nodiscard]] const std::vector<std::string>& heard();

private:
    explicit StartupListener(XConnection connection) : connection_(std::move(connection)) {}
    void take(const xcb_client_message_event_t& piece);

    XConnection connection_;
    /// What is not whole yet, by the window that its pieces name.
    std::map<xcb_window_t, std::string> begun_;
    std::vector<std::string> heard_;
};

}  // namespace velmorand::desktop
