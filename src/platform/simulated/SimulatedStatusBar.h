#pragma once

#include "platform/StatusBar.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmorand {

/// A status item of a simulated desktop. A test is its user: it looks at it, opens its menu and chooses from it. What the
/// user does is told at once, as in a turn of the loop; the item may die of what it tells.
class SimulatedStatusItem final : public StatusItem {
public:
    /// `shown` holds the items of the bar that are alive.
    SimulatedStatusItem(std::shared_ptr<std::vector<SimulatedStatusItem*>> shown, bool hasButton);
    ~SimulatedStatusItem() override;
    SimulatedStatusItem(const SimulatedStatusItem&) = delete;
    SimulatedStatusItem& operator=(const SimulatedStatusItem&) = delete;

    [[nodiscard]] bool hasButton() const override { return hasButton_; }
    /// Without a button these three do nothing.
    void setImage(const StatusImage& image) override;
    void setTitle(std::string_view title) override;
    void setToolTip(std::string_view toolTip) override;

    void attachMenu(StatusMenuEvents events) override { events_ = std::move(events); }
    void setMenuItems(std::vector<MenuItem> items) override { menuItems_ = std::move(items); }

    /// What the button shows.
    [[nodiscard]] const std::optional<StatusImage>& image() const { return image_; }
    [[nodiscard]] const std::string& title() const { return title_; }
    [[nodiscard]] const std::string& toolTip() const { return toolTip_; }

    /// Opens the menu: tells that it needs its items, which are then there. Answers whether the menu is open now, which
    /// it is not when there is none. An open one stays as it is.
    bool openMenu();
    /// Closes the menu without a choice; nothing happens when it is not open.
    void closeMenu();
    /// Chooses the item at this place, or the first one of this title, of the open menu: the menu is closed, then the
    /// choice is told. Answers false, and leaves the menu open, for what cannot be chosen: no such item, a disabled one, a
    /// header, a separator.
    bool choose(std::size_t index);
    bool choose(std::string_view title);

    [[nodiscard]] bool isMenuOpen() const { return isMenuOpen_; }
    /// The lines of the menu as they were set last, whether it is open or not.
    [[nodiscard]] const std::vector<MenuItem>& menuItems() const { return menuItems_; }

private:
    std::shared_ptr<std::vector<SimulatedStatusItem*>> shown_;
    bool hasButton_;
    std::optional<StatusImage> image_;
    std::string title_;
    std::string toolTip_;
    std::optional<StatusMenuEvents> events_;
    std::vector<MenuItem> menuItems_;
    bool isMenuOpen_ = false;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);  // an event may end this object
};

/// The status bar of a simulated desktop. It has the images that the program asks for, until a test takes one away.
class SimulatedStatusBar final : public StatusBar {
public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;
    [[nodiscard]] std::optional<StatusImage> image(StatusImageKind kind, std::string_view name,
                                                   std::string_view description) const override;

    /// The items in the bar, in the order of their making.
    [[nodiscard]] const std::vector<SimulatedStatusItem*>& items() const { return *items_; }

    /// Called before each item is made.
    void setOnMake(std::function<void()> told) { onMake_ = std::move(told); }

    void addImage(StatusImageKind kind, std::string name) { images_.emplace(kind, std::move(name)); }
    void removeImage(StatusImageKind kind, std::string name) { images_.erase({kind, std::move(name)}); }
    /// Whether items that are made from now on have a button; they have unless set.
    void setMakesButtons(bool makesButtons) { makesButtons_ = makesButtons; }

private:
    std::shared_ptr<std::vector<SimulatedStatusItem*>> items_ = std::make_shared<std::vector<SimulatedStatusItem*>>();
    std::set<std::pair<StatusImageKind, std::string>> images_{
        {StatusImageKind::resource, "MenuBarTemplate"},
        {StatusImageKind::symbol, "rectangle.3.group"},
        {StatusImageKind::symbol, "exclamationmark.triangle"},
    };
    bool makesButtons_ = true;
    std::function<void()> onMake_;
};

}  // namespace velmorand
