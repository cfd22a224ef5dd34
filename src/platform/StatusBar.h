#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// Where a status image comes from: the application's own resources, or the symbols of the system.
enum class StatusImageKind : std::uint8_t { resource, symbol };

/// An image of a status item (`NSImage`), as a value: the platform draws it.
struct StatusImage {
    StatusImageKind kind = StatusImageKind::resource;
    std::string name;
    /// What assistive technology says of it; may be empty.
    std::string description;
    /// Whether the system gives it the colour that fits where it stands.
    bool isTemplate = false;

    bool operator==(const StatusImage&) const = default;
};

/// The modifiers of a key equivalent (`keyEquivalentModifierMask`).
struct KeyEquivalentModifiers {
    bool control = false;
    bool option = false;
    bool shift = false;
    bool command = false;

    bool operator==(const KeyEquivalentModifiers&) const = default;
};

enum class MenuItemKind : std::uint8_t { item, sectionHeader, separator };

/// One line of a menu (`NSMenuItem`). All texts are UTF-8 of any kind: what cannot be drawn is the platform's business.
struct MenuItem {
    MenuItemKind kind = MenuItemKind::item;
    std::string title = {};
    /// Names what choosing the item does; empty for an item that does nothing.
    std::string action = {};
    /// What the action is about.
    std::optional<std::string> representedObject = {};
    /// The character of the key, or one of U+F700 to U+F703 for the arrows up, down, left and right; empty without one.
    std::string keyEquivalent = {};
    KeyEquivalentModifiers keyEquivalentModifiers = {};
    bool isEnabled = false;

    bool operator==(const MenuItem&) const = default;
};

/// What is told of the menu of a status item (`NSMenuDelegate`). Any of them may be absent.
struct StatusMenuEvents {
    /// The menu is about to open: this is the moment to set its items.
    std::function<void()> needsUpdate;
    /// The menu was closed. Where the system does not tell of a menu that was closed without a choice, this comes when
    /// it opens for the next time.
    std::function<void()> didClose;
    /// The user chose an item, which was enabled when the menu was made.
    std::function<void(const MenuItem&)> chosen;
};

/// One item of the system's status bar, with a button and a menu (`NSStatusItem`). It goes with the object.
class StatusItem {
public:
    virtual ~StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;

    /// Whether there is anything to set an image, a title or a tool tip on.
    [[nodiscard]] virtual bool hasButton() const = 0;
    virtual void setImage(const StatusImage& image) = 0;
    virtual void setTitle(std::string_view title) = 0;
    virtual void setToolTip(std::string_view toolTip) = 0;

    /// From now on the item has a menu, which tells its events in turns of the main loop.
    virtual void attachMenu(StatusMenuEvents events) = 0;
    /// Replaces all items of the menu, also of one that is open.
    virtual void setMenuItems(std::vector<MenuItem> items) = 0;

protected:
    StatusItem() = default;
};

/// The system's bar of status items (`NSStatusBar`). Main thread only.
class StatusBar {
public:
    virtual ~StatusBar() = default;
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;

    /// Makes an item as wide as it needs to be. Where there is no bar at the moment the item appears when there is one.
    /// One item at a time: the one before must be gone.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem() = 0;

    /// Looks an image up; absent when the platform has none of that name. It is no template yet.
    [[nodiscard]] virtual std::optional<StatusImage> image(StatusImageKind kind, std::string_view name,
                                                           std::string_view description) const = 0;

protected:
    StatusBar() = default;
};

}  // namespace velmorand
