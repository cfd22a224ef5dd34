#pragma once

#include "desktop/settings/SettingsWindowTest.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace velmorand::desktop {

/// The Ignored Apps pane and its chooser, on a desktop with the applications that a test installs and no others.
class IgnoredAppsTest : public SettingsWindowTest {
protected:
    static constexpr std::string_view question = "Choose applications for Velmorand to ignore";

    /// Those that the desktop lists.
    [[nodiscard]] std::filesystem::path applications();
    void install(const std::string& identifier, const std::string& name, const std::string& more = "Exec=true\n");
    /// Writes the entry of an application anywhere below the user's home.
    void writeEntry(const std::filesystem::path& fromHome, const std::string& lines);
    [[nodiscard]] std::filesystem::path home();
    /// Before the program starts.
    void storeIgnored(const std::vector<std::string>& identifiers);

    /// Starts the program and shows the pane.
    void openPane(const Environment& additions = {});
    /// The same with an editor and a paint program installed.
    void openPaneWithTwo();
    /// Opens the chooser over the accessibility bus; the search has the keyboard then.
    void openChooser();
    /// Chooses this application and ignores it.
    void ignore(const std::string& name);
    /// Whether exactly these are stored in time, in this order.
    [[nodiscard]] bool areIgnored(const std::vector<std::string>& identifiers);

    /// The name of what has the keyboard; empty when nothing has a name.
    [[nodiscard]] std::string focused();
    [[nodiscard]] bool getsKeyboard(std::string_view name);
    /// Goes on by the tab key until it has the keyboard; the test fails when it never gets it.
    void tabTo(std::string_view name);
    void resizeToMinimum();
};

}  // namespace velmorand::desktop
