#pragma once

#include <QtGlobal>
#include <array>
#include <cstdint>
#include <string_view>

namespace velmorand {

/// The panes of the settings window, in the order of the sidebar.
enum class SettingsPane : std::uint8_t { general, shortcuts, ignoredApps, about };

struct SettingsPaneDescription {
    SettingsPane pane;
    std::string_view rawValue;
    /// English; translated where it is drawn.
    std::string_view title;
    std::string_view symbol;
    /// The file of its view.
    std::string_view view;
};

inline constexpr std::array<SettingsPaneDescription, 4> settingsPanes{{
    {SettingsPane::general, "general", QT_TRANSLATE_NOOP("SettingsPane", "General"), "gearshape",
     "GeneralSettingsView.qml"},
    {SettingsPane::shortcuts, "shortcuts", QT_TRANSLATE_NOOP("SettingsPane", "Shortcuts"), "keyboard",
     "ShortcutSettingsView.qml"},
    {SettingsPane::ignoredApps, "ignoredApps", QT_TRANSLATE_NOOP("SettingsPane", "Ignored Apps"), "nosign.app",
     "IgnoredAppsSettingsView.qml"},
    {SettingsPane::about, "about", QT_TRANSLATE_NOOP("SettingsPane", "About"), "info.circle", "AboutSettingsView.qml"},
}};

}  // namespace velmorand
