#pragma once

#include "base/Subscription.h"

#include <functional>

namespace velmorand {

/// Tells that the session is locked: what has the keyboard for itself must give it back, or the lock screen cannot have
/// it. Main thread only.
class SessionLock {
public:
    virtual ~SessionLock() = default;
    SessionLock(const SessionLock&) = delete;
    SessionLock& operator=(const SessionLock&) = delete;

    /// Calls `locked`, in a turn of the main loop, each time the session is locked or is about to be.
    [[nodiscard]] virtual Subscription whenLocked(std::function<void()> locked) = 0;

protected:
    SessionLock() = default;
};

}  // namespace velmorand
