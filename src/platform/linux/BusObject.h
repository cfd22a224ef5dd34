#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QLatin1StringView>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <memory>

class QDBusMessage;

namespace velmorand {

class RunLoop;

/// What an object on the bus is called.
struct BusName {
    QLatin1StringView path;
    QLatin1StringView interface;
    /// The interface, as the bus describes one in XML.
    QLatin1StringView description;
};

/// An object on the bus with one interface of its own. Its calls are answered one after the other in turns of the run loop,
/// where it may die. Nothing here waits for the bus; without one nothing happens.
class BusObject : public QDBusVirtualObject {
    Q_OBJECT

public:
    ~BusObject() override;

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

protected:
    /// The bus need not be connected; the run loop must outlive the object.
    BusObject(QDBusConnection bus, RunLoop& runLoop, const BusName& name);

    /// What the properties of the interface are now.
    [[nodiscard]] virtual QVariantMap properties() const = 0;
    /// Answers a call of the interface with `answer` or `refuse`; false when it has no such member. The object may be gone
    /// on return: a call that it died of before it was answered is answered with `sayGone`.
    virtual bool call(const QDBusMessage& message) = 0;

    void answer(const QDBusMessage& message, const QVariantList& values = {});
    void refuse(const QDBusMessage& message, const QString& reason);
    /// Answers for an object that is no longer there; nobody shall wait for it.
    static void sayGone(const QDBusConnection& bus, const QDBusMessage& message);
    /// Tells everybody a signal of the interface.
    void tell(const QString& signal, const QVariantList& values = {});

    [[nodiscard]] const QDBusConnection& bus() const { return bus_; }
    [[nodiscard]] RunLoop& runLoop() { return runLoop_; }
    /// Expires with the object.
    [[nodiscard]] std::weak_ptr<const bool> alive() const { return alive_; }

private:
    void handle(const QDBusMessage& message);
    bool callProperties(const QDBusMessage& message);

    QDBusConnection bus_;
    RunLoop& runLoop_;
    BusName name_;
    bool isRegistered_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace velmorand
