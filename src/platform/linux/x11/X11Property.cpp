#include "platform/linux/x11/X11Property.h"

#include "base/UnicodeText.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace velmorand {
namespace {

constexpr std::size_t longestClassPart = 256;

std::string_view textOf(const X11PropertyValue& property) {
    return {reinterpret_cast<const char*>(property.data.data()), property.data.size()};
}

std::optional<std::string> identifierOrNone(std::string_view text, std::size_t longest) {
    return isIdentifier(text, longest) ? std::optional(std::string(text)) : std::nullopt;
}

}  // namespace

std::optional<std::vector<std::uint32_t>> decodeItems(const X11PropertyValue& property, std::uint32_t type) {
    if (property.type != type || property.format != 32) return std::nullopt;
    std::vector<std::uint32_t> items(property.data.size() / sizeof(std::uint32_t));
    if (!items.empty()) std::memcpy(items.data(), property.data.data(), items.size() * sizeof(std::uint32_t));
    return items;
}

std::optional<std::uint32_t> decodeFirstItem(const X11PropertyValue& property, std::uint32_t type) {
    const auto items = decodeItems(property, type);
    if (!items || items->empty()) return std::nullopt;
    return items->front();
}

std::vector<std::uint32_t> decodeWindowList(const X11PropertyValue& property, std::uint32_t windowType) {
    std::vector<std::uint32_t> windows;
    std::vector<std::uint32_t> seen;  // sorted, so that a hostile list of thousands stays cheap
    for (const std::uint32_t window : decodeItems(property, windowType).value_or(std::vector<std::uint32_t>{})) {
        const auto place = std::ranges::lower_bound(seen, window);
        if (window == 0 || (place != seen.end() && *place == window)) continue;
        seen.insert(place, window);
        windows.push_back(window);
    }
    return windows;
}

bool isIdentifier(std::string_view text, std::size_t longest) {
    return !text.empty() && text.size() <= longest && isValidUtf8(text) && !hasControlCharacter(text);
}

std::optional<std::string> decodeIdentifier(const X11PropertyValue& property, std::span<const std::uint32_t> types,
                                            std::size_t longest) {
    if (property.format != 8 || std::ranges::count(types, property.type) == 0) return std::nullopt;
    const std::string_view text = textOf(property);
    return identifierOrNone(text.substr(0, text.find('\0')), longest);
}

X11WindowClass decodeWindowClass(const X11PropertyValue& property, std::uint32_t stringType) {
    if (property.type != stringType || property.format != 8) return {};
    const std::string_view text = textOf(property);
    const std::size_t end = text.find('\0');
    const auto instance = identifierOrNone(text.substr(0, end), longestClassPart);
    if (end == std::string_view::npos || end + 1 >= text.size()) return {instance, instance};
    const std::string_view rest = text.substr(end + 1);
    return {instance, identifierOrNone(rest.substr(0, rest.find('\0')), longestClassPart)};
}

}  // namespace velmorand
