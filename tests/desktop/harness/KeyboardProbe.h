#pragma once

#include "desktop/harness/XConnection.h"

namespace velmorand::desktop {

/// Whether the whole keyboard can be had now: a client that has it keeps it from everybody else. It is given back at once.
[[nodiscard]] bool keyboardIsFree(XConnection& connection);

}  // namespace velmorand::desktop
