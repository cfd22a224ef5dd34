#pragma once

#include "platform/RecorderPanelHost.h"
#include "platform/linux/x11/X11KeyMap.h"
#include "platform/linux/x11/X11ModifierMap.h"

#include <cstdint>
#include <optional>

namespace velmorand {

/// Says what key events of the X server mean in terms of the seam, by one keyboard description.
struct X11KeyTranslator {
    X11KeyMap keys;
    X11ModifierMap modifiers;

    bool operator==(const X11KeyTranslator&) const = default;

    /// What a press means. `state` is the event's: modifiers in the low bits, the group in bits 13 and 14. Absent for
    /// keys that only hold, lock or switch something and for those without a virtual key code.
    [[nodiscard]] std::optional<RecorderKeyEvent> keyDown(std::uint8_t keycode, std::uint32_t state) const;

    /// The flags of the seam for these X modifiers. Locks and the modifiers of further levels have none.
    [[nodiscard]] std::uint64_t modifierFlags(std::uint32_t mask) const;
};

}  // namespace velmorand
