#pragma once

#include "preferences/PreferencesState.h"
#include "simulation/World.h"

#include <optional>

namespace velmorand::simulation {

/// Judges after each step whether what is stored is what counts: the invariant "storage".
class StorageJudge {
public:
    void judge(World& world);

private:
    std::uint64_t judgedPublications_ = 0;
    int starts_ = 1;
    std::optional<PreferencesState> settings_;
};

}  // namespace velmorand::simulation
