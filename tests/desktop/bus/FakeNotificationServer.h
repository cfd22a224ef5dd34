#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace velmorand::desktop {

/// A notification as it came over the bus, with nothing changed.
struct ReceivedNotification {
    QString applicationName;
    quint32 replaces = 0;
    QString icon;
    QString summary;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int expireTimeout = 0;
};

/// A server for notifications that shows nothing, but knows what it would show. It goes when the object dies.
class FakeNotificationServer final : public QDBusVirtualObject {
public:
    /// What to send in answer to a call; absent for nothing at all.
    using Answer = std::function<std::optional<QDBusMessage>(const QDBusMessage& call)>;

    /// Takes the name of the service, also from another one that has it.
    explicit FakeNotificationServer(const QDBusConnection& bus, QStringList capabilities = {QStringLiteral("body")});
    ~FakeNotificationServer() override;

    FakeNotificationServer(const FakeNotificationServer&) = delete;
    FakeNotificationServer& operator=(const FakeNotificationServer&) = delete;

    /// Replaces the usual answers; the call counts as received all the same.
    void setAnswerToNotify(Answer answer) { answerToNotify_ = std::move(answer); }
    void setAnswerToCapabilities(Answer answer) { answerToCapabilities_ = std::move(answer); }
    /// The number of the next new notification.
    void setNextNumber(quint32 number) { nextNumber_ = number; }

    /// The user takes a notification away, and everybody is told.
    void close(quint32 number);
    /// What anybody on the bus may say.
    static void tellClosed(const QDBusConnection& bus, const QVariantList& arguments);

    /// All that was received, in order.
    [[nodiscard]] const std::vector<ReceivedNotification>& received() const { return received_; }
    /// The types of the arguments of the last one, as D-Bus writes them.
    [[nodiscard]] const QString& lastSignature() const { return lastSignature_; }
    /// What would be seen now, by number.
    [[nodiscard]] const std::map<quint32, ReceivedNotification>& shown() const { return shown_; }
    /// How often it was asked for its capabilities.
    [[nodiscard]] int capabilityQuestions() const { return capabilityQuestions_; }
    [[nodiscard]] const QDBusConnection& bus() const { return bus_; }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    [[nodiscard]] std::optional<QDBusMessage> receive(const QDBusMessage& call);
    [[nodiscard]] quint32 show(const ReceivedNotification& notification);

    QDBusConnection bus_;
    QStringList capabilities_;
    Answer answerToNotify_;
    Answer answerToCapabilities_;
    quint32 nextNumber_ = 1;
    std::vector<ReceivedNotification> received_;
    QString lastSignature_;
    std::map<quint32, ReceivedNotification> shown_;
    int capabilityQuestions_ = 0;
};

}  // namespace velmorand::desktop
