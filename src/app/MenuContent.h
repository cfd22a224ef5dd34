#pragma once

#include "platform/StatusBar.h"
#include "shortcuts/KeyboardShortcut.h"
#include "windows/WindowAction.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// What can be done at the moment, as it was when the menu was made.
struct MenuCapabilitySnapshot {
    bool isTrusted = false;
    int screenCount = 0;
    /// Whether the windows of the frontmost application may be arranged.
    bool frontmostEligible = false;
    /// Whether a window of the frontmost application has a frame to return to.
    bool hasRestoreEntryForFrontmostPid = false;

    bool operator==(const MenuCapabilitySnapshot&) const = default;
};

/// The frontmost application where the menu offers to ignore it.
struct MenuApplication {
    std::string name;
    std::string bundleIdentifier;
    bool isIgnored = false;

    bool operator==(const MenuApplication&) const = default;
};

/// What the items of the menu do, by the names in `MenuItem::action`.
namespace menu_action {
inline constexpr std::string_view performAction = "performAction:";
inline constexpr std::string_view requestAccessibilityAccess = "requestAccessibilityAccess";
inline constexpr std::string_view refreshPermissions = "refreshPermissions";
inline constexpr std::string_view ignoreCurrentApp = "ignoreCurrentApp:";
inline constexpr std::string_view unignoreCurrentApp = "unignoreCurrentApp:";
inline constexpr std::string_view openSettings = "openSettings";
inline constexpr std::string_view quit = "quit";
}  // namespace menu_action

/// The shortcut that counts for an action; absent when it has none.
using EffectiveShortcut = std::function<std::optional<KeyboardShortcut>(WindowAction)>;

/// What is missing when the program may not arrange windows; empty when it may.
[[nodiscard]] std::vector<MenuItem> permissionSection(bool isTrusted);

/// One line for each problem; empty without any.
[[nodiscard]] std::vector<MenuItem> problemSection(std::span<const std::string> problems);

/// The `actions` by their groups. A group that has none of them is left out.
[[nodiscard]] std::vector<MenuItem> actionSection(std::span<const WindowAction> actions,
                                                  const MenuCapabilitySnapshot& capabilities,
                                                  const EffectiveShortcut& shortcut);

/// What concerns the frontmost application, which may be absent, and this program.
[[nodiscard]] std::vector<MenuItem> applicationSection(const std::optional<MenuApplication>& frontmost);

}  // namespace velmorand
