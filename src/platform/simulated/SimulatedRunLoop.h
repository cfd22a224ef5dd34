#pragma once

#include "platform/RunLoop.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <thread>
#include <utility>

namespace velmorand {

/// A main loop whose time moves only when it is told to. The wall clock starts at a fixed date and runs with the
/// monotonic one unless it is set.
class SimulatedRunLoop final : public RunLoop {
public:
    SimulatedRunLoop();

    void post(Task task) override;
    [[nodiscard]] Timer after(Duration delay, Task task) override;
    [[nodiscard]] Timer every(Duration interval, Task task) override;
    [[nodiscard]] MonotonicTime now() const override { return now_; }
    [[nodiscard]] Date date() const override { return date_; }
    [[nodiscard]] bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }

    /// Runs what is posted, and what that posts, until nothing is left. Time stands still.
    void runPending();

    /// Lets `span` pass: runs what is posted, and every timer that falls due, each at its own time.
    void advance(Duration span);

    /// Lets `span` pass inside a call that blocks the main thread: nothing runs meanwhile, and timers that fell
    /// due come late.
    void block(Duration span);

    /// Sets the wall clock, as a user may; the monotonic clock does not notice.
    void setDate(Date date) { date_ = date; }

    /// Whether nothing is posted and no timer is set: left alone, nothing would ever happen again.
    [[nodiscard]] bool isIdle() const { return posted_.empty() && timers_.empty(); }

    /// How many timers are set.
    [[nodiscard]] std::size_t timerCount() const { return timers_.size(); }

private:
    struct TimerState {
        Task task;
        Duration interval{};  // zero for one that fires once
        bool active = true;
    };
    using Due = std::pair<MonotonicTime, std::uint64_t>;  // the number keeps timers of one instant in order

    Timer addTimer(Duration delay, Duration interval, Task task);
    void fire(std::multimap<Due, std::shared_ptr<TimerState>>::iterator due);

    std::thread::id mainThread_;
    MonotonicTime now_;
    Date date_;
    std::deque<Task> posted_;
    std::shared_ptr<std::multimap<Due, std::shared_ptr<TimerState>>> timerMap_;
    std::multimap<Due, std::shared_ptr<TimerState>>& timers_;
    std::uint64_t timersMade_ = 0;
};

}  // namespace velmorand
