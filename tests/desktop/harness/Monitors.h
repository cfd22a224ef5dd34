#pragma once

#include "desktop/harness/PixelRect.h"
#include "desktop/harness/XConnection.h"

#include <span>
#include <string>
#include <vector>

namespace velmorand::desktop {

/// A display of the test desktop.
struct Monitor {
    /// Not the name of one of the server's outputs ("screen", "DUMMY0").
    std::string name = {};
    /// In root coordinates.
    PixelRect rect = {};
    bool isPrimary = false;

    friend bool operator==(const Monitor&, const Monitor&) = default;
};

/// The monitors that RandR reports, in its order.
[[nodiscard]] std::vector<Monitor> readMonitors(XConnection& connection);

/// Makes exactly \p monitors the server's monitors. On a server with several outputs each gets one of its own, which is
/// switched to a mode of its size, and one of the same name keeps its output. On a server with one output the primary
/// monitor (without any, the first) owns it, and programs that ask for outputs see that monitor alone.
[[nodiscard]] std::expected<void, HarnessError> applyMonitors(XConnection& connection,
                                                              std::span<const Monitor> monitors);

}  // namespace velmorand::desktop
