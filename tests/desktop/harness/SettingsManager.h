#pragma once

#include "desktop/harness/XConnection.h"

#include <cstdint>
#include <span>

namespace velmorand::desktop {

/// A settings manager of the X session (XSETTINGS), as a desktop's daemon is one: it owns the selection, announces
/// itself and publishes what it is given. It goes when the object dies.
class SettingsManager {
public:
    /// Takes the place of the manager that runs, if any. \p connection must outlive the object. Publishes \p settings
    /// before it announces itself.
    SettingsManager(XConnection& connection, std::span<const std::uint8_t> settings);
    ~SettingsManager();

    SettingsManager(const SettingsManager&) = delete;
    SettingsManager& operator=(const SettingsManager&) = delete;

    /// The window that stands for it and has the property.
    [[nodiscard]] xcb_window_t window() const { return window_; }

    /// Publishes these bytes, well-formed or not. Returns when the server has them.
    void publish(std::span<const std::uint8_t> settings);

private:
    void announce();

    XConnection& connection_;
    xcb_window_t window_;
};

}  // namespace velmorand::desktop
