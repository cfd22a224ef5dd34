#pragma once

#include "desktop/harness/ChildProcess.h"

namespace velmorand::desktop {

/// Writes the settings files of every window manager into the folders of \p session: no first-run questions, no bars
/// over the windows, no keys that belong to somebody else, no animations.
[[nodiscard]] std::expected<void, HarnessError> writeWindowManagerSettings(const Environment& session);

/// The files that are named on the command line.
[[nodiscard]] std::filesystem::path i3SettingsFile(const Environment& session, bool isTiling);
[[nodiscard]] std::filesystem::path awesomeSettingsFile(const Environment& session);

}  // namespace velmorand::desktop
