#pragma once

#include "platform/LoginItemService.h"
#include "platform/RecorderPanelHost.h"
#include "platform/StatusBar.h"
#include "platform/UserNotificationCenter.h"
#include "platform/contract/DesktopUnderContract.h"

#include <expected>
#include <memory>
#include <string>
#include <vector>

/// The suites to instantiate for a platform, each with INSTANTIATE_TEST_SUITE_P and `nameOfDesktop`.
namespace velmorand {

class AccessibilityContract : public DesktopContract {};

class AccessibilityWriteContract : public DesktopContract {
protected:
    [[nodiscard]] std::optional<AXError> writePosition(const AXElement& element, Point position);
    [[nodiscard]] std::optional<AXError> writeSize(const AXElement& element, Size size);
    /// The frame that the platform reads.
    [[nodiscard]] std::optional<Rect> readFrame(const AXElement& element);
};

/// The desktop's application object runs once in each of these tests.
class ApplicationContract : public DesktopContract {};

class BundleContract : public DesktopContract {};

class DisplaysContract : public DesktopContract {};

class HotKeyServiceContract : public DesktopContract {
protected:
    /// Installs a handler that notes the id of every press.
    void install();
    /// Registers under the number `id` and expects success.
    void registerKey(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id);
    /// Runs the loop until this many presses were noted; answers the ids.
    [[nodiscard]] std::vector<std::uint32_t> waitForPresses(std::size_t count);
    /// Presses a key that is registered for this purpose and waits for it: everything pressed before was delivered.
    void waitForEverythingPressed();

    std::vector<std::uint32_t> pressed;
};

class LogContract : public DesktopContract {};

/// The program is installed at the beginning of each of these tests, and its login item not registered.
class LoginItemServiceContract : public DesktopContract {
protected:
    void SetUp() override { desktop->setInstalled(true); }

    [[nodiscard]] LoginItemService& service() { return desktop->platform().loginItemService(); }
};

class NotificationCenterContract : public DesktopContract {};

class RecorderPanelHostContract : public DesktopContract {
protected:
    [[nodiscard]] RecorderPanelHost& host() { return desktop->platform().recorderPanelHost(); }
    /// Events that note what they are told.
    [[nodiscard]] RecorderPanelEvents noting();
    /// Shows a panel that notes its events and waits until it has the keyboard.
    void showAsKey();
    /// Waits until so many keys, closes and resignations were told, and sees that no more are.
    void waitForTold(std::size_t count);

    std::vector<std::string> told;
    std::vector<RecorderKeyEvent> keys;
    std::vector<std::uint64_t> held;
};

class RunLoopContract : public DesktopContract {};

/// Each of these tests has a status item with a menu that has `lines` at each opening and notes what is told.
class StatusBarContract : public DesktopContract {
protected:
    void SetUp() override;

    [[nodiscard]] StatusBar& bar() { return desktop->platform().statusBar(); }
    /// Waits until exactly this was told.
    [[nodiscard]] bool waitForTold(const std::vector<std::string>& expected);

    std::vector<MenuItem> lines;
    std::vector<std::string> told;
    std::vector<MenuItem> choices;
    std::unique_ptr<StatusItem> item;
};

class UserDefaultsContract : public DesktopContract {
protected:
    [[nodiscard]] UserDefaults& userDefaults();
    /// The bytes under the key; fails the test when they cannot be read.
    [[nodiscard]] std::optional<std::string> stored(std::string_view key);
    /// Stores the bytes and expects success.
    void store(std::string_view key, std::string_view bytes);
};

/// Notifications are allowed at the beginning of each of these tests.
class UserNotificationCenterContract : public DesktopContract {
protected:
    void SetUp() override;

    [[nodiscard]] UserNotificationCenter& center() { return desktop->platform().userNotificationCenter(); }
    /// Adds it and notes how it ended.
    void add(const std::string& identifier, const std::string& title, const std::string& body);
    /// Waits until this many have ended; answers whether all of them are shown.
    [[nodiscard]] bool allShown(std::size_t count);

    std::vector<std::expected<void, UserNotificationError>> results;
};

class WorkspaceContract : public DesktopContract {};

}  // namespace velmorand
