#include "desktop/harness/TrayUser.h"

#include "desktop/harness/Screenshot.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace velmorand::desktop {
namespace {

constexpr std::chrono::milliseconds betweenLooks{150};
constexpr std::chrono::milliseconds settling{1200};
constexpr int widestIcon = 32;
/// Beyond it nothing of the menu is seen, but windows that lose the focus.
constexpr int widestMenu = 600;

}  // namespace

TrayUser::TrayUser(TestDesktop& desktop) : desktop_(desktop), pointer_(desktop.observer().connection()) {
    const PixelRect display = desktop.monitors().front().rect;
    pointer_.moveTo(display.x + display.width / 2, display.y + 100);
}

std::expected<void, HarnessError> TrayUser::startHost(TrayHostKind kind) {
    auto host = TrayHost::start(desktop_, kind);
    if (!host) return std::unexpected(host.error());
    host_.emplace(std::move(*host));
    useHost(kind, host_->frame());
    letSettle();
    return {};
}

void TrayUser::useHost(TrayHostKind kind, const PixelRect& part) {
    kind_ = kind;
    panel_ = part;
}

void TrayUser::stopHost() {
    host_->process().terminate();
    host_.reset();
}

std::expected<PixelRect, HarnessError> TrayUser::findIcon(const std::function<void()>& appear) {
    const ScreenArea empty = lookAtPanel();
    appear();
    return findIcon(empty);
}

std::expected<PixelRect, HarnessError> TrayUser::findIcon(const ScreenArea& empty) {
    const auto icon = waitForChange(empty);
    if (!icon) return std::unexpected(HarnessError{"no icon is seen"});
    if (icon->width > widestIcon) return std::unexpected(HarnessError{"more than an icon is seen: " + icon->text()});
    icon_ = *icon;
    return *icon;
}

/// One of the panels opens the menu of an item with the right button only.
std::expected<PixelRect, HarnessError> TrayUser::openMenu() {
    const ScreenArea before = look(whereMenusAre());
    pointer_.moveTo(icon_.x + icon_.width / 2, icon_.y + icon_.height / 2);
    pointer_.click(kind_ == TrayHostKind::xfce ? PointerButton::left : PointerButton::right);
    const auto menu = waitForChange(before);
    if (!menu) return std::unexpected(HarnessError{"no menu is seen"});
    return *menu;
}

void TrayUser::click(int x, int y) {
    pointer_.moveTo(x, y);
    letSettle();
    pointer_.click(PointerButton::left);
}

std::optional<PixelRect> TrayUser::waitForChange(const ScreenArea& before) {
    ScreenArea last = before;
    static_cast<void>(desktop_.observer().waitUntil([&] {
        ScreenArea now = look(before.rect);
        const bool isSettled = now == last && now != before;
        last = std::move(now);
        if (!isSettled) desktop_.observer().waitUntil([] { return false; }, betweenLooks);
        return isSettled;
    }));
    return changedPart(before, last);
}

bool TrayUser::comesToLookLike(const ScreenArea& area) {
    return desktop_.observer().waitUntil([&] { return look(area.rect) == area; });
}

void TrayUser::letSettle() {
    desktop_.observer().waitUntil([] { return false; }, settling);
}

void TrayUser::picture(const std::string& name) {
    const char* folder = std::getenv("VELMORAND_TEST_PICTURES");
    if (folder == nullptr) return;
    const auto file = std::filesystem::path(folder) / (nameOf(kind_) + "-" + name + ".png");
    static_cast<void>(saveScreenshot(desktop_.observer().connection(), file));
}

ScreenArea TrayUser::look(const PixelRect& rect) {
    return readScreenArea(desktop_.observer().connection(), rect);
}

/// Menus open above the panel, which lies along a lower edge.
PixelRect TrayUser::whereMenusAre() const {
    const auto isBelow = [this](const Monitor& monitor) {
        return panel_.x >= monitor.rect.x && panel_.right() <= monitor.rect.right() &&
               panel_.bottom() == monitor.rect.bottom();
    };
    const auto monitor = std::ranges::find_if(desktop_.monitors(), isBelow);
    const PixelRect display = (monitor == desktop_.monitors().end() ? desktop_.monitors().front() : *monitor).rect;
    return {display.x, display.y, std::min(display.width, icon_.right() - display.x + widestMenu),
            display.height - panel_.height};
}

}  // namespace velmorand::desktop
