#pragma once

#include "desktop/bus/FakeNotificationServer.h"
#include "desktop/bus/FakePanel.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/SettingsManager.h"
#include "desktop/harness/TestDesktop.h"
#include "desktop/harness/TestKeyboard.h"
#include "platform/contract/DesktopUnderContract.h"

#include <chrono>
#include <map>
#include <memory>
#include <optional>

class QWindow;

namespace velmorand::desktop {

/// The real platform in this process, on an X server, window manager and windows of its own. The primary display does
/// not begin at the root window's origin. Only one exists at a time, as the platform reads the process's environment.
class X11DesktopUnderContract final : public DesktopUnderContract {
public:
    /// Ends the test with a failure when the desktop cannot be had.
    [[nodiscard]] static std::unique_ptr<DesktopUnderContract> make();
    ~X11DesktopUnderContract() override;

    [[nodiscard]] Platform& platform() override { return *platform_; }
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

    void reopen(const std::optional<std::string>& activationToken) override;

    void setReducesMotion(bool reduces) override;

    void allowNotifications() override;
    void denyNotifications() override;
    [[nodiscard]] std::vector<ContractNotification> shownNotifications() override;
    /// How many notifications have arrived, also those that took another one's place.
    [[nodiscard]] std::size_t receivedNotifications() const { return notificationServer_->received().size(); }

    void showStatusBar() override;
    void openStatusMenu() override;
    void closeStatusMenu() override { panel_->close(); }
    [[nodiscard]] std::vector<ContractMenuLine> statusMenu() override;
    void chooseFromStatusMenu(std::size_t place) override;

    void setInstalled(bool installed) override;
    void switchOffLoginItem() override;
    [[nodiscard]] bool startsAtLogin() override;

    std::filesystem::path install(const ContractApplication& application) override;
    void uninstall(const std::filesystem::path& location) override;
    void breakApplication(const std::filesystem::path& location) override;

    void setMailProgram(bool isThere) override;
    [[nodiscard]] std::vector<std::string> begunMails() override;

    void activateProgram() override;

    void setDisplays(const std::vector<Rect>& axFrames) override;

    void press(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void holdAndRelease(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void takeCombination(std::uint32_t keyCode, std::uint32_t modifiers) override;
    void setLockKeys(bool on) override;

    void waitForRecorderPanel() override;
    void waitUntilKeyboardIsFree() override;
    void closeRecorderPanel() override;

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition, Duration deadline) override;
    void keepMainThreadBusy(Duration span) override;

    [[nodiscard]] std::vector<std::string> logLines() override;
    [[nodiscard]] std::string version() const override;

private:
    struct Client {
        ChildProcess process;
        std::string title;
        int windows = 1;
    };
    struct OpenWindow {
        int client;
        xcb_window_t id;
    };

    X11DesktopUnderContract(std::unique_ptr<TestDesktop> desktop, TestKeyboard keyboard);
    [[nodiscard]] XObserver& observer() const { return desktop_->observer(); }
    [[nodiscard]] xcb_window_t idOf(ContractWindow window) const { return windows_.at(window).id; }
    [[nodiscard]] ContractWindow add(int client, std::string_view title, const Rect& frame);
    void redirectLog();
    [[nodiscard]] std::filesystem::path autostartFile() const;
    [[nodiscard]] std::filesystem::path entryFolder() const;
    void markEntriesChanged();
    [[nodiscard]] std::filesystem::path mailFile() const { return desktop_->folder() / "mails"; }

    std::unique_ptr<TestDesktop> desktop_;
    TestKeyboard keyboard_;
    Pager pager_;
    XConnection views_;
    std::optional<SettingsManager> settingsManager_;
    std::chrono::seconds entryAge_{};  // by which the folder of entries looks younger than it is
    std::map<int, Client> clients_;
    std::map<ContractWindow, OpenWindow> windows_;
    int standardError_ = -1;  // what it was before its redirection
    int argumentCount_ = 1;
    std::string programName_ = "velmorand";
    char* arguments_[2] = {programName_.data(), nullptr};
    std::unique_ptr<Platform> platform_;
    std::unique_ptr<QWindow> programsWindow_;
    std::unique_ptr<FakeNotificationServer> notificationServer_;
    std::unique_ptr<FakePanel> panel_;
    ReceivedMenu openMenu_;
};

}  // namespace velmorand::desktop
