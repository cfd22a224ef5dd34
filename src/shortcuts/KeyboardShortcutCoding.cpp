#include "shortcuts/KeyboardShortcutCoding.h"

#include <fmt/format.h>

#include <cstdint>
#include <string_view>

namespace velmorand {
namespace {

constexpr std::string_view keyCodeKey = "keyCode";
constexpr std::string_view modifiersKey = "modifiers";
constexpr std::string_view keyLabelKey = "keyDisplay";

std::unexpected<DecodingError> fail(std::string description) {
    return std::unexpected(DecodingError{std::move(description)});
}

std::expected<const JsonValue*, DecodingError> member(const JsonValue& document, std::string_view key) {
    if (document.asObject() == nullptr) return fail("The shortcut is not an object.");
    const JsonValue* found = document.member(key);
    if (found == nullptr) return fail(fmt::format("The key \"{}\" is missing.", key));
    return found;
}

std::expected<std::uint32_t, DecodingError> unsignedMember(const JsonValue& document, std::string_view key) {
    const auto value = member(document, key);
    if (!value) return std::unexpected(value.error());
    if (const auto number = (*value)->asUnsigned()) return *number;
    return fail(fmt::format("The value of \"{}\" is not an unsigned 32-bit number.", key));
}

JsonValue::Object hotKeyMembers(const HotKey& hotKey) {
    return {{std::string(keyCodeKey), JsonValue::number(hotKey.keyCode)},
            {std::string(modifiersKey), JsonValue::number(hotKey.modifiers.rawValue())}};
}

}  // namespace

JsonValue encodeHotKey(const HotKey& hotKey) {
    return JsonValue(hotKeyMembers(hotKey));
}

JsonValue encodeKeyboardShortcut(const KeyboardShortcut& shortcut) {
    JsonValue::Object members = hotKeyMembers(shortcut.hotKey);
    members.emplace_back(keyLabelKey, JsonValue::text(shortcut.keyLabel));
    return JsonValue(std::move(members));
}

std::expected<HotKey, DecodingError> decodeHotKey(const JsonValue& document) {
    const auto keyCode = unsignedMember(document, keyCodeKey);
    if (!keyCode) return std::unexpected(keyCode.error());
    const auto modifiers = unsignedMember(document, modifiersKey);
    if (!modifiers) return std::unexpected(modifiers.error());
    return HotKey{*keyCode, ShortcutModifiers(*modifiers)};
}

std::expected<KeyboardShortcut, DecodingError> decodeKeyboardShortcut(const JsonValue& document) {
    const auto hotKey = decodeHotKey(document);
    if (!hotKey) return std::unexpected(hotKey.error());
    const auto label = member(document, keyLabelKey);
    if (!label) return std::unexpected(label.error());
    const std::string* text = (*label)->asString();
    if (text == nullptr) return fail(fmt::format("The value of \"{}\" is not a string.", keyLabelKey));
    return KeyboardShortcut{*hotKey, *text};
}

}  // namespace velmorand
