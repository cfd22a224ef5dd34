#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

class QDBusMessage;

namespace velmorand {

/// Makes a status item known: takes a name on the bus for it and tells the name to the watcher
/// (org.kde.StatusNotifierWatcher), to which panels listen, now and whenever there is another watcher. Everything about it
/// ends with the object.
class StatusNotifierRegistration final : public QObject {
    Q_OBJECT

public:
    /// The bus need not be connected.
    StatusNotifierRegistration(const QDBusConnection& bus, QString name);
    ~StatusNotifierRegistration() override;

private:
    void takeName();
    void tellWatcher();

    QDBusConnection bus_;
    QString name_;
    QDBusServiceWatcher watcher_;
    bool isNamed_ = false;
};

}  // namespace velmorand
