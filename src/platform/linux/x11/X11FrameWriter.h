#pragma once

#include "base/Rect.h"
#include "base/Subscription.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11WindowFacts.h"

#include <cstdint>
#include <expected>
#include <optional>

namespace velmorand {

/// Places windows through the window manager and knows when it has acted. Rectangles are in root coordinates and
/// mean what the user sees of a window.
class X11FrameWriter {
public:
    X11FrameWriter(X11Connection& connection, const X11Atoms& atoms);
    ~X11FrameWriter();

    X11FrameWriter(const X11FrameWriter&) = delete;
    X11FrameWriter& operator=(const X11FrameWriter&) = delete;

    /// Whether the window manager still owes the answer to an earlier write: it is frozen, and what was written
    /// lands when it goes on. Nothing more is sent to it meanwhile.
    [[nodiscard]] bool isWaitingForWindowManager();

    /// Another window manager runs now, which owes nothing.
    void windowManagerChanged();

    /// Puts the window back to normal state where needed, places it with one request and waits until the window
    /// manager has acted. Answers the frame the window then has. A window in normal state that is there already is
    /// left alone.
    [[nodiscard]] std::expected<Rect, AXError> place(xcb_window_t window, const Rect& visible, Deadline deadline);

    /// Reads the window; right after it was put back to normal, the client may be about to declare its shadow
    /// anew, which a settled reading waits for shortly.
    [[nodiscard]] std::expected<X11WindowFacts, AXError> facts(xcb_window_t window, Reading reading, Deadline deadline);

private:
    /// A window that was put back to normal and placed a moment ago. Its client declares its shadow again some
    /// milliseconds later, by which the placed frame is then off.
    struct FreshlyNormal {
        xcb_window_t window;
        Rect visible;
        Deadline until;
        Deadline readUntil;
        bool shadowDeclared = false;
    };

    [[nodiscard]] std::expected<void, AXError> putBackToNormal(xcb_window_t window, const X11WindowFacts& facts,
                                                               Deadline deadline);
    [[nodiscard]] std::expected<void, AXError> waitForWindowManager(Deadline deadline);
    [[nodiscard]] std::expected<void, AXError> barrier(Deadline deadline);
    [[nodiscard]] std::expected<Rect, AXError> placeClient(xcb_window_t window, const Rect& client, Deadline deadline);
    void sendPlacement(xcb_window_t window, const Rect& client);
    void sendStateRemoval(xcb_window_t window, xcb_atom_t first, xcb_atom_t second);
    void sendToRoot(xcb_window_t window, xcb_atom_t message, const xcb_client_message_data_t& data);
    void waitForShadow(xcb_window_t window, Deadline deadline);
    void noteBarrierAnswer(std::uint32_t width);
    void noteEvent(const xcb_generic_event_t& event);
    void reassert(const xcb_generic_event_t& event);
    [[nodiscard]] bool isShadowDeclaration(const xcb_generic_event_t& event, const FreshlyNormal& placed) const;

    X11Connection& connection_;
    const X11Atoms& atoms_;
    xcb_window_t helper_;
    std::uint32_t barriersSent_ = 0;
    std::uint32_t barriersAnswered_ = 0;
    std::optional<FreshlyNormal> freshlyNormal_;
    Subscription listener_;
    Subscription handler_;
};

}  // namespace velmorand
