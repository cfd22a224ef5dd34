#include "app/MenuBarController.h"

#include "platform/Application.h"
#include "platform/Bundle.h"
#include "platform/Workspace.h"
#include "preferences/PreferencesStore.h"
#include "settings/SettingsWindowController.h"
#include "shortcuts/ShortcutManager.h"
#include "windows/PermissionsManager.h"
#include "windows/ScreenGeometryProvider.h"
#include "windows/WindowManager.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <iterator>
#include <utility>

namespace velmorand {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view caption = "Velmorand";
constexpr std::string_view iconResource = "MenuBarTemplate";
constexpr std::string_view iconSymbol = "rectangle.3.group";
constexpr std::string_view warningSymbol = "exclamationmark.triangle";

constexpr Duration warningLasts = 2500ms;
constexpr Duration issueIsListedFor = 60s;

template <typename Items>
void append(std::vector<MenuItem>& menu, Items&& items) {
    std::ranges::move(std::forward<Items>(items), std::back_inserter(menu));
}

}  // namespace

MenuBarController::MenuBarController(MenuBarServices services, const MenuBarPlatform& platform)
    : services_(std::move(services)), platform_(platform), logger_(platform.log, "menu") {}

MenuBarController::~MenuBarController() = default;

void MenuBarController::install() {
    assert(platform_.runLoop.isMainThread());
    statusItem_.reset();  // one at a time
    statusItem_ = platform_.statusBar.makeStatusItem();
    applyNormalIcon();
    if (!statusItem_) return;
    statusItem_->attachMenu({.needsUpdate =
                                 [weakSelf = weak_from_this()] {
                                     if (const auto self = weakSelf.lock()) self->menuNeedsUpdate();
                                 },
                             .didClose = {},
                             .chosen =
                                 [weakSelf = weak_from_this()](const MenuItem& sender) {
                                     if (const auto self = weakSelf.lock()) self->choose(sender);
                                 }});
}

bool MenuBarController::hasButton() const {
    return statusItem_ && statusItem_->hasButton();
}

void MenuBarController::applyNormalIcon() {
    if (!hasButton()) return;
    if (auto image = normalImage()) {
        image->isTemplate = true;
        statusItem_->setImage(*image);
    } else {
        statusItem_->setTitle(caption);
    }
    statusItem_->setToolTip(caption);
}

std::optional<StatusImage> MenuBarController::normalImage() const {
    auto image = platform_.statusBar.image(StatusImageKind::resource, iconResource, {});
    return image ? image : platform_.statusBar.image(StatusImageKind::symbol, iconSymbol, caption);
}

void MenuBarController::showIssue(std::string_view message) {
    assert(platform_.runLoop.isMainThread());
    lastIssue_ = Issue{std::string(message), platform_.runLoop.date()};
    if (!hasButton()) return;
    if (auto image = platform_.statusBar.image(StatusImageKind::symbol, warningSymbol, message)) {
        image->isTemplate = true;
        statusItem_->setImage(*image);
    }
    statusItem_->setToolTip(message);
    iconResetTask_ = platform_.runLoop.after(warningLasts, [weakSelf = weak_from_this()] {
        if (const auto self = weakSelf.lock()) self->applyNormalIcon();
    });
}

void MenuBarController::menuNeedsUpdate() {
    rebuildMenu();
}

void MenuBarController::rebuildMenu() {
    services_.permissionsManager->refresh();
    const auto frontmost = platform_.workspace.frontmostApplication();
    menuCapabilities_ = snapshot(frontmost);
    menu_.clear();
    append(menu_, permissionSection(menuCapabilities_.isTrusted));
    append(menu_, problemSection(problems()));
    append(menu_, actionSection(allWindowActions, menuCapabilities_, [this](WindowAction action) {
               return services_.preferencesStore->effectiveShortcut(action);
           }));
    append(menu_, applicationSection(ignorableApplication(frontmost)));
    if (statusItem_) statusItem_->setMenuItems(menu_);
}

MenuCapabilitySnapshot MenuBarController::snapshot(const std::optional<RunningApplication>& frontmost) const {
    return {.isTrusted = services_.permissionsManager->isTrusted().value(),
            .screenCount = static_cast<int>(services_.screenGeometryProvider->screens().size()),
            .frontmostEligible = isEligible(frontmost),
            .hasRestoreEntryForFrontmostPid = frontmost && services_.windowManager->hasRestoreEntry(frontmost->pid)};
}

/// Two absent identifiers are equal, too: what cannot be told from this program is taken for it.
bool MenuBarController::isEligible(const std::optional<RunningApplication>& frontmost) const {
    if (!frontmost || frontmost->bundleIdentifier == platform_.bundle.identifier()) return false;
    return !frontmost->bundleIdentifier || !isIgnored(*frontmost->bundleIdentifier);
}

bool MenuBarController::isIgnored(const std::string& bundleIdentifier) const {
    return std::ranges::count(services_.preferencesStore->current().ignoredApps, bundleIdentifier) > 0;
}

std::vector<std::string> MenuBarController::problems() const {
    std::vector<std::string> lines;
    if (lastIssue_ && platform_.runLoop.date() - lastIssue_->date < issueIsListedFor)
        lines.push_back(lastIssue_->message);
    if (const auto& issue = services_.shortcutManager->eventHandlerIssue()) lines.push_back(*issue);
    std::ranges::copy(services_.shortcutManager->shortcutIssues(), std::back_inserter(lines));
    return lines;
}

std::optional<MenuApplication> MenuBarController::ignorableApplication(
    const std::optional<RunningApplication>& frontmost) const {
    if (!frontmost || !frontmost->bundleIdentifier) return std::nullopt;
    const std::string& identifier = *frontmost->bundleIdentifier;
    if (identifier == platform_.bundle.identifier()) return std::nullopt;
    return MenuApplication{frontmost->localizedName.value_or(identifier), identifier, isIgnored(identifier)};
}

void MenuBarController::choose(const MenuItem& sender) {
    assert(platform_.runLoop.isMainThread());
    const auto& object = sender.representedObject;
    if (sender.action == menu_action::performAction)
        performAction(sender);
    else if (sender.action == menu_action::requestAccessibilityAccess)
        services_.permissionsManager->requestAccess();
    else if (sender.action == menu_action::refreshPermissions)
        refreshPermissions();
    else if (sender.action == menu_action::ignoreCurrentApp && object)
        services_.preferencesStore->addIgnoredApp(*object);
    else if (sender.action == menu_action::unignoreCurrentApp && object)
        services_.preferencesStore->removeIgnoredApp(*object);
    else if (sender.action == menu_action::openSettings)
        services_.settingsWindowController->show();
    else if (sender.action == menu_action::quit)
        quit();
}

/// A failure is shown by the window manager's own report. One that succeeds ends the showing of the last.
void MenuBarController::performAction(const MenuItem& sender) {
    const auto action = sender.representedObject ? windowActionFromRawValue(*sender.representedObject) : std::nullopt;
    if (!action) return;
    if (services_.windowManager->perform(*action))
        lastIssue_.reset();
    else
        logger_.error("menu action {} rejected", rawValue(*action));
}

void MenuBarController::refreshPermissions() {
    services_.permissionsManager->refresh();
    rebuildMenu();
}

void MenuBarController::quit() {
    platform_.application.terminate();
}

}  // namespace velmorand
