#pragma once

#include "base/Rect.h"
#include "base/Size.h"
#include "platform/Accessibility.h"
#include "platform/Platform.h"
#include "platform/RunLoop.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace velmorand {

/// Something that a contract test needs and that not every desktop can do.
enum class Ability : std::uint8_t {
    revokeTrust,
    openSeveralWindowsPerApplication,
    minimiseWindows,
    makeWindowsFullScreen,
    openFixedSizeWindows,
    limitWindowSizes,
    stopAnswering,
    leaveNothingInFront,
    hideIdentifiers,
    changeDisplays,
    disconnectAllDisplays,
    takeCombinations,
    holdKeys,
    setLockKeys,
    readLog,
    reduceMotion,
    showNotifications,
    denyNotifications,
    showStatusItems,
};

/// One window of a desktop under contract, for the life of the desktop.
enum class ContractWindow : std::uint64_t {};

/// A window to open. Frames are in the accessibility space and mean what the user sees.
struct ContractWindowRequest {
    std::string applicationIdentifier = "org.example.Editor";
    Rect frame{100, 120, 400, 300};
    bool resizable = true;
    /// Both sides 0 for none.
    Size minimumSize = {};
    /// Without any identifier (`Ability::hideIdentifiers`).
    bool hidesIdentifier = false;
};

/// A notification as the user reads it.
struct ContractNotification {
    std::string title;
    std::string body;

    bool operator==(const ContractNotification&) const = default;
};

/// An application to install.
struct ContractApplication {
    std::string identifier = "org.example.Editor";
    std::string name = "Editor";
    /// The name of an icon; empty for none.
    std::string icon = "org.example.Editor";
    /// Whether the desktop offers it to its user.
    bool isListed = true;
};

/// A line of a menu as the user sees it; a separator has no title.
struct ContractMenuLine {
    std::string title;
    bool isEnabled = false;

    bool operator==(const ContractMenuLine&) const = default;
};

/// A platform with a real or simulated desktop behind it. The contract tests act on the desktop through this
/// interface, as a user or another program would, and look at the result independently of the platform under test.
///
/// Every operation returns when it is done, as the desktop sees it. Frames are in the accessibility space. A test uses
/// at most 1600 by 600 points, from (-800, 0) to (800, 600) when there is a second display.
/// An operation whose ability the desktop lacks is never called. An operation may run the main loop, so that the
/// platform learns what happened, but not those whose news a test waits for: ending an application, changing displays,
/// the keyboard's and closing the panel.
class DesktopUnderContract {
public:
    virtual ~DesktopUnderContract() = default;
    DesktopUnderContract(const DesktopUnderContract&) = delete;
    DesktopUnderContract& operator=(const DesktopUnderContract&) = delete;

    [[nodiscard]] virtual Platform& platform() = 0;

    /// Why the desktop cannot do this, as a sentence; absent when it can.
    [[nodiscard]] virtual std::optional<std::string> reasonAgainst(Ability ability) const = 0;

    // Windows

    /// Opens a window of an application of its own and focuses it. Its frame is exactly the requested one.
    virtual ContractWindow openWindow(const ContractWindowRequest& request) = 0;
    /// Opens another window of the application of `sibling` in front of it and focuses it.
    virtual ContractWindow openSibling(ContractWindow sibling, const Rect& frame) = 0;
    virtual void closeWindow(ContractWindow window) = 0;
    /// Brings the window's application to the front with this window focused.
    virtual void focusWindow(ContractWindow window) = 0;
    virtual void minimiseWindow(ContractWindow window) = 0;
    virtual void makeFullScreen(ContractWindow window) = 0;
    /// As a user with a mouse would.
    virtual void placeByHand(ContractWindow window, const Rect& frame) = 0;
    /// From now on nobody answers a write to this window.
    virtual void stopAnswering(ContractWindow window) = 0;
    [[nodiscard]] virtual std::int32_t pidOf(ContractWindow window) = 0;
    /// Where the window really is, read independently of the platform.
    [[nodiscard]] virtual Rect trueFrameOf(ContractWindow window) = 0;

    // Applications and trust

    /// Ends the application of this window.
    virtual void endApplicationOf(ContractWindow window) = 0;
    virtual void leaveNothingInFront() = 0;
    virtual void revokeTrust() = 0;

    /// Starts the program again, as a launcher does that gives this token to the start. What follows from it comes while
    /// the application runs.
    virtual void reopen(const std::optional<std::string>& activationToken) = 0;

    // The user's wishes

    /// The user asks for as little motion on screen as possible, or takes it back. The news arrives in a turn of the
    /// main loop.
    virtual void setReducesMotion(bool reduces) = 0;

    // Notifications

    /// From now on notifications are shown to the user.
    virtual void allowNotifications() = 0;
    /// From now on no notification can be shown.
    virtual void denyNotifications() = 0;
    /// The notifications that the user sees now, in no order.
    [[nodiscard]] virtual std::vector<ContractNotification> shownNotifications() = 0;

