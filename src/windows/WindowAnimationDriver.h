#pragma once

#include "base/Rect.h"
#include "platform/AXElement.h"
#include "platform/Logger.h"
#include "platform/RunLoop.h"
#include "windows/WindowKey.h"
#include "windows/WindowOperationError.h"

#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>

namespace velmorand {

class AXWindowClient;

/// How an animation ended.
struct AnimationFailed {
    /// The sentence that the user should see.
    std::string message;

    bool operator==(const AnimationFailed&) const = default;
};
struct AnimationLanded {
    bool operator==(const AnimationLanded&) const = default;
};
struct AnimationCancelled {
    bool operator==(const AnimationCancelled&) const = default;
};
using AnimationCompletion = std::variant<AnimationFailed, AnimationLanded, AnimationCancelled>;

/// Moves windows to their target in steps, 30 a second, fast at first and gently at the end; puts each exactly there at
/// the end, looks whether it arrived, and says so. At most one animation runs for a window. Main thread only.
class WindowAnimationDriver {
public:
    /// Told exactly once how the animation ended.
    using Completion = std::function<void(const AnimationCompletion&)>;

    /// `runLoop` and `log` must outlive the driver.
    WindowAnimationDriver(std::shared_ptr<AXWindowClient> axClient, RunLoop& runLoop, Log& log);

    WindowAnimationDriver(const WindowAnimationDriver&) = delete;
    WindowAnimationDriver& operator=(const WindowAnimationDriver&) = delete;
    ~WindowAnimationDriver() = default;

    /// Starts moving the window from `start` to `target`, frames in the accessibility space, in `duration` seconds. An
    /// animation of it that runs is cancelled before. A duration of 0 takes one step.
    void animate(const WindowKey& window, const Rect& start, const Rect& target, double duration,
                 Completion completion);

    /// Where the window's running animation goes; absent when none runs.
    [[nodiscard]] std::optional<Rect> runningTarget(const WindowKey& window) const;

    /// Stops the window's animation, if any, where it is.
    void cancel(const WindowKey& window);
    /// Stops every animation.
    void cancelAll();

private:
    /// What does not change while an animation runs.
    struct Animation {
        WindowKey window;
        Rect start;
        Rect target;
        Date startTime;
        double duration = 0;
    };
    struct RunningAnimation {
        RunLoop::Timer timer;
        Rect target;
        Completion completion;
    };

    void tick(const Animation& animation);
    void finish(const Animation& animation);
    [[nodiscard]] std::expected<bool, WindowOperationError> snap(const Animation& animation) const;
    [[nodiscard]] std::expected<void, WindowOperationError> write(const WindowKey& window, const Rect& frame) const;
    void countFailure(const WindowKey& window, const WindowOperationError& error);
    void end(const WindowKey& window, const AnimationCompletion& completion);

    std::shared_ptr<AXWindowClient> axClient_;
    RunLoop& runLoop_;
    Logger logger_;
    std::unordered_map<WindowKey, RunningAnimation> running_;
    std::unordered_map<WindowKey, int> consecutiveFailures_;
};

/// How far an animation has come on its way after this part of its time, both from 0 to 1: a quadratic ease-out.
[[nodiscard]] double easedOut(double progress);

}  // namespace velmorand
