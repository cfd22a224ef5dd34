#include "support/Printing.h"

#include "preferences/PreferencesStateCoding.h"

#include <fmt/format.h>

#include <string_view>

namespace velmorand {

void PrintTo(const Point& point, std::ostream* out) {
    *out << fmt::format("({}, {})", point.x, point.y);
}

void PrintTo(const Size& size, std::ostream* out) {
    *out << fmt::format("{} x {}", size.width, size.height);
}

void PrintTo(const Rect& rect, std::ostream* out) {
    *out << describe(rect);
}

void PrintTo(const AXError& error, std::ostream* out) {
    *out << "AXError " << error.code;
}

void PrintTo(const AXElement& element, std::ostream* out) {
    *out << "element #" << element.hash();
}

void PrintTo(const ShortcutModifiers& modifiers, std::ostream* out) {
    for (const std::string_view symbol : displaySymbols(modifiers)) *out << symbol;
    *out << fmt::format("({:#x})", modifiers.rawValue());
}

void PrintTo(const HotKey& hotKey, std::ostream* out) {
    PrintTo(hotKey.modifiers, out);
    *out << " key " << hotKey.keyCode;
}

void PrintTo(const KeyboardShortcut& shortcut, std::ostream* out) {
    PrintTo(shortcut.hotKey, out);
    *out << " \"" << shortcut.keyLabel << '"';
}

void PrintTo(const PreferencesState& state, std::ostream* out) {
    const auto document = encodePreferencesState(state);
    *out << (document ? *document : document.error().description);
}

void PrintTo(const ShortcutConflict& conflict, std::ostream* out) {
    PrintTo(conflict.hotKey, out);
    *out << ':';
    for (const WindowAction action : conflict.actions) *out << ' ' << rawValue(action);
}

void PrintTo(WindowAction action, std::ostream* out) {
    *out << rawValue(action);
}

void PrintTo(const ManagedScreen& screen, std::ostream* out) {
    *out << fmt::format("screen {} \"{}\" frame {} visible {}", screen.id, screen.name, describe(screen.axFrame),
                        describe(screen.axVisibleFrame));
}

void PrintTo(const FrameOutcome& outcome, std::ostream* out) {
    *out << "requested " << describe(outcome.requested);
    *out << " final " << (outcome.final ? describe(*outcome.final) : "none");
    *out << (outcome.landed ? " landed" : " not landed");
}

void PrintTo(const WindowOperationError& error, std::ostream* out) {
    *out << '"' << error.description() << '"';
}

void PrintTo(WindowOperationError::Case which, std::ostream* out) {
    *out << "case " << static_cast<int>(which);
}

}  // namespace velmorand
