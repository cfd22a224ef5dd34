#include "desktop/settings/SettingsWindowTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;

class SettingsNavigationTest : public SettingsWindowTest {
protected:
    /// What has the keyboard, once something other than \p before has it.
    [[nodiscard]] std::string focusedAfter(const std::string& before) {
        std::string name;
        observer().waitUntil(
            [&] {
                const AccessibleTree seen = tree();
                name.clear();
                for (const AccessibleObject& object : seen.objects()) {
                    const bool isContainer = object.role == "frame" || object.role == "filler";
                    if (object.is(AccessibleState::focused) && !isContainer) name = object.name;
                }
                return !name.empty() && name != before;
            },
            std::chrono::seconds(2));
        return name;
    }
};

TEST_F(SettingsNavigationTest, TheSidebarShowsWhoItIsAndItsPanes) {
    ASSERT_NO_FATAL_FAILURE(open());

    expectAllShown({"Velmorand", "Arrange • Snap • Focus", "General", "Shortcuts", "Ignored Apps", "About",
                    "Version 0.1.0 (1)", "Help & Support"});
}

TEST_F(SettingsNavigationTest, EachPaneIsReachedByPointerAndByAssistiveTechnology) {
    ASSERT_NO_FATAL_FAILURE(open());
    click("", "About");
    expectShown("", "Velmorand collects no data.");
    EXPECT_TRUE(goes("Effortless window arrangement."));

    press("", "General");
    expectShown("", "Effortless window arrangement.");
    EXPECT_TRUE(goes("Velmorand collects no data."));
}

TEST_F(SettingsNavigationTest, AboutSaysWhoTheProgramIs) {
    ASSERT_NO_FATAL_FAILURE(open());
    choosePane("About");

    expectAllShown({"Arrange • Snap • Focus", "Version 0.1.0 (1)", "Support", "support@velmorand.app", "Privacy",
                    "Velmorand collects no data.", "Bundle ID", "app.velmorand.Velmorand",
                    "Thank you for using Velmorand. Happy arranging!"});
}

TEST_F(SettingsNavigationTest, TheLinksBeginAMailToTheContactAddress) {
    const fs::path home = desktop().environment().at("HOME");
    const fs::path applications = fs::path(desktop().environment().at("XDG_DATA_HOME")) / "applications";
    fs::create_directories(applications);
    const fs::path mail = home / "mail";
    std::ofstream(home / "mailer") << "#!/bin/sh\necho \"$1\" >>" << mail.string() << '\n';
    fs::permissions(home / "mailer", fs::perms::owner_all);
    std::ofstream(applications / "mailer.desktop")
        << "[Desktop Entry]\nType=Application\nName=Mailer\nExec=" << (home / "mailer").string()
        << " %u\nMimeType=x-scheme-handler/mailto;\n";
    std::ofstream(configuration("mimeapps.list")) << "[Default Applications]\nx-scheme-handler/mailto=mailer.desktop\n";
    const auto mails = [&] {
        std::ifstream stream(mail);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    };
    ASSERT_NO_FATAL_FAILURE(open());

    press("link", "Help & Support");
    EXPECT_TRUE(observer().waitUntil([&] { return mails() == "mailto:support@velmorand.app\n"; })) << mails();
    choosePane("About");
    // A click while the first mail is still on its way begins no second one.
    EXPECT_TRUE(observer().waitUntil([&] {
        click("link", "support@velmorand.app");
        return mails().starts_with("mailto:support@velmorand.app\nmailto:support@velmorand.app\n");
    })) << mails();

    EXPECT_TRUE(bus().focus(expectShown("link", "Help & Support")));
    const auto pause = [&] { observer().waitUntil([] { return false; }, std::chrono::milliseconds(1500)); };
    pause();
    const std::string before = mails();
    {
        const HeldKey held = keyboard().hold({}, Key::enter);
        pause();  // in which the server repeats it
    }
    EXPECT_TRUE(observer().waitUntil([&] { return mails().size() > before.size(); }));
    pause();
    const std::string begun = mails().substr(before.size());
    EXPECT_EQ(std::ranges::count(begun, '\n'), 1) << "a key that is held presses once\n" << begun;
}

TEST_F(SettingsNavigationTest, WithoutAMailProgramTheUserIsToldTheAddress) {
    ASSERT_NO_FATAL_FAILURE(startProgram({{"XDG_DATA_DIRS", desktop().environment().at("XDG_RUNTIME_DIR")}}));
    ASSERT_NO_FATAL_FAILURE(openWindow());

    press("link", "Help & Support");

    EXPECT_TRUE(logs("No mail program could be opened. Please write to support@velmorand.app.")) << program().log();
    EXPECT_TRUE(program().isRunning());
    expectShown("", "General");
}

TEST_F(SettingsNavigationTest, TheKeyboardReachesEverythingInTheOrderInWhichItIsSeen) {
    ASSERT_NO_FATAL_FAILURE(open());
    std::vector<std::string> reached;
    std::string last;
    for (int presses = 0; presses < 20; ++presses) {
        keyboard().press(Key::tab);
        last = focusedAfter(last);
        if (!reached.empty() && last == reached.front()) break;
        reached.push_back(last);
    }
    const auto first = std::ranges::find(reached, "General");
    std::ranges::rotate(reached, first);
    EXPECT_THAT(reached, ElementsAre("General", "Shortcuts", "Ignored Apps", "About", "Help & Support", "Check Status",
                                     "Open Settings...", "Launch at Login", "Keep Windows Within Visible Screen Area",
                                     "Enable Window Transitions", "Outer Margin (Padding)", "Inner Gap"));
}

TEST_F(SettingsNavigationTest, APressCountsHoweverLongItIsHeld) {
    ASSERT_NO_FATAL_FAILURE(open());
    const PixelRect about = expectShown("", "About").frame.value_or(PixelRect{});
    pointer().moveTo(about.x + 40, about.y + 18);
    pointer().press(PointerButton::left);
    observer().waitUntil([] { return false; }, std::chrono::milliseconds(1200));
    pointer().release(PointerButton::left);
    expectShown("", "Velmorand collects no data.");
}

TEST_F(SettingsNavigationTest, EveryControlSaysWhatItIsAndDoesSomething) {
    ASSERT_NO_FATAL_FAILURE(open());
    for (const auto& [pane, text] :
         {std::pair{"General", "Effortless window arrangement."}, std::pair{"Shortcuts", "Reset Defaults"},
          std::pair{"Ignored Apps", "Add App..."}, std::pair{"About", "Velmorand collects no data."}}) {
        choosePane(pane);
        expectShown("", text);
        const AccessibleTree seen = tree();
        for (const AccessibleObject& object : seen.objects()) {
            if (!object.is(AccessibleState::showing) || !object.is(AccessibleState::focusable)) continue;
            if (object.role == "frame" || object.role == "application") continue;
            EXPECT_FALSE(object.name.empty()) << pane << ": a " << object.role << " without a name";
            EXPECT_TRUE(!object.actions.empty() || object.value) << pane << ": " << object.name << " does nothing";
        }
    }
}

}  // namespace
}  // namespace velmorand::desktop
