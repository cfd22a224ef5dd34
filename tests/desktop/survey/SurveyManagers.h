#pragma once

#include "desktop/harness/WindowManagers.h"

namespace velmorand::desktop {

/// A window manager, in the way it is surveyed.
struct SurveyManager {
    /// By which it is asked for on the command line.
    std::string_view name;
    /// The heading of its row.
    std::string_view heading;
    WindowManagerOptions options = {};
};

/// All of them, in the order of the table's rows.
[[nodiscard]] std::span<const SurveyManager> surveyManagers();
/// Null when there is none of that name.
[[nodiscard]] const SurveyManager* surveyManager(std::string_view name);
/// The command that tells its version.
[[nodiscard]] std::vector<std::string> versionCommandOf(WindowManagerKind kind);

}  // namespace velmorand::desktop
