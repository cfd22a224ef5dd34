#include "shortcuts/ShortcutModifiers.h"

#include <array>

namespace velmorand {
namespace {

struct ModifierRow {
    ShortcutModifiers member;
    std::string_view symbol;
    std::string_view name;
    std::uint64_t eventFlag;
};

/// In display order. The event flags are the platform's (`NSEvent.ModifierFlags`).
constexpr std::array<ModifierRow, 4> modifierRows{{
    {ShortcutModifiers::control, "⌃", "Control", 0x40000},
    {ShortcutModifiers::option, "⌥", "Option", 0x80000},
    {ShortcutModifiers::shift, "⇧", "Shift", 0x20000},
    {ShortcutModifiers::command, "⌘", "Command", 0x100000},
}};

std::vector<std::string_view> textsOf(ShortcutModifiers modifiers, std::string_view ModifierRow::* text) {
    std::vector<std::string_view> texts;
    for (const ModifierRow& row : modifierRows) {
        if (modifiers.contains(row.member)) texts.push_back(row.*text);
    }
    return texts;
}

}  // namespace

std::vector<std::string_view> displaySymbols(ShortcutModifiers modifiers) {
    return textsOf(modifiers, &ModifierRow::symbol);
}

std::vector<std::string_view> displayNames(ShortcutModifiers modifiers) {
    return textsOf(modifiers, &ModifierRow::name);
}

ShortcutModifiers modifiersFromEventFlags(std::uint64_t flags) {
    ShortcutModifiers modifiers;
    for (const ModifierRow& row : modifierRows) {
        if ((flags & row.eventFlag) != 0) modifiers.insert(row.member);
    }
    return modifiers;
}

}  // namespace velmorand
