#include "platform/linux/x11/X11PropertyReader.h"

#include <cstring>

namespace velmorand {

std::expected<X11PropertyValue, X11Failure> readProperty(X11Connection& connection, X11PropertyRequest request,
                                                         Deadline deadline) {
    const auto reply = connection.reply<xcb_get_property_reply_t>(request.cookie, deadline);
    if (!reply) return std::unexpected(reply.error());
    const xcb_get_property_reply_t& property = **reply;
    X11PropertyValue value{property.type, property.format, {}};
    const auto size = static_cast<std::size_t>(xcb_get_property_value_length(&property));
    value.data.resize(size);
    if (size > 0) std::memcpy(value.data.data(), xcb_get_property_value(&property), size);
    return value;
}

X11PropertyValue readPropertyNow(X11Connection& connection, xcb_window_t window, xcb_atom_t property,
                                 std::uint32_t longestInWords, Deadline deadline) {
    return readProperty(connection, requestProperty(connection, window, property, longestInWords), deadline)
        .value_or(X11PropertyValue{});
}

}  // namespace velmorand
