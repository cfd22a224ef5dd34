#include "desktop/harness/WindowManagerSettings.h"

#include "desktop/harness/SettingsFile.h"

#include <string>
#include <utility>

namespace velmorand::desktop {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view xfwm4Settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty">
    <property name="theme" type="string" value="Default"/>
    <property name="title_font" type="string" value="DejaVu Sans Bold 9"/>
    <property name="workspace_count" type="int" value="1"/>
  </property>
</channel>
)";

/// The toolbar would cover windows without reserving its edge everywhere. The style is one without a picture behind the
/// windows: the tool that sets such a picture complains in a window of its own, which takes the focus, where it finds
/// no other tool to do it with.
constexpr std::string_view fluxboxSettings = R"(session.screen0.toolbar.visible: false
session.screen0.tabs.intitlebar: true
session.styleFile: /usr/share/fluxbox/styles/Squared_blue
)";

constexpr std::string_view icewmSettings = R"(ShowTaskBar=0
ShowWorkspaceStatus=0
WorkspaceNames=" 1 "
)";

/// Nothing is bound to keys. A workspace on each display, as everywhere.
constexpr std::string_view i3Settings = R"(font pango:DejaVu Sans 9
focus_follows_mouse no
mouse_warping none
workspace_layout default
)";
constexpr std::string_view i3Floating = R"(for_window [all] floating enable
)";

constexpr std::string_view awesomeSettings = R"(local awful = require("awful")
local beautiful = require("beautiful")
local gears = require("gears")
local wibox = require("wibox")
require("awful.autofocus")

beautiful.init(gears.filesystem.get_themes_dir() .. "default/theme.lua")
awful.screen.connect_for_each_screen(function(s)
    awful.tag({ "1" }, s, awful.layout.suit.floating)
end)
awful.rules.rules = {
    {
        rule = {},
        properties = {
            border_width = beautiful.border_width,
            border_color = beautiful.border_normal,
            focus = awful.client.focus.filter,
            raise = true,
            screen = awful.screen.preferred,
            placement = awful.placement.no_overlap + awful.placement.no_offscreen,
        },
    },
    { rule_any = { type = { "normal", "dialog" } }, properties = { titlebars_enabled = true } },
}
client.connect_signal("request::titlebars", function(c)
    awful.titlebar(c):setup({
        { align = "center", widget = awful.titlebar.widget.titlewidget(c) },
        layout = wibox.layout.flex.horizontal,
    })
end)
)";

/// kwin takes a few of the keys that the tests press; a user who wants them elsewhere frees them like this.
constexpr std::string_view kwinShortcuts = R"([kwin]
Switch Window Down=none,Meta+Alt+Down,Switch to Window Below
Switch Window Left=none,Meta+Alt+Left,Switch to Window to the Left
Switch Window Right=none,Meta+Alt+Right,Switch to Window to the Right
Switch Window Up=none,Meta+Alt+Up,Switch to Window Above
)";

constexpr std::string_view kdeSettings = R"([KDE]
AnimationDurationFactor=0
)";

fs::path configurationOf(const Environment& session) {
    return session.at("XDG_CONFIG_HOME");
}

}  // namespace

fs::path i3SettingsFile(const Environment& session, bool isTiling) {
    return configurationOf(session) / "i3" / (isTiling ? "tiling" : "floating");
}

fs::path awesomeSettingsFile(const Environment& session) {
    return configurationOf(session) / "awesome/rc.lua";
}

std::expected<void, HarnessError> writeWindowManagerSettings(const Environment& session) {
    const fs::path home = session.at("HOME");
    const fs::path configuration = configurationOf(session);
    const std::pair<fs::path, std::string> files[]{
        {xfceSettingsFile(session, "xfwm4"), std::string(xfwm4Settings)},
        {home / ".fluxbox/init", std::string(fluxboxSettings)},
        {home / ".icewm/preferences", std::string(icewmSettings)},
        {i3SettingsFile(session, true), std::string(i3Settings)},
        {i3SettingsFile(session, false), std::string(i3Settings) + std::string(i3Floating)},
        {awesomeSettingsFile(session), std::string(awesomeSettings)},
        {configuration / "kglobalshortcutsrc", std::string(kwinShortcuts)},
        {configuration / "kdeglobals", std::string(kdeSettings)},
    };
    for (const auto& [file, content] : files) {
        if (auto written = writeSettingsFile(file, content); !written) return written;
    }
    return {};
}

}  // namespace velmorand::desktop
