#include "platform/linux/x11/X11KeyTranslator.h"

#include "platform/linux/x11/X11KeyCodes.h"

#include <array>

namespace velmorand {
namespace {

/// The bits of the seam's modifier flags (`NSEvent.ModifierFlags`).
constexpr std::uint64_t shiftFlag = 1U << 17U;
constexpr std::uint64_t controlFlag = 1U << 18U;
constexpr std::uint64_t optionFlag = 1U << 19U;
constexpr std::uint64_t commandFlag = 1U << 20U;

/// Combinations are of places, but alone the key that the user knows as Escape is Escape wherever the layout has it.
constexpr std::uint32_t escapeKeyCode = 53;

constexpr std::uint32_t groupOf(std::uint32_t state) {
    return (state >> 13U) & 3U;
}

}  // namespace

std::optional<RecorderKeyEvent> X11KeyTranslator::keyDown(std::uint8_t keycode, std::uint32_t state) const {
    const auto keyCode = virtualKeyCodeFor(keycode);
    const std::uint32_t group = groupOf(state);
    if (!keyCode || keys.isModifierKey(keycode, group)) return std::nullopt;
    const std::uint64_t flags = modifierFlags(state);
    const bool cancels = keys.isEscape(keycode, group) && (flags & ~shiftFlag) == 0;
    return RecorderKeyEvent{.keyCode = cancels ? escapeKeyCode : *keyCode,
                            .modifierFlags = flags,
                            .charactersIgnoringModifiers = keys.characters(keycode, group)};
}

std::uint64_t X11KeyTranslator::modifierFlags(std::uint32_t mask) const {
    struct Row {
        std::uint32_t mask;
        std::uint64_t flag;
    };
    // Where one modifier stands for both Alt and Super, a press of either is one of Alt: no shortcut has both then.
    const std::uint32_t ownSuper = modifiers.super == modifiers.alt ? 0 : modifiers.super;
    const std::array rows{Row{modifiers.shift, shiftFlag}, Row{modifiers.control, controlFlag},
                          Row{modifiers.alt, optionFlag}, Row{ownSuper, commandFlag}};
    std::uint64_t flags = 0;
    for (const Row& row : rows) {
        if ((mask & row.mask) != 0) flags |= row.flag;
    }
    return flags;
}

}  // namespace velmorand
