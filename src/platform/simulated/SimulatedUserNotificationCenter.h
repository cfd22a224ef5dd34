#pragma once

#include "platform/UserNotificationCenter.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmorand {

class SimulatedRunLoop;

/// Notifications on simulated time, before a user whose answer is set beforehand. At first nobody has been asked; the
/// first request for authorization settles it, as do the system's settings at any time.
class SimulatedUserNotificationCenter final : public UserNotificationCenter {
public:
    explicit SimulatedUserNotificationCenter(SimulatedRunLoop& runLoop) : runLoop_(runLoop) {}

    void notificationSettings(std::function<void(NotificationAuthorization)> completion) override;
    void requestAuthorization(NotificationAuthorizationOptions options,
                              std::function<void(bool granted)> completion) override;
    /// Fails while nobody has been asked, and after a no.
    void add(UserNotificationRequest request,
             std::function<void(std::expected<void, UserNotificationError>)> completion) override;

    /// Changes what the system's settings say.
    void setAuthorization(NotificationAuthorization authorization) { authorization_ = authorization; }
    /// What the user answers when asked for the first time; yes unless set.
    void setAnswer(bool granted) { answer_ = granted; }
    /// From now on every request fails with this; nothing lets them succeed again.
    void setAddError(std::optional<UserNotificationError> error) { addError_ = std::move(error); }
    /// The user takes a notification away.
    void dismiss(const std::string& identifier) { shown_.erase(identifier); }

    /// What the user sees now, by identifier.
    [[nodiscard]] const std::map<std::string, UserNotificationContent>& shown() const { return shown_; }
    /// Every request since the start, in order, also those that failed.
    [[nodiscard]] const std::vector<UserNotificationRequest>& added() const { return added_; }
    /// The options of every request for authorization since the start, in order.
    [[nodiscard]] const std::vector<NotificationAuthorizationOptions>& authorizationRequests() const {
        return authorizationRequests_;
    }

private:
    /// Runs the task in a later turn, unless this object has died by then.
    void later(std::function<void()> task);
    [[nodiscard]] bool ask();
    [[nodiscard]] std::expected<void, UserNotificationError> show(const UserNotificationRequest& request);

    SimulatedRunLoop& runLoop_;
    NotificationAuthorization authorization_ = NotificationAuthorization::notDetermined;
    bool answer_ = true;
    std::optional<UserNotificationError> addError_;
    std::map<std::string, UserNotificationContent> shown_;
    std::vector<UserNotificationRequest> added_;
    std::vector<NotificationAuthorizationOptions> authorizationRequests_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);  // for tasks that outlive this object
};

}  // namespace velmorand
