#include "simulation/Simulation.h"

#include "simulation/CallJudge.h"
#include "simulation/HotKeyJudge.h"
#include "simulation/ManagerModel.h"
#include "simulation/MenuJudge.h"
#include "simulation/ProblemJudge.h"
#include "simulation/RestoreStories.h"
#include "simulation/StorageJudge.h"
#include "simulation/World.h"
#include "windows/WindowManager.h"

#include <fmt/format.h>

#include <utility>

namespace velmorand::simulation {
namespace {

/// A world and everybody who judges what happens in it.
class Simulation {
public:
    Simulation(std::uint64_t seed, Tracer trace)
        : world_(makeScenario(seed)),
          ownIdentifier_(world_.platform().bundle().identifier()),
          trace_(std::move(trace)) {}

    /// Each throws `Broken`. The first judges what the start of the program did.
    void begin() { judge(); }
    void perform(const Step& step);
    /// Judges what is left when nothing more happens.
    void finish();

    [[nodiscard]] std::uint64_t judgedRestores() const { return stories_.judged(); }
    [[nodiscard]] std::uint64_t actions() const { return actions_; }

private:
    void judge();
    void judgeRequests();
    void judgeMemory();
    void tell(std::string_view what);

    World world_;
    std::optional<std::string> ownIdentifier_;
    Tracer trace_;
    ManagerModel model_;
    RestoreStories stories_;
    HotKeyJudge hotKeys_;
    StorageJudge storage_;
    MenuJudge menu_;
    ProblemJudge problems_;
    int starts_ = 1;
    std::uint64_t actions_ = 0;
};

void Simulation::tell(std::string_view what) {
    trace_(fmt::format("{:<20} {}", what, world_.account()));
    for (const TapedEvent& event : world_.platform().tape()) trace_("    " + describe(event));
}

void Simulation::perform(const Step& step) {
    world_.apply(step);
    if (trace_) tell(nameOf(step.kind));
    judge();
}

void Simulation::judge() {
    const Tape& tape = world_.platform().tape();
    if (starts_ != world_.starts()) {
        starts_ = world_.starts();
        model_ = {};
        stories_.startAgain();
    }
    judgeRequests();
    judgeCalls(tape);
    judgeEffort(tape, model_.remembered());
    judgeWrites(world_.platform().simulated().accessibility().writes(), tape);
    menu_.judgeMenu(world_, model_);
    const PreferencesState& preferences = world_.program().preferencesStore()->current();
    const auto& displays = world_.platform().desktop().displays;
    model_.read(tape, {preferences, displays, ownIdentifier_}, world_.stepBegin(), world_.settled());
    stories_.follow(model_.happenings(), preferences.clampToVisibleArea, displays);
    if (model_.sawInterruption() || world_.clockWasSet()) stories_.loseAll();
    if (!tape.empty()) judgeMemory();
    menu_.judgeIcon(world_, model_);
    hotKeys_.judge(world_);
    problems_.judge(world_, hotKeys_.registeredAgain());
    storage_.judge(world_);
}

/// Every action that was asked for begins exactly once, in order.
void Simulation::judgeRequests() {
    auto requested = world_.requested().begin();
    for (const TapedEvent& event : world_.platform().tape()) {
        const auto* perform = std::get_if<TapedPerform>(&event);
        if (perform == nullptr) continue;
        ++actions_;
        if (requested == world_.requested().end() || rawValue(*requested) != perform->rawValue)
            throw Broken{"requests", fmt::format("{} begins, but nobody asked for it", perform->rawValue)};
        ++requested;
    }
    if (requested != world_.requested().end())
        throw Broken{"requests", fmt::format("{} was asked for and does not begin", rawValue(*requested))};
}

void Simulation::judgeMemory() {
    for (const std::int32_t pid : world_.everyPid()) {
        const bool has = world_.program().windowManager()->hasRestoreEntry(pid);
        if (has != model_.hasEntry(pid))
            throw Broken{"memory", fmt::format("application {} {} remembered", pid, has ? "is still" : "is not")};
    }
}

void Simulation::finish() {
    world_.apply({.kind = StepKind::waitForASecond, .seed = 0});
    judge();
    constexpr std::chrono::hours longEnough{1};
    world_.platform().tape().clear();
    world_.platform().runLoop().advance(longEnough);
    const std::size_t timers = world_.platform().runLoop().timerCount();
    if (timers > 0) throw Broken{"rest", fmt::format("{} timers run when nothing more happens", timers)};
}

}  // namespace

RunResult run(std::uint64_t seed, std::span<const Step> steps, const Tracer& trace) {
    RunResult result;
    Simulation simulation(seed, trace);
    try {
        simulation.begin();
        for (const Step& step : steps) {
            ++result.steps;
            simulation.perform(step);
        }
        simulation.finish();
    } catch (const Broken& broken) {
        result.failure = broken;
    }
    result.judgedRestores = simulation.judgedRestores();
    result.actions = simulation.actions();
    return result;
}

}  // namespace velmorand::simulation
