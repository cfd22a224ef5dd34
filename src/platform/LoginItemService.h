#pragma once

#include <cstdint>
#include <expected>
#include <string>

namespace velmorand {

/// Whether this application is started when the user logs in (`SMAppService.Status`).
enum class LoginItemStatus : std::uint8_t {
    notRegistered,
    enabled,
    requiresApproval,  ///< registered, but switched off by the user in the system's settings
    notFound,          ///< this copy of the application is not one that the system could start
    other,             ///< a state that this program does not know
};

/// Why a login item could not be changed, as one sentence for the user.
struct LoginItemError {
    std::string description;

    bool operator==(const LoginItemError&) const = default;
};

/// The login item of this application (`SMAppService.mainApp`). Main thread only. The user may change it behind the
/// program's back at any time, so nothing is remembered between calls.
class LoginItemService {
public:
    virtual ~LoginItemService() = default;
    LoginItemService(const LoginItemService&) = delete;
    LoginItemService& operator=(const LoginItemService&) = delete;

    [[nodiscard]] virtual LoginItemStatus status() = 0;

    /// Has this copy started at every log-in from now on; takes back that the user has switched it off. An item that is
    /// enabled stays as it is. After an error the item is as it was before; or, where only safety from a failure of the
    /// machine could not be had, as was wanted.
    [[nodiscard]] virtual std::expected<void, LoginItemError> registerItem() = 0;

    /// Has it no longer started; an item that is not registered stays so, without an
    /// error. What is left after an error is as above.
    [[nodiscard]] virtual std::expected<void, LoginItemError> unregisterItem() = 0;

    /// Opens the page of the desktop's settings that lists what is started at log-in. Where there is none, nothing
    /// happens but a line in the log.
    virtual void openSystemSettingsLoginItems() = 0;

protected:
    LoginItemService() = default;
};

}  // namespace velmorand
