#pragma once

#include <string_view>

namespace velmorand {

/// Marks an English text that is translated where it is drawn; the text itself. Both arguments are literals: by them the
/// text is found when texts are collected for translators, and under its context it is translated.
[[nodiscard]] consteval std::string_view translatable(std::string_view /*context*/, std::string_view text) {
    return text;
}

}  // namespace velmorand
