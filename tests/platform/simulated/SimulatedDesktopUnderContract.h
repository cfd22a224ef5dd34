#pragma once

#include "platform/contract/DesktopUnderContract.h"
#include "platform/simulated/SimulatedPlatform.h"

namespace velmorand {

/// The simulated platform as a desktop under contract. Time passes only while the loop runs.
class SimulatedDesktopUnderContract final : public DesktopUnderContract {
public:
    SimulatedDesktopUnderContract();

    [[nodiscard]] Platform& platform() override { return platform_; }
    [[nodiscard]] std::optional<std::string> reasonAgainst(Ability ability) const override;

    ContractWindow openWindow(const ContractWindowRequest& request) override;
    ContractWindow openSibling(ContractWindow sibling, const Rect& frame) override;
    void closeWindow(ContractWindow window) override;
    void focusWindow(ContractWindow window) override;
    void minimiseWindow(ContractWindow window) override;
    void makeFullScreen(ContractWindow window) override;
    void placeByHand(ContractWindow window, const Rect& frame) override;
    void stopAnswering(ContractWindow window) override;
    [[nodiscard]] std::int32_t pidOf(ContractWindow window) override;
    [[nodiscard]] Rect trueFrameOf(ContractWindow window) override;

    void endApplicationOf(ContractWindow window) override;
    void leaveNothingInFront() override;
    void revokeTrust() override;

    void reopen(const std::optional<std::string>& activationToken) override {
        platform_.application().reopen(activationToken);
    }

    void setReducesMotion(bool reduces) override;

    void allowNotifications() override;
    void denyNotifications() override;
    [[nodiscard]] std::vector<ContractNotification> shownNotifications() override;

    void showStatusBar() override {}
    void openStatusMenu() override { platform_.statusBar().items().back()->openMenu(); }
    void closeStatusMenu() override { platform_.statusBar().items().back()->closeMenu(); }
    [[nodiscard]] std::vector<ContractMenuLine> statusMenu() override;
    void chooseFromStatusMenu(std::size_t place) override { platform_.statusBar().items().back()->choose(place); }

    void setInstalled(bool installed) override {
        platform_.loginItemService().setStatus(installed ? LoginItemStatus::notRegistered : LoginItemStatus::notFound);
    }
    void switchOffLoginItem() override { platform_.loginItemService().setStatus(LoginItemStatus::requiresApproval); }
    [[nodiscard]] bool startsAtLogin() override {
        return platform_.loginItemService().status() == LoginItemStatus::enabled;
    }

    std::filesystem::path install(const ContractApplication& application) override;
    void uninstall(const std::filesystem::path& location) override {
        platform_.workspace().applications().remove(location);
    }
    void breakApplication(const std::filesystem::path& location) override {
        platform_.workspace().applications().install(location, {.bundleIdentifier = std::nullopt, .name = "Broken"});
    }

    void setMailProgram(bool isThere) override { platform_.workspace().setOpensURLs(isThere); }
    [[nodiscard]] std::vector<std::string> begunMails() override { return platform_.workspace().openedURLs(); }

    void activateProgram() override {
        platform_.runLoop().post([this] {
            platform_.defaultNotificationCenter().post({NotificationName::applicationBecameActive, std::nullopt});
        });
    }

    void setDisplays(const std::vector<Rect>& axFrames) override;

    void press(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void holdAndRelease(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void takeCombination(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void setLockKeys(bool on) override;

    void waitForRecorderPanel() override {}
    void waitUntilKeyboardIsFree() override {}
    void closeRecorderPanel() override;

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition, Duration deadline) override;
    void keepMainThreadBusy(Duration span) override;

    [[nodiscard]] std::vector<std::string> logLines() override;
    [[nodiscard]] std::string version() const override;

private:
    SimulatedPlatform platform_;
    std::int32_t lastPid_ = 500;
};

}  // namespace velmorand
