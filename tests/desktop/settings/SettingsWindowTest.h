#pragma once

#include "desktop/harness/AccessibilityBus.h"
#include "desktop/harness/TestDesktop.h"
#include "desktop/harness/TestKeyboard.h"
#include "desktop/harness/TestPointer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand::desktop {

/// The settings window of the built program on a desktop, read and worked over the accessibility bus, by keyboard and by
/// pointer.
class SettingsWindowTest : public testing::Test {
protected:
    static constexpr std::string_view title = "Velmorand Settings";

    /// Makes the desktop; the test starts the program when it has laid out what that finds.
    void SetUp() override;
    void TearDown() override;
    [[nodiscard]] virtual DesktopOptions desktopOptions() const;

    /// Returns when its shortcuts are registered.
    void startProgram(const Environment& additions = {});
    /// Where it finds preferences by which it registers so many.
    void startProgram(const Environment& additions, std::size_t shortcuts);
    /// As the user does: by starting the program a second time. Returns when the window is on screen.
    void openWindow();
    /// startProgram() and openWindow().
    void open();
    /// Ends the program; its status.
    ExitStatus endProgram();
    /// That the program fails is what is tested.
    void expectBadEnd() { endsBadly_ = true; }

    /// What assistive technology is told now.
    [[nodiscard]] AccessibleTree tree() { return bus_->treeOf(*program_); }
    /// Waits for it to be shown; the test fails when it is not in time.
    AccessibleObject expectShown(std::string_view role, std::string_view name);
    void expectAllShown(const std::vector<std::string_view>& names);
    /// Waits until nothing of the name is shown.
    [[nodiscard]] bool goes(std::string_view name);
    /// Does what the object does, over the accessibility bus.
    void press(std::string_view role, std::string_view name);
    /// The same with the pointer, in its middle.
    void click(std::string_view role, std::string_view name);
    /// Shows the pane.
    void choosePane(std::string_view name) { press("", name); }
    [[nodiscard]] bool isChecked(std::string_view name);
    [[nodiscard]] bool becomesChecked(std::string_view name, bool checked);

    /// The stored document, empty for none.
    [[nodiscard]] std::string stored() const;
    /// Waits until the document holds the text.
    [[nodiscard]] bool isStored(std::string_view text);

    [[nodiscard]] TestDesktop& desktop() { return *desktop_; }
    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }
    [[nodiscard]] AccessibilityBus& bus() { return *bus_; }
    [[nodiscard]] ChildProcess& program() { return *program_; }
    [[nodiscard]] TestKeyboard& keyboard() { return *keyboard_; }
    [[nodiscard]] TestPointer& pointer() { return *pointer_; }
    [[nodiscard]] xcb_window_t window() const { return window_; }
    /// Whether the program logs the line in time.
    [[nodiscard]] bool logs(std::string_view line);
    [[nodiscard]] std::filesystem::path configuration(const std::string& file) const;

private:
    std::unique_ptr<TestDesktop> desktop_;
    std::unique_ptr<AccessibilityBus> bus_;
    std::optional<ChildProcess> program_;
    std::optional<TestKeyboard> keyboard_;
    std::optional<TestPointer> pointer_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    bool endsBadly_ = false;
};

}  // namespace velmorand::desktop
