#pragma once

#include "base/Rect.h"
#include "base/Subscription.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Barrier.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowFacts.h"
#include "platform/linux/x11/X11WindowManager.h"
#include "platform/linux/x11/X11WindowRequests.h"

#include <expected>
#include <optional>

namespace velmorand {

/// Places windows through the window manager and knows when it has acted. Rectangles are in root coordinates and
/// mean what the user sees of a window.
class X11FrameWriter {
public:
    /// All must outlive it.
    X11FrameWriter(X11Connection& connection, const X11Atoms& atoms, X11WindowManager& manager);

    X11FrameWriter(const X11FrameWriter&) = delete;
    X11FrameWriter& operator=(const X11FrameWriter&) = delete;
    ~X11FrameWriter() = default;

    /// Whether the window manager still owes the answer to an earlier write: it is frozen, and what was written
    /// lands when it goes on. Nothing more is sent to it meanwhile.
    [[nodiscard]] bool isWaitingForWindowManager() { return barrier_.isOwed(); }

    /// Another window manager runs now, which owes nothing.
    void windowManagerChanged();

    /// Puts the window back to normal state where needed, places it with one request and waits until the window
    /// manager has acted; what ignores the request is asked in other ways. Answers the frame the window then has. A
    /// window in normal state that is there already is left alone.
    [[nodiscard]] std::expected<Rect, AXError> place(xcb_window_t window, const Rect& frame, Deadline deadline);

    /// Reads the window; right after it was put back to normal, the client may be about to declare its shadow
    /// anew, which a settled reading waits for shortly.
    [[nodiscard]] std::expected<X11WindowFacts, AXError> facts(xcb_window_t window, Reading reading, Deadline deadline);

private:
    using FactsOrError = std::expected<X11WindowFacts, AXError>;

    /// A window that was put back to normal and placed a moment ago. Some milliseconds later its client declares its
    /// shadow again, by which the placed frame is then off, or takes the size that it remembers.
    struct FreshlyNormal {
        xcb_window_t window;
        Size normalSize;  ///< that it had in normal state
        Rect visible;     ///< as it was asked for
        /// As it came to be when the window manager had acted.
        std::optional<X11FrameGeometry> landed;
        Deadline until;
        Deadline readUntil;
        bool shadowDeclared = false;
    };

    /// A window that stayed where it was in every way of asking.
    struct Refusal {
        xcb_window_t window;
        Rect visible;
        Rect wanted;

        bool operator==(const Refusal&) const = default;
    };

    [[nodiscard]] FactsOrError read(xcb_window_t window, Deadline deadline);
    [[nodiscard]] FactsOrError putBackToNormal(xcb_window_t window, const X11WindowFacts& facts, const Rect& visible,
                                               Deadline deadline);
    [[nodiscard]] FactsOrError placeOnce(xcb_window_t window, const X11WindowFacts& facts, const Rect& visible,
                                         X11PlacementMethod method, Deadline deadline);
    [[nodiscard]] FactsOrError request(xcb_window_t window, const X11WindowFacts& facts, const Rect& client,
                                       X11PlacementMethod method, Deadline deadline);
    [[nodiscard]] FactsOrError placeWithShadowToldAgain(xcb_window_t window, const X11WindowFacts& facts,
                                                        const Rect& visible, Deadline deadline);
    [[nodiscard]] FactsOrError placeInOtherWays(xcb_window_t window, const X11WindowFacts& facts, const Rect& visible,
                                                Deadline deadline);
    [[nodiscard]] FactsOrError placeAfterMaximizing(xcb_window_t window, const X11WindowFacts& facts,
                                                    const Rect& visible, Deadline deadline);
    void waitForShadow(xcb_window_t window, Deadline deadline);
    void noteEvent(const xcb_generic_event_t& event);
    void reassert(const xcb_generic_event_t& event);
    [[nodiscard]] bool concerns(const xcb_generic_event_t& event, const FreshlyNormal& placed) const;
    [[nodiscard]] bool isShadowDeclaration(const xcb_generic_event_t& event, const FreshlyNormal& placed) const;

    X11Connection& connection_;
    const X11Atoms& atoms_;
    X11WindowManager& manager_;
    X11Barrier barrier_;
    X11WindowRequests requests_;
    std::optional<FreshlyNormal> freshlyNormal_;
    std::optional<Refusal> lastRefusal_;
    Subscription listener_;
    Subscription handler_;
};

/// Whether a window that draws a shadow is kept where its shadow, too, is on screen: it missed the wanted frame on no
/// side by more than the shadow's width, and nothing known of it stood in the way.
[[nodiscard]] bool isKeptByItsShadow(const X11WindowFacts& before, const X11WindowFacts& after, const Rect& visible);

/// Whether the window manager did nothing about a request to make the window look like `visible`, although nothing
/// that is known of the window stood in the way. `before` and `after` were read around the request.
[[nodiscard]] bool isIgnored(const X11WindowFacts& before, const X11WindowFacts& after, const Rect& visible);

}  // namespace velmorand
