#include "desktop/bus/FakeNotificationServer.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <stdexcept>
#include <utility>

namespace velmorand::desktop {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");

}  // namespace

FakeNotificationServer::FakeNotificationServer(const QDBusConnection& bus, QStringList capabilities)
    : bus_(bus), capabilities_(std::move(capabilities)) {
    bus_.registerVirtualObject(path, this);
    const auto registered = bus_.interface()->registerService(service, QDBusConnectionInterface::ReplaceExistingService,
                                                              QDBusConnectionInterface::AllowReplacement);
    if (registered != QDBusConnectionInterface::ServiceRegistered)
        throw std::runtime_error("the bus does not give the name of the notification service");
}

FakeNotificationServer::~FakeNotificationServer() {
    bus_.unregisterService(service);
    bus_.unregisterObject(path);
}

void FakeNotificationServer::close(quint32 number) {
    shown_.erase(number);
    constexpr quint32 dismissedByUser = 2;
    tellClosed(bus_, {number, dismissedByUser});
}

void FakeNotificationServer::tellClosed(const QDBusConnection& bus, const QVariantList& arguments) {
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("NotificationClosed"));
    signal.setArguments(arguments);
    bus.send(signal);
}

bool FakeNotificationServer::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.interface() != interface) return false;
    std::optional<QDBusMessage> answer;
    if (message.member() == QStringLiteral("GetCapabilities")) {
        ++capabilityQuestions_;
        answer = answerToCapabilities_ ? answerToCapabilities_(message) : message.createReply(capabilities_);
    } else if (message.member() == QStringLiteral("Notify")) {
        answer = receive(message);
    } else {
        return false;
    }
    if (answer) connection.send(*answer);
    return true;
}

std::optional<QDBusMessage> FakeNotificationServer::receive(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    lastSignature_ = call.signature();
    if (lastSignature_ != QStringLiteral("susssasa{sv}i"))
        return call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("not the arguments of Notify"));
    received_.push_back({.applicationName = arguments[0].toString(),
                         .replaces = arguments[1].toUInt(),
                         .icon = arguments[2].toString(),
                         .summary = arguments[3].toString(),
                         .body = arguments[4].toString(),
                         .actions = arguments[5].toStringList(),
                         .hints = qdbus_cast<QVariantMap>(arguments[6]),
                         .expireTimeout = arguments[7].toInt()});
    if (answerToNotify_) return answerToNotify_(call);
    return call.createReply(show(received_.back()));
}

quint32 FakeNotificationServer::show(const ReceivedNotification& notification) {
    const quint32 number = notification.replaces == 0 ? nextNumber_++ : notification.replaces;
    shown_.insert_or_assign(number, notification);
    return number;
}

}  // namespace velmorand::desktop
