#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <string>

namespace velmorand {

/// Whether notifications of this application may be shown (`UNAuthorizationStatus`).
enum class NotificationAuthorization : std::uint8_t {
    notDetermined,  ///< nobody has been asked yet
    denied,
    authorized,
    provisional,  ///< shown, but quietly
    other,        ///< an answer this program does not know
};

/// How notifications may make themselves felt (`UNAuthorizationOptions`).
struct NotificationAuthorizationOptions {
    bool alert = false;
    bool sound = false;

    bool operator==(const NotificationAuthorizationOptions&) const = default;
};

/// What the user is shown (`UNNotificationContent`). Both texts are plain text, in UTF-8; lines end with a line feed.
struct UserNotificationContent {
    std::string title;
    std::string body;
    bool playsDefaultSound = false;

    bool operator==(const UserNotificationContent&) const = default;
};

/// One notification, to be shown at once (`UNNotificationRequest` without a trigger).
struct UserNotificationRequest {
    /// Names what the notification is about: a later one under the same identifier takes the place of the earlier.
    std::string identifier;
    UserNotificationContent content;

    bool operator==(const UserNotificationRequest&) const = default;
};

/// Why a notification could not be shown, as one sentence.
struct UserNotificationError {
    std::string description;

    bool operator==(const UserNotificationError&) const = default;
};

/// Shows notifications to the user (`UNUserNotificationCenter`). Main thread only. No call waits for anybody: each
/// completion is called exactly once, in a later turn of the main loop, and never after the centre is gone.
class UserNotificationCenter {
public:
    virtual ~UserNotificationCenter() = default;
    UserNotificationCenter(const UserNotificationCenter&) = delete;
    UserNotificationCenter& operator=(const UserNotificationCenter&) = delete;

    /// Whether notifications can be shown at the moment (`getNotificationSettings`).
    virtual void notificationSettings(std::function<void(NotificationAuthorization)> completion) = 0;

    /// Asks the user, where the platform asks, and tells whether it was granted.
    virtual void requestAuthorization(NotificationAuthorizationOptions options,
                                      std::function<void(bool granted)> completion) = 0;

    /// Shows a notification. Requests take effect in the order in which they were added.
    virtual void add(UserNotificationRequest request,
                     std::function<void(std::expected<void, UserNotificationError>)> completion) = 0;

protected:
    UserNotificationCenter() = default;
};

}  // namespace velmorand
