#include "preferences/PreferencesStateCoding.h"

#include "base/JsonValue.h"
#include "base/UnicodeText.h"
#include "shortcuts/KeyboardShortcutCoding.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace velmorand {
namespace {

namespace key {
constexpr std::string_view shortcuts = "shortcuts";
constexpr std::string_view ignoredApps = "ignoredApps";
constexpr std::string_view clampToVisibleArea = "snapToVisibleArea";
constexpr std::string_view disabledShortcutActions = "disabledShortcutActions";
constexpr std::string_view outerPadding = "outerPadding";
constexpr std::string_view innerGap = "innerGap";
constexpr std::string_view enableAnimations = "enableAnimations";
constexpr std::string_view animationDuration = "animationDuration";
}  // namespace key

JsonValue encodeShortcuts(const std::map<std::string, KeyboardShortcut>& shortcuts) {
    JsonValue::Object members;
    for (const auto& [action, shortcut] : shortcuts) {
        const KeyboardShortcut written{shortcut.hotKey, validUtf8(shortcut.keyLabel)};
        members.emplace_back(validUtf8(action), encodeKeyboardShortcut(written));
    }
    return JsonValue(std::move(members));
}

JsonValue encodeStrings(const std::vector<std::string>& strings) {
    JsonValue::Array elements;
    for (const std::string& text : strings) elements.push_back(JsonValue::text(validUtf8(text)));
    return JsonValue(std::move(elements));
}

/// No entry fails the whole: one that is no shortcut is left out.
std::map<std::string, KeyboardShortcut> decodeShortcuts(const JsonValue* value) {
    const auto* members = value == nullptr ? nullptr : value->asObject();
    if (members == nullptr) return defaultPreferencesState().shortcuts;
    std::map<std::string, KeyboardShortcut> shortcuts;
    for (const auto& [action, entry] : *members) {
        if (const auto shortcut = decodeKeyboardShortcut(entry)) shortcuts.insert_or_assign(action, *shortcut);
    }
    return shortcuts;
}

/// Reads the settings of a document one after the other; once one has failed, the rest is not looked at.
class SettingsReader {
public:
    explicit SettingsReader(const JsonValue& document) : document_(document) {}

    void read(std::string_view key, bool& setting) {
        readAs(key, "a boolean", setting, [](const JsonValue& value) { return value.asBoolean(); });
    }
    void read(std::string_view key, double& setting) {
        readAs(key, "a number", setting, [](const JsonValue& value) { return value.asDouble(); });
    }
    void read(std::string_view key, std::vector<std::string>& setting) {
        readAs(key, "a list of strings", setting, asStrings);
    }

    [[nodiscard]] const std::optional<DecodingError>& error() const { return error_; }

private:
    template <typename Setting, typename Convert>
    void readAs(std::string_view key, std::string_view kind, Setting& setting, Convert convert) {
        const JsonValue* value = document_.member(key);
        if (error_ || value == nullptr || value->isNull()) return;
        if (auto present = convert(*value))
            setting = std::move(*present);
        else
            error_ = DecodingError{fmt::format("The value of \"{}\" is not {}.", key, kind)};
    }

    static std::optional<std::vector<std::string>> asStrings(const JsonValue& value) {
        const auto* elements = value.asArray();
        if (elements == nullptr) return std::nullopt;
        std::vector<std::string> strings;
        for (const JsonValue& element : *elements) {
            const std::string* text = element.asString();
            if (text == nullptr) return std::nullopt;
            strings.push_back(*text);
        }
        return strings;
    }

    const JsonValue& document_;
    std::optional<DecodingError> error_;
};

}  // namespace

std::expected<std::string, EncodingError> encodePreferencesState(const PreferencesState& state) {
    const std::array numbers{std::pair(key::outerPadding, state.outerPadding), std::pair(key::innerGap, state.innerGap),
                             std::pair(key::animationDuration, state.animationDuration)};
    for (const auto& [name, number] : numbers) {
        if (!std::isfinite(number))
            return std::unexpected(EncodingError{fmt::format("The value of \"{}\" is not a finite number.", name)});
    }
    JsonValue::Object document;
    const auto add = [&document](std::string_view name, JsonValue value) {
        document.emplace_back(name, std::move(value));
    };
    add(key::shortcuts, encodeShortcuts(state.shortcuts));
    add(key::ignoredApps, encodeStrings(state.ignoredApps));
    add(key::clampToVisibleArea, JsonValue(state.clampToVisibleArea));
    add(key::disabledShortcutActions, encodeStrings(state.disabledShortcutActions));
    add(key::outerPadding, JsonValue::number(state.outerPadding));
    add(key::innerGap, JsonValue::number(state.innerGap));
    add(key::enableAnimations, JsonValue(state.enableAnimations));
    add(key::animationDuration, JsonValue::number(state.animationDuration));
    return JsonValue(std::move(document)).write();
}

std::expected<PreferencesState, DecodingError> decodePreferencesState(std::string_view document) {
    const auto parsed = JsonValue::parse(document);
    if (!parsed) return std::unexpected(parsed.error());
    if (parsed->asObject() == nullptr) return std::unexpected(DecodingError{"The document is not an object."});
    PreferencesState state;
    state.shortcuts = decodeShortcuts(parsed->member(key::shortcuts));
    SettingsReader settings(*parsed);
    settings.read(key::ignoredApps, state.ignoredApps);
    settings.read(key::clampToVisibleArea, state.clampToVisibleArea);
    settings.read(key::disabledShortcutActions, state.disabledShortcutActions);
    settings.read(key::outerPadding, state.outerPadding);
    settings.read(key::innerGap, state.innerGap);
    settings.read(key::enableAnimations, state.enableAnimations);
    settings.read(key::animationDuration, state.animationDuration);
    if (const auto& error = settings.error()) return std::unexpected(*error);
    return normalized(std::move(state));
}

}  // namespace velmorand
