#pragma once

#include "platform/RunLoop.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <chrono>
#include <functional>
#include <vector>

class QDBusMessage;

namespace velmorand {

/// Whether the session has a server for notifications (org.freedesktop.Notifications): one runs, or the bus can start
/// one. A program that starts at log-in may be there before it, so at first a no takes its time.
class NotificationServerPresence final : public QObject {
    Q_OBJECT

public:
    /// For `wait` from now a no is held back, as a server may still come. `bus` need not be connected: then there is no
    /// server, and none will come. The run loop must outlive it.
    NotificationServerPresence(const QDBusConnection& bus, RunLoop& runLoop, std::chrono::milliseconds wait);

    /// Asks the bus and calls `told` exactly once, in a later turn, with what is so then, but not after this object has died.
    /// It must not end this object.
    void ask(std::function<void(bool isThere)> told);

private:
    using Told = std::function<void(bool isThere)>;

    Q_SLOT void busEnded();
    void giveUp();
    void askWhatCanBeStarted(Told told);
    void waitForServer(Told told);
    void answerAll(bool isThere);

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    bool hasCome_ = false;  // as far as the bus has told by itself
    bool mayStillCome_;
    std::vector<Told> waiting_;
    RunLoop::Timer end_;
};

}  // namespace velmorand
