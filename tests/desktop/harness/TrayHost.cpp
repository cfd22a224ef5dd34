#include "desktop/harness/TrayHost.h"

#include "desktop/harness/SettingsFile.h"

#include <fmt/format.h>

#include <filesystem>
#include <utility>

namespace velmorand::desktop {
namespace {

constexpr int height = 32;

constexpr std::string_view xfceSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
)";

constexpr std::string_view lxqtSettings = R"(__userfile__=true
panels=panel1

[panel1]
alignment=0
animation-duration=0
desktop=0
hidable=false
iconSize=22
lineCount=1
lockPanel=true
panelSize=32
plugins=statusnotifier
position=Bottom
reserve-space=true
width=100
width-percent=true

[statusnotifier]
type=statusnotifier
)";

std::vector<std::string> commandOf(TrayHostKind kind) {
    switch (kind) {
        case TrayHostKind::xfce: return {"xfce4-panel", "--disable-wm-check"};
        case TrayHostKind::lxqt: return {"lxqt-panel"};
    }
    std::unreachable();
}

std::expected<void, HarnessError> writeSettings(const Environment& session, TrayHostKind kind) {
    switch (kind) {
        case TrayHostKind::xfce: return writeSettingsFile(xfceSettingsFile(session, "xfce4-panel"), xfceSettings);
        case TrayHostKind::lxqt:
            return writeSettingsFile(std::filesystem::path(session.at("XDG_CONFIG_HOME")) / "lxqt/panel.conf",
                                     lxqtSettings);
    }
    std::unreachable();
}

}  // namespace

std::string nameOf(TrayHostKind kind) {
    return commandOf(kind).front();
}

std::expected<TrayHost, HarnessError> TrayHost::start(TestDesktop& desktop, TrayHostKind kind) {
    if (auto written = writeSettings(desktop.environment(), kind); !written) return std::unexpected(written.error());
    auto process = desktop.start(commandOf(kind));
    if (!process) return std::unexpected(process.error());
    // Its edge is reserved when it stands where it will stay.
    const bool isReady = desktop.observer().waitUntil([&] {
        const auto edges = desktop.observer().reservedEdges();
        return edges.size() > 3 && edges[3] >= height;
    });
    if (!isReady) return std::unexpected(HarnessError{fmt::format("no panel comes\n{}", process->logTail())});
    const PixelRect display = desktop.monitors().front().rect;
    return TrayHost(std::move(*process), {display.x, display.bottom() - height, display.width, height});
}

}  // namespace velmorand::desktop
