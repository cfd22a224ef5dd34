#pragma once

#include "base/Subscription.h"

#include <cstdint>
#include <functional>
#include <map>

namespace velmorand {

class QtRunLoop;

/// Tells when processes end. It holds on to each process itself, not to its number, so a number that is used again
/// is never mistaken for the process it belonged to.
class ProcessWatcher {
public:
    /// `ended` is called once for each watched process that ends, in a turn of the main loop.
    ProcessWatcher(QtRunLoop& runLoop, std::function<void(std::int32_t pid)> ended);
    ~ProcessWatcher();

    ProcessWatcher(const ProcessWatcher&) = delete;
    ProcessWatcher& operator=(const ProcessWatcher&) = delete;

    /// Watches the process that has this number now; one that is watched already, or has ended, is ignored.
    void watch(std::int32_t pid);

    /// Whether the process is watched and has not ended, as of now: its end may not have been told yet.
    [[nodiscard]] bool isRunning(std::int32_t pid) const;

private:
    struct Watched {
        int file = -1;  // a pidfd
        Subscription subscription;
    };

    void processEnded(std::int32_t pid, int file);

    QtRunLoop& runLoop_;
    std::function<void(std::int32_t)> ended_;
    /// Two of one number: a process whose end has not been told yet, and the one that got its number.
    std::multimap<std::int32_t, Watched> watched_;
};

}  // namespace velmorand
