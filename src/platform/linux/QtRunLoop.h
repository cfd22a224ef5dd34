#pragma once

#include "base/Subscription.h"
#include "platform/RunLoop.h"

#include <QObject>
#include <functional>
#include <thread>

namespace velmorand {

/// The main loop on Qt's event loop. Besides the tasks and timers of every platform it watches files. The
/// application object of Qt must exist while it is used.
class QtRunLoop final : public RunLoop {
public:
    QtRunLoop();
    ~QtRunLoop() override;

    void post(Task task) override;
    [[nodiscard]] Timer after(Duration delay, Task task) override;
    [[nodiscard]] Timer every(Duration interval, Task task) override;
    [[nodiscard]] MonotonicTime now() const override;
    [[nodiscard]] Date date() const override;
    [[nodiscard]] bool isMainThread() const override;

    /// Calls `readable` whenever the file has something to read, until the subscription ends. The file stays the
    /// caller's and must stay open that long.
    [[nodiscard]] Subscription watch(int file, std::function<void()> readable);

    /// Calls `aboutToSleep` each time before the loop waits for something to happen.
    [[nodiscard]] Subscription beforeSleeping(std::function<void()> aboutToSleep);

private:
    std::thread::id mainThread_;
    QObject context_;  // what is posted dies with it
};

}  // namespace velmorand
