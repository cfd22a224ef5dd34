#include "windows/WindowActionCoding.h"

#include <fmt/format.h>

#include <string>

namespace velmorand {

nlohmann::ordered_json encodeWindowAction(WindowAction action) {
    return std::string(rawValue(action));
}

std::expected<WindowAction, DecodingError> decodeWindowAction(const nlohmann::ordered_json& document) {
    if (!document.is_string()) return std::unexpected(DecodingError{"The action is not a string."});
    const auto& name = document.get_ref<const std::string&>();
    if (const auto action = windowActionFromRawValue(name)) return *action;
    return std::unexpected(DecodingError{fmt::format("\"{}\" is not an action.", name)});
}

}  // namespace velmorand
