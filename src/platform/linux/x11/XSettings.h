#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>

namespace velmorand {

/// Names of whole-number settings and what they are set to.
using XSettings = std::map<std::string, std::int32_t, std::less<>>;

/// The whole-number settings in what a settings manager of the session publishes (XSETTINGS); texts and colours are
/// passed over. Absent when the bytes are not as that protocol wants them: cut off, of an unknown byte order or kind of
/// setting, or with a name that occurs twice. What follows the last setting does not matter.
[[nodiscard]] std::optional<XSettings> decodeXSettings(std::span<const std::byte> bytes);

}  // namespace velmorand
