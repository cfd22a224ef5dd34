#pragma once

#include "platform/InstalledApplication.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmorand {

class Bundle;
class PreferencesStore;
class Workspace;
struct PreferencesState;

/// An application that is left alone, as the user reads it.
struct IgnoredAppDisplay {
    std::string bundleID;
    /// The application's name; its identifier when the application cannot be found.
    std::string name;
    /// Absent when there is none or the application cannot be found.
    std::optional<ApplicationIcon> icon;

    bool operator==(const IgnoredAppDisplay&) const = default;
};

/// The ignored applications of the record, each once, sorted byte by byte by their identifiers.
[[nodiscard]] std::vector<IgnoredAppDisplay> ignoredAppDisplays(const PreferencesState& state, Workspace& workspace);

/// Has the applications at these locations left alone from now on, and stores the record at once with everything that
/// waited to be stored. What is no application or has no identifier is skipped, and so are this program itself and what
/// is ignored already; the others are added in the given order.
void ignoreApplications(std::span<const std::filesystem::path> locations, PreferencesStore& store, Workspace& workspace,
                        const Bundle& bundle);

}  // namespace velmorand
