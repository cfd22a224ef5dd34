#pragma once

#include "platform/simulated/SimulatedPlatform.h"
#include "support/Expected.h"
#include "support/ObservedAccessibility.h"
#include "support/Printing.h"
#include "support/SettablePreferencesStore.h"
#include "support/SimulatedPrinting.h"
#include "support/TestDisplays.h"
#include "windows/WindowAction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

class AXWindowClient;
class CarbonHotKeyRegistrar;
class PermissionsManager;
class ScreenGeometryProvider;
class ShortcutManager;
class WindowManager;

/// A simulated desktop with every service of the program on it, put together in the program's own order, and one
/// frontmost application without windows. The desktop has one display of 1440 by 900 points whose upper 25 points a
/// panel covers. Nothing is started; every service can be used alone.
class DesktopFixture : public testing::Test {
protected:
    /// The frontmost application.
    static constexpr std::int32_t pid = 501;
    static constexpr std::string_view bundleIdentifier = "org.example.Editor";
    static constexpr std::string_view applicationName = "Editor";
    /// The frame of a window that a test does not care to place.
    static constexpr Rect startFrame{100, 100, 800, 600};

    DesktopFixture();
    ~DesktopFixture() override;

    [[nodiscard]] SimulatedDesktop& desktop() { return platform.desktop(); }
    [[nodiscard]] SimulatedProcess& application() { return desktop().process(pid); }
    [[nodiscard]] SimulatedWindow& window(SimulatedWindowID id) { return desktop().window(id); }
    [[nodiscard]] AXElement applicationElement() { return platform.accessibility().createApplication(pid); }
    [[nodiscard]] AXElement elementOf(SimulatedWindowID id) { return platform.accessibility().elementOf(id); }

    /// Opens a window of the frontmost application in front of its others, focused; `name` is what it is called in the
    /// recorded accessibility calls.
    SimulatedWindowID openWindow(const Rect& frame = startFrame, const std::string& name = "window");

    /// Plugs the displays in and out; the first is the primary one.
    void setDisplays(const std::vector<TestDisplay>& displays);

    void changePreferences(const std::function<void(PreferencesState&)>& change);

    /// Everything that reached a window since the start or the last `clearRecords`.
    [[nodiscard]] const std::vector<SimulatedWrite>& writes() { return platform.accessibility().writes(); }
    [[nodiscard]] const std::vector<LogLine>& logLines() { return platform.log().lines(); }
    [[nodiscard]] std::vector<LogLine> logLines(std::string_view category);
    /// Forgets the writes, log lines, accessibility calls and failures so far.
    void clearRecords();

    SimulatedPlatform platform;
    ObservedAccessibility accessibility{platform.accessibility()};
    std::shared_ptr<SettablePreferencesStore> preferencesStore;
    std::shared_ptr<PermissionsManager> permissionsManager;
    std::shared_ptr<ScreenGeometryProvider> screenGeometryProvider;
    std::shared_ptr<AXWindowClient> axClient;
    std::shared_ptr<WindowManager> windowManager;
    std::shared_ptr<CarbonHotKeyRegistrar> registrar;
    std::shared_ptr<ShortcutManager> shortcutManager;
    /// Every message that the window manager told its `onFailure`.
    std::vector<std::string> failures;
};

}  // namespace velmorand
