#pragma once

#include "desktop/harness/TestDesktop.h"

namespace velmorand::desktop {

/// The file in which the program keeps its settings in \p session, which has XDG_CONFIG_HOME.
[[nodiscard]] std::filesystem::path storedSettingsFile(const Environment& session);

/// Starts \p program on the desktop, with \p additions to its environment, and returns when it has registered
/// \p shortcuts shortcuts. Fails with its log when it ends or does not register them.
[[nodiscard]] std::expected<ChildProcess, HarnessError> startProgram(TestDesktop& desktop,
                                                                     const std::filesystem::path& program,
                                                                     std::size_t shortcuts,
                                                                     const Environment& additions = {});

}  // namespace velmorand::desktop
