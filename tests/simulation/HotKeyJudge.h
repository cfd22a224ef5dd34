#pragma once

#include "preferences/PreferencesState.h"
#include "simulation/World.h"

#include <map>
#include <string>
#include <vector>

namespace velmorand::simulation {

/// Judges after each step whether exactly those hot keys are registered that should be: the invariant "hot keys".
class HotKeyJudge {
public:
    void judge(World& world);

    /// Whether the shortcuts had to be registered in the last step.
    [[nodiscard]] bool registeredAgain() const { return registeredAgain_; }

private:
    /// Key and modifiers, and the number of the action that counts from 1.
    using HotKeys = std::map<World::Combination, std::uint32_t>;

    [[nodiscard]] static HotKeys wanted(const PreferencesState& settings, const std::set<World::Combination>& taken);
    void registerAgain(World& world);

    HotKeys registered_;
    std::map<std::string, KeyboardShortcut> shortcuts_;
    std::vector<std::string> disabled_;
    std::uint64_t publications_ = 0;
    int starts_ = 0;
    std::uint64_t recordingsEnded_ = 0;
    std::uint32_t steps_ = 0;
    bool registeredAgain_ = false;
};

}  // namespace velmorand::simulation
