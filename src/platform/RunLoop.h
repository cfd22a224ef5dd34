#pragma once

#include "base/Subscription.h"

#include <chrono>
#include <functional>

namespace velmorand {

/// A moment of the monotonic clock.
using MonotonicTime = std::chrono::steady_clock::time_point;
/// A moment of the wall clock, which the user can set.
using Date = std::chrono::system_clock::time_point;
/// A span of time.
using Duration = std::chrono::nanoseconds;

/// The main loop: the only source of later work and of time. `post` may be called from any thread; everything
/// else is for the main thread.
class RunLoop {
public:
    using Task = std::move_only_function<void()>;
    /// Ends the timer when it dies or is cancelled; a cancelled timer never fires again.
    using Timer = Subscription;

    virtual ~RunLoop() = default;
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;

    /// Runs `task` in a later turn, after everything posted before.
    virtual void post(Task task) = 0;

    /// Runs `task` once, not earlier than `delay` from now.
    [[nodiscard]] virtual Timer after(Duration delay, Task task) = 0;

    /// Runs `task` at every multiple of `interval` from now. A tick that comes late is run once; the ticks that
    /// were missed meanwhile are skipped.
    [[nodiscard]] virtual Timer every(Duration interval, Task task) = 0;

    [[nodiscard]] virtual MonotonicTime now() const = 0;
    [[nodiscard]] virtual Date date() const = 0;
    [[nodiscard]] virtual bool isMainThread() const = 0;

protected:
    RunLoop() = default;
};

}  // namespace velmorand
