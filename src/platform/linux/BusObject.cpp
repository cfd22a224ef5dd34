#include "platform/linux/BusObject.h"

#include "platform/RunLoop.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <utility>

namespace velmorand {
namespace {

constexpr QLatin1StringView propertiesInterface("org.freedesktop.DBus.Properties");
constexpr QLatin1StringView propertiesDescription(R"XML(  <interface name="org.freedesktop.DBus.Properties">
    <method name="Get">
      <arg name="interface" type="s" direction="in"/>
      <arg name="name" type="s" direction="in"/>
      <arg name="value" type="v" direction="out"/>
    </method>
    <method name="GetAll">
      <arg name="interface" type="s" direction="in"/>
      <arg name="values" type="a{sv}" direction="out"/>
    </method>
    <method name="Set">
      <arg name="interface" type="s" direction="in"/>
      <arg name="name" type="s" direction="in"/>
      <arg name="value" type="v" direction="in"/>
    </method>
  </interface>
)XML");

bool hasSignature(const QDBusMessage& message, const char* signature) {
    return message.signature() == QLatin1StringView(signature);
}

}  // namespace

BusObject::BusObject(QDBusConnection bus, RunLoop& runLoop, const BusName& name)
    : bus_(std::move(bus)),
      runLoop_(runLoop),
      name_(name),
      isRegistered_(bus_.registerVirtualObject(name_.path, this)) {}

BusObject::~BusObject() {
    if (isRegistered_) bus_.unregisterObject(name_.path);
}

QString BusObject::introspect(const QString& /*path*/) const {
    return name_.description + propertiesDescription;
}

/// The answer is given in a turn of its own: there this object may die.
bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) {
    // The toolkit answers what every object can be asked.
    static constexpr QLatin1StringView everybodys("org.freedesktop.DBus.");
    if (message.interface().startsWith(everybodys) && message.interface() != propertiesInterface) return false;
    runLoop_.post([this, alive = alive(), message, bus = bus_] {
        if (!alive.expired())
            handle(message);
        else
            sayGone(bus, message);
    });
    return true;
}

void BusObject::answer(const QDBusMessage& message, const QVariantList& values) {
    if (message.isReplyRequired()) bus_.send(message.createReply(values));
}

void BusObject::refuse(const QDBusMessage& message, const QString& reason) {
    if (message.isReplyRequired()) bus_.send(message.createErrorReply(QDBusError::InvalidArgs, reason));
}

void BusObject::sayGone(const QDBusConnection& bus, const QDBusMessage& message) {
    if (!message.isReplyRequired()) return;
    bus.send(message.createErrorReply(QDBusError::UnknownObject, QStringLiteral("The object has gone.")));
}

void BusObject::tell(const QString& signal, const QVariantList& values) {
    QDBusMessage message = QDBusMessage::createSignal(name_.path, name_.interface, signal);
    message.setArguments(values);
    bus_.send(message);
}

void BusObject::handle(const QDBusMessage& message) {
    const bool isForProperties = message.interface() == propertiesInterface;
    const bool isOurs = message.interface() == name_.interface || message.interface().isEmpty();
    const QDBusConnection bus = bus_;
    if ((isForProperties && callProperties(message)) || (isOurs && call(message))) return;
    if (!message.isReplyRequired()) return;
    bus.send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("There is no such method.")));
}

bool BusObject::callProperties(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (message.member() == QLatin1StringView("GetAll") && hasSignature(message, "s")) {
        const bool isKnown = arguments[0] == QString(name_.interface) || arguments[0].toString().isEmpty();
        answer(message, {isKnown ? properties() : QVariantMap()});
        return true;
    }
    if (message.member() == QLatin1StringView("Get") && hasSignature(message, "ss")) {
        const QVariant value = properties().value(arguments[1].toString());
        const bool isKnown = arguments[0] == QString(name_.interface) || arguments[0].toString().isEmpty();
        if (isKnown && value.isValid())
            answer(message, {QVariant::fromValue(QDBusVariant(value))});
        else
            refuse(message, QStringLiteral("There is no such property."));
        return true;
    }
    if (message.member() != QLatin1StringView("Set")) return false;
    refuse(message, QStringLiteral("The properties cannot be set."));
    return true;
}

}  // namespace velmorand
