#pragma once

#include "platform/linux/x11/X11Property.h"

#include <xcb/xproto.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace velmorand {

/// A property of 32-bit items.
[[nodiscard]] inline X11PropertyValue itemsProperty(std::uint32_t type, const std::vector<std::uint32_t>& items) {
    X11PropertyValue property{type, 32, std::vector<std::byte>(items.size() * sizeof(std::uint32_t))};
    if (!items.empty()) std::memcpy(property.data.data(), items.data(), property.data.size());
    return property;
}

[[nodiscard]] inline X11PropertyValue cardinals(const std::vector<std::uint32_t>& items) {
    return itemsProperty(XCB_ATOM_CARDINAL, items);
}

/// A property of bytes.
[[nodiscard]] inline X11PropertyValue textProperty(std::uint32_t type, std::string_view text) {
    const auto* first = reinterpret_cast<const std::byte*>(text.data());
    return {type, 8, std::vector<std::byte>(first, first + text.size())};
}

/// The same property with another claim of how many bits an item has.
[[nodiscard]] inline X11PropertyValue withFormat(std::uint8_t format, X11PropertyValue property) {
    property.format = format;
    return property;
}

/// The same property, cut off after `bytes`.
[[nodiscard]] inline X11PropertyValue cutTo(std::size_t bytes, X11PropertyValue property) {
    property.data.resize(bytes);
    return property;
}

}  // namespace velmorand
