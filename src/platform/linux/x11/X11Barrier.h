#pragma once

#include "base/Subscription.h"
#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <expected>

namespace velmorand {

/// Tells when the window manager has read everything that was sent to it. It keeps a window that is never mapped, so
/// that no window manager manages it: a request to configure that window gets in line behind the earlier requests, and
/// every window manager lets it pass. Main thread only.
class X11Barrier {
public:
    explicit X11Barrier(X11Connection& connection);
    ~X11Barrier();

    X11Barrier(const X11Barrier&) = delete;
    X11Barrier& operator=(const X11Barrier&) = delete;

    /// Waits until the window manager has acted on what was sent before; fails with `cannotComplete`.
    [[nodiscard]] std::expected<void, AXError> wait(Deadline deadline);

    /// Whether the window manager still owes the answer to an earlier wait that was given up: it is frozen, and what
    /// was sent lands when it goes on.
    [[nodiscard]] bool isOwed();

    /// Another window manager runs now, which owes nothing.
    void windowManagerChanged();

private:
    [[nodiscard]] std::expected<void, AXError> pass(Deadline deadline);
    void note(const xcb_generic_event_t& event);

    X11Connection& connection_;
    xcb_window_t helper_;
    std::uint32_t sent_ = 0;
    std::uint32_t answered_ = 0;
    Subscription listener_;
};

}  // namespace velmorand
