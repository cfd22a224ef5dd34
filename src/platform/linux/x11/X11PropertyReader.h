#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"

#include <expected>

namespace velmorand {

/// A property that was asked for and not yet waited for.
struct X11PropertyRequest {
    xcb_get_property_cookie_t cookie;
};

/// Asks for at most `longestInWords` 32-bit words of a property, whatever its real length.
[[nodiscard]] inline X11PropertyRequest requestProperty(X11Connection& connection, xcb_window_t window,
                                                        xcb_atom_t property, std::uint32_t longestInWords) {
    return {xcb_get_property(connection.raw(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestInWords)};
}

/// Waits for a property. One that is not there is a value of type 0, not a failure.
[[nodiscard]] std::expected<X11PropertyValue, X11Failure> readProperty(X11Connection& connection,
                                                                       X11PropertyRequest request, Deadline deadline);

/// Asks and waits; an empty value when it cannot be read.
[[nodiscard]] X11PropertyValue readPropertyNow(X11Connection& connection, xcb_window_t window, xcb_atom_t property,
                                               std::uint32_t longestInWords, Deadline deadline);

}  // namespace velmorand
