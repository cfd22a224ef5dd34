#pragma once

#include <string_view>

namespace velmorand {

/// Where users write to.
inline constexpr std::string_view contactAddress = "support@velmorand.app";

}  // namespace velmorand
