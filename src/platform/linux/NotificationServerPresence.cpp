#include "platform/linux/NotificationServerPresence.h"

#include "platform/linux/BusCall.h"

#include <QDBusMessage>
#include <QLatin1StringView>
#include <QStringList>
#include <utility>

namespace velmorand {
namespace {

using namespace std::chrono_literals;

constexpr QLatin1StringView service("org.freedesktop.Notifications");

/// For an answer of the bus itself, which gives it at once unless it hangs.
constexpr std::chrono::milliseconds busPatience = 5s;

}  // namespace

NotificationServerPresence::NotificationServerPresence(const QDBusConnection& bus, RunLoop& runLoop,
                                                       std::chrono::milliseconds wait)
    : bus_(bus), watcher_(service, bus, QDBusServiceWatcher::WatchForOwnerChange), mayStillCome_(bus.isConnected()) {
    if (!mayStillCome_) return;
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& /*before*/, const QString& owner) {
                hasCome_ = !owner.isEmpty();
                if (hasCome_) answerAll(true);
            });
    // The connection tells of its own end this way, as if the bus had.
    bus_.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                 QStringLiteral("Disconnected"), this, SLOT(busEnded()));
    end_ = runLoop.after(wait, [this] { giveUp(); });
}

void NotificationServerPresence::busEnded() {
    hasCome_ = false;
    giveUp();
}

void NotificationServerPresence::giveUp() {
    mayStillCome_ = false;
    answerAll(false);
}

void NotificationServerPresence::ask(Told told) {
    callBus(bus_, questionToBus(QStringLiteral("NameHasOwner"), {QString(service)}), busPatience, this,
            [this, told = std::move(told)](const QDBusMessage& reply) {
                const bool runs = reply.signature() == QLatin1StringView("b") && reply.arguments().first().toBool();
                if (runs)
                    told(true);
                else
                    askWhatCanBeStarted(told);
            });
}

void NotificationServerPresence::askWhatCanBeStarted(Told told) {
    callBus(bus_, questionToBus(QStringLiteral("ListActivatableNames")), busPatience, this,
            [this, told = std::move(told)](const QDBusMessage& reply) {
                const bool isList = reply.signature() == QLatin1StringView("as");
                if (isList && reply.arguments().first().toStringList().contains(service))
                    told(true);
                else
                    waitForServer(told);
            });
}

void NotificationServerPresence::waitForServer(Told told) {
    const bool isThere = hasCome_ && bus_.isConnected();
    if (isThere || !mayStillCome_ || !bus_.isConnected())
        told(isThere);
    else
        waiting_.push_back(std::move(told));
}

void NotificationServerPresence::answerAll(bool isThere) {
    for (const Told& told : std::exchange(waiting_, {})) told(isThere);
}

}  // namespace velmorand
