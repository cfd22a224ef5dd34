#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velmorand::simulation {

/// What can happen in a step.
enum class StepKind : std::uint8_t {
    perform,         ///< an action is asked for
    press,           ///< a shortcut is pressed
    pressTwice,      ///< the same twice before the program has a turn
    chooseFromMenu,  ///< the menu is opened and an action chosen in it
    waitForATick,    ///< up to a tenth of a second passes
    waitForASecond,  ///< up to a second passes
    waitForAWhile,   ///< about an hour passes
    setClock,        ///< the user sets the clock
    nudgeWindow,     ///< the user moves a window by 2 or by 2.5 points
    moveWindow,      ///< the user moves and resizes a window
    changeWindow,    ///< a window becomes minimised, full screen, slow, stubborn, or ordinary again
    focusWindow,     ///< another window of an application becomes the focused one, or none
    openWindow,
    closeWindow,
    switchApplication,  ///< another application becomes frontmost, or none
    startApplication,
    quitApplication,
    announceEnd,        ///< the desktop says that an application has ended, but it goes on under the same number
    freezeApplication,  ///< or thaws
    slowApplication,    ///< every answer takes its time from now on, or no longer
    interrupt,          ///< something happens in the middle of a later call
    changeDisplays,
    announceDisplays,  ///< the desktop says that the displays changed, though they are the same
    changeTrust,
    changeMotion,       ///< the user wants less motion, or no longer
    slideSetting,       ///< a number setting is dragged
    switchSetting,      ///< a switch is turned
    ignoreApplication,  ///< or no longer
    changeShortcut,
    record,           ///< the recorder is opened, given a key, answered or closed
    takeCombination,  ///< another program takes a combination, or gives it back
    failStoring,      ///< nothing can be stored from now on, or again
    restart,          ///< the program ends and is started again
};

/// One step as it was drawn. What it does to what is judged when it is done: a step that makes no sense then does nothing,
/// so that any steps of a list can be left out.
struct Step {
    StepKind kind{};
    /// Which window, application, display or setting; used modulo how many there are.
    std::uint32_t subject = 0;
    /// What of several things.
    std::uint32_t choice = 0;
    /// The seed of everything else that it needs.
    std::uint64_t seed = 0;

    bool operator==(const Step&) const = default;
};

[[nodiscard]] std::string_view nameOf(StepKind kind);

/// The steps of this seed.
[[nodiscard]] std::vector<Step> makeSteps(std::uint64_t seed, std::size_t count);

}  // namespace velmorand::simulation
