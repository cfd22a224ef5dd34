#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11ModifierMap.h"

#include <optional>

namespace velmorand {

/// Asks the server which modifiers its keys set; absent when it does not answer before the deadline.
[[nodiscard]] std::optional<X11ModifierMap> readModifierMap(X11Connection& connection, Deadline deadline);

}  // namespace velmorand
