#pragma once

#include "desktop/harness/ChildProcess.h"

namespace velmorand::desktop {

/// Lets a developer watch a desktop through VNC while tests run on it: viewers on this machine may look, not act.
class DesktopViewer {
public:
    /// Whether VELMORAND_TEST_WATCH is set in the environment.
    [[nodiscard]] static bool isWanted();

    /// Prints on standard error how to look on, and returns when the first viewer is connected or a minute has passed.
    /// The log file goes into \p folder.
    [[nodiscard]] static std::expected<DesktopViewer, HarnessError> start(const std::string& displayName,
                                                                          const Environment& environment,
                                                                          const std::filesystem::path& folder);

private:
    explicit DesktopViewer(ChildProcess process) : process_(std::move(process)) {}

    ChildProcess process_;
};

}  // namespace velmorand::desktop
