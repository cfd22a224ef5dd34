#pragma once

#include "base/Rect.h"
#include "platform/Accessibility.h"
#include "preferences/PreferencesState.h"
#include "preferences/PreferencesStore.h"
#include "shortcuts/KeyboardShortcut.h"
#include "windows/AXWindowClient.h"
#include "windows/ManagedScreen.h"
#include "windows/WindowAction.h"
#include "windows/WindowOperationError.h"

#include <ostream>

/// How values appear in failure messages. A test that compares one of these types includes this header.
namespace velmorand {

void PrintTo(const Point& point, std::ostream* out);
void PrintTo(const Size& size, std::ostream* out);
void PrintTo(const Rect& rect, std::ostream* out);
void PrintTo(const AXError& error, std::ostream* out);
void PrintTo(const AXElement& element, std::ostream* out);
void PrintTo(const ShortcutModifiers& modifiers, std::ostream* out);
void PrintTo(const HotKey& hotKey, std::ostream* out);
void PrintTo(const KeyboardShortcut& shortcut, std::ostream* out);
void PrintTo(const PreferencesState& state, std::ostream* out);
void PrintTo(const ShortcutConflict& conflict, std::ostream* out);
void PrintTo(WindowAction action, std::ostream* out);
void PrintTo(const ManagedScreen& screen, std::ostream* out);
void PrintTo(const FrameOutcome& outcome, std::ostream* out);
void PrintTo(const WindowOperationError& error, std::ostream* out);
void PrintTo(WindowOperationError::Case which, std::ostream* out);

}  // namespace velmorand
