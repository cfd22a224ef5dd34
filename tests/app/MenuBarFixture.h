#pragma once

#include "app/MenuBarController.h"
#include "settings/SettingsWindowController.h"
#include "shortcuts/ShortcutManager.h"
#include "shortcuts/ShortcutRecorderPanel.h"
#include "support/DesktopFixture.h"
#include "support/NotedSettingsWindows.h"
#include "windows/PermissionsManager.h"
#include "windows/WindowManager.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

inline const StatusImage normalIcon{
    .kind = StatusImageKind::resource, .name = "MenuBarTemplate", .description = "", .isTemplate = true};

inline StatusImage warningIcon(const std::string& message) {
    return {.kind = StatusImageKind::symbol,
            .name = "exclamationmark.triangle",
            .description = message,
            .isTemplate = true};
}

/// A menu bar controller over every service, and a user of its menu.
class MenuBarFixture : public DesktopFixture {
protected:
    MenuBarFixture() {
        windowManager->setOnFailure([this](std::string_view message) { controller->showIssue(message); });
        settings->setOnFailure([this](std::string_view message) { controller->showIssue(message); });
    }

    [[nodiscard]] SimulatedStatusItem& item() { return *platform.statusBar().items().at(0); }
    /// Opens the menu anew and answers what is in it.
    const std::vector<MenuItem>& openMenu() {
        item().closeMenu();
        EXPECT_TRUE(item().openMenu());
        return item().menuItems();
    }
    [[nodiscard]] std::vector<std::string> openedTitles() {
        std::vector<std::string> titles;
        for (const MenuItem& line : openMenu()) titles.push_back(line.title);
        return titles;
    }
    void choose(std::string_view title) {
        openMenu();
        EXPECT_TRUE(item().choose(title)) << title;
        platform.runLoop().runPending();
    }
    [[nodiscard]] bool isEnabled(std::string_view title) {
        const auto& items = openMenu();
        const auto found = std::ranges::find(items, title, &MenuItem::title);
        return found != items.end() && found->isEnabled;
    }
    void advance(Duration span) { platform.runLoop().advance(span); }
    [[nodiscard]] SimulatedProcess& frontmost() { return application(); }

    ShortcutRecorderPanel recorder{platform.recorderPanelHost(), platform.runLoop()};
    NotedSettingsWindows settingsWindows;
    std::shared_ptr<SettingsWindowController> settings =
        std::make_shared<SettingsWindowController>(preferencesStore, permissionsManager, shortcutManager,
                                                   settingsPlatformOf(platform, recorder), settingsWindows.maker());
    std::shared_ptr<MenuBarController> controller = std::make_shared<MenuBarController>(
        MenuBarServices{permissionsManager, preferencesStore, screenGeometryProvider, windowManager, shortcutManager,
                        settings},
        MenuBarPlatform{platform.statusBar(), platform.workspace(), platform.application(), platform.bundle(),
                        platform.runLoop(), platform.log()});
};

}  // namespace velmorand
