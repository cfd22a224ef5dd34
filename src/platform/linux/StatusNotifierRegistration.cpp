#include "platform/linux/StatusNotifierRegistration.h"

#include "platform/linux/BusCall.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QLatin1StringView>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace velmorand {
namespace {

constexpr QLatin1StringView service("org.kde.StatusNotifierWatcher");
constexpr QLatin1StringView path("/StatusNotifierWatcher");
constexpr std::chrono::seconds patience{25};
/// Fail rather than wait for the name; the answers of the bus when it is ours.
constexpr uint doNotQueue = 4;
constexpr std::array namesTheOwner{1U, 4U};
/// Before each further attempt at a watcher that refuses.
constexpr std::array<std::chrono::milliseconds, 4> pauses{
    {std::chrono::milliseconds(200), std::chrono::seconds(1), std::chrono::seconds(5), std::chrono::seconds(30)}};

bool isOurs(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return false;
    return std::ranges::find(namesTheOwner, reply.arguments().first().toUInt()) != namesTheOwner.end();
}

}  // namespace

StatusNotifierRegistration::StatusNotifierRegistration(const QDBusConnection& bus, RunLoop& runLoop, QString name)
    : bus_(bus),
      runLoop_(runLoop),
      name_(std::move(name)),
      watcher_(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!bus_.isConnected()) return;
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& /*before*/, const QString& owner) {
                refusals_ = 0;
                nextTelling_.cancel();
                if (isNamed_ && !owner.isEmpty()) tellWatcher();
            });
    takeName();
}

/// Watchers drop an item when its name goes.
StatusNotifierRegistration::~StatusNotifierRegistration() {
    if (bus_.isConnected()) bus_.asyncCall(questionToBus(QStringLiteral("ReleaseName"), {name_}));
}

/// Where names are not given out, as in some sandboxes, or this one is somebody else's, as where processes are numbered
/// apart, the connection's own one serves.
void StatusNotifierRegistration::takeName() {
    callBus(bus_, questionToBus(QStringLiteral("RequestName"), {name_, doNotQueue}), patience, this,
            [this](const QDBusMessage& reply) {
                if (!isOurs(reply)) name_ = bus_.baseService();
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
        if (reply.type() == QDBusMessage::ErrorMessage && !saysThatNobodyIsThere(reply)) tellAgain();
    });
}

void StatusNotifierRegistration::tellAgain() {
    if (refusals_ == pauses.size()) return;
    nextTelling_ = runLoop_.after(pauses[refusals_++], [this] { tellWatcher(); });
}

}  // namespace velmorand
