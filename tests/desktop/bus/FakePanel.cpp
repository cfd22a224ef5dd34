#include "desktop/bus/FakePanel.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <stdexcept>
#include <utility>

namespace velmorand::desktop {
namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuPath = QStringLiteral("/MenuBar");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

ReceivedLine readLine(const QDBusArgument& argument, QVariantList* children = nullptr) {
    ReceivedLine line;
    QVariantList below;
    argument.beginStructure();
    argument >> line.id >> line.properties >> below;
    argument.endStructure();
    if (children != nullptr) *children = below;
    return line;
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const SentEvent& event) {
    argument.beginStructure();
    argument << event.id << event.name << QDBusVariant(QString()) << 0U;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, SentEvent& event) {
    QDBusVariant data;
    uint time = 0;
    argument.beginStructure();
    argument >> event.id >> event.name >> data >> time;
    argument.endStructure();
    return argument;
}

FakePanel::FakePanel(const QDBusConnection& bus, Wait wait) : bus_(bus), wait_(std::move(wait)) {
    bus_.registerVirtualObject(watcherPath, this);
    for (const char* name : {"NewIcon", "NewTitle", "NewToolTip", "NewStatus"})
        bus_.connect({}, itemPath, itemInterface, QString::fromLatin1(name), this, SLOT(seeSignal(QDBusMessage)));
    bus_.connect({}, menuPath, menuInterface, QStringLiteral("LayoutUpdated"), this, SLOT(seeSignal(QDBusMessage)));
    if (bus_.interface()->registerService(watcherName) != QDBusConnectionInterface::ServiceRegistered)
        throw std::runtime_error("the bus does not give the watcher's name");
}

FakePanel::~FakePanel() {
    bus_.unregisterService(watcherName);
    bus_.unregisterObject(watcherPath);
}

QString FakePanel::waitForItem(qsizetype before) {
    return wait_([&] { return registered_.size() > before; }) ? registered_.last() : QString();
}

QDBusMessage FakePanel::askItem(const QString& member, const QVariantList& arguments) {
    return ask(itemPath, itemInterface, member, arguments);
}

QDBusMessage FakePanel::askMenu(const QString& member, const QVariantList& arguments) {
    return ask(menuPath, menuInterface, member, arguments);
}

QString FakePanel::describe(const QString& path) {
    const QDBusMessage reply =
        ask(path, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"), {});
    return reply.arguments().value(0).toString();
}

QVariantMap FakePanel::itemProperties() {
    const QVariantList reply = ask(itemPath, properties, QStringLiteral("GetAll"), {itemInterface}).arguments();
    return reply.empty() ? QVariantMap() : qdbus_cast<QVariantMap>(reply[0]);
}

QVariantMap FakePanel::menuProperties() {
    const QVariantList reply = ask(menuPath, properties, QStringLiteral("GetAll"), {menuInterface}).arguments();
    return reply.empty() ? QVariantMap() : qdbus_cast<QVariantMap>(reply[0]);
}

ReceivedMenu FakePanel::layout(int parent, int depth, const QStringList& names) {
    const QDBusMessage reply = askMenu(QStringLiteral("GetLayout"), {parent, depth, names});
    if (reply.signature() != QStringLiteral("u(ia{sv}av)")) return {};
    QVariantList children;
    const ReceivedLine root = readLine(reply.arguments()[1].value<QDBusArgument>(), &children);
    ReceivedMenu menu{.revision = reply.arguments()[0].toUInt(), .properties = root.properties};
    for (const QVariant& child : children) menu.lines.push_back(readLine(child.value<QDBusArgument>()));
    return menu;
}

std::vector<ReceivedLine> FakePanel::lines(const QList<int>& ids) {
    const QDBusMessage reply = askMenu(QStringLiteral("GetGroupProperties"), {QVariant::fromValue(ids), QStringList()});
    std::vector<ReceivedLine> lines;
    if (reply.signature() != QStringLiteral("a(ia{sv})")) return lines;
    const auto argument = reply.arguments()[0].value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        ReceivedLine line;
        argument.beginStructure();
        argument >> line.id >> line.properties;
        argument.endStructure();
        lines.push_back(std::move(line));
    }
    argument.endArray();
    return lines;
}

ReceivedMenu FakePanel::open() {
    const QDBusMessage reply = askMenu(QStringLiteral("AboutToShow"), {0});
    if (reply.arguments() != QVariantList{true}) return {};
    event(0, QStringLiteral("opened"));
    return layout();
}

ReceivedMenu FakePanel::openByGroup() {
    const QDBusMessage reply = askMenu(QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(QList<int>{0})});
    if (reply.signature() != QStringLiteral("aiai")) return {};
    return layout();
}

bool FakePanel::event(int id, const QString& name) {
    const QDBusMessage reply = askMenu(
        QStringLiteral("Event"), {id, name, QVariant::fromValue(QDBusVariant(QString())), QVariant::fromValue(0U)});
    return reply.type() == QDBusMessage::ReplyMessage;
}

QDBusMessage FakePanel::events(const std::vector<std::pair<int, QString>>& events) {
    qDBusRegisterMetaType<SentEvent>();
    qDBusRegisterMetaType<QList<SentEvent>>();
    QList<SentEvent> sent;
    for (const auto& [id, name] : events) sent.append({.id = id, .name = name});
    return askMenu(QStringLiteral("EventGroup"), {QVariant::fromValue(sent)});
}

bool FakePanel::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.member() != QStringLiteral("RegisterStatusNotifierItem") || message.arguments().size() != 1)
        return false;
    if (refusals_ > 0) {
        --refusals_;
        return false;
    }
    registered_.append(message.arguments()[0].toString());
    connection.send(message.createReply());
    return true;
}

void FakePanel::seeSignal(const QDBusMessage& signal) {
    std::string text = signal.member().toStdString();
    for (const QVariant& argument : signal.arguments()) text += " " + argument.toString().toStdString();
    signals_.push_back(std::move(text));
}

QDBusMessage FakePanel::ask(const QString& path, const QString& interface, const QString& member,
                            const QVariantList& arguments) {
    QDBusMessage question =
        QDBusMessage::createMethodCall(registered_.empty() ? QString() : registered_.last(), path, interface, member);
    question.setArguments(arguments);
    QDBusPendingCall answer = bus_.asyncCall(question);
    if (!wait_([&] { return answer.isFinished(); })) throw std::runtime_error("the item does not answer");
    return answer.reply();
}

}  // namespace velmorand::desktop
