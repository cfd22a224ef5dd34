#include "simulation/World.h"

#include "app/MenuBarController.h"
#include "preferences/PreferencesStateCoding.h"
#include "shortcuts/ShortcutRecorderPanel.h"
#include "windows/WindowManager.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace velmorand::simulation {
namespace {

/// Restore comes more often than any other.
WindowAction actionOf(const Step& step) {
    const std::size_t place = step.choice % (allWindowActions.size() + 7);
    return allWindowActions[std::min(place, allWindowActions.size() - 1)];
}

/// Around the minute for which failures are listed, and the hour for which frames are remembered.
double timeToWait(Random& random) {
    switch (random.below(5)) {
        case 0: return random.between(50, 70);
        case 1: return 3600;
        case 2: return random.between(3595, 3605);
        default: return random.between(1800, 5000);
    }
}

}  // namespace

World::World(const Scenario& scenario) : allowsNotifications_(scenario.allowsNotifications) {
    SimulatedPlatform& platform = platform_.simulated();
    platform.settableBundle().setIdentifier(scenario.ownIdentifier);
    platform.workspace().setReducesMotion(scenario.reducesMotion);
    platform.userNotificationCenter().setAnswer(scenario.allowsNotifications);
    desktop().displays = scenario.displays;
    desktop().trusted = scenario.trusted;
    platform.userDefaults().put(PreferencesStore::key, encodePreferencesState(scenario.preferences).value_or(""));
    Random random(scenario.applications.size());
    for (const ApplicationPlan& plan : scenario.applications) startApplication(plan, random);
    startProgram();
    stepBegin_ = now();
    settle();
}

World::~World() = default;

void World::startProgram() {
    program_ = std::make_shared<AppDelegate>(platform_, settingsWindows_.maker());
    program_->applicationDidFinishLaunching();
    program_->windowManager()->setOnFailure([this](std::string_view message) {
        platform_.tape().emplace_back(TapedFailure{std::string(message)});
        told_ = Told{++tellings_, std::string(message), now()};
        program_->menuBarController().showIssue(message);
    });
    publishing_ = store().state().subscribe([this](const PreferencesState&) {
        ++publications_;
        publishedAt_ = runLoop().now();
    });
    recording_ = program_->shortcutRecorderPanel().recordedAction().subscribe(
        [this](const std::optional<WindowAction>& action) { recordingsEnded_ += action ? 0U : 1U; });
    ++starts_;
}

void World::endProgram() {
    program_->applicationWillTerminate();
    publishing_.cancel();
    recording_.cancel();
    program_.reset();
    told_.reset();
    leftBehind_ = platform_.hotKeyService().registrationCount() + platform_.hotKeyService().handlerCount();
}

std::int32_t World::startApplication(const ApplicationPlan& plan, Random& random) {
    std::int32_t pid = 500 + static_cast<std::int32_t>(everyPid_.size());
    // A number is given again once its application has ended.
    if (!everyPid_.empty() && random.chance(30)) {
        const auto old = *std::next(everyPid_.begin(), random.below(static_cast<std::uint32_t>(everyPid_.size())));
        if (!pids_.contains(old)) pid = old;
    }
    SimulatedProcess& process = desktop().addProcess(pid);
    process.bundleIdentifier = plan.bundleIdentifier;
    process.localizedName = plan.localizedName;
    process.answerSeconds = plan.answerSeconds;
    for (const SimulatedWindow& window : plan.windows) desktop().addWindow(pid, window);
    if (plan.focusesNothing) {
        process.focusedWindow.reset();
        process.mainWindow.reset();
    }
    pids_.insert(pid);
    everyPid_.insert(pid);
    return pid;
}

void World::settle(Duration span) {
    settled_ = runLoop().now() + span;
    runLoop().advance(span);
}

void World::apply(const Step& step) {
    Random random(step.seed);
    platform_.tape().clear();
    platform_.simulated().accessibility().clearWrites();
    requested_.clear();
    account_.clear();
    clockWasSet_ = false;
    shownMenu_.reset();
    stepBegin_ = now();
    // Left alone, a desktop mostly finds another application for the user.
    if (!desktop().frontmost && random.chance(50)) desktop().frontmost = applicationFor(step);
    noteStoring();
    play(step, random);
    noteStoring();
}

void World::noteStoring() {
    if (storingFails_) publicationsWhenStoringFailed_ = publications_;
}

