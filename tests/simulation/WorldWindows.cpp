// What happens to windows, applications and the desktop.

#include "simulation/World.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace velmorand::simulation {
namespace {

std::string named(SimulatedWindowID id) {
    return describe(Element(id));
}

/// All writes fail from now on, some of the next ones, or none.
void makeUnreliable(SimulatedWindow& window, Random& random) {
    constexpr AXError failure{-25200};
    window.positionWriteError.reset();
    window.sizeWriteError.reset();
    switch (random.below(5)) {
        case 0: window.positionWriteError = failure; return;
        case 1: window.sizeWriteError = failure; return;
        case 2: return;
        default: window.failingWrites = static_cast<std::uint32_t>(random.next());
    }
}

}  // namespace

void World::nudgeWindow(const Step& step, Random& random) {
    const auto id = windowFor(step);
    if (!id) return;
    const double distance = random.chance(50) ? 2 : 2.5;
    const double signedDistance = random.chance(50) ? distance : -distance;
    constexpr std::array sides{&Rect::x, &Rect::y, &Rect::width, &Rect::height};
    Rect& frame = desktop().window(*id).frame;
    double& value = frame.*random.of(sides);
    value += signedDistance;
    if (frame.width < 1 || frame.height < 1) value -= signedDistance;
    did(fmt::format("{} is nudged by {} to {}", named(*id), signedDistance, describe(frame)));
}

void World::moveWindow(const Step& step, Random& random) {
    const auto id = windowFor(step);
    if (!id) return;
    Rect& frame = desktop().window(*id).frame;
    frame = makeWindow(random).frame;
    did(fmt::format("{} is moved to {}", named(*id), describe(frame)));
}

void World::changeWindow(const Step& step, Random& random) {
    const auto id = windowFor(step);
    if (!id) return;
    SimulatedWindow& window = desktop().window(*id);
    const Rect frame = window.frame;
    if (random.chance(30)) {
        makeUnreliable(window, random);
        did(fmt::format("writes to {} fail, or no longer", named(*id)));
        return;
    }
    window = random.chance(30) ? SimulatedWindow{} : makeWindow(random);
    window.frame = frame;
    did(fmt::format("{} becomes another kind of window", named(*id)));
}

void World::focusWindow(const Step& step, Random& random) {
    const auto pid = applicationFor(step);
    if (!pid) return;
    SimulatedProcess& process = desktop().process(*pid);
    const auto any = [&]() -> std::optional<SimulatedWindowID> {
        if (process.windows.empty() || random.chance(20)) return std::nullopt;
        return random.of(process.windows);
    };
    process.focusedWindow = any();
    process.mainWindow = random.chance(60) ? process.focusedWindow : any();
    process.windowListError = random.chance(5) ? std::optional(AXError::cannotComplete) : std::nullopt;
    did(fmt::format("application {} has {} in focus", *pid,
                    process.focusedWindow ? named(*process.focusedWindow) : "nothing"));
}

void World::openWindow(const Step& step, Random& random) {
    constexpr std::size_t mostWindows = 4;
    const auto pid = applicationFor(step);
    if (!pid || desktop().process(*pid).windows.size() >= mostWindows) return;
    const SimulatedWindowID id = desktop().addWindow(*pid, makeWindow(random));
    did(fmt::format("application {} opens {} at {}", *pid, named(id), describe(desktop().window(id).frame)));
}

void World::closeWindow(const Step& step) {
    const auto id = windowFor(step);
    if (!id) return;
    SimulatedProcess& owner = *desktop().ownerOf(*id);
    desktop().closeWindow(*id);
    did(fmt::format("{} closes", named(*id)));
    if (owner.windows.empty() || owner.focusedWindow || step.choice % 8 == 0) return;
    owner.focusedWindow = owner.windows.front();
    owner.mainWindow = owner.windows.front();
}

void World::switchApplication(const Step& step, Random& random) {
    desktop().frontmost.reset();
    if (random.chance(96)) desktop().frontmost = applicationFor(step);
    const auto front = desktop().frontmost;
    did(front ? fmt::format("application {} comes to the front", *front) : "nothing is in front");
}

