#include "windows/WindowActionCoding.h"

#include <fmt/format.h>

#include <string>

namespace velmorand {

JsonValue encodeWindowAction(WindowAction action) {
    return JsonValue::text(rawValue(action));
}

std::expected<WindowAction, DecodingError> decodeWindowAction(const JsonValue& document) {
    const std::string* name = document.asString();
    if (name == nullptr) return std::unexpected(DecodingError{"The action is not a string."});
    if (const auto action = windowActionFromRawValue(*name)) return *action;
    return std::unexpected(DecodingError{fmt::format("\"{}\" is not an action.", *name)});
}

}  // namespace velmorand
