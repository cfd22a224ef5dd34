#pragma once

#include "windows/WindowAction.h"

#include <QString>
#include <span>
#include <string_view>

namespace velmorand {

/// A text that the core has marked (`translatable`), in the user's language.
[[nodiscard]] QString translated(const char* context, std::string_view text);

/// The short name of the action in the user's language.
[[nodiscard]] QString titleOf(WindowAction action);

/// Those of several, as a sentence has them.
[[nodiscard]] QString titlesOf(std::span<const WindowAction> actions);

}  // namespace velmorand
