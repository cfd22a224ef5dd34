#include "settings/SettingsWindowController.h"

#include "platform/Application.h"

namespace velmorand {
namespace {

constexpr std::string_view windowFailed = "The settings window could not be opened.";

}  // namespace

SettingsWindowController::SettingsWindowController(std::shared_ptr<PreferencesStore> preferencesStore,
                                                   std::shared_ptr<PermissionsManager> permissionsManager,
                                                   std::shared_ptr<ShortcutManager> shortcutManager,
                                                   const SettingsPlatform& platform, SettingsWindowMaker makeWindow)
    : preferencesStore_(std::move(preferencesStore)),
      permissionsManager_(std::move(permissionsManager)),
      shortcutManager_(std::move(shortcutManager)),
      platform_(platform),
      make_(std::move(makeWindow)),
      logger_(platform.log, "settings") {}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::show() {
    if (!window_ && !makeWindow()) return;
    window_->bringToFront();
    platform_.application.activate();
    logger_.debug("The settings window is in front.");
}

void SettingsWindowController::savePending() {
    if (window_) window_->savePending();
}

bool SettingsWindowController::makeWindow() {
    auto window =
        make_({preferencesStore_, permissionsManager_, shortcutManager_}, platform_, [this](std::string_view message) {
            logger_.error("{}", message);
            if (onFailure_) onFailure_(message);
        });
    if (!window) {
        logger_.error("{} {}", windowFailed, window.error());
        if (onFailure_) onFailure_(windowFailed);
        return false;
    }
    window_ = std::move(*window);
    return true;
}

}  // namespace velmorand
