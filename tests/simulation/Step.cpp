#include "simulation/Step.h"

#include "simulation/Random.h"

#include <array>
#include <cstddef>
#include <utility>

namespace velmorand::simulation {
namespace {

struct KindRow {
    StepKind kind;
    std::string_view name;
    /// How often it comes in relation to the others, on the whole.
    std::uint32_t weight;
};

constexpr auto kinds = std::to_array<KindRow>({
    {StepKind::perform, "perform", 260},
    {StepKind::press, "press", 60},
    {StepKind::pressTwice, "press-twice", 15},
    {StepKind::chooseFromMenu, "choose-from-menu", 15},
    {StepKind::waitForATick, "wait-for-a-tick", 170},
    {StepKind::waitForASecond, "wait-for-a-second", 60},
    {StepKind::waitForAWhile, "wait-for-a-while", 10},
    {StepKind::setClock, "set-clock", 5},
    {StepKind::nudgeWindow, "nudge-window", 50},
    {StepKind::moveWindow, "move-window", 40},
    {StepKind::changeWindow, "change-window", 35},
    {StepKind::focusWindow, "focus-window", 20},
    {StepKind::openWindow, "open-window", 25},
    {StepKind::closeWindow, "close-window", 10},
    {StepKind::switchApplication, "switch-application", 50},
    {StepKind::startApplication, "start-application", 12},
    {StepKind::quitApplication, "quit-application", 7},
    {StepKind::announceEnd, "announce-end", 8},
    {StepKind::freezeApplication, "freeze-application", 10},
    {StepKind::slowApplication, "slow-application", 8},
    {StepKind::interrupt, "interrupt", 40},
    {StepKind::changeDisplays, "change-displays", 15},
    {StepKind::announceDisplays, "announce-displays", 8},
    {StepKind::changeTrust, "change-trust", 12},
    {StepKind::changeMotion, "change-motion", 18},
    {StepKind::slideSetting, "slide-setting", 25},
    {StepKind::switchSetting, "switch-setting", 12},
    {StepKind::ignoreApplication, "ignore-application", 8},
    {StepKind::changeShortcut, "change-shortcut", 15},
    {StepKind::record, "record", 14},
    {StepKind::takeCombination, "take-combination", 12},
    {StepKind::failStoring, "fail-storing", 4},
    {StepKind::restart, "restart", 3},
});

constexpr bool rowsAreInOrder() {
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (std::to_underlying(kinds[i].kind) != i) return false;
    }
    return true;
}
static_assert(rowsAreInOrder());

/// How often each kind comes on one seed. Every seed has its own mixture, in which some kinds are frequent and others do
/// not come at all: what needs many steps of a few kinds would drown in an even one.
class Mixture {
public:
    explicit Mixture(Random& random) {
        constexpr auto factors = std::to_array<std::uint32_t>({0, 1, 1, 4});
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            // There is always something to judge.
            const bool isNeeded = kinds[i].kind == StepKind::perform || kinds[i].kind == StepKind::waitForATick;
            weights_[i] = kinds[i].weight * (isNeeded ? 1 : random.of(factors));
            total_ += weights_[i];
        }
    }

    [[nodiscard]] StepKind draw(Random& random) const {
        std::uint32_t draw = random.below(total_);
        std::size_t i = 0;
        while (draw >= weights_[i]) draw -= weights_[i++];
        return kinds[i].kind;
    }

private:
    std::array<std::uint32_t, kinds.size()> weights_{};
    std::uint32_t total_ = 0;
};

}  // namespace

std::string_view nameOf(StepKind kind) {
    return kinds[std::to_underlying(kind)].name;
}

std::vector<Step> makeSteps(std::uint64_t seed, std::size_t count) {
    // Another sequence than that of the scenario.
    Random random(seed ^ 0x5bd1e995a5a5a5a5ULL);
    const Mixture mixture(random);
    std::vector<Step> steps;
    steps.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        Step step{.kind = mixture.draw(random)};
        step.subject = random.below(1U << 16U);
        step.choice = random.below(1U << 16U);
        step.seed = random.next();
        steps.push_back(step);
    }
    return steps;
}

}  // namespace velmorand::simulation
