#include "preferences/IgnoredApps.h"

#include "platform/Bundle.h"
#include "platform/Workspace.h"
#include "preferences/PreferencesStore.h"

#include <algorithm>
#include <utility>

namespace velmorand {
namespace {

IgnoredAppDisplay displayOf(const std::string& bundleIdentifier, Workspace& workspace) {
    const auto location = workspace.applicationWithIdentifier(bundleIdentifier);
    if (!location) return {bundleIdentifier, bundleIdentifier, std::nullopt};
    return {bundleIdentifier, workspace.displayName(*location), workspace.icon(*location)};
}

}  // namespace

std::vector<IgnoredAppDisplay> ignoredAppDisplays(const PreferencesState& state, Workspace& workspace) {
    std::vector<std::string> identifiers = state.ignoredApps;
    std::ranges::sort(identifiers);
    const auto repeated = std::ranges::unique(identifiers);
    identifiers.erase(repeated.begin(), repeated.end());
    std::vector<IgnoredAppDisplay> displays;
    for (const std::string& identifier : identifiers) displays.push_back(displayOf(identifier, workspace));
    return displays;
}

/// The store skips what is in its list.
void ignoreApplications(std::span<const std::filesystem::path> locations, PreferencesStore& store, Workspace& workspace,
                        const Bundle& bundle) {
    const auto own = bundle.identifier();
    std::vector<std::string> identifiers;
    for (const std::filesystem::path& location : locations) {
        auto identifier = workspace.bundleIdentifier(location);
        if (!identifier || identifier == own) continue;
        identifiers.push_back(std::move(*identifier));
    }
    store.addIgnoredApps(identifiers);
}

}  // namespace velmorand
