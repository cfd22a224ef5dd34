#pragma once

#include "platform/UserNotificationCenter.h"
#include "platform/linux/NotificationServerPresence.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QDBusMessage;

namespace velmorand {

class RunLoop;

/// How long is waited for others.
struct NotificationPatience {
    /// For a server to come: to the service after its making, and to the bus when it starts one.
    std::chrono::milliseconds start = std::chrono::seconds{30};
    /// For each answer of a server that runs.
    std::chrono::milliseconds answer = std::chrono::seconds{5};
};

/// Notifications by the desktop's server for them (org.freedesktop.Notifications). Nobody can be asked for permission
/// there: they are authorized where a server is, and denied where none is. One request at a time is with the server, so
/// that the number which it gave to a notification is known when the next one is to replace it.
class DesktopNotifications final : public QObject, public UserNotificationCenter {
    Q_OBJECT

public:
    /// `bus` is the session bus, which need not be connected; `desktopEntry` is the identifier of this program's desktop
    /// entry and of its icon. The run loop must outlive it.
    DesktopNotifications(const QDBusConnection& bus, RunLoop& runLoop, std::string_view desktopEntry,
                         NotificationPatience patience = {});

    /// A no comes late while this object is young: see `NotificationPatience::start`.
    void notificationSettings(std::function<void(NotificationAuthorization)> completion) override;
    void requestAuthorization(NotificationAuthorizationOptions options,
                              std::function<void(bool granted)> completion) override;
    void add(UserNotificationRequest request,
             std::function<void(std::expected<void, UserNotificationError>)> completion) override;

private:
    using Completion = std::function<void(std::expected<void, UserNotificationError>)>;

    struct Pending {
        UserNotificationRequest request;
        Completion completion;
        bool isSecondTry = false;
    };
    /// The server that answered last, for as long as it has the name.
    struct Server {
        QString owner;  // its own name on the bus
        bool readsMarkup = false;
        std::map<std::string, quint32> numbers;  // of what it shows, by identifier
    };

    Q_SLOT void notificationClosed(const QDBusMessage& signal);
    void send();
    void findServer();
    void askForCapabilities(std::chrono::milliseconds patience);
    void takeCapabilities(const QDBusMessage& reply);
    void notify(const Server& server);
    void takeNumber(const QDBusMessage& reply);
    [[nodiscard]] QVariantList wireForm(const UserNotificationRequest& request, const Server& server) const;
    /// Ends the try that brought this back instead of an answer.
    void fail(const QDBusMessage& reply);
    void finish(const std::expected<void, UserNotificationError>& result);
    /// Runs the task in a later turn, unless this object has died by then.
    void later(std::function<void()> task);

    QDBusConnection bus_;
    RunLoop& runLoop_;
    QString desktopEntry_;
    NotificationPatience patience_;
    NotificationServerPresence presence_;
    QDBusServiceWatcher watcher_;
    std::optional<Server> server_;
    QString newestOwner_;        // of the service's name, once it has changed hands
    std::deque<Pending> queue_;  // the first one is with the server
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);  // for tasks that outlive this object
};

}  // namespace velmorand
