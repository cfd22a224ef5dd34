// How animations have to run.

#include "simulation/Broken.h"
#include "simulation/ManagerModel.h"

#include <fmt/format.h>

namespace velmorand::simulation {
namespace {

constexpr std::string_view didNotMove = "The window did not move to the requested position.";
constexpr Duration tickInterval = std::chrono::nanoseconds(std::chrono::seconds(1)) / 30;
constexpr Duration longestWrite = std::chrono::milliseconds(50);
constexpr int mostFailures = 3;

double seconds(Duration span) {
    return std::chrono::duration<double>(span).count();
}

/// The first tick after `now`; those that were missed are left out.
MonotonicTime tickAfter(MonotonicTime due, MonotonicTime now) {
    return due + ((now - due) / tickInterval + 1) * tickInterval;
}

}  // namespace

void ManagerModel::startAnimation(SimulatedWindowID window, Animation animation) {
    animation.begin = tape_->now();
    animation.duration = facts_->preferences.animationDuration;
    animation.due = animation.begin.time + tickInterval;
    animations_.insert_or_assign(window, animation);
}

void ManagerModel::readTick(SimulatedWindowID window) {
    const auto found = animations_.find(window);
    if (found == animations_.end())
        throw Broken{"writes", fmt::format("{} is written to, but nothing moves it: {}", describe(Element(window)),
                                           describe(tape_->next()))};
    Animation& animation = found->second;
    const Moment begin = tape_->nextCall(CallKind::write)->begin;
    if (begin.time < animation.due)
        throw Broken{"animations", fmt::format("{} is written to {} s too early", describe(Element(window)),
                                               seconds(animation.due - begin.time))};
    animation.due = tickAfter(animation.due, begin.time);

    double progress = seconds(begin.date - animation.begin.date) / animation.duration;
    if (progress < 0) progress = 0;
    if (progress > 1) progress = 1;
    const double eased = progress * (2 - progress);
    const auto between = [eased](double from, double to) { return from + (to - from) * eased; };
    const Rect& from = animation.start;
    const Rect& to = animation.target;
    const auto failure = readWrite(
        *tape_, window,
        {between(from.x, to.x), between(from.y, to.y), between(from.width, to.width), between(from.height, to.height)});
    if (failure) {
        if (++animation.failuresInARow == mostFailures) end(window, Ending::failed, *failure);
        return;
    }
    animation.failuresInARow = 0;
    if (progress >= 1 || tape_->now().time - begin.time > longestWrite) finish(window);
}

void ManagerModel::finish(SimulatedWindowID window) {
    const Rect target = animations_.at(window).target;
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (const auto failure = readWrite(*tape_, window, target)) {
            end(window, Ending::failed, *failure);
            return;
        }
        const auto frame = readFrame(*tape_, window);
        if (frame && modelSame(*frame, target)) {
            end(window, Ending::landed);
            return;
        }
    }
    end(window, Ending::failed, std::string(didNotMove));
}

void ManagerModel::end(SimulatedWindowID window, Ending ending, const std::string& message) {
    const auto node = animations_.extract(window);
    if (node.empty()) return;
    const Animation& ended = node.mapped();
    const bool landed = ending == Ending::landed;
    if (landed && ended.isReturn) {
        memory_.entries.erase(window);
        memory_.anchors.erase(window);
    } else if (ended.isReturn) {
        memory_.putBack(window, ended.anchor);
    } else {
        if (landed) memory_.record(ended.pid, window, ended.source, ended.target, tape_->now().date);
        memory_.dropAnchor(window, ended.source);
    }
    using Kind = Happening::Kind;
    if (landed)
        note(ended.isReturn ? Kind::returnLanded : Kind::moveEnded, window, ended.target, true);
    else if (ending == Ending::failed || performing_ == nullptr)
        note(ended.isReturn ? Kind::returnLost : Kind::moveLost, window, ended.target, true);
    if (ending == Ending::failed) expectTold(message);
}

void ManagerModel::endAll() {
    while (!animations_.empty()) end(animations_.begin()->first, Ending::cancelled);
}

}  // namespace velmorand::simulation
