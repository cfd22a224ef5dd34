#pragma once

#include "desktop/harness/PixelRect.h"
#include "desktop/harness/XConnection.h"

#include <filesystem>
#include <span>

namespace velmorand::desktop {

/// Writes the whole root window, as the screen shows it when programs have finished drawing, as a PNG file.
std::expected<void, HarnessError> saveScreenshot(XConnection& connection, const std::filesystem::path& file);

/// Gives each of \p displays (root coordinates) a calm background, also below a compositing manager, and leaves the
/// rest of the root window black. It lasts as long as the connection.
void paintBackground(XConnection& connection, std::span<const PixelRect> displays);

}  // namespace velmorand::desktop
