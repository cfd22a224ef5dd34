#pragma once

#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WorkAreas.h"

#include <optional>
#include <set>
#include <span>
#include <vector>

namespace velmorand {

/// The windows that reserve an edge of the screen, and what they reserve.
class X11Panels {
public:
    X11Panels(X11Connection& connection, const X11Atoms& atoms) : connection_(connection), atoms_(atoms) {}

    X11Panels(const X11Panels&) = delete;
    X11Panels& operator=(const X11Panels&) = delete;
    ~X11Panels() = default;

    /// What the panels on screen reserve, read afresh; while the server does not answer, what they reserved before.
    /// `root` is the size of the root window. A panel of another desktop than the current one does not count where one
    /// desktop is shown; without a window manager there is none, whatever properties say, and some show several.
    [[nodiscard]] const std::vector<X11Strut>& struts(const Size& root, bool showsOneDesktop, Deadline deadline);

    /// Whether the event may change the answer of `struts`.
    [[nodiscard]] bool concerns(const xcb_generic_event_t& event) const;

private:
    /// What was asked for of a window that may be a panel.
    struct Candidate;
    /// A window with bands, and whether it is on screen.
    struct Panel {
        std::vector<X11Strut> struts;
        bool viewable = false;
        std::optional<std::uint32_t> desktop;
    };

    /// Answers whether there is a panel that the last reading did not know.
    [[nodiscard]] bool readPanels(const Size& root, bool showsOneDesktop, Deadline deadline);
    [[nodiscard]] std::vector<xcb_window_t> windowsThatMayBePanels(Deadline deadline);
    [[nodiscard]] std::vector<xcb_window_t> framed(std::span<const xcb_window_t> frames,
                                                   std::span<const xcb_window_t> listed, Deadline deadline);
    [[nodiscard]] std::vector<xcb_window_t> children(xcb_query_tree_cookie_t cookie, Deadline deadline);
    [[nodiscard]] Candidate ask(xcb_window_t window);
    [[nodiscard]] std::optional<Panel> answer(const Candidate& candidate, const Size& root, Deadline deadline);
    void watch(xcb_window_t panel);

    X11Connection& connection_;
    const X11Atoms& atoms_;
    std::set<xcb_window_t> panels_;  // those of the last reading, on screen or not
    std::vector<X11Strut> struts_;
};

}  // namespace velmorand
