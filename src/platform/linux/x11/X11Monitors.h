#pragma once

#include "base/Subscription.h"
#include "platform/Displays.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Panels.h"
#include "platform/linux/x11/X11WorkAreas.h"

#include <expected>
#include <map>
#include <vector>

namespace velmorand {

/// The monitors of the X screen, and what panels leave free of them.
class X11Monitors {
public:
    X11Monitors(X11Connection& connection, const X11Atoms& atoms);

    X11Monitors(const X11Monitors&) = delete;
    X11Monitors& operator=(const X11Monitors&) = delete;
    ~X11Monitors() = default;

    /// The displays in the window server's coordinates, read afresh; while the server does not answer, as they were.
    /// Panels of other desktops than the current one count only where not exactly one desktop is shown.
    [[nodiscard]] std::vector<DisplayDescription> displays(bool showsOneDesktop, Deadline deadline);

    /// Where the accessibility space begins: the top-left corner of the primary monitor, in root coordinates.
    [[nodiscard]] Point origin(Deadline deadline);

    /// Whether the event may change the answer of `displays`.
    [[nodiscard]] bool concerns(const xcb_generic_event_t& event) const;

private:
    void readMonitors(Deadline deadline);
    [[nodiscard]] std::expected<std::vector<X11Monitor>, X11Failure> askServer(Deadline deadline);
    [[nodiscard]] std::expected<std::string, X11Failure> nameOf(xcb_atom_t atom, Deadline deadline);

    X11Connection& connection_;
    X11Panels panels_;
    std::uint8_t randrEvents_ = 0;
    Size rootSize_;
    std::vector<X11Monitor> monitors_;
    bool monitorsAreCurrent_ = false;
    std::map<xcb_atom_t, std::string> names_;
    Subscription listener_;
};

}  // namespace velmorand
