#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <chrono>
#include <functional>

class QObject;

namespace velmorand {

/// Sends a method call and hands what comes back to `handler` in a later turn: the reply, or an error, which is also
/// what comes when nobody has answered within `patience` or when there is no bus. The handler is called exactly once,
/// but not after `context` has died. Never waits.
void callBus(const QDBusConnection& bus, const QDBusMessage& call, std::chrono::milliseconds patience, QObject* context,
             std::function<void(const QDBusMessage& reply)> handler);

/// A question to the bus itself, of org.freedesktop.DBus.
[[nodiscard]] QDBusMessage questionToBus(const QString& member, const QVariantList& arguments = {});

/// Whether the bus itself says that whom the call was for is not there, or has gone without an answer.
[[nodiscard]] bool saysThatNobodyIsThere(const QDBusMessage& reply);

}  // namespace velmorand
