#pragma once

#include "shortcuts/ShortcutModifiers.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace velmorand {

/// The part of a shortcut that the operating system sees.
struct HotKey {
    /// The platform's virtual key code: a physical position on the keyboard, whatever the layout.
    std::uint32_t keyCode = 0;
    ShortcutModifiers modifiers;

    bool operator==(const HotKey&) const = default;
};

/// What the user assigns to an action. The label is part of the value: two shortcuts on the same keys with
/// different labels are different values, though conflict checks treat them as the same shortcut.
struct KeyboardShortcut {
    HotKey hotKey;
    /// The name shown for the non-modifier key, such as "Left Arrow" or "C".
    std::string keyLabel;

    bool operator==(const KeyboardShortcut&) const = default;
};

/// The modifier names and the key label joined with " + ", as read aloud: "Option + Command + Left Arrow".
[[nodiscard]] std::string spokenDescription(const KeyboardShortcut& shortcut);

}  // namespace velmorand

template <>
struct std::hash<velmorand::HotKey> {
    std::size_t operator()(const velmorand::HotKey& hotKey) const noexcept;
};

template <>
struct std::hash<velmorand::KeyboardShortcut> {
    std::size_t operator()(const velmorand::KeyboardShortcut& shortcut) const noexcept;
};
