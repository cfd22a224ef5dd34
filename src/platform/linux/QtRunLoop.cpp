#include "platform/linux/QtRunLoop.h"

#include <QAbstractEventDispatcher>
#include <QMetaObject>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <utility>

namespace velmorand {
namespace {

constexpr Duration oneMillisecond = std::chrono::milliseconds{1};

/// The toolkit counts in whole milliseconds; rounding up keeps a timer from firing early.
std::chrono::milliseconds ceilToMilliseconds(Duration delay) {
    return std::max(std::chrono::ceil<std::chrono::milliseconds>(delay), std::chrono::milliseconds{0});
}

/// Qt objects may be dropped from inside their own signal, so they are deleted in a later turn.
struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
};

template <typename Object, typename... Arguments>
std::shared_ptr<Object> makeQtObject(Arguments&&... arguments) {
    return std::shared_ptr<Object>(new Object(std::forward<Arguments>(arguments)...), DeleteLater{});
}

/// A timer that knows when its next tick is due, so that ticks keep to multiples of the interval.
struct TickingTimer {
    std::shared_ptr<QTimer> timer = makeQtObject<QTimer>();
    RunLoop::Task task;
    Duration interval{};
    MonotonicTime due;
};

void scheduleNextTick(TickingTimer& ticking) {
    const auto now = std::chrono::steady_clock::now();
    ticking.due += ticking.interval;
    if (ticking.due <= now) ticking.due += ((now - ticking.due) / ticking.interval + 1) * ticking.interval;
    ticking.timer->start(ceilToMilliseconds(ticking.due - now));
}

}  // namespace

QtRunLoop::QtRunLoop() : mainThread_(std::this_thread::get_id()) {}

QtRunLoop::~QtRunLoop() = default;

void QtRunLoop::post(Task task) {
    auto shared = std::make_shared<Task>(std::move(task));  // the toolkit copies what it is given
    QMetaObject::invokeMethod(&context_, [shared] { (*shared)(); }, Qt::QueuedConnection);
}

RunLoop::Timer QtRunLoop::after(Duration delay, Task task) {
    auto timer = makeQtObject<QTimer>();
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer.get(), &QTimer::timeout,
                     [shared = std::make_shared<Task>(std::move(task))] { (*shared)(); });
    timer->start(ceilToMilliseconds(delay));
    return Timer([timer] { timer->stop(); });
}

RunLoop::Timer QtRunLoop::every(Duration interval, Task task) {
    auto ticking = std::make_shared<TickingTimer>();
    ticking->task = std::move(task);
    ticking->interval = std::max(interval, oneMillisecond);
    ticking->due = std::chrono::steady_clock::now();
    ticking->timer->setSingleShot(true);
    ticking->timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(ticking->timer.get(), &QTimer::timeout, [weak = std::weak_ptr(ticking)] {
        const auto alive = weak.lock();
        if (!alive) return;
        scheduleNextTick(*alive);
        alive->task();
    });
    scheduleNextTick(*ticking);
    return Timer([ticking] { ticking->timer->stop(); });
}

MonotonicTime QtRunLoop::now() const {
    return std::chrono::steady_clock::now();
}

Date QtRunLoop::date() const {
    return std::chrono::system_clock::now();
}

bool QtRunLoop::isMainThread() const {
    return std::this_thread::get_id() == mainThread_;
}

Subscription QtRunLoop::watch(int file, std::function<void()> readable) {
    auto notifier = makeQtObject<QSocketNotifier>(file, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, std::move(readable));
    return Subscription([notifier] { notifier->setEnabled(false); });
}

Subscription QtRunLoop::beforeSleeping(std::function<void()> aboutToSleep) {
    const auto connection = QObject::connect(QAbstractEventDispatcher::instance(),
                                             &QAbstractEventDispatcher::aboutToBlock, std::move(aboutToSleep));
    return Subscription([connection] { QObject::disconnect(connection); });
}

}  // namespace velmorand
