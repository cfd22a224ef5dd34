#include "simulation/ManagerModel.h"

#include "simulation/Broken.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <utility>

namespace velmorand::simulation {
namespace {

constexpr std::string_view didNotMove = "The window did not move to the requested position.";
constexpr std::chrono::hours memoryLasts{1};

}  // namespace

void ManagerModel::read(std::span<const TapedEvent> tape, const ModelFacts& facts, Moment begin,
                        MonotonicTime settled) {
    TapeReader reader(tape, begin);
    tape_ = &reader;
    facts_ = &facts;
    happenings_.clear();
    while (!reader.atEnd()) {
        if (const auto* perform = reader.takeIf<TapedPerform>()) {
            readPerform(*perform);
        } else if (const auto* termination = reader.takeIf<TapedTermination>()) {
            readTermination(termination->pid);
        } else if (reader.takeIf<TapedScreenChange>() != nullptr) {
            endAll();
        } else if (reader.takeIf<TapedFrontmost>() != nullptr || reader.takeIf<TapedReduceMotion>() != nullptr) {
            // The menu is made.
        } else if (reader.nextCall(CallKind::trusted) != nullptr) {
            reader.takeCall(CallKind::trusted);
        } else if (const auto* write = reader.nextCall(CallKind::write)) {
            readTick(std::get<SimulatedWindowID>(write->element));
        } else if (!reader.atEnd()) {
            reader.fail("nothing, as no action was asked for");
        }
    }
    sawInterruption_ = reader.sawInterruption();
    for (const auto& [window, animation] : animations_) {
        if (animation.due <= settled)
            throw Broken{"animations", fmt::format("the animation of {} stands still", describe(Element(window)))};
    }
}

void ManagerModel::readPerform(const TapedPerform& perform) {
    const auto action = windowActionFromRawValue(perform.rawValue);
    if (!action) tape_->fail("an action");
    performing_ = &perform;
    const Refusal refusal = act(*action);
    performing_ = nullptr;
    lastWasRefused_ = refusal.has_value();
    if (refusal) expectTold(*refusal);
    if (const auto* outcome = tape_->takeIf<TapedOutcome>(); outcome != nullptr && outcome->refusal != refusal)
        throw Broken{"refusals", fmt::format(R"(the outcome is "{}", not "{}")", outcome->refusal.value_or("success"),
                                             refusal.value_or("success"))};
}

void ManagerModel::expectTold(std::string_view message) {
    const auto* told = tape_->takeIf<TapedFailure>();
    if (told == nullptr) throw Broken{"refusals", fmt::format(R"(the user was not told "{}")", message)};
    if (told->message != message)
        throw Broken{"refusals", fmt::format(R"(the user was told "{}", not "{}")", told->message, message)};
}

ManagerModel::Refusal ManagerModel::act(WindowAction action) {
    if (Refusal refusal = requireTrust()) return refusal;
    prune();
    const bool goesToAnotherDisplay = action == WindowAction::nextDisplay || action == WindowAction::previousDisplay;
    if (goesToAnotherDisplay && screens().size() < 2) return "Only one display is connected.";
    Subject subject;
    if (Refusal refusal = chooseSubject(subject)) return refusal;
    if (action == WindowAction::restore) return restore(subject);
    const PreferencesState& preferences = facts_->preferences;
    const auto target =
        modelTarget(action, subject.current,
                    {preferences.outerPadding, preferences.innerGap, preferences.clampToVisibleArea}, screens());
    if (!target) return "Could not find a matching display.";
    return move(subject, *target);
}

ManagerModel::Refusal ManagerModel::requireTrust() {
    if (tape_->takeCall(CallKind::trusted).yes) return std::nullopt;
    tape_->takeCall(CallKind::prompt);
    return "Accessibility permission is required.";
}

/// In any order: the windows that are remembered are asked whether they are there.
void ManagerModel::prune() {
    const Date oldest = tape_->now().date - memoryLasts;
    std::erase_if(memory_.entries, [&](const auto& item) { return item.second.updatedAt <= oldest; });
    std::set<SimulatedWindowID> unasked;
    for (const auto& [window, entry] : memory_.entries) unasked.insert(window);
    while (!unasked.empty()) {
        const TapedCall* call = tape_->nextCall(CallKind::copy);
        const auto* window = call == nullptr ? nullptr : std::get_if<SimulatedWindowID>(&call->element);
        if (window == nullptr || unasked.erase(*window) == 0)
            tape_->fail("a look whether a remembered window is there");
        if (tape_->takeCall(CallKind::copy, *window, "AXRole").error) {
            memory_.entries.erase(*window);
            note(Happening::Kind::forgotten, *window, {});
        }
    }
}

ManagerModel::Refusal ManagerModel::chooseSubject(Subject& subject) {
    const auto& frontmost = tape_->take<TapedFrontmost>("a question for the frontmost application").application;
    if (!frontmost) return "No frontmost application is available.";
    if (frontmost->bundleIdentifier == facts_->ownIdentifier) return "Select another app's window, then try again.";
    if (frontmost->bundleIdentifier &&
        std::ranges::count(facts_->preferences.ignoredApps, *frontmost->bundleIdentifier) > 0)
        return frontmost->localizedName.value_or(*frontmost->bundleIdentifier) + " is ignored.";
    const auto window = readFocusedWindow(*tape_, frontmost->pid);
    if (!window) return "No focused window is available.";
    const auto frame = readFrame(*tape_, *window);
    if (!frame) return "Could not read the window frame.";
    const auto running = animations_.find(*window);
    subject = {frontmost->pid, *window, running == animations_.end() ? *frame : running->second.target};
    return std::nullopt;
}

bool ManagerModel::animates() {
    if (!facts_->preferences.enableAnimations) return false;
    return !tape_->take<TapedReduceMotion>("a question whether motion is to be reduced").reduces;
}

ManagerModel::Refusal ManagerModel::move(const Subject& subject, const Rect& target) {
    if (!readCanSetFrame(*tape_, subject.window)) return "This window does not support resizing.";
    const auto anchor = memory_.anchorOf(subject.window);
    const Rect source = anchor ? anchor->frame : subject.current;
    const bool animated = animates();
    note(Happening::Kind::moveBegun, subject.window, target, animated);
    const Refusal refusal = animated ? moveAnimated(subject, source, target) : moveAtOnce(subject, source, target);
    if (refusal) {
        memory_.putBack(subject.window, anchor);
        note(Happening::Kind::moveLost, subject.window, target);
    }
    return refusal;
}

ManagerModel::Refusal ManagerModel::moveAtOnce(const Subject& subject, const Rect& source, const Rect& target) {
    end(subject.window, Ending::cancelled);
    const ModelWrite written = readVerifiedWrite(*tape_, subject.window, target);
    if (written.failure) return written.failure;
    if (!written.landed) expectTold(didNotMove);
    const Rect applied = written.final.value_or(target);
    memory_.record(subject.pid, subject.window, source, applied, tape_->now().date);
    memory_.dropAnchor(subject.window, source);
    note(written.final ? Happening::Kind::moveEnded : Happening::Kind::moveLost, subject.window, applied);
    return std::nullopt;
}

/// The settings do not allow a duration of 0.
ManagerModel::Refusal ManagerModel::moveAnimated(const Subject& subject, const Rect& source, const Rect& target) {
    end(subject.window, Ending::cancelled);
    memory_.anchors[subject.window] = {subject.pid, source};
    const auto start = readFrame(*tape_, subject.window);
    if (!start) {
        memory_.anchors.erase(subject.window);
        return "Could not read the window frame.";
    }
    startAnimation(subject.window, {.pid = subject.pid, .start = *start, .target = target, .source = source});
    return std::nullopt;
}

ManagerModel::Refusal ManagerModel::restore(const Subject& subject) {
    const auto anchor = memory_.anchorOf(subject.window);
    const auto entry = memory_.entries.find(subject.window);
    if (!anchor && entry == memory_.entries.end()) {
        note(Happening::Kind::returnRefused, subject.window, {});
        return "No previous frame is available to restore.";
    }
    const Rect target = modelReturn(anchor ? anchor->frame : entry->second.restoreFrame,
                                    facts_->preferences.clampToVisibleArea, screens());
    memory_.anchors.erase(subject.window);
    if (!readCanSetFrame(*tape_, subject.window)) {
        memory_.putBack(subject.window, anchor);
        return "This window does not support resizing.";
    }
    const bool animated = [&] {
        end(subject.window, Ending::cancelled);
        return animates();
    }();
    note(Happening::Kind::returnBegun, subject.window, target, animated);
    if (!animated) return returnAtOnce(subject, target, anchor);
    const auto start = readFrame(*tape_, subject.window);
    if (!start) {
        memory_.putBack(subject.window, anchor);
        note(Happening::Kind::returnLost, subject.window, target);
        return "Could not read the window frame.";
    }
    startAnimation(subject.window,
                   {.pid = subject.pid, .start = *start, .target = target, .isReturn = true, .anchor = anchor});
    return std::nullopt;
}

ManagerModel::Refusal ManagerModel::returnAtOnce(const Subject& subject, const Rect& target,
                                                 const std::optional<ModelAnchor>& anchor) {
    const ModelWrite written = readVerifiedWrite(*tape_, subject.window, target);
    if (written.landed) {
        memory_.entries.erase(subject.window);
        memory_.anchors.erase(subject.window);
        note(Happening::Kind::returnLanded, subject.window, target);
        return std::nullopt;
    }
    memory_.putBack(subject.window, anchor);
    note(Happening::Kind::returnLost, subject.window, target);
    if (!written.failure) expectTold(didNotMove);
    return written.failure;
}

void ManagerModel::readTermination(std::int32_t pid) {
    for (const auto& [window, entry] : memory_.entries) {
        if (entry.pid == pid) note(Happening::Kind::forgotten, window, {});
    }
    for (auto& [window, animation] : animations_) {
        if (animation.pid != pid) continue;
        animation.anchor.reset();
        note(Happening::Kind::forgotten, window, {});
    }
    memory_.forget(pid);
}

void ManagerModel::note(Happening::Kind kind, SimulatedWindowID window, const Rect& frame, bool animated) {
    std::optional<Rect> seen;
    if (performing_ != nullptr) {
        const auto found = performing_->frames.find(window);
        if (found != performing_->frames.end()) seen = found->second;
    }
    happenings_.push_back({kind, window, frame, tape_->now(), seen, animated});
}

}  // namespace velmorand::simulation
