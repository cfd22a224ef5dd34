#pragma once

#include "shortcuts/KeyboardShortcut.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace velmorand {

/// Everything the user can ask of the focused window. The declaration order is the order of every list that
/// shows actions, and an action's position in it gives its hot-key id.
enum class WindowAction : std::uint8_t {
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    leftThird,
    centerThird,
    rightThird,
    leftTwoThirds,
    centerTwoThirds,
    rightTwoThirds,
    nextDisplay,
    previousDisplay,
    maximizeWindow,
    centerWindow,
    restore,
};

/// All actions in declaration order.
inline constexpr std::array allWindowActions{
    WindowAction::leftHalf,        WindowAction::rightHalf,      WindowAction::topHalf,
    WindowAction::bottomHalf,      WindowAction::topLeft,        WindowAction::topRight,
    WindowAction::bottomLeft,      WindowAction::bottomRight,    WindowAction::leftThird,
    WindowAction::centerThird,     WindowAction::rightThird,     WindowAction::leftTwoThirds,
    WindowAction::centerTwoThirds, WindowAction::rightTwoThirds, WindowAction::nextDisplay,
    WindowAction::previousDisplay, WindowAction::maximizeWindow, WindowAction::centerWindow,
    WindowAction::restore,
};

/// The section under which menus and the Shortcuts pane list an action.
enum class WindowActionGroup : std::uint8_t { halves, quarters, thirds, twoThirds, displays, utility };

/// All groups in declaration order.
inline constexpr std::array allWindowActionGroups{
    WindowActionGroup::halves,    WindowActionGroup::quarters, WindowActionGroup::thirds,
    WindowActionGroup::twoThirds, WindowActionGroup::displays, WindowActionGroup::utility,
};

/// Place the window on a sub-rectangle of the usable area, given as fractions of the area measured from its
/// top-left corner rightward and downward.
struct Fraction {
    double x;
    double y;
    double width;
    double height;

    bool operator==(const Fraction&) const = default;
};

/// Move the window to the display `offset` steps away in the display traversal order.
struct MoveDisplay {
    int offset;

    bool operator==(const MoveDisplay&) const = default;
};

/// Fill the usable area.
struct Maximize {
    bool operator==(const Maximize&) const = default;
};

/// Centre the window.
struct Center {
    bool operator==(const Center&) const = default;
};

/// Put back the frame from before the last arrangement.
struct Restore {
    bool operator==(const Restore&) const = default;
};

/// What an action does geometrically, compared by kind and payload.
using WindowActionKind = std::variant<Fraction, MoveDisplay, Maximize, Center, Restore>;

/// What the catalogue says of one action.
struct WindowActionMetadata {
    std::string_view title;      ///< short name
    std::string_view menuTitle;  ///< full imperative label for menu items
    WindowActionGroup group;
    WindowActionKind kind;
    KeyboardShortcut defaultShortcut;  ///< the shortcut when the user never chose one

    bool operator==(const WindowActionMetadata&) const = default;
};

[[nodiscard]] WindowActionMetadata metadata(WindowAction action);

/// What the action does geometrically; the same as `metadata(action).kind`.
[[nodiscard]] WindowActionKind kind(WindowAction action);

/// The stable name under which the action is stored and logged. It is not the case name for the halves and for
/// `maximizeWindow` and `centerWindow`.
[[nodiscard]] std::string_view rawValue(WindowAction action);

/// The action with this raw value; absent for any other text. Exact and case-sensitive.
[[nodiscard]] std::optional<WindowAction> windowActionFromRawValue(std::string_view rawValue);

[[nodiscard]] std::string_view rawValue(WindowActionGroup group);

/// The group's actions in declaration order.
[[nodiscard]] std::vector<WindowAction> actionsIn(WindowActionGroup group);

}  // namespace velmorand
