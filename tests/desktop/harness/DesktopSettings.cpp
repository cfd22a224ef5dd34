#include "desktop/harness/DesktopSettings.h"

#include "desktop/harness/SettingsFile.h"
#include "desktop/harness/WindowManagerSettings.h"

#include <fmt/format.h>

#include <array>
#include <cstdlib>
#include <system_error>

namespace velmorand::desktop {

namespace {

namespace fs = std::filesystem;

/// Adwaita draws client-side decorations with shadows. Animations would only make the pictures depend on the moment.
constexpr std::string_view gtkSettings = R"([Settings]
gtk-theme-name=Adwaita
gtk-icon-theme-name=Adwaita
gtk-font-name=DejaVu Sans 10
gtk-enable-animations=0
gtk-cursor-theme-size=24
)";

constexpr std::string_view panelSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p={position};x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="output-name" type="string" value="Primary"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="{height}"/>
      <property name="icon-size" type="uint" value="16"/>
      <property name="disable-struts" type="bool" value="false"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
        <value type="int" value="3"/>
        <value type="int" value="4"/>
        <value type="int" value="5"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="applicationsmenu"/>
    <property name="plugin-2" type="string" value="tasklist"/>
    <property name="plugin-3" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-4" type="string" value="systray"/>
    <property name="plugin-5" type="string" value="clock"/>
  </property>
</channel>
)";

constexpr std::array passedOn{"ASAN_OPTIONS",      "UBSAN_OPTIONS", "LSAN_OPTIONS",
                              "LLVM_PROFILE_FILE", "GCOV_PREFIX",   "GCOV_PREFIX_STRIP"};

Environment baseEnvironment(const fs::path& folder) {
    Environment session{
        {"HOME", folder / "home"},
        {"XDG_CONFIG_HOME", folder / "home/.config"},
        {"XDG_DATA_HOME", folder / "home/.local/share"},
        {"XDG_CACHE_HOME", folder / "home/.cache"},
        {"XDG_STATE_HOME", folder / "home/.local/state"},
        {"XDG_RUNTIME_DIR", folder / "runtime"},
        {"XDG_SESSION_TYPE", "x11"},
        {"PATH", "/usr/local/bin:/usr/bin:/bin"},
        {"LANG", "C.UTF-8"},
        {"USER", "tester"},
        {"SHELL", "/bin/sh"},
        // No accessibility bus, settings daemon or mounts: services that would outlive the desktop for a moment.
        {"NO_AT_BRIDGE", "1"},
        {"GTK_A11Y", "none"},
        {"GSETTINGS_BACKEND", "memory"},
        {"GIO_USE_VFS", "local"},
        {"PYTHONDONTWRITEBYTECODE", "1"},
    };
    for (const auto* name : passedOn) {
        if (const char* value = std::getenv(name)) session[name] = value;
    }
    return session;
}

}  // namespace

std::expected<Environment, HarnessError> makeSession(const fs::path& folder) {
    auto session = baseEnvironment(folder);
    std::error_code error;
    for (const auto* name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        if (!error) fs::create_directories(session.at(name), error);
    }
    if (!error) fs::permissions(session.at("XDG_RUNTIME_DIR"), fs::perms::owner_all, error);
    if (error)
        return std::unexpected(HarnessError{fmt::format("cannot make {}: {}", folder.string(), error.message())});

    const fs::path configuration = session.at("XDG_CONFIG_HOME");
    if (auto written = writeSettingsFile(configuration / "gtk-3.0/settings.ini", gtkSettings); !written) {
        return std::unexpected(written.error());
    }
    if (auto written = writeWindowManagerSettings(session); !written) return std::unexpected(written.error());
    return session;
}

std::expected<void, HarnessError> writePanelSettings(const Environment& session, PanelEdge edge, int height) {
    // The numbers are the panel's own: snapped to the top-left, or to the bottom-left corner.
    constexpr int topLeft = 6;
    constexpr int bottomLeft = 8;
    // It draws a line of one pixel towards the windows beside its size.
    constexpr int line = 1;
    return writeSettingsFile(xfceSettingsFile(session, "xfce4-panel"),
                             fmt::format(panelSettings,
                                         fmt::arg("position", edge == PanelEdge::top ? topLeft : bottomLeft),
                                         fmt::arg("height", height - line)));
}

}  // namespace velmorand::desktop
