#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmorand::desktop {

/// A line of a menu as it came over the bus.
struct ReceivedLine {
    int id = 0;
    QVariantMap properties = {};

    [[nodiscard]] std::string label() const {
        return properties.value(QStringLiteral("label")).toString().toStdString();
    }
};

/// A menu as it came over the bus.
struct ReceivedMenu {
    uint revision = 0;
    QVariantMap properties = {};
    std::vector<ReceivedLine> lines = {};
};

/// An event of a menu, signature (isvu).
struct SentEvent {
    int id = 0;
    QString name = {};
};
QDBusArgument& operator<<(QDBusArgument& argument, const SentEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, SentEvent& event);

/// A panel that draws nothing: the watcher to which status items make themselves known, and questions to them. Whoever
/// waits for an answer runs the loop meanwhile, because the item may live in this process.
class FakePanel final : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// Runs the loop until the condition holds; false when it never does.
    using Wait = std::function<bool(const std::function<bool()>&)>;

    /// Takes the watcher's name.
    FakePanel(const QDBusConnection& bus, Wait wait);
    ~FakePanel() override;
    FakePanel(const FakePanel&) = delete;
    FakePanel& operator=(const FakePanel&) = delete;

    /// Under which names items have made themselves known, in order.
    [[nodiscard]] const QStringList& registered() const { return registered_; }
    /// Waits for another item than these many; its name.
    [[nodiscard]] QString waitForItem(qsizetype before = 0);

    /// Refuses that many registrations from now on, as one that is not ready yet.
    void refuseRegistrations(int count) { refusals_ = count; }

    /// Asks the last item or its menu, and waits; the reply or an error.
    [[nodiscard]] QDBusMessage askItem(const QString& member, const QVariantList& arguments = {});
    [[nodiscard]] QDBusMessage askMenu(const QString& member, const QVariantList& arguments = {});
    /// What the bus shows of the object to those who look around on it; XML.
    [[nodiscard]] QString describe(const QString& path);
    [[nodiscard]] QVariantMap itemProperties();
    [[nodiscard]] QVariantMap menuProperties();

    [[nodiscard]] ReceivedMenu layout(int parent = 0, int depth = -1, const QStringList& names = {});
    /// The lines with these numbers, or all.
    [[nodiscard]] std::vector<ReceivedLine> lines(const QList<int>& ids);
    /// Opens the menu as panels on Qt do, or as those on GTK do.
    [[nodiscard]] ReceivedMenu open();
    [[nodiscard]] ReceivedMenu openByGroup();
    void close() { event(0, QStringLiteral("closed")); }
    /// Tells the menu an event; whether it was accepted.
    bool event(int id, const QString& name);

    /// Tells several at once; the reply.
    [[nodiscard]] QDBusMessage events(const std::vector<std::pair<int, QString>>& events);

    /// The signals of the item and its menu so far, by name and arguments: "NewIcon", "LayoutUpdated 3 0".
    [[nodiscard]] const std::vector<std::string>& signalsSeen() const { return signals_; }
    void forgetSignals() { signals_.clear(); }

    [[nodiscard]] const QDBusConnection& bus() const { return bus_; }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    Q_SLOT void seeSignal(const QDBusMessage& signal);
    [[nodiscard]] QDBusMessage ask(const QString& path, const QString& interface, const QString& member,
                                   const QVariantList& arguments);

    QDBusConnection bus_;
    Wait wait_;
    QStringList registered_;
    int refusals_ = 0;
    std::vector<std::string> signals_;
};

}  // namespace velmorand::desktop
