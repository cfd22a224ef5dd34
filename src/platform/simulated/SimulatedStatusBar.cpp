#include "platform/simulated/SimulatedStatusBar.h"

#include <algorithm>
#include <iterator>

namespace velmorand {

SimulatedStatusItem::SimulatedStatusItem(std::shared_ptr<std::vector<SimulatedStatusItem*>> shown, bool hasButton)
    : shown_(std::move(shown)), hasButton_(hasButton) {
    shown_->push_back(this);
}

SimulatedStatusItem::~SimulatedStatusItem() {
    std::erase(*shown_, this);
}

void SimulatedStatusItem::setImage(const StatusImage& image) {
    if (hasButton_) image_ = image;
}

void SimulatedStatusItem::setTitle(std::string_view title) {
    if (hasButton_) title_ = title;
}

void SimulatedStatusItem::setToolTip(std::string_view toolTip) {
    if (hasButton_) toolTip_ = toolTip;
}

bool SimulatedStatusItem::openMenu() {
    if (!events_ || isMenuOpen_) return isMenuOpen_;
    const std::weak_ptr<const bool> alive = alive_;
    if (const auto needsUpdate = events_->needsUpdate) needsUpdate();
    if (alive.expired()) return false;
    isMenuOpen_ = true;
    return true;
}

void SimulatedStatusItem::closeMenu() {
    if (!std::exchange(isMenuOpen_, false)) return;
    const auto didClose = events_ ? events_->didClose : nullptr;
    if (didClose) didClose();
}

bool SimulatedStatusItem::choose(std::size_t index) {
    if (!isMenuOpen_ || index >= menuItems_.size()) return false;
    const MenuItem item = menuItems_[index];
    if (item.kind != MenuItemKind::item || !item.isEnabled) return false;
    const auto chosen = events_ ? events_->chosen : nullptr;
    const std::weak_ptr<const bool> alive = alive_;
    closeMenu();
    if (chosen && !alive.expired()) chosen(item);
    return true;
}

bool SimulatedStatusItem::choose(std::string_view title) {
    const auto found = std::ranges::find(menuItems_, title, &MenuItem::title);
    return choose(static_cast<std::size_t>(std::distance(menuItems_.begin(), found)));
}

std::unique_ptr<StatusItem> SimulatedStatusBar::makeStatusItem() {
    if (onMake_) onMake_();
    return std::make_unique<SimulatedStatusItem>(items_, makesButtons_);
}

std::optional<StatusImage> SimulatedStatusBar::image(StatusImageKind kind, std::string_view name,
                                                     std::string_view description) const {
    if (!images_.contains({kind, std::string(name)})) return std::nullopt;
    return StatusImage{
        .kind = kind, .name = std::string(name), .description = std::string(description), .isTemplate = false};
}

}  // namespace velmorand
