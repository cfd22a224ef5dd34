#pragma once

#include "base/Subscription.h"
#include "platform/RunLoop.h"
#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace velmorand {

/// The whole keyboard for one window of ours, also the keys that other programs have for themselves. Another client may
/// have it at the moment, as an open menu does, so it is asked for again for a while. Ends with the object, and with the
/// program.
class X11KeyboardGrab {
public:
    /// Why the server did not give it, as the number of the reply (`GrabStatus`); absent when it did not answer.
    using Refusal = std::function<void(std::optional<int> status)>;

    /// Both must outlive it. `refused` is called in a turn of the main loop when the keyboard cannot be had in the end.
    X11KeyboardGrab(X11Connection& connection, RunLoop& runLoop, xcb_window_t window, Refusal refused);
    ~X11KeyboardGrab() { release(); }

    X11KeyboardGrab(const X11KeyboardGrab&) = delete;
    X11KeyboardGrab& operator=(const X11KeyboardGrab&) = delete;

    /// Asks for it now, and again until it is given or the time is over. Only the first call counts.
    void acquire();
    /// Gives it back at once, or stops asking for it. It is not asked for any more.
    void release();

private:
    enum class Phase : std::uint8_t { idle, asking, held, refused, released };

    void ask();

    X11Connection& connection_;
    RunLoop& runLoop_;
    xcb_window_t window_;
    Refusal refused_;
    Phase phase_ = Phase::idle;
    MonotonicTime giveUp_;
    RunLoop::Timer again_;
};

}  // namespace velmorand
