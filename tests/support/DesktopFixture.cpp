#include "support/DesktopFixture.h"

#include "shortcuts/CarbonHotKeyRegistrar.h"
#include "shortcuts/ShortcutManager.h"
#include "windows/AXWindowClient.h"
#include "windows/PermissionsManager.h"
#include "windows/ScreenGeometryProvider.h"
#include "windows/WindowManager.h"

#include <algorithm>
#include <iterator>

namespace velmorand {

DesktopFixture::DesktopFixture()
    : preferencesStore(std::make_shared<SettablePreferencesStore>(platform)),
      permissionsManager(std::make_shared<PermissionsManager>(accessibility, platform.workspace())),
      screenGeometryProvider(std::make_shared<ScreenGeometryProvider>(platform.displays())),
      axClient(std::make_shared<AXWindowClient>(accessibility, platform.log())),
      windowManager(std::make_shared<WindowManager>(
          permissionsManager, preferencesStore, screenGeometryProvider, axClient,
          WindowManagerPlatform{accessibility, platform.workspace(), platform.workspaceNotificationCenter(),
                                platform.defaultNotificationCenter(), platform.bundle(), platform.runLoop(),
                                platform.log()})),
      registrar(std::make_shared<CarbonHotKeyRegistrar>(platform.hotKeyService(), platform.runLoop(), platform.log())),
      shortcutManager(std::make_shared<ShortcutManager>(preferencesStore, windowManager, registrar,
                                                        ShortcutManagerPlatform{platform.userNotificationCenter(),
                                                                                platform.bundle(), platform.runLoop(),
                                                                                platform.log()})) {
    windowManager->setOnFailure([this](std::string_view message) { failures.emplace_back(message); });
    SimulatedProcess& process = desktop().addProcess(pid);
    process.bundleIdentifier = bundleIdentifier;
    process.localizedName = applicationName;
    accessibility.setName(applicationElement(), "application");
    clearRecords();
}

DesktopFixture::~DesktopFixture() = default;

SimulatedWindowID DesktopFixture::openWindow(const Rect& frame, const std::string& name) {
    const SimulatedWindowID id = desktop().addWindow(pid);
    window(id).frame = frame;
    accessibility.setName(elementOf(id), name);
    return id;
}

void DesktopFixture::setDisplays(const std::vector<TestDisplay>& displays) {
    platform.setDisplays(describedByWindowServer(displays));
}

void DesktopFixture::changePreferences(const std::function<void(PreferencesState&)>& change) {
    preferencesStore->modify(change);
}

std::vector<LogLine> DesktopFixture::logLines(std::string_view category) {
    std::vector<LogLine> lines;
    std::ranges::copy_if(logLines(), std::back_inserter(lines),
                         [category](const LogLine& line) { return line.category == category; });
    return lines;
}

void DesktopFixture::clearRecords() {
    platform.accessibility().clearWrites();
    platform.log().clear();
    accessibility.clearCalls();
    failures.clear();
}

}  // namespace velmorand
