#include "desktop/settings/IgnoredAppsTest.h"

#include "desktop/demo/ProgramStart.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/SettingsFile.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <ranges>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

std::string listText(const std::vector<std::string>& identifiers) {
    return fmt::format("\"ignoredApps\":[{}]",
                       fmt::join(identifiers | std::views::transform([](const std::string& identifier) {
                                     return fmt::format("\"{}\"", identifier);
                                 }),
                                 ","));
}

}  // namespace

fs::path IgnoredAppsTest::applications() {
    return fs::path(desktop().environment().at("XDG_DATA_HOME")) / "applications";
}

fs::path IgnoredAppsTest::home() {
    return desktop().environment().at("HOME");
}

void IgnoredAppsTest::install(const std::string& identifier, const std::string& name, const std::string& more) {
    const auto written = writeSettingsFile(applications() / (identifier + ".desktop"),
                                           "[Desktop Entry]\nType=Application\nName=" + name + "\n" + more);
    ASSERT_TRUE(written) << written.error();
}

void IgnoredAppsTest::writeEntry(const fs::path& fromHome, const std::string& lines) {
    const auto written = writeSettingsFile(home() / fromHome, "[Desktop Entry]\n" + lines);
    ASSERT_TRUE(written) << written.error();
}

void IgnoredAppsTest::storeIgnored(const std::vector<std::string>& identifiers) {
    const auto written =
        writeSettingsFile(storedSettingsFile(desktop().environment()), "{" + listText(identifiers) + "}");
    ASSERT_TRUE(written) << written.error();
}

void IgnoredAppsTest::openPane(const Environment& additions) {
    Environment all{{"XDG_DATA_DIRS", desktop().environment().at("XDG_RUNTIME_DIR")}};
    for (const auto& [name, value] : additions) all[name] = value;
    ASSERT_NO_FATAL_FAILURE(startProgram(all));
    ASSERT_NO_FATAL_FAILURE(openWindow());
    choosePane("Ignored Apps");
    expectShown("", "Changes take effect immediately. No restart required.");
}

void IgnoredAppsTest::openPaneWithTwo() {
    install("org.example.Editor", "Editor");
    install("org.example.Paintbox", "Paintbox");
    openPane();
}

void IgnoredAppsTest::openChooser() {
    press("push button", "Add App...");
    expectShown("dialog", question);
    EXPECT_TRUE(getsKeyboard("Search"));
}

void IgnoredAppsTest::ignore(const std::string& name) {
    openChooser();
    press("check box", name);
    press("push button", "Ignore");
    expectShown("list item", name);
}

bool IgnoredAppsTest::areIgnored(const std::vector<std::string>& identifiers) {
    return isStored(listText(identifiers));
}

std::string IgnoredAppsTest::focused() {
    const AccessibleTree seen = tree();
    std::string name;
    for (const AccessibleObject& object : seen.objects()) {
        const bool isContainer = object.role == "frame" || object.role == "filler" || object.role == "dialog";
        if (object.is(AccessibleState::focused) && !isContainer) name = object.name;
    }
    return name;
}

bool IgnoredAppsTest::getsKeyboard(std::string_view name) {
    return observer().waitUntil([&] { return focused() == name; });
}

void IgnoredAppsTest::tabTo(std::string_view name) {
    constexpr int most = 20;
    std::string before = focused();
    for (int tabs = 0; tabs < most && before != name; ++tabs) {
        keyboard().press(Key::tab);
        observer().waitUntil([&] { return focused() != before; }, std::chrono::seconds(2));
        before = focused();
    }
    EXPECT_EQ(before, name);
}

void IgnoredAppsTest::resizeToMinimum() {
    Pager pager(observer());
    const auto placed = pager.place(window(), {100, 100, 722, 545}, 30);
    ASSERT_TRUE(placed) << placed.error();
}

}  // namespace velmorand::desktop
