#include "platform/simulated/SimulatedRunLoop.h"

namespace velmorand {
namespace {

/// 2025-01-01 00:00:00 UTC.
constexpr Date firstDate{std::chrono::seconds{1'735'689'600}};

}  // namespace

SimulatedRunLoop::SimulatedRunLoop()
    : mainThread_(std::this_thread::get_id()),
      now_(std::chrono::hours{1}),
      date_(firstDate),
      timerMap_(std::make_shared<std::multimap<Due, std::shared_ptr<TimerState>>>()),
      timers_(*timerMap_) {}

void SimulatedRunLoop::post(Task task) {
    posted_.push_back(std::move(task));
}

RunLoop::Timer SimulatedRunLoop::after(Duration delay, Task task) {
    return addTimer(delay, Duration::zero(), std::move(task));
}

RunLoop::Timer SimulatedRunLoop::every(Duration interval, Task task) {
    return addTimer(interval, interval, std::move(task));
}

RunLoop::Timer SimulatedRunLoop::addTimer(Duration delay, Duration interval, Task task) {
    auto timer = std::make_shared<TimerState>(std::move(task), interval);
    timers_.emplace(Due{now_ + delay, ++timersMade_}, timer);
    return Timer([map = std::weak_ptr(timerMap_), timer] {
        timer->active = false;
        const auto alive = map.lock();
        if (!alive) return;
        std::erase_if(*alive, [&](const auto& entry) { return entry.second == timer; });
    });
}

void SimulatedRunLoop::runPending() {
    while (!posted_.empty()) {
        Task task = std::move(posted_.front());
        posted_.pop_front();
        task();
    }
}

void SimulatedRunLoop::advance(Duration span) {
    const MonotonicTime end = now_ + span;
    runPending();
    while (!timers_.empty() && timers_.begin()->first.first <= end) {
        const auto due = timers_.begin();
        const MonotonicTime time = due->first.first;
        if (time > now_) block(time - now_);
        fire(due);
        runPending();
    }
    if (end > now_) block(end - now_);
}

void SimulatedRunLoop::fire(std::multimap<Due, std::shared_ptr<TimerState>>::iterator due) {
    const std::shared_ptr<TimerState> timer = due->second;
    const MonotonicTime dueTime = due->first.first;
    timers_.erase(due);
    if (timer->interval > Duration::zero()) {
        const auto missed = (now_ - dueTime) / timer->interval;
        timers_.emplace(Due{dueTime + (missed + 1) * timer->interval, ++timersMade_}, timer);
    }
    if (timer->active) timer->task();
}

void SimulatedRunLoop::block(Duration span) {
    now_ += std::chrono::duration_cast<MonotonicTime::duration>(span);
    date_ += std::chrono::duration_cast<Date::duration>(span);
}

}  // namespace velmorand