void World::play(const Step& step, Random& random) {
    double span = 0;
    switch (step.kind) {
        case StepKind::perform: perform(actionOf(step)); break;
        case StepKind::press: press(actionOf(step)); break;
        case StepKind::pressTwice:
            press(actionOf(step));
            press(actionOf(step));
            break;
        case StepKind::chooseFromMenu: chooseFromMenu(actionOf(step)); break;
        case StepKind::waitForATick: span = random.between(0, 0.1); break;
        case StepKind::waitForASecond: span = random.between(0, 1); break;
        case StepKind::waitForAWhile: span = timeToWait(random); break;
        case StepKind::setClock: setClock(random); break;
        case StepKind::nudgeWindow: nudgeWindow(step, random); break;
        case StepKind::moveWindow: moveWindow(step, random); break;
        case StepKind::changeWindow: changeWindow(step, random); break;
        case StepKind::focusWindow: focusWindow(step, random); break;
        case StepKind::openWindow: openWindow(step, random); break;
        case StepKind::closeWindow: closeWindow(step); break;
        case StepKind::switchApplication: switchApplication(step, random); break;
        case StepKind::startApplication: startApplication(makeApplication(random), random); break;
        case StepKind::quitApplication: quitApplication(step, random); break;
        case StepKind::announceEnd: announceEnd(step); break;
        case StepKind::freezeApplication: freezeApplication(step); break;
        case StepKind::slowApplication: slowApplication(step, random); break;
        case StepKind::interrupt: interrupt(step, random); break;
        case StepKind::changeDisplays: changeDisplays(makeDisplays(random)); break;
        case StepKind::announceDisplays: changeDisplays(desktop().displays); break;
        case StepKind::changeTrust: changeTrust(random); break;
        case StepKind::changeMotion: platform_.simulated().workspace().setReducesMotion(random.chance(35)); break;
        case StepKind::slideSetting: slideSetting(step, random); break;
        case StepKind::switchSetting: switchSetting(step); break;
        case StepKind::ignoreApplication: ignoreApplication(random); break;
        case StepKind::changeShortcut: changeShortcut(step, random); break;
        case StepKind::record: record(step, random); break;
        case StepKind::takeCombination: takeCombination(random); break;
        case StepKind::failStoring: failStoring(); break;
        case StepKind::restart:
            endProgram();
            startProgram();
            break;
    }
    if (span > 0) did(fmt::format("{:.3f} s pass", span));
    settle(std::chrono::duration_cast<Duration>(std::chrono::duration<double>(span)));
}

std::optional<SimulatedWindowID> World::windowFor(const Step& step) {
    const auto frames = desktop().windowFrames();
    if (frames.empty()) return std::nullopt;
    // Mostly one of the application in front, as there is more to see then.
    const auto front = desktop().frontmost;
    const SimulatedProcess* process = front ? desktop().findProcess(*front) : nullptr;
    if (process != nullptr && !process->windows.empty() && step.choice % 4 != 0)
        return process->windows[step.subject % process->windows.size()];
    return std::next(frames.begin(), static_cast<std::ptrdiff_t>(step.subject % frames.size()))->first;
}

std::optional<std::int32_t> World::applicationFor(const Step& step) {
    if (pids_.empty()) return std::nullopt;
    if (const auto front = desktop().frontmost; front && step.choice % 2 == 0) return front;
    return *std::next(pids_.begin(), static_cast<std::ptrdiff_t>(step.subject % pids_.size()));
}

void World::perform(WindowAction action) {
    did(fmt::format("{} is asked for", rawValue(action)));
    requested_.push_back(action);
    const auto outcome = program_->windowManager()->perform(action);
    platform_.tape().emplace_back(TapedOutcome{outcome ? std::nullopt : std::optional(outcome.error().description())});
}

void World::press(WindowAction action) {
    const auto shortcut = store().effectiveShortcut(action);
    if (!shortcut) return;
    const HotKey& hotKey = shortcut->hotKey;
    if (!platform_.hotKeyService().press(hotKey.keyCode, hotKey.modifiers.rawValue())) return;
    did(fmt::format("the shortcut of {} is pressed", rawValue(action)));
    requested_.push_back(action);
}

void World::chooseFromMenu(WindowAction action) {
    SimulatedStatusItem& item = *platform_.statusBar().items().front();
    if (!item.openMenu()) return;
    shownMenu_ = ShownMenu{.items = item.menuItems(),
                           .trusted = desktop().trusted,
                           .frontmost = platform_.simulated().workspace().frontmostApplication(),
                           .date = runLoop().date()};
    did("the menu is opened");
    const auto line = std::ranges::find(shownMenu_->items, std::optional(std::string(rawValue(action))),
                                        &MenuItem::representedObject);
    if (line != shownMenu_->items.end() && item.choose(static_cast<std::size_t>(line - shownMenu_->items.begin()))) {
        did(fmt::format("{} is chosen from the menu", rawValue(action)));
        shownMenu_->chosen = true;
        requested_.push_back(action);
    }
    item.closeMenu();
}

/// Never far back while something moves: it would stand still until the clock has caught up.
void World::setClock(Random& random) {
    clockWasSet_ = true;
    did("the clock is set");
    if (random.chance(40)) {
        runLoop().setDate(runLoop().date() + std::chrono::milliseconds(random.below(400)) -
                          std::chrono::milliseconds(200));
        return;
    }
    const auto hours = std::chrono::duration_cast<Date::duration>(
        std::chrono::duration<double, std::ratio<3600>>(random.between(0, 2)));
    const bool isQuiet = !random.chance(50);
    settle(isQuiet ? Duration(std::chrono::seconds(2)) : Duration::zero());
    runLoop().setDate(isQuiet ? runLoop().date() - hours : runLoop().date() + hours);
}

}  // namespace velmorand::simulation
