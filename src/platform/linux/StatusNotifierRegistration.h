#pragma once

#include "platform/RunLoop.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <cstddef>

class QDBusMessage;

namespace velmorand {

/// Makes a status item known: takes a name on the bus for it and tells the name to the watcher
/// (org.kde.StatusNotifierWatcher), to which panels listen, now and whenever there is another watcher. A watcher that
/// refuses may not be ready yet and is asked a few times more. Everything about it ends with the object.
class StatusNotifierRegistration final : public QObject {
    Q_OBJECT

public:
    /// The bus need not be connected. The run loop must outlive the object.
    StatusNotifierRegistration(const QDBusConnection& bus, RunLoop& runLoop, QString name);
    ~StatusNotifierRegistration() override;

private:
    void takeName();
    void tellWatcher();
    void tellAgain();

    QDBusConnection bus_;
    RunLoop& runLoop_;
    QString name_;
    QDBusServiceWatcher watcher_;
    bool isNamed_ = false;
    std::size_t refusals_ = 0;  // by the watcher that is there
    RunLoop::Timer nextTelling_;
};

}  // namespace velmorand
