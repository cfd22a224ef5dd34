#include "desktop/harness/AccessibilityBus.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QVariantList>
#include <algorithm>
#include <utility>

namespace velmorand::desktop {
namespace {

const QString accessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString action = QStringLiteral("org.a11y.atspi.Action");
const QString component = QStringLiteral("org.a11y.atspi.Component");
const QString editableText = QStringLiteral("org.a11y.atspi.EditableText");
const QString valueInterface = QStringLiteral("org.a11y.atspi.Value");
const QString registry = QStringLiteral("org.a11y.atspi.Registry");
const QString root = QStringLiteral("/org/a11y/atspi/accessible/root");
constexpr int longestAnswer = 5000;  // milliseconds

QString qt(const std::string& text) {
    return QString::fromStdString(text);
}

struct Reference {
    QString service;
    QString path;
};

}  // namespace

/// Questions over the bus, each of which waits for its answer.
class AccessibilityBus::Connection {
public:
    explicit Connection(const QString& address)
        : name_(address), bus_(QDBusConnection::connectToBus(address, address)) {}
    ~Connection() { QDBusConnection::disconnectFromBus(name_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] bool isConnected() const { return bus_.isConnected(); }

    /// The arguments of the answer; none for an error.
    [[nodiscard]] QVariantList ask(const Reference& object, const QString& interface, const QString& member,
                                   const QVariantList& arguments = {}) {
        QDBusMessage call = QDBusMessage::createMethodCall(object.service, object.path, interface, member);
        call.setArguments(arguments);
        const QDBusMessage reply = bus_.call(call, QDBus::Block, longestAnswer);
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
    }

    [[nodiscard]] QVariant property(const Reference& object, const QString& interface, const QString& name) {
        const QVariantList reply =
            ask(object, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"), {interface, name});
        return reply.empty() ? QVariant() : reply[0].value<QDBusVariant>().variant();
    }

    [[nodiscard]] std::vector<Reference> children(const Reference& object) {
        std::vector<Reference> found;
        const QVariantList reply = ask(object, accessible, QStringLiteral("GetChildren"));
        if (reply.empty()) return found;
        const auto list = reply[0].value<QDBusArgument>();
        list.beginArray();
        while (!list.atEnd()) {
            Reference child;
            QDBusObjectPath path;
            list.beginStructure();
            list >> child.service >> path;
            list.endStructure();
            child.path = path.path();
            found.push_back(std::move(child));
        }
        list.endArray();
        return found;
    }

    [[nodiscard]] AccessibleObject describe(const Reference& object) {
        AccessibleObject described{
            .service = object.service.toStdString(),
            .path = object.path.toStdString(),
            .role = ask(object, accessible, QStringLiteral("GetRoleName")).value(0).toString().toStdString(),
            .name = property(object, accessible, QStringLiteral("Name")).toString().toStdString(),
            .description = property(object, accessible, QStringLiteral("Description")).toString().toStdString(),
            .states = 0,
            .frame = std::nullopt,
            .actions = {},
            .value = std::nullopt};
        const auto states = qdbus_cast<QList<uint>>(ask(object, accessible, QStringLiteral("GetState")).value(0));
        for (qsizetype half = 0; half < std::min<qsizetype>(states.size(), 2); ++half)
            described.states |= std::uint64_t{states[half]} << (32 * half);
        const auto interfaces =
            qdbus_cast<QStringList>(ask(object, accessible, QStringLiteral("GetInterfaces")).value(0));
        if (interfaces.contains(component)) described.frame = frameOf(object);
        if (interfaces.contains(action)) described.actions = actionsOf(object);
        if (interfaces.contains(valueInterface))
            described.value = property(object, valueInterface, QStringLiteral("CurrentValue")).toDouble();
        return described;
    }

    bool setValue(const Reference& object, double value) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            object.service, object.path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
        call.setArguments(
            {valueInterface, QStringLiteral("CurrentValue"), QVariant::fromValue(QDBusVariant(QVariant(value)))});
        return bus_.call(call, QDBus::Block, longestAnswer).type() == QDBusMessage::ReplyMessage;
    }

    [[nodiscard]] uint processOf(const QString& service) {
        const Reference bus{QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus")};
        return ask(bus, bus.service, QStringLiteral("GetConnectionUnixProcessID"), {service}).value(0).toUInt();
    }

private:
    [[nodiscard]] std::optional<PixelRect> frameOf(const Reference& object) {
        constexpr uint onTheScreen = 0;
        const QVariantList reply = ask(object, component, QStringLiteral("GetExtents"), {onTheScreen});
        if (reply.empty()) return std::nullopt;
        PixelRect frame;
        const auto extents = reply[0].value<QDBusArgument>();
        extents.beginStructure();
        extents >> frame.x >> frame.y >> frame.width >> frame.height;
        extents.endStructure();
        return frame;
    }

    [[nodiscard]] std::vector<std::string> actionsOf(const Reference& object) {
        std::vector<std::string> names;
        const QVariantList reply = ask(object, action, QStringLiteral("GetActions"));
        if (reply.empty()) return names;
        const auto list = reply[0].value<QDBusArgument>();
        list.beginArray();
        while (!list.atEnd()) {
            QString name;
            QString description;
            QString key;
            list.beginStructure();
            list >> name >> description >> key;
            list.endStructure();
            names.push_back(name.toStdString());
        }
        list.endArray();
        return names;
    }

    QString name_;
    QDBusConnection bus_;
};

const AccessibleObject* AccessibleTree::find(std::string_view role, std::string_view name) const {
    const auto isWanted = [&](const AccessibleObject& object) {
        return object.frame && object.name == name && (role.empty() || object.role == role);
    };
    const auto found = std::ranges::find_if(objects_, isWanted);
    return found == objects_.end() ? nullptr : &*found;
}

std::string AccessibleTree::text() const {
    std::string lines;
    for (const AccessibleObject& object : objects_) {
        lines +=
            fmt::format("{} \"{}\" {}{}{}{}{}{}\n", object.role, object.name, object.frame ? object.frame->text() : "-",
                        object.is(AccessibleState::showing) ? "" : " out of sight",
                        object.is(AccessibleState::checked) ? " checked" : "",
                        object.is(AccessibleState::focused) ? " focused" : "",
                        object.value ? fmt::format(" {}", *object.value) : "",
                        object.actions.empty() ? "" : fmt::format(" ({})", fmt::join(object.actions, ", ")));
    }
    return lines;
}

AccessibilityBus::AccessibilityBus(ChildProcess launcher, std::unique_ptr<Connection> connection)
    : launcher_(std::move(launcher)), connection_(std::move(connection)) {}

AccessibilityBus::~AccessibilityBus() = default;

std::expected<std::unique_ptr<AccessibilityBus>, HarnessError> AccessibilityBus::start(TestDesktop& desktop) {
    auto launcher = desktop.start({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately"});
    if (!launcher) return std::unexpected(launcher.error());

    Connection session(qt(desktop.environment().at("DBUS_SESSION_BUS_ADDRESS")));
    const Reference guide{QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")};
    QString address;
    desktop.observer().waitUntil([&] {
        address = session.ask(guide, guide.service, QStringLiteral("GetAddress")).value(0).toString();
        return !address.isEmpty();
    });
    auto connection = std::make_unique<Connection>(address);
    if (!connection->isConnected()) {
        return std::unexpected(HarnessError{"no accessibility bus comes\n" + launcher->logTail()});
    }
    return std::unique_ptr<AccessibilityBus>(new AccessibilityBus(std::move(*launcher), std::move(connection)));
}

AccessibleTree AccessibilityBus::treeOf(const ChildProcess& program) {
    std::vector<AccessibleObject> objects;
    std::vector<Reference> pending;
    for (const Reference& application : connection_->children({registry, root})) {
        if (connection_->processOf(application.service) == static_cast<uint>(program.pid()))
            pending.push_back(application);
    }
    while (!pending.empty()) {
        const Reference object = std::move(pending.back());
        pending.pop_back();
        objects.push_back(connection_->describe(object));
        std::vector<Reference> children = connection_->children(object);
        std::ranges::move(children.rbegin(), children.rend(), std::back_inserter(pending));
    }
    return AccessibleTree(std::move(objects));
}

bool AccessibilityBus::press(const AccessibleObject& object) {
    const auto press = std::ranges::find(object.actions, "Press");
    const auto index = press == object.actions.end() ? 0 : static_cast<int>(press - object.actions.begin());
    return connection_->ask({qt(object.service), qt(object.path)}, action, QStringLiteral("DoAction"), {index})
        .value(0)
        .toBool();
}

bool AccessibilityBus::write(const AccessibleObject& object, std::string_view text) {
    return connection_
        ->ask({qt(object.service), qt(object.path)}, editableText, QStringLiteral("SetTextContents"),
              {QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))})
        .value(0)
        .toBool();
}

bool AccessibilityBus::setValue(const AccessibleObject& object, double value) {
    return connection_->setValue({qt(object.service), qt(object.path)}, value);
}

bool AccessibilityBus::focus(const AccessibleObject& object) {
    return connection_->ask({qt(object.service), qt(object.path)}, component, QStringLiteral("GrabFocus"))
        .value(0)
        .toBool();
}

}  // namespace velmorand::desktop
