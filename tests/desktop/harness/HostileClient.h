#pragma once

#include "desktop/harness/XConnection.h"

#include <span>

namespace velmorand::desktop {

/// What any other program may do to a window that is not its own. Each call returns when the server has done it; on a
/// window that is gone it does nothing.
class HostileClient {
public:
    /// \p connection must outlive the object.
    explicit HostileClient(XConnection& connection) : connection_(connection) {}

    /// Writes a property as it is given, malformed or not. \p format is 8, 16 or 32 bits per item; incomplete items at
    /// the end of \p bytes are left out.
    void setProperty(xcb_window_t window, std::string_view name, std::string_view type, int format,
                     std::span<const std::uint8_t> bytes);
    /// Items of 32 bits.
    void setNumbers(xcb_window_t window, std::string_view name, std::string_view type,
                    std::span<const std::uint32_t> items);
    /// Makes a property of \p bytes bytes, all of them 'a', in pieces that the server accepts.
    void fillProperty(xcb_window_t window, std::string_view name, std::string_view type, int format, std::size_t bytes);
    void deleteProperty(xcb_window_t window, std::string_view name);

    /// Destroys the window under the feet of its client.
    void destroyWindow(xcb_window_t window);
    /// Cuts the client that owns the window off the server, which destroys all its windows.
    void killClient(xcb_window_t window);

private:
    XConnection& connection_;
};

}  // namespace velmorand::desktop
