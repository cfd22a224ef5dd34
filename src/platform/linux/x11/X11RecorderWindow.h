#pragma once

#include "base/Rect.h"
#include "platform/linux/RecorderPicture.h"
#include "platform/linux/x11/X11Atoms.h"
#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace velmorand {

/// The window of a recorder panel: a dialog of fixed size above the others that shows a picture. The server itself
/// draws the picture again wherever it was covered. The window goes with the object. Nothing here waits
/// for an answer.
class X11RecorderWindow {
public:
    /// Makes the window, centred in `area` (root coordinates), and asks for it to be shown. Both references must outlive
    /// it.
    X11RecorderWindow(X11Connection& connection, const X11Atoms& atoms, const Rect& area, std::string_view title,
                      const RecorderPicture& picture);
    ~X11RecorderWindow();

    X11RecorderWindow(const X11RecorderWindow&) = delete;
    X11RecorderWindow& operator=(const X11RecorderWindow&) = delete;

    [[nodiscard]] xcb_window_t id() const { return window_; }

    void setTitle(std::string_view title);
    /// Shows another picture; the window takes its size.
    void setPicture(const RecorderPicture& picture);

    /// Asks the window manager, as on the user's behalf, to make it the active window; without a window manager it takes
    /// the focus itself. `time` is of the last event.
    void activate(bool hasWindowManager, xcb_timestamp_t time);
    /// Tells the window manager that the program is alive: it sent `ping` to ask.
    void answerPing(const xcb_client_message_event_t& ping);

private:
    void describe();
    void setSizeHints();
    void setBytes(xcb_atom_t property, xcb_atom_t type, std::string_view bytes);
    void setWords(xcb_atom_t property, xcb_atom_t type, std::span<const std::uint32_t> words);
    void sendToRoot(const xcb_client_message_event_t& message);

    X11Connection& connection_;
    const X11Atoms& atoms_;
    xcb_window_t window_;
    std::uint16_t width_;
    std::uint16_t height_;
};

}  // namespace velmorand
