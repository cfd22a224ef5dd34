#pragma once

#include "platform/LoginItemService.h"

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

namespace velmorand {

/// Whether the program is started when the user logs in.
enum class LaunchAtLoginStatus : std::uint8_t { enabled, disabled, requiresApproval, unavailable };

/// Whether a switch shows the status as on: a pending approval counts as on.
[[nodiscard]] constexpr bool isShownAsOn(LaunchAtLoginStatus status) {
    return status == LaunchAtLoginStatus::enabled || status == LaunchAtLoginStatus::requiresApproval;
}

/// What the user is told where the system cannot start this copy of the program.
inline constexpr std::string_view launchAtLoginUnavailableMessage =
    "Launch at Login is unavailable for this copy of the app.";

/// Why launch at login was not switched. Its description is the sentence the user sees.
struct LaunchAtLoginError {
    enum class Case : std::uint8_t {
        unavailable,
        service,  ///< the login-item service refused, and the description is its own
    };

    Case which = Case::unavailable;
    std::string description{launchAtLoginUnavailableMessage};

    bool operator==(const LaunchAtLoginError&) const = default;
};

/// Launch at login, as the system's login-item service has it: nothing is kept, every call asks the service anew. Main
/// thread only.
class LaunchAtLogin {
public:
    /// `service` must outlive it.
    explicit LaunchAtLogin(LoginItemService& service) : service_(service) {}

    [[nodiscard]] LaunchAtLoginStatus currentStatus() const;

    /// Brings the service to the wanted state, unless it is there already. Switching off what is not found is no error,
    /// switching it on is one. Read the status afresh afterwards, also after an error.
    [[nodiscard]] std::expected<void, LaunchAtLoginError> setEnabled(bool enabled);

    /// Opens the page of the system's settings that lists what is started at log-in.
    void openLoginItemsSettings() { service_.openSystemSettingsLoginItems(); }

private:
    LoginItemService& service_;
};

}  // namespace velmorand
