#pragma once

#include "desktop/harness/TestDesktop.h"

#include <cstdint>
#include <string>

namespace velmorand::desktop {

/// The panels that show status items from the bus: one on GTK, one on Qt.
enum class TrayHostKind : std::uint8_t { xfce, lxqt };

[[nodiscard]] std::string nameOf(TrayHostKind kind);

/// A panel with nothing but status items on it, along the lower edge of a desktop with one display.
class TrayHost {
public:
    /// Returns when the panel is there; the part of it for status items may come a little later. \p desktop must outlive
    /// it and have no other panel.
    [[nodiscard]] static std::expected<TrayHost, HarnessError> start(TestDesktop& desktop, TrayHostKind kind);

    [[nodiscard]] ChildProcess& process() { return process_; }
    /// Where it lies, in root coordinates.
    [[nodiscard]] const PixelRect& frame() const { return frame_; }

private:
    TrayHost(ChildProcess process, const PixelRect& frame) : process_(std::move(process)), frame_(frame) {}

    ChildProcess process_;
    PixelRect frame_;
};

}  // namespace velmorand::desktop