void World::quitApplication(const Step& step, Random& random) {
    const auto pid = applicationFor(step);
    if (!pid) return;
    desktop().removeProcess(*pid);
    pids_.erase(*pid);
    if (!desktop().frontmost && random.chance(80)) desktop().frontmost = applicationFor(step);
    // Now and then nobody knows who it was.
    if (random.chance(90))
        tellOfEnd(*pid);
    else
        platform_.simulated().workspaceNotificationCenter().post({NotificationName::applicationTerminated, {}});
    did(fmt::format("application {} quits", *pid));
}

void World::announceEnd(const Step& step) {
    const auto pid = applicationFor(step);
    if (!pid) return;
    did(fmt::format("application {} is said to have ended", *pid));
    tellOfEnd(*pid);
}

void World::tellOfEnd(std::int32_t pid) {
    platform_.tape().emplace_back(TapedTermination{pid});
    platform_.simulated().workspaceNotificationCenter().post({NotificationName::applicationTerminated, pid});
}

void World::freezeApplication(const Step& step) {
    const auto pid = applicationFor(step);
    if (!pid) return;
    bool& frozen = desktop().process(*pid).frozen;
    frozen = !frozen && step.choice % 8 < 5;
    did(fmt::format("application {} {}", *pid, frozen ? "freezes" : "is not frozen"));
}

void World::slowApplication(const Step& step, Random& random) {
    const auto pid = applicationFor(step);
    if (!pid) return;
    double& seconds = desktop().process(*pid).answerSeconds;
    seconds = random.chance(80) ? random.between(0.01, 0.06) : random.between(0.06, 0.8);
    if (random.chance(60)) seconds = 0;
    did(fmt::format("application {} takes {:.3f} s over every answer", *pid, seconds));
}

void World::interrupt(const Step& step, Random& random) {
    const std::uint32_t callsBefore = random.below(random.chance(50) ? 12 : 60);
    did(fmt::format("something will happen after {} calls", callsBefore));
    platform_.accessibility().interruptAfter(callsBefore, [this, step] { happenInTheMiddle(step); });
}

/// The program is not told in the middle of a call, but in a later turn.
void World::happenInTheMiddle(const Step& step) {
    Random random(step.seed + 1);
    const auto pid = applicationFor(step);
    const auto id = windowFor(step);
    switch (random.below(7)) {
        case 0:
            if (id) desktop().closeWindow(*id);
            return;
        case 1:
            if (!pid) return;
            desktop().removeProcess(*pid);
            pids_.erase(*pid);
            runLoop().post([this, pid] { tellOfEnd(*pid); });
            return;
        case 2:
            if (pid) desktop().process(*pid).frozen = true;
            return;
        case 3:
            if (id) desktop().window(*id).frame = makeWindow(random).frame;
            return;
        case 4: desktop().trusted = random.chance(70); return;
        default: hesitate();
    }
}

/// The application in front does not answer for the rest of this turn.
void World::hesitate() {
    const auto front = desktop().frontmost;
    SimulatedProcess* process = front ? desktop().findProcess(*front) : nullptr;
    if (process == nullptr || process->frozen) return;
    process->frozen = true;
    runLoop().post([this, pid = process->pid] {
        if (SimulatedProcess* alive = desktop().findProcess(pid)) alive->frozen = false;
    });
}

void World::changeDisplays(std::vector<DisplayDescription> displays) {
    did(fmt::format("there are {} displays", displays.size()));
    for (const DisplayDescription& display : displays)
        account_ += fmt::format(" {}{}", describe(display.visibleFrame), display.number ? "" : " without a number");
    platform_.tape().emplace_back(TapedScreenChange{});
    platform_.simulated().setDisplays(std::move(displays));
}

void World::changeTrust(Random& random) {
    desktop().trusted = random.chance(90);
    desktop().trustedAfterPrompt = random.chance(40);
    did(desktop().trusted ? "the program is trusted" : "the program is not trusted");
}

}  // namespace velmorand::simulation
