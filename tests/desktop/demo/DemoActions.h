#pragma once

#include "desktop/harness/TestKeyboard.h"

#include <span>
#include <string_view>

namespace velmorand::desktop {

enum class DemoKind { fraction, display, maximize, center, restore };

/// A part of a work area, as fractions of its size from its top-left corner.
struct DemoFraction {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// An action as a user knows it: its keys, and what is promised of it.
struct DemoAction {
    std::string_view name;
    DemoKind kind;
    std::span<const Key> modifiers;
    Key key;
    /// For the kind of that name.
    DemoFraction fraction = {};
    /// Steps to the right in the row of displays, for the kind of that name.
    int displayOffset = 0;
};

/// All actions that have a shortcut when the program starts for the first time.
[[nodiscard]] std::span<const DemoAction> demoActions();
/// \p name must be the name of one.
[[nodiscard]] const DemoAction& demoAction(std::string_view name);

}  // namespace velmorand::desktop
