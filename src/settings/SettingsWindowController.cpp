#include "settings/SettingsWindowController.h"

#include <utility>

namespace velmorand {
namespace {

constexpr std::string_view moduleIsMissing = "The settings window is not installed.";

}  // namespace

SettingsWindowController::SettingsWindowController(std::shared_ptr<PreferencesStore> preferencesStore,
                                                   std::shared_ptr<PermissionsManager> permissionsManager,
                                                   std::shared_ptr<ShortcutManager> shortcutManager, Log& log)
    : preferencesStore_(std::move(preferencesStore)),
      permissionsManager_(std::move(permissionsManager)),
      shortcutManager_(std::move(shortcutManager)),
      logger_(log, "settings") {}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::show() {
    logger_.error("{}", moduleIsMissing);
    if (onFailure_) onFailure_(moduleIsMissing);
}

}  // namespace velmorand
