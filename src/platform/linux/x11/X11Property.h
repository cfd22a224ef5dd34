#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// A property as it came from the server: any client may have written anything into it, so nothing is taken before
/// type, format and length are checked. Plain data, so that every decoder can be tried on hostile input.
struct X11PropertyValue {
    std::uint32_t type = 0;   ///< an atom; 0 for a property that is not there
    std::uint8_t format = 0;  ///< bits of an item: 8, 16 or 32
    std::vector<std::byte> data;
};

/// How many 32-bit words of a property are read at most.
namespace x11_property_limit {
inline constexpr std::uint32_t numbers = 64;
inline constexpr std::uint32_t text = 256;
inline constexpr std::uint32_t windows = 4096;
inline constexpr std::uint32_t settings = 16384;
}  // namespace x11_property_limit

/// The 32-bit items of a property of this type; absent when the property is absent or of another type or format.
[[nodiscard]] std::optional<std::vector<std::uint32_t>> decodeItems(const X11PropertyValue& property,
                                                                    std::uint32_t type);

/// The first item; absent when there is none. More than one item is tolerated, as some window managers write two.
[[nodiscard]] std::optional<std::uint32_t> decodeFirstItem(const X11PropertyValue& property, std::uint32_t type);

/// A list of windows: without zeros and duplicates, in order.
[[nodiscard]] std::vector<std::uint32_t> decodeWindowList(const X11PropertyValue& property, std::uint32_t windowType);

/// The text of a property of one of these types, up to its first NUL; absent when it is not valid UTF-8, holds
/// control characters, is empty or longer than `longest` bytes.
[[nodiscard]] std::optional<std::string> decodeIdentifier(const X11PropertyValue& property,
                                                          std::span<const std::uint32_t> types, std::size_t longest);

/// The two parts of WM_CLASS.
struct X11WindowClass {
    std::optional<std::string> instance;
    std::optional<std::string> className;
};

/// Splits at the first NUL; a single part counts as both.
[[nodiscard]] X11WindowClass decodeWindowClass(const X11PropertyValue& property, std::uint32_t stringType);

/// Whether the text is valid UTF-8 without control characters, not empty and at most `longest` bytes.
[[nodiscard]] bool isIdentifier(std::string_view text, std::size_t longest);

}  // namespace velmorand
