#pragma once

#include "desktop/harness/ChildProcess.h"

namespace velmorand::desktop {

/// Where the panel lies on the primary display.
enum class PanelEdge { top, bottom };

/// Makes the home of a desktop session under \p folder: HOME, the XDG folders and the settings files that keep the
/// window managers, the panel and the toolkits plain and free of first-run questions. Returns the environment of the
/// session, still without DISPLAY and the address of its bus.
[[nodiscard]] std::expected<Environment, HarnessError> makeSession(const std::filesystem::path& folder);

/// Writes the settings of a panel of \p height pixels across the whole edge of the primary display, which it reserves.
[[nodiscard]] std::expected<void, HarnessError> writePanelSettings(const Environment& session, PanelEdge edge,
                                                                   int height);

}  // namespace velmorand::desktop
