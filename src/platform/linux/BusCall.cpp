#include "platform/linux/BusCall.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QLatin1StringView>
#include <QMetaObject>
#include <utility>

namespace velmorand {
namespace {

constexpr QLatin1StringView busService("org.freedesktop.DBus");
constexpr QLatin1StringView busPath("/org/freedesktop/DBus");

}  // namespace

void callBus(const QDBusConnection& bus, const QDBusMessage& call, std::chrono::milliseconds patience, QObject* context,
             std::function<void(const QDBusMessage&)> handler) {
    const QDBusPendingCall pending = bus.asyncCall(call, static_cast<int>(patience.count()));
    // Without a connection nothing was sent, and a watcher would never tell. What is there already, the watcher tells.
    if (pending.isError() && pending.reply().service().isEmpty()) {
        const QDBusMessage failure = call.createErrorReply(pending.error());
        QMetaObject::invokeMethod(
            context, [handler = std::move(handler), failure] { handler(failure); }, Qt::QueuedConnection);
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(pending, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, handler = std::move(handler)] {
        watcher->deleteLater();
        handler(watcher->reply());
    });
}

QDBusMessage questionToBus(const QString& member, const QVariantList& arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(busService, busPath, busService, member);
    question.setArguments(arguments);
    return question;
}

bool saysThatNobodyIsThere(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ErrorMessage || reply.service() != busService) return false;
    const QString name = reply.errorName();
    return name == QDBusError::errorString(QDBusError::ServiceUnknown) ||
           name == QDBusError::errorString(QDBusError::NoReply) ||
           name == QLatin1StringView("org.freedesktop.DBus.Error.NameHasNoOwner");
}

}  // namespace velmorand
