#include "shortcuts/KeyboardShortcutCoding.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

namespace velmorand {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view keyCodeKey = "keyCode";
constexpr std::string_view modifiersKey = "modifiers";
constexpr std::string_view keyLabelKey = "keyDisplay";

std::unexpected<DecodingError> fail(std::string description) {
    return std::unexpected(DecodingError{std::move(description)});
}

std::expected<const Json*, DecodingError> member(const Json& document, std::string_view key) {
    if (!document.is_object()) return fail("The shortcut is not an object.");
    const auto found = document.find(key);
    if (found == document.end()) return fail(fmt::format("The key \"{}\" is missing.", key));
    return &*found;
}

std::expected<std::uint32_t, DecodingError> unsignedMember(const Json& document, std::string_view key) {
    const auto value = member(document, key);
    if (!value) return std::unexpected(value.error());
    constexpr auto largest = std::numeric_limits<std::uint32_t>::max();
    const Json& number = **value;
    if (number.is_number_unsigned() && number.get<std::uint64_t>() <= largest) return number.get<std::uint32_t>();
    if (number.is_number_integer() && !number.is_number_unsigned()) {
        const auto integer = number.get<std::int64_t>();
        if (integer >= 0 && integer <= largest) return static_cast<std::uint32_t>(integer);
    }
    if (number.is_number_float()) {
        const auto real = number.get<double>();
        if (real >= 0 && real <= largest && std::trunc(real) == real) return static_cast<std::uint32_t>(real);
    }
    return fail(fmt::format("The value of \"{}\" is not an unsigned 32-bit number.", key));
}

}  // namespace

Json encodeHotKey(const HotKey& hotKey) {
    return {{keyCodeKey, hotKey.keyCode}, {modifiersKey, hotKey.modifiers.rawValue()}};
}

Json encodeKeyboardShortcut(const KeyboardShortcut& shortcut) {
    Json document = encodeHotKey(shortcut.hotKey);
    document[std::string(keyLabelKey)] = shortcut.keyLabel;
    return document;
}

std::expected<HotKey, DecodingError> decodeHotKey(const Json& document) {
    const auto keyCode = unsignedMember(document, keyCodeKey);
    if (!keyCode) return std::unexpected(keyCode.error());
    const auto modifiers = unsignedMember(document, modifiersKey);
    if (!modifiers) return std::unexpected(modifiers.error());
    return HotKey{*keyCode, ShortcutModifiers(*modifiers)};
}

std::expected<KeyboardShortcut, DecodingError> decodeKeyboardShortcut(const Json& document) {
    const auto hotKey = decodeHotKey(document);
    if (!hotKey) return std::unexpected(hotKey.error());
    const auto label = member(document, keyLabelKey);
    if (!label) return std::unexpected(label.error());
    if (!(*label)->is_string()) return fail(fmt::format("The value of \"{}\" is not a string.", keyLabelKey));
    return KeyboardShortcut{*hotKey, (*label)->get<std::string>()};
}

}  // namespace velmorand
