#include "platform/linux/BusMenu.h"

#include "platform/RunLoop.h"
#include "platform/linux/BusMenuDescription.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <algorithm>
#include <array>
#include <utility>

namespace velmorand {
namespace {

constexpr QLatin1StringView interface("com.canonical.dbusmenu");
constexpr QLatin1StringView layoutUpdated("LayoutUpdated");
constexpr uint version = 3;
/// The questions of one opening come within this time; one that comes later is about another opening, also where nobody
/// has told the end of the first.
constexpr std::chrono::milliseconds longestOpening{500};
/// Who asks before the menu opens fetches and draws the lines before telling that it is open.
constexpr std::chrono::seconds longestDrawing{2};

const QString noSuchLine = QStringLiteral("The menu has no such line.");

QList<int> numbersIn(const QVariant& argument) {
    return qdbus_cast<QList<int>>(argument);
}

}  // namespace

BusMenu::BusMenu(const QDBusConnection& bus, RunLoop& runLoop)
    : BusObject(bus, runLoop, {.path = path, .interface = interface, .description = busMenuDescription}) {}

void BusMenu::attach(StatusMenuEvents events) {
    events_ = std::make_shared<StatusMenuEvents>(std::move(events));
    opened_.reset();
    announced_.reset();
}

void BusMenu::setItems(std::vector<MenuItem> items) {
    if (layout_.setItems(std::move(items)) && !isBeingMade_) tellLayout();
}

QVariantMap BusMenu::properties() const {
    return {{QStringLiteral("Version"), version},
            {QStringLiteral("TextDirection"), QStringLiteral("ltr")},
            {QStringLiteral("Status"), QStringLiteral("normal")},
            {QStringLiteral("IconThemePath"), QStringList()}};
}

bool BusMenu::call(const QDBusMessage& message) {
    struct Method {
        QLatin1StringView name;
        QLatin1StringView signature;
        void (BusMenu::*answer)(const QDBusMessage&) = nullptr;
    };
    static constexpr std::array methods{
        Method{QLatin1StringView("GetLayout"), QLatin1StringView("iias"), &BusMenu::getLayout},
        Method{QLatin1StringView("GetGroupProperties"), QLatin1StringView("aias"), &BusMenu::getGroupProperties},
        Method{QLatin1StringView("GetProperty"), QLatin1StringView("is"), &BusMenu::getProperty},
        Method{QLatin1StringView("Event"), QLatin1StringView("isvu"), &BusMenu::takeEvent},
        Method{QLatin1StringView("EventGroup"), QLatin1StringView("a(isvu)"), &BusMenu::takeEventGroup},
        Method{QLatin1StringView("AboutToShow"), QLatin1StringView("i"), &BusMenu::aboutToShow},
        Method{QLatin1StringView("AboutToShowGroup"), QLatin1StringView("ai"), &BusMenu::aboutToShowGroup},
    };
    const auto isAsked = [&](const Method& method) {
        return message.member() == method.name && message.signature() == method.signature;
    };
    const auto* const method = std::ranges::find_if(methods, isAsked);
    if (method == methods.end()) return false;
    (this->*method->answer)(message);
    return true;
}

/// Who has never asked for the lines of a menu may take one without lines for no menu.
void BusMenu::getLayout(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    const int id = arguments[0].toInt();
    const QDBusConnection bus = this->bus();
    if (revision_ == 1 && id == StatusMenuLayout::menuId && !open()) {
        sayGone(bus, message);
        return;
    }
    if (!layout_.contains(id)) {
        refuse(message, noSuchLine);
        return;
    }
    const BusMenuNode node = layout_.node(id, arguments[1].toInt(), arguments[2].toStringList());
    answer(message, {revision_, QVariant::fromValue(node)});
}

void BusMenu::getGroupProperties(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    const QList<int> ids = numbersIn(arguments[0]);
    answer(message, {QVariant::fromValue(layout_.lines(ids, arguments[1].toStringList()))});
}

void BusMenu::getProperty(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    const int id = arguments[0].toInt();
    if (!layout_.contains(id)) {
        refuse(message, noSuchLine);
        return;
    }
    const QVariant value = layout_.property(id, arguments[1].toString());
    if (!value.isValid()) {
        refuse(message, QStringLiteral("The line has no such property."));
        return;
    }
    answer(message, {QVariant::fromValue(QDBusVariant(value))});
}

void BusMenu::takeEvent(const QDBusMessage& message) {
    const int id = message.arguments()[0].toInt();
    if (!layout_.contains(id)) {
        refuse(message, noSuchLine);
        return;
    }
    answer(message);
    static_cast<void>(handleEvent(id, message.arguments()[1].toString()));
}

void BusMenu::takeEventGroup(const QDBusMessage& message) {
    const auto events = message.arguments()[0].value<QDBusArgument>();
    std::vector<std::pair<int, QString>> known;
    QList<int> unknown;
    events.beginArray();
    while (!events.atEnd()) {
        int id = 0;
        QString name;
        QDBusVariant data;
        uint time = 0;
        events.beginStructure();
        events >> id >> name >> data >> time;
        events.endStructure();
        if (layout_.contains(id))
            known.emplace_back(id, name);
        else
            unknown.append(id);
    }
    events.endArray();
    if (known.empty() && !unknown.isEmpty()) {
        refuse(message, noSuchLine);
        return;
    }
    answer(message, {QVariant::fromValue(unknown)});
    for (const auto& [id, name] : known) {
        if (!handleEvent(id, name)) return;
    }
}

void BusMenu::aboutToShow(const QDBusMessage& message) {
    const int id = message.arguments()[0].toInt();
    if (!layout_.contains(id)) {
        refuse(message, noSuchLine);
        return;
    }
    if (id != StatusMenuLayout::menuId) {
        answer(message, {false});
        return;
    }
    const QDBusConnection bus = this->bus();
    if (!open()) {
        sayGone(bus, message);
        return;
    }
    announced_ = runLoop().now();
    answer(message, {true});
}

void BusMenu::aboutToShowGroup(const QDBusMessage& message) {
    const QList<int> ids = numbersIn(message.arguments()[0]);
    QList<int> changed;
    QList<int> unknown;
    for (const int id : ids) {
        if (!layout_.contains(id)) unknown.append(id);
    }
    if (ids.contains(StatusMenuLayout::menuId)) {
        const QDBusConnection bus = this->bus();
        if (!open()) {
            sayGone(bus, message);
            return;
        }
        announced_ = runLoop().now();
        changed.append(StatusMenuLayout::menuId);
        tell(layoutUpdated, {revision_, StatusMenuLayout::menuId});
    }
    if (!ids.isEmpty() && unknown.size() == ids.size()) {
        refuse(message, noSuchLine);
        return;
    }
    answer(message, {QVariant::fromValue(changed), QVariant::fromValue(unknown)});
}

bool BusMenu::open() {
    const MonotonicTime now = runLoop().now();
    if (opened_ && now - *opened_ < longestOpening) return true;
    const bool wasNeverClosed = std::exchange(opened_, now).has_value();
    ++revision_;
    const auto events = events_;
    if (!events || isBeingMade_) return true;
    const std::weak_ptr<const bool> stillThere = alive();
    isBeingMade_ = true;
    if (wasNeverClosed && events->didClose) events->didClose();
    if (events->needsUpdate && !stillThere.expired()) events->needsUpdate();
    if (stillThere.expired()) return false;
    isBeingMade_ = false;
    return true;
}

/// Who opens it without asking before gets the lines a moment later.
bool BusMenu::openUnlessAnnounced() {
    const auto announced = std::exchange(announced_, std::nullopt);
    if (announced && runLoop().now() - *announced < longestDrawing) return true;
    if (!open()) return false;
    tellLayout();
    return true;
}

/// The event itself has been answered: what the program does with it may take its time, or end this object.
bool BusMenu::handleEvent(int id, const QString& event) {
    const bool isMenu = id == StatusMenuLayout::menuId;
    if (isMenu && event == QLatin1StringView("opened")) return openUnlessAnnounced();
    if (isMenu && event == QLatin1StringView("closed")) return close();
    const auto item = layout_.choosable(id);
    if (!item || event != QLatin1StringView("clicked")) return true;
    if (!close()) return false;
    const std::weak_ptr<const bool> stillThere = alive();
    const auto events = events_;
    if (events && events->chosen) events->chosen(*item);
    return !stillThere.expired();
}

/// Some programs tell the end of the menu itself, others only what was chosen from it.
bool BusMenu::close() {
    announced_.reset();
    if (!std::exchange(opened_, std::nullopt)) return true;
    const std::weak_ptr<const bool> stillThere = alive();
    const auto events = events_;
    if (events && events->didClose) events->didClose();
    return !stillThere.expired();
}

void BusMenu::tellLayout() {
    ++revision_;
    tell(layoutUpdated, {revision_, StatusMenuLayout::menuId});
}

}  // namespace velmorand
