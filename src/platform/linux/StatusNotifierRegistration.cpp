#include "platform/linux/StatusNotifierRegistration.h"

#include "platform/linux/BusCall.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QLatin1StringView>
#include <chrono>
#include <utility>

namespace velmorand {
namespace {

constexpr QLatin1StringView service("org.kde.StatusNotifierWatcher");
constexpr QLatin1StringView path("/StatusNotifierWatcher");
constexpr std::chrono::seconds patience{25};
/// Fail rather than wait for the name.
constexpr uint doNotQueue = 4;

}  // namespace

StatusNotifierRegistration::StatusNotifierRegistration(const QDBusConnection& bus, QString name)
    : bus_(bus), name_(std::move(name)), watcher_(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!bus_.isConnected()) return;
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& /*before*/, const QString& owner) {
                if (isNamed_ && !owner.isEmpty()) tellWatcher();
            });
    takeName();
}

/// Watchers drop an item when its name goes.
StatusNotifierRegistration::~StatusNotifierRegistration() {
    if (bus_.isConnected()) bus_.asyncCall(questionToBus(QStringLiteral("ReleaseName"), {name_}));
}

/// Where names are not given out, as in some sandboxes, the connection's own one serves.
void StatusNotifierRegistration::takeName() {
    callBus(bus_, questionToBus(QStringLiteral("RequestName"), {name_, doNotQueue}), patience, this,
            [this](const QDBusMessage& reply) {
                if (reply.type() != QDBusMessage::ReplyMessage) name_ = bus_.baseService();
                isNamed_ = true;
                tellWatcher();
            });
}

void StatusNotifierRegistration::tellWatcher() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, service, QStringLiteral("RegisterStatusNotifierItem"));
    call.setArguments({name_});
    call.setAutoStartService(false);
    callBus(bus_, call, patience, this, [this](const QDBusMessage& reply) {
        const bool tookTooLong = reply.errorName() == QDBusError::errorString(QDBusError::NoReply);
        if (tookTooLong && !saysThatNobodyIsThere(reply)) tellWatcher();
    });
}

}  // namespace velmorand
