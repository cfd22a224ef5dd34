#include "app/LaunchAtLogin.h"

#include <utility>

namespace velmorand {
namespace {

using Outcome = std::expected<void, LaunchAtLoginError>;

Outcome told(std::expected<void, LoginItemError> outcome) {
    if (outcome) return {};
    return std::unexpected(
        LaunchAtLoginError{LaunchAtLoginError::Case::service, std::move(outcome.error().description)});
}

Outcome switchOn(LoginItemService& service) {
    switch (service.status()) {
        case LoginItemStatus::enabled: return {};
        case LoginItemStatus::notRegistered:
        case LoginItemStatus::requiresApproval: return told(service.registerItem());
        case LoginItemStatus::notFound:
        case LoginItemStatus::other: return std::unexpected(LaunchAtLoginError{});
    }
    std::unreachable();
}

Outcome switchOff(LoginItemService& service) {
    switch (service.status()) {
        case LoginItemStatus::enabled:
        case LoginItemStatus::requiresApproval: return told(service.unregisterItem());
        case LoginItemStatus::notRegistered:
        case LoginItemStatus::notFound: return {};
        case LoginItemStatus::other: return std::unexpected(LaunchAtLoginError{});
    }
    std::unreachable();
}

}  // namespace

LaunchAtLoginStatus LaunchAtLogin::currentStatus() const {
    switch (service_.status()) {
        case LoginItemStatus::enabled: return LaunchAtLoginStatus::enabled;
        case LoginItemStatus::notRegistered: return LaunchAtLoginStatus::disabled;
        case LoginItemStatus::requiresApproval: return LaunchAtLoginStatus::requiresApproval;
        case LoginItemStatus::notFound:
        case LoginItemStatus::other: return LaunchAtLoginStatus::unavailable;
    }
    std::unreachable();
}

Outcome LaunchAtLogin::setEnabled(bool enabled) {
    return enabled ? switchOn(service_) : switchOff(service_);
}

}  // namespace velmorand
