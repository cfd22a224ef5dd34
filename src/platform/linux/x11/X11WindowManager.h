#pragma once

#include "base/Subscription.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// How a window manager is asked to place another client's window.
enum class X11PlacementMethod : std::uint8_t {
    moveResizeMessage,  ///< as a pager asks (`_NET_MOVERESIZE_WINDOW`)
    configureRequest,   ///< as the client itself asks (ConfigureWindow)
};

[[nodiscard]] X11PlacementMethod otherThan(X11PlacementMethod method);

/// The method for a window manager of this name. Some advertise the message and do not act on it as they should.
[[nodiscard]] X11PlacementMethod placementMethodFor(std::string_view name, bool advertisesMessage);

/// Whether a window manager of this name shows a desktop on each display, so that one number does not tell which
/// windows are on screen.
[[nodiscard]] bool showsSeveralDesktops(std::string_view name);

/// The window manager that runs at the moment, and what it says that it can do.
class X11WindowManager {
public:
    X11WindowManager(X11Connection& connection, const X11Atoms& atoms);

    X11WindowManager(const X11WindowManager&) = delete;
    X11WindowManager& operator=(const X11WindowManager&) = delete;
    ~X11WindowManager() = default;

    /// Whether one that follows the desktop's conventions (EWMH) runs. All else here is about the one that was found
    /// alive last.
    [[nodiscard]] bool isAlive(Deadline deadline);

    /// How it is asked to place windows: at first the method for its name, then the one that has worked.
    [[nodiscard]] X11PlacementMethod placementMethod() const { return method_; }
    /// Remembers, until another window manager runs, that this method moved a window that the other one did not.
    void setPlacementMethod(X11PlacementMethod method) { method_ = method; }

    /// Whether it writes what it adds around windows (`_NET_FRAME_EXTENTS`).
    [[nodiscard]] bool tellsFrameExtents() const { return tellsFrameExtents_; }
    /// Whether it maximises windows when it is asked to.
    [[nodiscard]] bool maximizesWindows() const { return maximizesWindows_; }
    /// Whether it shows several desktops at once; then only what is viewable is on screen.
    [[nodiscard]] bool showsSeveralDesktops() const { return showsSeveralDesktops_; }

private:
    void note(const xcb_generic_event_t& event);
    [[nodiscard]] std::optional<xcb_window_t> findCheckWindow(Deadline deadline);
    [[nodiscard]] bool readAbilities(Deadline deadline);
    void chooseMethod(std::string_view name, bool advertisesMessage);

    X11Connection& connection_;
    const X11Atoms& atoms_;
    xcb_window_t checkWindow_ = XCB_WINDOW_NONE;  // while it is known to be alive
    bool knowsAbilities_ = false;
    /// The one that the method was chosen for.
    struct Chosen {
        xcb_window_t checkWindow = XCB_WINDOW_NONE;
        std::string name;
        bool advertisesMessage = false;

        bool operator==(const Chosen&) const = default;
    };
    Chosen chosenFor_;
    X11PlacementMethod method_ = X11PlacementMethod::moveResizeMessage;
    bool tellsFrameExtents_ = true;
    bool maximizesWindows_ = true;
    bool showsSeveralDesktops_ = false;
    Subscription listener_;
};

}  // namespace velmorand
