#pragma once

#include <optional>
#include <string>

namespace velmorand {

/// What a launcher gave to the start of this process, so that its first window may take the focus. The same thing in the
/// words of two specifications; each is absent where the launcher does not know it.
struct StartupTokens {
    /// XDG_ACTIVATION_TOKEN
    std::optional<std::string> activationToken = {};
    /// DESKTOP_STARTUP_ID
    std::optional<std::string> desktopStartupId = {};

    bool operator==(const StartupTokens&) const = default;
};

/// A token as somebody gives it; absent when it is null, empty or no text that the bus would take.
[[nodiscard]] std::optional<std::string> startupToken(const char* text);

/// Takes the tokens out of the environment: they are good for one window, not for the programs that this one starts, and
/// the toolkit must not give them to a window that is shown an hour later. Before any thread is started.
[[nodiscard]] StartupTokens takeStartupTokens();

}  // namespace velmorand
