#include "desktop/harness/HostileClient.h"

#include <algorithm>

namespace velmorand::desktop {

void HostileClient::setProperty(xcb_window_t window, std::string_view name, std::string_view type, int format,
                                std::span<const std::uint8_t> bytes) {
    const auto items = static_cast<std::uint32_t>(bytes.size() / (static_cast<std::size_t>(format) / 8));
    xcb_change_property(connection_.raw(), XCB_PROP_MODE_REPLACE, window, connection_.atom(name),
                        connection_.atom(type), static_cast<std::uint8_t>(format), items, bytes.data());
    connection_.synchronise();
}

void HostileClient::setNumbers(xcb_window_t window, std::string_view name, std::string_view type,
                               std::span<const std::uint32_t> items) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(items.data());
    setProperty(window, name, type, 32, {bytes, items.size_bytes()});
}

void HostileClient::fillProperty(xcb_window_t window, std::string_view name, std::string_view type, int format,
                                 std::size_t bytes) {
    constexpr std::size_t longestPiece = std::size_t{4} << 20U;
    const std::vector<std::uint8_t> piece(longestPiece, 'a');
    setProperty(window, name, type, format, {});
    for (std::size_t left = bytes; left > 0; left -= std::min(left, longestPiece)) {
        const auto items = std::min(left, longestPiece) / (static_cast<std::size_t>(format) / 8);
        xcb_change_property(connection_.raw(), XCB_PROP_MODE_APPEND, window, connection_.atom(name),
                            connection_.atom(type), static_cast<std::uint8_t>(format),
                            static_cast<std::uint32_t>(items), piece.data());
    }
    connection_.synchronise();
}

void HostileClient::deleteProperty(xcb_window_t window, std::string_view name) {
    xcb_delete_property(connection_.raw(), window, connection_.atom(name));
    connection_.synchronise();
}

void HostileClient::destroyWindow(xcb_window_t window) {
    xcb_destroy_window(connection_.raw(), window);
    connection_.synchronise();
}

void HostileClient::killClient(xcb_window_t window) {
    xcb_kill_client(connection_.raw(), window);
    connection_.synchronise();
}

}  // namespace velmorand::desktop