    // The status bar

    /// From now on there is a bar in which the status item of the platform is shown.
    virtual void showStatusBar() = 0;
    /// Opens the menu of the status item that was made last, and waits until it is seen.
    virtual void openStatusMenu() = 0;
    /// Closes it without a choice.
    virtual void closeStatusMenu() = 0;
    /// What is seen of the open menu now.
    [[nodiscard]] virtual std::vector<ContractMenuLine> statusMenu() = 0;
    /// Chooses the line at this place of the open menu, which closes it if the line can be chosen.
    virtual void chooseFromStatusMenu(std::size_t place) = 0;

    // The login item

    /// Installs the program for the desktop, so that the system could start it, or removes it.
    virtual void setInstalled(bool installed) = 0;
    /// Switches the login item, which is enabled, off in the system's settings.
    virtual void switchOffLoginItem() = 0;
    /// Whether the system would start the program at the next log-in.
    [[nodiscard]] virtual bool startsAtLogin() = 0;

    // Installed applications

    /// Installs an application for the desktop and answers where it is.
    virtual std::filesystem::path install(const ContractApplication& application) = 0;
    /// Takes what is installed there away.
    virtual void uninstall(const std::filesystem::path& location) = 0;
    /// Leaves something at the location that is no application.
    virtual void breakApplication(const std::filesystem::path& location) = 0;

    // Other programs

    /// Installs a program that writes mail, or removes it.
    virtual void setMailProgram(bool isThere) = 0;
    /// The addresses with which that program was begun, in order.
    [[nodiscard]] virtual std::vector<std::string> begunMails() = 0;

    // This program

    /// Gives the keyboard to a window of this program. The news arrives in a turn of the main loop.
    virtual void activateProgram() = 0;

    // Displays

    /// Makes these the displays, without panels; the first is the primary one and starts at the origin.
    virtual void setDisplays(const std::vector<Rect>& axFrames) = 0;

    // Keyboard. Key codes and modifiers as in `HotKeyService`.

    /// Presses and releases the combination as a keyboard would.
    virtual void press(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
    /// Holds the combination until it has repeated itself several times, then releases it.
    virtual void holdAndRelease(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
    /// Another program takes the combination.
    virtual void takeCombination(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
    /// Switches caps lock and the numeric lock.
    virtual void setLockKeys(bool on) = 0;

    // The recorder panel

    /// Runs the main loop until the panel that was shown has the keyboard.
    virtual void waitForRecorderPanel() = 0;
    /// Runs the main loop until keys go to whoever else may have them.
    virtual void waitUntilKeyboardIsFree() = 0;
    /// Closes the panel as its user does.
    virtual void closeRecorderPanel() = 0;

    // Time

    /// Runs the main loop until the condition holds or the deadline has passed; answers whether it holds.
    [[nodiscard]] virtual bool runUntil(const std::function<bool()>& condition, Duration deadline) = 0;
    /// Keeps the main thread from the loop for this long.
    virtual void keepMainThreadBusy(Duration span) = 0;

    // What the platform says

    /// The lines of the log so far as a reader of the log sees them.
    [[nodiscard]] virtual std::vector<std::string> logLines() = 0;
    /// The version that this program was built as.
    [[nodiscard]] virtual std::string version() const = 0;

protected:
    DesktopUnderContract() = default;
};

/// Makes a desktop for one test.
struct DesktopFactory {
    /// Part of the tests' names: letters and digits.
    std::string name;
    std::function<std::unique_ptr<DesktopUnderContract>()> make;
};

void PrintTo(const DesktopFactory& factory, std::ostream* out);

/// The name of an instantiated test.
[[nodiscard]] std::string nameOfDesktop(const testing::TestParamInfo<DesktopFactory>& info);

/// The base of every contract suite: a fresh desktop, and what most suites need on it.
class DesktopContract : public testing::TestWithParam<DesktopFactory> {
protected:
    /// Long enough for anything that is going to happen.
    static constexpr Duration deadline = std::chrono::seconds{15};
    /// Long enough to see that something does not happen.
    static constexpr Duration patience = std::chrono::milliseconds{250};

    DesktopContract();
    ~DesktopContract() override;

    [[nodiscard]] Accessibility& accessibility() { return desktop->platform().accessibility(); }
    [[nodiscard]] RunLoop& runLoop() { return desktop->platform().runLoop(); }

    /// Lets what is posted run, and what follows from it.
    void finishTurn();

    /// The element of the focused window of this window's application.
    [[nodiscard]] AXElement elementOf(ContractWindow window);
    [[nodiscard]] AXElement applicationOf(ContractWindow window);

    std::unique_ptr<DesktopUnderContract> desktop = GetParam().make();
};

}  // namespace velmorand

/// Skips the running test, with the desktop's reason, when the desktop under contract lacks the ability.
#define VELMORAND_NEEDS(ability)                                                                                       \
    if (const auto reason = desktop->reasonAgainst(ability)) GTEST_SKIP() << *reason
