#include "platform/simulated/SimulatedUserNotificationCenter.h"

#include "platform/simulated/SimulatedRunLoop.h"

#include <utility>

namespace velmorand {
namespace {

bool mayShow(NotificationAuthorization authorization) {
    switch (authorization) {
        case NotificationAuthorization::notDetermined:
        case NotificationAuthorization::denied: return false;
        case NotificationAuthorization::authorized:
        case NotificationAuthorization::provisional:
        case NotificationAuthorization::other: return true;
    }
    std::unreachable();
}

}  // namespace

void SimulatedUserNotificationCenter::notificationSettings(std::function<void(NotificationAuthorization)> completion) {
    later([this, completion = std::move(completion)] { completion(authorization_); });
}

void SimulatedUserNotificationCenter::requestAuthorization(NotificationAuthorizationOptions options,
                                                           std::function<void(bool granted)> completion) {
    authorizationRequests_.push_back(options);
    later([this, completion = std::move(completion)] { completion(ask()); });
}

void SimulatedUserNotificationCenter::add(UserNotificationRequest request,
                                          std::function<void(std::expected<void, UserNotificationError>)> completion) {
    added_.push_back(request);
    later([this, request = std::move(request), completion = std::move(completion)] { completion(show(request)); });
}

void SimulatedUserNotificationCenter::later(std::function<void()> task) {
    runLoop_.post([alive = std::weak_ptr(alive_), task = std::move(task)] {
        if (!alive.expired()) task();
    });
}

/// Who has been asked once is not asked again.
bool SimulatedUserNotificationCenter::ask() {
    if (authorization_ == NotificationAuthorization::notDetermined)
        authorization_ = answer_ ? NotificationAuthorization::authorized : NotificationAuthorization::denied;
    return mayShow(authorization_);
}

std::expected<void, UserNotificationError> SimulatedUserNotificationCenter::show(
    const UserNotificationRequest& request) {
    if (addError_) return std::unexpected(*addError_);
    if (!mayShow(authorization_))
        return std::unexpected(UserNotificationError{"Notifications are not allowed for this application."});
    shown_.insert_or_assign(request.identifier, request.content);
    return {};
}

}  // namespace velmorand
