#pragma once

#include "platform/linux/SessionLock.h"

#include <QDBusConnection>
#include <QObject>
#include <memory>
#include <vector>

class QDBusMessage;

namespace velmorand {

/// The signals by which desktops tell of the lock: the login service's on the system bus, and those of the two common
/// screen savers on the session bus. Nothing is ever asked, so no call waits for a bus. Whoever may send them at all may
/// send them: the worst that a false one does is to end a recording.
class BusSessionLock final : public QObject, public SessionLock {
    Q_OBJECT

public:
    /// Neither bus needs to be connected.
    BusSessionLock(const QDBusConnection& sessionBus, const QDBusConnection& systemBus);
    ~BusSessionLock() override;

    [[nodiscard]] Subscription whenLocked(std::function<void()> locked) override;

private:
    using Listeners = std::vector<std::shared_ptr<std::function<void()>>>;

    Q_SLOT void sessionLocked();
    Q_SLOT void screenSaverChanged(const QDBusMessage& signal);
    void follow(QDBusConnection bus, const char* interface, const char* signal, const char* slot);

    std::shared_ptr<Listeners> listeners_ = std::make_shared<Listeners>();
};

}  // namespace velmorand
