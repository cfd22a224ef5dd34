#pragma once

#include "platform/LoginItemService.h"

#include <optional>
#include <utility>

namespace velmorand {

/// A login item in memory, which can be set as if the user or the system had done it, and made to fail.
class SimulatedLoginItemService final : public LoginItemService {
public:
    [[nodiscard]] LoginItemStatus status() override {
        ++statusReadings_;
        return status_;
    }

    [[nodiscard]] std::expected<void, LoginItemError> registerItem() override {
        ++registrations_;
        if (registerFailure_) return std::unexpected(*registerFailure_);
        switch (status_) {
            case LoginItemStatus::notRegistered:
            case LoginItemStatus::requiresApproval: status_ = afterRegistration_; return {};
            case LoginItemStatus::enabled: return {};
            case LoginItemStatus::notFound: return std::unexpected(LoginItemError{"The application is not found."});
            case LoginItemStatus::other: return std::unexpected(LoginItemError{"The login item is in disorder."});
        }
        std::unreachable();
    }

    [[nodiscard]] std::expected<void, LoginItemError> unregisterItem() override {
        ++unregistrations_;
        if (unregisterFailure_) return std::unexpected(*unregisterFailure_);
        switch (status_) {
            case LoginItemStatus::enabled:
            case LoginItemStatus::requiresApproval: status_ = LoginItemStatus::notRegistered; return {};
            case LoginItemStatus::notRegistered:
            case LoginItemStatus::notFound: return {};
            case LoginItemStatus::other: return std::unexpected(LoginItemError{"The login item is in disorder."});
        }
        std::unreachable();
    }

    void openSystemSettingsLoginItems() override { ++openedSettings_; }

    /// Not registered at first.
    void setStatus(LoginItemStatus status) { status_ = status; }
    /// What a registration makes of the item; enabled unless set, as a system may ask its user first.
    void setStatusAfterRegistration(LoginItemStatus status) { afterRegistration_ = status; }
    /// From now on registering, or unregistering, fails with this and changes nothing; nothing lets it succeed again.
    void setRegisterFailure(std::optional<LoginItemError> failure) { registerFailure_ = std::move(failure); }
    void setUnregisterFailure(std::optional<LoginItemError> failure) { unregisterFailure_ = std::move(failure); }

    /// How often each was called.
    [[nodiscard]] int statusReadings() const { return statusReadings_; }
    [[nodiscard]] int registrations() const { return registrations_; }
    [[nodiscard]] int unregistrations() const { return unregistrations_; }
    [[nodiscard]] int openedSettings() const { return openedSettings_; }

private:
    LoginItemStatus status_ = LoginItemStatus::notRegistered;
    LoginItemStatus afterRegistration_ = LoginItemStatus::enabled;
    std::optional<LoginItemError> registerFailure_;
    std::optional<LoginItemError> unregisterFailure_;
    int statusReadings_ = 0;
    int registrations_ = 0;
    int unregistrations_ = 0;
    int openedSettings_ = 0;
};

}  // namespace velmorand
