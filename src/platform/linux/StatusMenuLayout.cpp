#include "platform/linux/StatusMenuLayout.h"

#include "platform/linux/MenuText.h"

#include <QDBusMetaType>
#include <algorithm>
#include <limits>
#include <utility>

namespace velmorand {
namespace {

const QString typeProperty = QStringLiteral("type");
const QString labelProperty = QStringLiteral("label");
const QString enabledProperty = QStringLiteral("enabled");
const QString visibleProperty = QStringLiteral("visible");
const QString shortcutProperty = QStringLiteral("shortcut");
const QString childrenProperty = QStringLiteral("children-display");

/// What is told of a line beside what every line is unless told otherwise.
QVariantMap propertiesOf(const MenuItem& item) {
    if (item.kind == MenuItemKind::separator) return {{typeProperty, QStringLiteral("separator")}};
    QVariantMap properties{{labelProperty, menuLabel(item)}};
    if (item.kind == MenuItemKind::sectionHeader || !item.isEnabled) properties.insert(enabledProperty, false);
    const QStringList shortcut = item.kind == MenuItemKind::item ? menuShortcut(item) : QStringList();
    if (!shortcut.isEmpty()) properties.insert(shortcutProperty, QVariant::fromValue(QList<QStringList>{shortcut}));
    return properties;
}

QVariantMap only(const QVariantMap& properties, const QStringList& names) {
    if (names.isEmpty()) return properties;
    QVariantMap some;
    for (const QString& name : names) {
        if (const auto found = properties.find(name); found != properties.end()) some.insert(name, *found);
    }
    return some;
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuProperties& line) {
    argument.beginStructure();
    argument << line.id << line.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuProperties& line) {
    argument.beginStructure();
    argument >> line.id >> line.properties;
    argument.endStructure();
    return argument;  // NOLINT(bugprone-return-const-ref-from-parameter): as all of these
}

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuNode& node) {
    argument.beginStructure();
    argument << node.id << node.properties << node.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuNode& node) {
    argument.beginStructure();
    argument >> node.id >> node.properties >> node.children;
    argument.endStructure();
    return argument;  // NOLINT(bugprone-return-const-ref-from-parameter): as all of these
}

StatusMenuLayout::StatusMenuLayout() {
    qDBusRegisterMetaType<BusMenuNode>();
    qDBusRegisterMetaType<BusMenuProperties>();
    qDBusRegisterMetaType<QList<BusMenuProperties>>();
    qDBusRegisterMetaType<QList<QStringList>>();
}

bool StatusMenuLayout::setItems(std::vector<MenuItem> items) {
    if (items == items_) return false;
    std::map<Identity, int> numbers;
    std::vector<int> ids;
    for (const MenuItem& item : items) {
        Identity identity{.kind = item.kind,
                          .action = item.action,
                          .representedObject = item.representedObject,
                          .title = item.action.empty() ? item.title : std::string(),
                          .occurrence = 0};
        while (numbers.contains(identity)) ++identity.occurrence;
        const auto known = numbers_.find(identity);
        if (known == numbers_.end() && lastId_ == std::numeric_limits<int>::max()) lastId_ = menuId;
        ids.push_back(known == numbers_.end() ? ++lastId_ : known->second);
        numbers.emplace(std::move(identity), ids.back());
    }
    numbers_ = std::move(numbers);
    ids_ = std::move(ids);
    items_ = std::move(items);
    places_.clear();
    for (std::size_t place = 0; place < ids_.size(); ++place) places_.emplace(ids_[place], place);
    return true;
}

std::optional<MenuItem> StatusMenuLayout::choosable(int id) const {
    const auto found = places_.find(id);
    if (found == places_.end()) return std::nullopt;
    const MenuItem& item = items_[found->second];
    return item.kind == MenuItemKind::item && item.isEnabled ? std::optional(item) : std::nullopt;
}

bool StatusMenuLayout::contains(int id) const {
    return id == menuId || places_.contains(id);
}

BusMenuNode StatusMenuLayout::node(int id, int depth, const QStringList& names) const {
    BusMenuNode node{.id = id, .properties = only(allProperties(id), names)};
    if (id != menuId || depth == 0) return node;
    for (const int line : ids_) node.children.append(QVariant::fromValue(this->node(line, 0, names)));
    return node;
}

QList<BusMenuProperties> StatusMenuLayout::lines(std::span<const int> ids, const QStringList& names) const {
    const auto add = [&](QList<BusMenuProperties>& lines, int id) {
        if (ids.empty() || std::ranges::find(ids, id) != ids.end())
            lines.append({.id = id, .properties = only(allProperties(id), names)});
    };
    QList<BusMenuProperties> lines;
    add(lines, menuId);
    for (const int id : ids_) add(lines, id);
    return lines;
}

QVariant StatusMenuLayout::property(int id, const QString& name) const {
    const QVariantMap properties = allProperties(id);
    if (const auto found = properties.find(name); found != properties.end()) return *found;
    const QVariantMap usual{{typeProperty, QStringLiteral("standard")},
                            {labelProperty, QString()},
                            {enabledProperty, true},
                            {visibleProperty, true},
                            {shortcutProperty, QVariant::fromValue(QList<QStringList>())},
                            {childrenProperty, QString()}};
    return usual.value(name);
}

QVariantMap StatusMenuLayout::allProperties(int id) const {
    if (id == menuId) return {{childrenProperty, QStringLiteral("submenu")}};
    return propertiesOf(items_[places_.at(id)]);
}

}  // namespace velmorand
