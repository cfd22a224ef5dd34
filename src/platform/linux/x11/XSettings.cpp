#include "platform/linux/x11/XSettings.h"

#include <string_view>
#include <utility>

namespace velmorand {
namespace {

/// Kinds of settings, as they are written.
constexpr std::uint8_t integerKind = 0;
constexpr std::uint8_t stringKind = 1;
constexpr std::uint8_t colorKind = 2;

constexpr std::uint8_t leastSignificantFirst = 0;
constexpr std::uint8_t mostSignificantFirst = 1;

constexpr std::size_t colorLength = 8;

/// Takes numbers and texts off the front of some bytes; absent when there are too few left.
class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) : left_(bytes) {}

    void setByteOrder(std::uint8_t order) { isBigEndian_ = order == mostSignificantFirst; }

    [[nodiscard]] std::optional<std::span<const std::byte>> take(std::size_t length) {
        if (length > left_.size()) return std::nullopt;
        const auto taken = left_.first(length);
        left_ = left_.subspan(length);
        return taken;
    }

    template <typename Number>
    [[nodiscard]] std::optional<Number> number() {
        const auto bytes = take(sizeof(Number));
        if (!bytes) return std::nullopt;
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            const std::size_t place = isBigEndian_ ? sizeof(Number) - 1 - i : i;
            number |= std::to_integer<std::uint32_t>((*bytes)[i]) << (8 * place);
        }
        return static_cast<Number>(number);
    }

    /// A text and what fills it up to whole words.
    [[nodiscard]] std::optional<std::string_view> text(std::size_t length) {
        const auto bytes = take(length);
        if (!bytes || !take((4 - length % 4) % 4)) return std::nullopt;
        return std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    }

private:
    std::span<const std::byte> left_;
    bool isBigEndian_ = false;
};

/// Takes the value of a setting of another kind than a whole number off.
bool passOver(Reader& reader, std::uint8_t kind) {
    if (kind == colorKind) return reader.take(colorLength).has_value();
    if (kind != stringKind) return false;
    const auto length = reader.number<std::uint32_t>();
    return length && reader.text(*length).has_value();
}

/// Takes one setting off and adds it, if it is a whole number, to `settings`.
bool takeSetting(Reader& reader, XSettings& settings) {
    const auto kind = reader.number<std::uint8_t>();
    if (!kind || !reader.take(1)) return false;
    const auto nameLength = reader.number<std::uint16_t>();
    const auto name = nameLength ? reader.text(*nameLength) : std::nullopt;
    const auto serial = reader.number<std::uint32_t>();  // of its last change
    if (!name || !serial) return false;
    if (*kind != integerKind) return passOver(reader, *kind);
    const auto value = reader.number<std::int32_t>();
    return value && settings.try_emplace(std::string(*name), *value).second;
}

}  // namespace

std::optional<XSettings> decodeXSettings(std::span<const std::byte> bytes) {
    Reader reader(bytes);
    const auto order = reader.number<std::uint8_t>();
    if (!order || (*order != leastSignificantFirst && *order != mostSignificantFirst)) return std::nullopt;
    reader.setByteOrder(*order);
    const auto unused = reader.take(3);
    const auto serial = reader.number<std::uint32_t>();
    const auto count = reader.number<std::uint32_t>();
    if (!unused || !serial || !count) return std::nullopt;
    XSettings settings;
    for (std::uint32_t left = *count; left > 0; --left) {
        if (!takeSetting(reader, settings)) return std::nullopt;
    }
    return settings;
}

}  // namespace velmorand
