#include "windows/WindowAnimationDriver.h"

#include "windows/AXWindowClient.h"
#include "windows/FrameTolerance.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

constexpr Duration tickInterval = std::chrono::nanoseconds(std::chrono::seconds(1)) / 30;

/// After so many failed writes in a row an animation is given up.
constexpr int mostFailures = 3;

/// An application that takes longer than this for one frame is not animated any further.
constexpr std::chrono::milliseconds longestWrite{50};

double seconds(Date::duration span) {
    return std::chrono::duration<double>(span).count();
}

double mix(double start, double target, double part) {
    return start + (target - start) * part;
}

Rect mix(const Rect& start, const Rect& target, double part) {
    return {mix(start.x, target.x, part), mix(start.y, target.y, part), mix(start.width, target.width, part),
            mix(start.height, target.height, part)};
}

/// From 0 to 1; nothing else, whatever the clock and the duration are.
double clampedProgress(double progress) {
    return progress >= 0 ? std::min(progress, 1.0) : 0;
}

}  // namespace

double easedOut(double progress) {
    return progress * (2 - progress);
}

WindowAnimationDriver::WindowAnimationDriver(std::shared_ptr<AXWindowClient> axClient, RunLoop& runLoop, Log& log)
    : axClient_(std::move(axClient)), runLoop_(runLoop), logger_(log, "animation") {}

void WindowAnimationDriver::animate(const WindowKey& window, const Rect& start, const Rect& target, double duration,
                                    Completion completion) {
    assert(runLoop_.isMainThread());
    cancel(window);
    const Animation animation{window, start, target, runLoop_.date(), duration};
    // A tick may end the timer and with it this function object, so it works on a copy.
    auto timer = runLoop_.every(tickInterval, [this, animation] { tick(Animation(animation)); });
    running_.insert_or_assign(window, RunningAnimation{std::move(timer), target, std::move(completion)});
}

std::optional<Rect> WindowAnimationDriver::runningTarget(const WindowKey& window) const {
    const auto found = running_.find(window);
    return found == running_.end() ? std::nullopt : std::optional(found->second.target);
}

void WindowAnimationDriver::cancel(const WindowKey& window) {
    end(window, AnimationCancelled{});
}

void WindowAnimationDriver::cancelAll() {
    std::vector<WindowKey> windows;
    for (const auto& [window, animation] : running_) windows.push_back(window);
    for (const WindowKey& window : windows) cancel(window);
}

void WindowAnimationDriver::tick(const Animation& animation) {
    const double progress = clampedProgress(seconds(runLoop_.date() - animation.startTime) / animation.duration);
    const MonotonicTime before = runLoop_.now();
    const auto written = write(animation.window, mix(animation.start, animation.target, easedOut(progress)));
    if (!written) {
        countFailure(animation.window, written.error());
        return;
    }
    consecutiveFailures_.erase(animation.window);
    const bool isSlow = runLoop_.now() - before > longestWrite;
    if (isSlow) logger_.info("animation cut short, target app responding slowly");
    if (isSlow || progress >= 1) finish(animation);
}

void WindowAnimationDriver::countFailure(const WindowKey& window, const WindowOperationError& error) {
    if (++consecutiveFailures_[window] < mostFailures) return;
    logger_.error("animation aborted after repeated AX write failures");
    end(window, AnimationFailed{error.description()});
}

void WindowAnimationDriver::finish(const Animation& animation) {
    const auto landed = snap(animation);
    if (!landed) {
        end(animation.window, AnimationFailed{landed.error().description()});
    } else if (*landed) {
        end(animation.window, AnimationLanded{});
    } else {
        end(animation.window, AnimationFailed{std::string(windowDidNotMoveMessage)});
    }
}

/// Puts the window exactly at its target, with one more try, and tells whether it is there.
std::expected<bool, WindowOperationError> WindowAnimationDriver::snap(const Animation& animation) const {
    const auto isThere = [&] {
        const auto frame = axClient_->readFrame(animation.window.element);
        return frame && framesMatch(*frame, animation.target);
    };
    if (auto written = write(animation.window, animation.target); !written) return std::unexpected(written.error());
    if (isThere()) return true;
    if (auto written = write(animation.window, animation.target); !written) return std::unexpected(written.error());
    return isThere();
}

std::expected<void, WindowOperationError> WindowAnimationDriver::write(const WindowKey& window,
                                                                       const Rect& frame) const {
    if (auto moved = axClient_->setPosition(window.element, frame.origin()); !moved) return moved;
    return axClient_->setSize(window.element, frame.size());
}

/// The completion may start another animation of the window, so the timer is stopped and everything put away before.
void WindowAnimationDriver::end(const WindowKey& window, const AnimationCompletion& completion) {
    consecutiveFailures_.erase(window);
    const auto node = running_.extract(window);
    if (node.empty()) return;
    RunningAnimation ended = std::move(node.mapped());
    ended.timer.cancel();
    if (ended.completion) ended.completion(completion);
}

}  // namespace velmorand
