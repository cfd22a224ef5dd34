#pragma once

#include "platform/Displays.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "preferences/PreferencesState.h"
#include "simulation/Random.h"

#include <optional>
#include <string>
#include <vector>

namespace velmorand::simulation {

/// An application that is running at the start, or that is started later.
struct ApplicationPlan {
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> localizedName;
    double answerSeconds = 0;
    std::vector<SimulatedWindow> windows;
    /// It tells of no focused and no main window.
    bool focusesNothing = false;
};

/// What is there before the first step.
struct Scenario {
    std::vector<DisplayDescription> displays;
    std::vector<ApplicationPlan> applications;
    PreferencesState preferences;
    std::optional<std::string> ownIdentifier;
    bool trusted = true;
    bool reducesMotion = false;
    /// What the user answers when asked.
    bool allowsNotifications = true;
};

[[nodiscard]] Scenario makeScenario(std::uint64_t seed);

/// One to six displays anywhere around the primary one, with panels at their edges; now and then none at all.
[[nodiscard]] std::vector<DisplayDescription> makeDisplays(Random& random);
/// A window of some awkward kind somewhere in reach of those displays, or beyond.
[[nodiscard]] SimulatedWindow makeWindow(Random& random);
[[nodiscard]] ApplicationPlan makeApplication(Random& random);
[[nodiscard]] PreferencesState makePreferences(Random& random);
[[nodiscard]] KeyboardShortcut makeShortcut(Random& random);

/// The identifiers of applications: few, so that several have the same one.
[[nodiscard]] std::string makeIdentifier(Random& random);

}  // namespace velmorand::simulation
