#pragma once

#include "desktop/harness/TestKeyboard.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/SessionLock.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/X11RecorderPanelHost.h"
#include "platform/simulated/SimulatedLog.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmorand::desktop {

/// A session that the test locks.
class TestSessionLock final : public SessionLock {
public:
    [[nodiscard]] Subscription whenLocked(std::function<void()> locked) override {
        locked_ = std::move(locked);
        return Subscription([this] { locked_ = nullptr; });
    }
    void lock() const {
        if (locked_) locked_();
    }

private:
    std::function<void()> locked_;
};

/// The recorder panel on a real X server. What it tells is noted as texts: "key 0 a", "key 0 a shift command",
/// "held shift", "held", "closed", "resigned".
class X11RecorderTest : public X11Test {
protected:
    static constexpr std::string_view title = "Recorder";

    ~X11RecorderTest() override;

    /// Opens the desktop and makes the host.
    void start(WindowManagerKind windowManager);
    /// Makes the host on a desktop that is open.
    void startOnOpenDesktop();
    /// Shows a panel and does not wait for anything.
    void show();
    /// Shows a panel and waits until it has the keyboard.
    void showAsKey();

    /// Lets the platform take in everything that has happened, and do what follows from it.
    void settle();
    /// Waits until so many things were told and answers all that were since this was asked last.
    [[nodiscard]] std::vector<std::string> waitForTold(std::size_t count);
    [[nodiscard]] std::vector<std::string> takeTold();
    /// Presses the combinations one after the other and answers the keys that were told.
    [[nodiscard]] std::vector<std::string> toldKeys(const std::vector<std::vector<Key>>& combinations);

    /// Whether another client can have the keyboard now.
    [[nodiscard]] bool keyboardIsFree();
    [[nodiscard]] bool becomesFree() {
        return runUntil([this] { return keyboardIsFree(); });
    }
    /// The lines that say that another client keeps the keyboard. A slow window manager causes another line beside them.
    [[nodiscard]] std::vector<std::string> refusals();
    /// Another client takes the keyboard, or gives it back.
    void takeKeyboard();
    void giveKeyboardBack();
    void setLayout(const std::vector<std::string>& arguments);
    /// The window of the panel, as a pager sees it.
    [[nodiscard]] xcb_window_t panelWindow();

    [[nodiscard]] RecorderPanelHost& host() { return *host_; }
    [[nodiscard]] TestKeyboard& keyboard() { return *testKeyboard_; }
    [[nodiscard]] TestSessionLock& sessionLock() { return sessionLock_; }
    [[nodiscard]] SimulatedLog& log() { return log_; }
    [[nodiscard]] RecorderPanelEvents noting();

private:
    [[nodiscard]] static bool grabKeyboard(XConnection& client);
    static void ungrabKeyboard(XConnection& client);

    SimulatedLog log_;
    TestSessionLock sessionLock_;
    std::optional<TestKeyboard> testKeyboard_;
    std::optional<XConnection> otherClient_;
    std::optional<XConnection> views_;
    std::unique_ptr<X11Keyboard> keyboard_;
    std::unique_ptr<X11RecorderPanelHost> host_;
    std::vector<std::string> told_;
};

}  // namespace velmorand::desktop
