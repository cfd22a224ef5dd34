#pragma once

#include "platform/InstalledApplication.h"

#include <QString>
#include <optional>

namespace velmorand {

/// The name under which the image provider of application icons is known to the views.
inline constexpr const char* applicationIconProviderName = "application-icon";

/// The address under which a view finds the icon; empty without one. There may be no picture behind it.
[[nodiscard]] QString sourceOfIcon(const std::optional<ApplicationIcon>& icon);

/// The last part of such an address, with which the provider is asked; absent for any other text.
[[nodiscard]] std::optional<QString> idOfSource(const QString& source);

/// The icon that the last part of such an address stands for; absent for any other text.
[[nodiscard]] std::optional<ApplicationIcon> iconOfSourceId(const QString& id);

}  // namespace velmorand
