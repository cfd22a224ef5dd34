#pragma once

#include <QString>
#include <string_view>

namespace velmorand {

/// Text of the core as the toolkit has it.
[[nodiscard]] inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace velmorand
