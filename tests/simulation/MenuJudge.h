#pragma once

#include "simulation/ManagerModel.h"
#include "simulation/World.h"

#include <optional>

namespace velmorand::simulation {

/// Judges what the status item and its menu show: the invariant "menu".
class MenuJudge {
public:
    /// Before the model has read the tape, as the menu was opened before anything else happened in the step.
    void judgeMenu(World& world, const ManagerModel& model) const;

    /// After the model has read the tape.
    void judgeIcon(World& world, const ManagerModel& model);

private:
    /// The failure that a menu lists, unless it has become too old.
    std::optional<World::Told> listed_;
    std::uint64_t tellings_ = 0;
};

}  // namespace velmorand::simulation
