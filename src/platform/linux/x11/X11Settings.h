#pragma once

#include "base/Subscription.h"
#include "platform/RunLoop.h"
#include "platform/linux/ReducedMotion.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XSettings.h"

#include <optional>
#include <string>

namespace velmorand {

/// What the settings manager of the X session publishes (XSETTINGS): read at the start, and again when it changes and
/// when a manager comes or goes. Without one nothing is set.
class X11Settings final : public MotionSource {
public:
    /// Both must outlive it. The connection must have been asked for the structure events of the root window, on which
    /// a new manager is announced, and its events must be handled by the loop.
    X11Settings(X11Connection& connection, RunLoop& runLoop);

    /// By "Gtk/EnableAnimations", which the desktops set and all toolkits follow.
    [[nodiscard]] std::optional<bool> reducesMotion() override;

private:
    void handle(const xcb_generic_event_t& event);
    [[nodiscard]] bool concerns(const xcb_generic_event_t& event) const;
    void lookSoon();
    void look(Deadline deadline);
    [[nodiscard]] std::optional<X11Failure> internAtoms(Deadline deadline);
    [[nodiscard]] std::optional<X11Failure> findManager(Deadline deadline);

    X11Connection& connection_;
    RunLoop& runLoop_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t managerMessage_ = XCB_ATOM_NONE;
    xcb_atom_t property_ = XCB_ATOM_NONE;  // and its type
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    XSettings settings_;
    RunLoop::Timer look_;
    bool looks_ = false;
    RunLoop::Timer retry_;
    Subscription handler_;
};

}  // namespace velmorand
