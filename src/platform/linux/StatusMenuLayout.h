#pragma once

#include "platform/StatusBar.h"

#include <QDBusArgument>
#include <QList>
#include <QStringList>
#include <QVariantMap>
#include <compare>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace velmorand {

/// A line of a menu as it goes over the bus: its number and what it is, signature (ia{sv}).
struct BusMenuProperties {
    int id = 0;
    QVariantMap properties = {};
};
/// The same with the lines below it, signature (ia{sv}av).
struct BusMenuNode {
    int id = 0;
    QVariantMap properties = {};
    QVariantList children = {};
};
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuProperties& line);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuProperties& line);
QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuNode& node);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuNode& node);

/// The lines of a menu under numbers. A number means the same kind of line, action and represented object for as long as
/// it is used, whatever the line says and wherever it stands, and is not used again after the line was gone: a click that
/// was meant for an earlier menu hits what it was meant for or nothing. The menu itself has the number 0.
class StatusMenuLayout {
public:
    static constexpr int menuId = 0;

    /// Makes the types known to the bus.
    StatusMenuLayout();

    /// Answers whether this changes anything.
    bool setItems(std::vector<MenuItem> items);

    /// The lines that may be chosen are the enabled ones; absent for every other number.
    [[nodiscard]] std::optional<MenuItem> choosable(int id) const;
    [[nodiscard]] bool contains(int id) const;

    /// The menu or a line of it, of which `names` are told, or everything when there are none. `depth` says how many
    /// levels below it are told; all of them if negative. The number must be contained.
    [[nodiscard]] BusMenuNode node(int id, int depth, const QStringList& names) const;
    /// The menu and its lines one by one; only those with these numbers, if there are any.
    [[nodiscard]] QList<BusMenuProperties> lines(std::span<const int> ids, const QStringList& names) const;
    /// One property, also where it has the value that every line has unless told otherwise; invalid for an unknown one.
    [[nodiscard]] QVariant property(int id, const QString& name) const;

private:
    struct Identity {
        MenuItemKind kind;
        std::string action;
        std::optional<std::string> representedObject;
        std::string title;  // of lines without an action
        std::size_t occurrence;

        auto operator<=>(const Identity&) const = default;
    };

    [[nodiscard]] QVariantMap allProperties(int id) const;

    std::vector<MenuItem> items_;
    std::vector<int> ids_;
    std::map<int, std::size_t> places_;
    std::map<Identity, int> numbers_;
    int lastId_ = 0;
};

}  // namespace velmorand
