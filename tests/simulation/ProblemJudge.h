#pragma once

#include "preferences/PreferencesState.h"
#include "simulation/World.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace velmorand::simulation {

/// Judges what the user is told of shortcuts that could not be registered: the invariant "problems".
class ProblemJudge {
public:
    /// `registered`: whether the shortcuts were registered in this step.
    void judge(World& world, bool registered);

private:
    [[nodiscard]] static std::vector<std::string> wanted(const PreferencesState& settings,
                                                         const std::set<World::Combination>& taken);

    std::vector<std::string> problems_;
    /// Those of the last notification, until there were none.
    std::optional<std::vector<std::string>> notified_;
    std::size_t notifications_ = 0;
    int starts_ = 1;
};

}  // namespace velmorand::simulation
