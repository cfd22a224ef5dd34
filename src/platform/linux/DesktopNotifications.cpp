#include "platform/linux/DesktopNotifications.h"

#include "platform/RunLoop.h"
#include "platform/linux/BusCall.h"
#include "platform/linux/NotificationText.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QLatin1StringView>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace velmorand {
namespace {

constexpr QLatin1StringView service("org.freedesktop.Notifications");
constexpr QLatin1StringView path("/org/freedesktop/Notifications");
constexpr QLatin1StringView interface("org.freedesktop.Notifications");

constexpr QLatin1StringView applicationName("Velmorand");
/// A name of the freedesktop sound theme.
constexpr QLatin1StringView defaultSound("message-new-instant");
constexpr uchar normalUrgency = 1;
/// The server decides how long it shows them.
constexpr int serversOwnTime = -1;

/// Of what a server says is wrong, in UTF-16 code units.
constexpr qsizetype longestReason = 200;

bool isAnswer(const QDBusMessage& reply, const char* signature) {
    return reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1StringView(signature);
}

/// The one sentence for what came back instead of an answer.
UserNotificationError errorFrom(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ErrorMessage)
        return {"The notification server gave an answer that makes no sense."};
    if (reply.errorName() == QDBusError::errorString(QDBusError::Disconnected))
        return {"There is no session bus to show notifications through."};
    if (reply.errorName() == QDBusError::errorString(QDBusError::NoReply))
        return {"The notification server does not answer."};
    if (saysThatNobodyIsThere(reply)) return {"No notification server is running."};
    const QString reason = reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage();
    return {"The notification could not be shown: " +
            notificationText(reason.simplified().toStdString(), longestReason).toStdString()};
}

}  // namespace

DesktopNotifications::DesktopNotifications(const QDBusConnection& bus, RunLoop& runLoop, std::string_view desktopEntry,
                                           NotificationPatience patience)
    : bus_(bus),
      runLoop_(runLoop),
      desktopEntry_(QString::fromUtf8(desktopEntry.data(), static_cast<qsizetype>(desktopEntry.size()))),
      patience_(patience),
      presence_(bus, runLoop, patience.start),
      watcher_(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!bus_.isConnected()) return;
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& /*before*/, const QString& now) {
                newestOwner_ = now;
                server_.reset();
            });
    // From whomever: naming the service here would make the call wait for the bus.
    bus_.connect({}, path, interface, QStringLiteral("NotificationClosed"), this,
                 SLOT(notificationClosed(QDBusMessage)));
}

void DesktopNotifications::notificationSettings(std::function<void(NotificationAuthorization)> completion) {
    presence_.ask([this, completion = std::move(completion)](bool isThere) {
        later([completion, isThere] {
            completion(isThere ? NotificationAuthorization::authorized : NotificationAuthorization::denied);
        });
    });
}

void DesktopNotifications::requestAuthorization(NotificationAuthorizationOptions /*options*/,
                                                std::function<void(bool granted)> completion) {
    presence_.ask([this, completion = std::move(completion)](bool isThere) {
        later([completion, isThere] { completion(isThere); });
    });
}

void DesktopNotifications::add(UserNotificationRequest request, Completion completion) {
    queue_.push_back({.request = std::move(request), .completion = std::move(completion)});
    if (queue_.size() == 1) send();
}

void DesktopNotifications::send() {
    if (server_)
        notify(*server_);
    else
        findServer();
}

/// A server that runs answers soon; one that must be started first may take as long as a session needs to come up.
void DesktopNotifications::findServer() {
    callBus(bus_, questionToBus(QStringLiteral("NameHasOwner"), {QString(service)}), patience_.answer, this,
            [this](const QDBusMessage& reply) {
                const bool runs = reply.arguments().value(0).toBool();
                if (reply.type() == QDBusMessage::ErrorMessage)
                    fail(reply);
                else
                    askForCapabilities(runs ? patience_.answer : patience_.start);
            });
}

void DesktopNotifications::askForCapabilities(std::chrono::milliseconds patience) {
    const auto question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("GetCapabilities"));
    callBus(bus_, question, patience, this, [this](const QDBusMessage& reply) { takeCapabilities(reply); });
}

void DesktopNotifications::takeCapabilities(const QDBusMessage& reply) {
    if (!isAnswer(reply, "as")) {
        fail(reply);
        return;
    }
    const bool hasLostTheName = !newestOwner_.isEmpty() && reply.service() != newestOwner_;
    if (hasLostTheName) {
        findServer();
        return;
    }
    const bool readsMarkup = reply.arguments().first().toStringList().contains(QLatin1StringView("body-markup"));
    notify(server_.emplace(Server{.owner = reply.service(), .readsMarkup = readsMarkup, .numbers = {}}));
}

/// It goes to the server whose capabilities are known, not to whoever has the service's name by now.
void DesktopNotifications::notify(const Server& server) {
    auto call = QDBusMessage::createMethodCall(server.owner, path, interface, QStringLiteral("Notify"));
    call.setAutoStartService(false);
    call.setArguments(wireForm(queue_.front().request, server));
    callBus(bus_, call, patience_.answer, this, [this](const QDBusMessage& reply) { takeNumber(reply); });
}

QVariantList DesktopNotifications::wireForm(const UserNotificationRequest& request, const Server& server) const {
    const auto before = server.numbers.find(request.identifier);
    const quint32 replaced = before == server.numbers.end() ? 0 : before->second;
    const QString body = notificationText(request.content.body, longestNotificationBody);
    QVariantMap hints{{QStringLiteral("desktop-entry"), desktopEntry_},
                      {QStringLiteral("urgency"), QVariant::fromValue(normalUrgency)}};
    if (request.content.playsDefaultSound) hints.insert(QStringLiteral("sound-name"), QString(defaultSound));
    return {QString(applicationName),
            replaced,
            desktopEntry_,
            notificationText(request.content.title, longestNotificationTitle),
            server.readsMarkup ? escapedForMarkup(body) : body,
            QStringList(),
            hints,
            serversOwnTime};
}

void DesktopNotifications::takeNumber(const QDBusMessage& reply) {
    if (!isAnswer(reply, "u")) {
        fail(reply);
        return;
    }
    const bool isOfThisServer = server_ && server_->owner == reply.service();
    if (isOfThisServer)
        server_->numbers.insert_or_assign(queue_.front().request.identifier, reply.arguments().first().toUInt());
    finish({});
}

/// A server may end between two calls. What it was to show is then for the next one, which is asked once.
void DesktopNotifications::fail(const QDBusMessage& reply) {
    if (!saysThatNobodyIsThere(reply) || std::exchange(queue_.front().isSecondTry, true)) {
        finish(std::unexpected(errorFrom(reply)));
        return;
    }
    server_.reset();
    findServer();
}

void DesktopNotifications::finish(const std::expected<void, UserNotificationError>& result) {
    later([completion = std::move(queue_.front().completion), result] { completion(result); });
    queue_.pop_front();
    if (!queue_.empty()) send();
}

void DesktopNotifications::notificationClosed(const QDBusMessage& signal) {
    const bool counts = server_ && signal.service() == server_->owner && signal.signature() == QLatin1StringView("uu");
    if (!counts) return;
    const quint32 number = signal.arguments().first().toUInt();
    std::erase_if(server_->numbers, [number](const auto& shown) { return shown.second == number; });
}

void DesktopNotifications::later(std::function<void()> task) {
    runLoop_.post([alive = std::weak_ptr(alive_), task = std::move(task)] {
        if (!alive.expired()) task();
    });
}

}  // namespace velmorand
