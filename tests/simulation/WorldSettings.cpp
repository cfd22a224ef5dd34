// What the user does to settings and shortcuts.

#include "shortcuts/ShortcutRecorderPanel.h"
#include "simulation/World.h"

#include <fmt/format.h>

#include <array>
#include <cmath>

namespace velmorand::simulation {
namespace {

/// Modifiers as key events tell them.
constexpr auto eventFlags =
    std::to_array<std::uint64_t>({1U << 20U, (1U << 20U) | (1U << 19U), (1U << 18U) | (1U << 19U), 1U << 19U, 0});

}  // namespace

void World::slideSetting(const Step& step, Random& random) {
    const double value = random.between(-10, 70);
    for (std::uint32_t movements = 1 + random.below(3); movements > 0; --movements) {
        switch (step.subject % 3) {
            case 0: store().setOuterPadding(std::round(value)); break;
            case 1: store().setInnerGap(std::round(value)); break;
            default: store().setAnimationDuration(value / 100); break;
        }
    }
    did(fmt::format("a setting is dragged to {}", value));
}

void World::switchSetting(const Step& step) {
    const bool on = step.choice % 4 != 0;
    if (step.subject % 2 == 0)
        store().setEnableAnimations(on);
    else
        store().setClampToVisibleArea(on);
    did(fmt::format("{} is {}", step.subject % 2 == 0 ? "animation" : "clamping", on ? "on" : "off"));
}

void World::ignoreApplication(Random& random) {
    const std::string identifier = makeIdentifier(random);
    const bool ignores = random.chance(35);
    if (ignores)
        store().addIgnoredApp(identifier);
    else
        store().removeIgnoredApp(identifier);
    did(fmt::format("{} is {}", identifier, ignores ? "ignored" : "not ignored"));
}

void World::changeShortcut(const Step& step, Random& random) {
    // Often among few, so that the same problems come back.
    const bool isAmongFew = random.chance(50);
    const WindowAction action = allWindowActions[step.subject % (isAmongFew ? 2 : allWindowActions.size())];
    did(fmt::format("the shortcut of {} is changed", rawValue(action)));
    if (isAmongFew && step.choice % 2 == 0) {
        store().setShortcut(action, metadata(WindowAction::leftHalf).defaultShortcut);
        return;
    }
    switch (step.choice % 5) {
        case 0: store().removeShortcut(action); return;
        case 1: store().resetAllShortcuts(); return;
        case 2: {
            const KeyboardShortcut shortcut = makeShortcut(random);
            const auto others = store().conflictingActions(shortcut.hotKey.keyCode, shortcut.hotKey.modifiers, action);
            store().assignShortcut(action, shortcut, others);
            return;
        }
        default: store().setShortcut(action, makeShortcut(random));
    }
}

void World::record(const Step& step, Random& random) {
    if (!program_->shortcutRecorderPanel().isRecording())
        program_->shortcutRecorderPanel().open(allWindowActions[step.subject % allWindowActions.size()],
                                               program_->preferencesStore());
    for (std::uint32_t answers = random.below(3); answers > 0; --answers) answerRecorder(random);
    if (random.chance(60)) program_->shortcutRecorderPanel().cancel();
    did(program_->shortcutRecorderPanel().isRecording() ? "a shortcut is being recorded"
                                                        : "a shortcut has been recorded");
}

void World::answerRecorder(Random& random) {
    ShortcutRecorderPanel& panel = program_->shortcutRecorderPanel();
    switch (random.below(7)) {
        case 0: panel.replace(); return;
        case 1: panel.useAnyway(); return;
        case 2: panel.remove(); return;
        case 3: platform_.recorderPanelHost().closeByUser(); return;
        case 4: platform_.recorderPanelHost().resignKey(); return;
        default:
            platform_.recorderPanelHost().press({makeShortcut(random).hotKey.keyCode, random.of(eventFlags), "k"});
            runLoop().runPending();
    }
}

/// What the program holds itself cannot be taken from it.
void World::takeCombination(Random& random) {
    const HotKey hotKey =
        random.chance(50) ? makeShortcut(random).hotKey : metadata(random.of(allWindowActions)).defaultShortcut.hotKey;
    const Combination combination{hotKey.keyCode, hotKey.modifiers.rawValue()};
    SimulatedHotKeyService& service = platform_.hotKeyService();
    const bool isTaken = taken_.contains(combination);
    if (!isTaken && service.isRegistered(combination.first, combination.second)) return;
    service.setTaken(combination.first, combination.second, !isTaken);
    if (isTaken)
        taken_.erase(combination);
    else
        taken_.insert(combination);
    did(fmt::format("another program {} key {}", isTaken ? "gives back" : "takes", combination.first));
}

void World::failStoring() {
    storingFails_ = !storingFails_;
    noteStoring();
    platform_.userDefaults().setWriteFailure(storingFails_ ? std::optional(UserDefaultsError{"There is no room."})
                                                           : std::nullopt);
    did(storingFails_ ? "nothing can be stored" : "settings can be stored");
}

}  // namespace velmorand::simulation
