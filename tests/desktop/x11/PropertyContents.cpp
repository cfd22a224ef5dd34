#include "desktop/x11/PropertyContents.h"

#include <cstring>
#include <ostream>

namespace velmorand::desktop {

std::vector<std::uint8_t> bytesOf(const std::vector<std::uint32_t>& items) {
    std::vector<std::uint8_t> bytes(items.size() * sizeof(std::uint32_t));
    if (!items.empty()) std::memcpy(bytes.data(), items.data(), bytes.size());
    return bytes;
}

std::vector<std::uint8_t> numbers(std::size_t count, std::uint32_t value) {
    return bytesOf(std::vector<std::uint32_t>(count, value));
}

std::vector<std::uint8_t> text(std::string_view characters) {
    return {characters.begin(), characters.end()};
}

void PrintTo(const PropertyRow& row, std::ostream* out) {
    *out << row.name;
}

std::vector<Content> malformed(const PropertyRow& row, const std::vector<std::uint8_t>& telling) {
    std::vector<Content> contents{{"another type", "VELMORAND_TEST", row.format, telling},
                                  {"16 bits", row.type, 16, telling},
                                  {"the other number of bits", row.type, row.format == 32 ? 8 : 32, telling},
                                  {"nothing", row.type, row.format, {}}};
    if (row.format == 8) {
        contents.push_back({"invalid UTF-8", row.type, 8, {'a', 0xff, 0xfe, 0xc0, 0x80, 0xed, 0xa0, 0x80}});
        contents.push_back({"a sequence that is cut off", row.type, 8, {'a', 0xf0, 0x9f, 0x98}});
        contents.push_back({"control characters", row.type, 8, text("a\x1b[2J\n")});
        contents.push_back({"NUL characters only", row.type, 8, {0, 0, 0}});
        contents.push_back({"far too long", row.type, 8, std::vector<std::uint8_t>(5000, 'a')});
    }
    for (const std::size_t count : row.wrongCounts)
        contents.push_back({"a wrong number of numbers", row.type, 32, numbers(count, 5)});
    return contents;
}

std::vector<Content> impossible(const PropertyRow& row) {
    if (row.format == 8) return {};
    return {{"the largest numbers", row.type, 32, numbers(12, 0xFFFFFFFF)},
            {"the smallest numbers", row.type, 32, numbers(12, 0x80000000)},
            {"zeros", row.type, 32, numbers(12, 0)},
            {"thousands of numbers", row.type, 32, numbers(5000, 0xDEADBEEF)}};
}

}  // namespace velmorand::desktop
