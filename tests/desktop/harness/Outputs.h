#pragma once

#include "desktop/harness/PixelRect.h"
#include "desktop/harness/XConnection.h"

#include <xcb/randr.h>

#include <map>
#include <vector>

namespace velmorand::desktop {

/// The outputs of the X server, in its order.
[[nodiscard]] std::vector<xcb_randr_output_t> readOutputs(XConnection& connection);

/// Switches every output of \p wanted to a mode of its rectangle's size at its place (root coordinates), and every
/// other output off.
[[nodiscard]] std::expected<void, HarnessError> switchOutputs(XConnection& connection,
                                                              const std::map<xcb_randr_output_t, PixelRect>& wanted);

}  // namespace velmorand::desktop
