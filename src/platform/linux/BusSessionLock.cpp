#include "platform/linux/BusSessionLock.h"

#include <QDBusMessage>
#include <QVariant>
#include <algorithm>
#include <utility>

namespace velmorand {

BusSessionLock::BusSessionLock(const QDBusConnection& sessionBus, const QDBusConnection& systemBus) {
    follow(systemBus, "org.freedesktop.login1.Session", "Lock", SLOT(sessionLocked()));
    for (const char* interface : {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver", "org.cinnamon.ScreenSaver",
                                  "org.mate.ScreenSaver", "org.xfce.ScreenSaver"})
        follow(sessionBus, interface, "ActiveChanged", SLOT(screenSaverChanged(QDBusMessage)));
}

BusSessionLock::~BusSessionLock() = default;

/// From whomever, wherever: naming the service here would make the call wait for the bus, and the savers of desktops
/// are at different places.
void BusSessionLock::follow(QDBusConnection bus, const char* interface, const char* signal, const char* slot) {
    if (!bus.isConnected()) return;
    bus.connect({}, {}, QString::fromLatin1(interface), QString::fromLatin1(signal), this, slot);
}

Subscription BusSessionLock::whenLocked(std::function<void()> locked) {
    auto listener = std::make_shared<std::function<void()>>(std::move(locked));
    listeners_->push_back(listener);
    return Subscription([listener, listeners = std::weak_ptr(listeners_)] {
        *listener = nullptr;
        if (const auto alive = listeners.lock()) std::erase(*alive, listener);
    });
}

void BusSessionLock::sessionLocked() {
    const Listeners round = *listeners_;
    for (const auto& listener : round) {
        if (const auto locked = *listener) locked();
    }
}

void BusSessionLock::screenSaverChanged(const QDBusMessage& signal) {
    const QList<QVariant> arguments = signal.arguments();
    const bool isOneBoolean = arguments.size() == 1 && arguments.first().metaType() == QMetaType::fromType<bool>();
    if (isOneBoolean && arguments.first().toBool()) sessionLocked();
}

}  // namespace velmorand
