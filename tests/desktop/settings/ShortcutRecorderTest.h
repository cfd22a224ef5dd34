#pragma once

#include "desktop/settings/SettingsWindowTest.h"

#include <optional>
#include <string>
#include <string_view>

namespace velmorand::desktop {

/// The Shortcuts pane, and the recorder that its rows open.
class ShortcutRecorderTest : public SettingsWindowTest {
protected:
    static constexpr std::string_view recorderTitle = "Record Shortcut";

    /// Lays the document out that the program finds when it starts.
    void store(std::string_view document);
    /// Starts the program, which registers so many shortcuts, and shows the pane.
    void openPane(std::size_t shortcuts);
    void openPane();

    /// Presses the row over the accessibility bus; returns when the recorder has the keyboard.
    void record(std::string_view action);
    /// Returns when a recorder has come up and has the keyboard.
    void waitForRecorder();
    [[nodiscard]] xcb_window_t recorder() const { return recorder_; }
    /// Waits until the recorder is gone and every shortcut is registered again.
    [[nodiscard]] bool recorderGoes();
    /// The same, and the settings window has the keyboard again.
    [[nodiscard]] bool recordingEnds();
    /// Whether another client can have the whole keyboard now.
    [[nodiscard]] bool keyboardIsFree();

    /// What the row says of itself; waits until it says so. The last that was seen.
    [[nodiscard]] std::string waitForShortcut(std::string_view action, std::string_view spoken);

    /// How often the program has taken up a shortcut of the action.
    [[nodiscard]] int dispatches(std::string_view action);
    /// Presses the combination and sees whether the action is performed. One that works, pressed behind it, shows that
    /// nothing was only slow.
    [[nodiscard]] bool performs(std::string_view action, std::initializer_list<Key> modifiers, Key key);

private:
    xcb_window_t recorder_ = XCB_WINDOW_NONE;
    std::uintmax_t logBefore_ = 0;
};

}  // namespace velmorand::desktop
