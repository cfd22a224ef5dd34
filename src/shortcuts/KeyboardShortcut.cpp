#include "shortcuts/KeyboardShortcut.h"

#include "base/Hash.h"

namespace velmorand {

std::string spokenDescription(const KeyboardShortcut& shortcut) {
    std::string spoken;
    for (const std::string_view name : displayNames(shortcut.hotKey.modifiers)) {
        spoken += name;
        spoken += " + ";
    }
    return spoken + shortcut.keyLabel;
}

}  // namespace velmorand

std::size_t std::hash<velmorand::HotKey>::operator()(const velmorand::HotKey& hotKey) const noexcept {
    std::size_t seed = 0;
    velmorand::hashCombine(seed, hotKey.keyCode);
    velmorand::hashCombine(seed, hotKey.modifiers.rawValue());
    return seed;
}

std::size_t std::hash<velmorand::KeyboardShortcut>::operator()(
    const velmorand::KeyboardShortcut& shortcut) const noexcept {
    std::size_t seed = 0;
    velmorand::hashCombine(seed, shortcut.hotKey.keyCode);
    velmorand::hashCombine(seed, shortcut.hotKey.modifiers.rawValue());
    velmorand::hashCombine(seed, shortcut.keyLabel);
    return seed;
}
