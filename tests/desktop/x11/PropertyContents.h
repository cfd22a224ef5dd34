#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand::desktop {

/// What a property may be made to hold.
struct Content {
    std::string_view name;
    std::string_view type;
    int format = 32;
    std::vector<std::uint8_t> bytes;
};

/// The bytes of 32-bit items.
[[nodiscard]] std::vector<std::uint8_t> bytesOf(const std::vector<std::uint32_t>& items);
/// The bytes of \p count equal 32-bit items.
[[nodiscard]] std::vector<std::uint8_t> numbers(std::size_t count, std::uint32_t value);
[[nodiscard]] std::vector<std::uint8_t> text(std::string_view characters);

/// A property that the platform reads.
struct PropertyRow {
    std::string name = {};
    std::string_view property = {};
    std::string_view type = {};
    int format = 32;
    /// Numbers that tell something when type and format are right; or the name of an atom, or a text.
    std::vector<std::uint32_t> tellingNumbers = {};
    std::string_view tellingName = {};
    /// How many numbers are too few and too many, if any amount is.
    std::vector<std::size_t> wrongCounts = {};
};

void PrintTo(const PropertyRow& row, std::ostream* out);

/// Contents that say nothing, so that the property counts as absent. \p telling is what would say something.
[[nodiscard]] std::vector<Content> malformed(const PropertyRow& row, const std::vector<std::uint8_t>& telling);

/// Well-formed contents that cannot be true.
[[nodiscard]] std::vector<Content> impossible(const PropertyRow& row);

}  // namespace velmorand::desktop
