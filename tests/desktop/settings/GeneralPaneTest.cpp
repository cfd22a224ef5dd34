#include "desktop/harness/Pager.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/settings/SettingsWindowTest.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view missing = "Accessibility permission is required to arrange windows.";
constexpr std::string_view ready = "Velmorand is ready to arrange your windows.";
constexpr std::string_view hint =
    "If no system prompt appears, enable Velmorand manually in System Settings → Privacy & Security → Accessibility.";
constexpr std::string_view duration = "Transition Duration";

class GeneralPaneTest : public SettingsWindowTest {
protected:
    [[nodiscard]] double valueOf(std::string_view slider) { return expectShown("slider", slider).value.value_or(-1); }
    void setValue(std::string_view slider, double value) {
        EXPECT_TRUE(bus().setValue(expectShown("slider", slider), value)) << slider;
    }
    /// Turns the wheel of nothing: scrolls what is below the edge into sight by giving it the keyboard.
    void reveal(std::string_view role, std::string_view name) {
        EXPECT_TRUE(bus().focus(expectShown(role, name))) << name;
        const auto isInside = [&] {
            const AccessibleTree seen = tree();
            const AccessibleObject* object = seen.find(role, name);
            const auto client = observer().clientRect(window());
            return object != nullptr && object->frame && client && object->frame->y >= client->y &&
                   object->frame->bottom() <= client->bottom();
        };
        EXPECT_TRUE(observer().waitUntil(isInside)) << name << " stays out of sight";
    }
};

TEST_F(GeneralPaneTest, EveryTextIsWhereItBelongs) {
    ASSERT_NO_FATAL_FAILURE(open());

    expectAllShown({"Effortless window arrangement.",
                    "Arrange, snap, and focus with a calm, distraction-free workflow.", "Accessibility", ready,
                    "Check Status", "Open Settings...", "Behavior", "Launch at Login",
                    "Start Velmorand automatically when you log in.", "Keep Windows Within Visible Screen Area",
                    "Respect the menu bar and Dock when arranging windows.", "Enable Window Transitions",
                    "Animate window position and size changes smoothly.", "Outer Margin (Padding)",
                    "Spacing between windows and screen edges.", "Inner Gap", "Spacing between adjacent windows."});
    EXPECT_FALSE(tree().shows(hint));
    EXPECT_FALSE(tree().shows(missing));
}

TEST_F(GeneralPaneTest, ASwitchChangesTheDocumentAtOnceBeItPressedClickedOrReachedByKeys) {
    ASSERT_NO_FATAL_FAILURE(open());
    const std::string_view clamp = "Keep Windows Within Visible Screen Area";
    ASSERT_TRUE(isChecked(clamp));

    press("check box", clamp);
    EXPECT_TRUE(becomesChecked(clamp, false));
    EXPECT_TRUE(isStored(R"("snapToVisibleArea":false)")) << stored();

    click("check box", clamp);
    EXPECT_TRUE(becomesChecked(clamp, true));
    EXPECT_TRUE(isStored(R"("snapToVisibleArea":true)")) << stored();

    EXPECT_TRUE(bus().focus(expectShown("check box", clamp)));
    keyboard().press(Key::space);
    EXPECT_TRUE(becomesChecked(clamp, false));
    EXPECT_TRUE(isStored(R"("snapToVisibleArea":false)")) << stored();
}

TEST_F(GeneralPaneTest, TheDurationRowComesAndGoesWithTheTransitionsAndItsValueIsKept) {
    ASSERT_NO_FATAL_FAILURE(open());
    const bool areOn = isChecked("Enable Window Transitions");
    if (!areOn) press("check box", "Enable Window Transitions");
    expectAllShown({duration, "How quickly windows move into place."});
    setValue(duration, 0.31);
    ASSERT_TRUE(isStored(R"("animationDuration":0.31)")) << stored();

    press("check box", "Enable Window Transitions");
    EXPECT_TRUE(goes("How quickly windows move into place."));
    EXPECT_EQ(tree().find("slider", duration), nullptr);
    EXPECT_TRUE(isStored(R"("enableAnimations":false)")) << stored();
    EXPECT_TRUE(stored().contains(R"("animationDuration":0.31)")) << stored();

    press("check box", "Enable Window Transitions");
    expectAllShown({duration, "0.31 s"});
}

TEST_F(GeneralPaneTest, SlidersStoreValuesOnTheirSteps) {
    ASSERT_NO_FATAL_FAILURE(open());

    setValue("Outer Margin (Padding)", 12.4);
    EXPECT_TRUE(isStored(R"("outerPadding":12)")) << stored();
    expectShown("", "12 px");
    setValue("Inner Gap", 7.6);
    EXPECT_TRUE(isStored(R"("innerGap":8)")) << stored();
    expectShown("", "8 px");
    setValue("Inner Gap", 900);
    EXPECT_TRUE(isStored(R"("innerGap":50)")) << stored();
    setValue("Inner Gap", -3);
    EXPECT_TRUE(isStored(R"("innerGap":0)")) << stored();
}

TEST_F(GeneralPaneTest, TheKeysMoveASliderByItsStep) {
    ASSERT_NO_FATAL_FAILURE(open());
    setValue("Inner Gap", 10);
    ASSERT_TRUE(isStored(R"("innerGap":10)")) << stored();
    reveal("slider", "Inner Gap");

    keyboard().press(Key::right);
    keyboard().press(Key::right);
    keyboard().press(Key::left);
    EXPECT_TRUE(isStored(R"("innerGap":11)")) << stored();
}

TEST_F(GeneralPaneTest, ADragWritesOnce) {
    ASSERT_NO_FATAL_FAILURE(open());
    setValue("Inner Gap", 10);
    ASSERT_TRUE(isStored(R"("innerGap":10)")) << stored();
    reveal("slider", "Inner Gap");
    const PixelRect frame = expectShown("slider", "Inner Gap").frame.value_or(PixelRect{});
    ASSERT_GT(frame.width, 50) << frame.text();
    const fs::path folder = configuration("velmorand");
    // Every write gives the document a new file.
    const auto inode = [&] {
        struct stat status{};
        return stat((folder / "VelmorandPreferencesState").c_str(), &status) == 0 ? status.st_ino : 0;
    };
    std::vector<ino_t> files{inode()};
    const auto note = [&] {
        if (const ino_t now = inode(); now != files.back()) files.push_back(now);
        return false;
    };

    const int y = frame.y + frame.height / 2;
    const int start = frame.x + 9 + (frame.width - 18) * 10 / 50;
    pointer().moveTo(start, y);
    pointer().press(PointerButton::left);
    for (int x = start; x <= start + 60; x += 3) {
        pointer().moveTo(x, y);
        observer().waitUntil(note, std::chrono::milliseconds(30));
    }
    pointer().release(PointerButton::left);
    observer().waitUntil(note, std::chrono::milliseconds(800));

    EXPECT_EQ(files.size(), 2U) << "one write for the whole drag";
    EXPECT_GT(valueOf("Inner Gap"), 20);
}

TEST_F(GeneralPaneTest, AValueSetJustBeforeQuittingIsThereAfterTheNextStart) {
    ASSERT_NO_FATAL_FAILURE(open());
    setValue("Outer Margin (Padding)", 33);
    EXPECT_TRUE(endProgram().isSuccess());

    EXPECT_TRUE(stored().contains(R"("outerPadding":33)")) << stored();
    ASSERT_NO_FATAL_FAILURE(open());
    expectShown("", "33 px");
    EXPECT_EQ(valueOf("Outer Margin (Padding)"), 33);
}

TEST_F(GeneralPaneTest, MissingTrustShowsAndClearsByCheckingTheStatus) {
    ASSERT_NO_FATAL_FAILURE(open());
    desktop().stopWindowManager();
    press("push button", "Check Status");
    expectAllShown({missing, hint});
    EXPECT_FALSE(tree().shows(ready));

    const auto back = desktop().replaceWindowManager({.kind = WindowManagerKind::openbox});
    ASSERT_TRUE(back) << back.error();
    ASSERT_TRUE(observer().waitForWindowManager());
    press("push button", "Check Status");
    expectShown("", ready);
    EXPECT_TRUE(goes(hint));
}

TEST_F(GeneralPaneTest, MissingTrustClearsByItselfWhenTheUserComesBackToTheWindow) {
    auto other = desktop().start(terminalWindow({.title = "Other"}));
    ASSERT_TRUE(other) << other.error();
    const auto otherWindow = observer().findWindow("Other");
    ASSERT_TRUE(otherWindow) << otherWindow.error();
    ASSERT_NO_FATAL_FAILURE(open());
    desktop().stopWindowManager();
    press("push button", "Check Status");
    expectShown("", missing);
    const auto back = desktop().replaceWindowManager({.kind = WindowManagerKind::openbox});
    ASSERT_TRUE(back) << back.error();
    Pager pager(observer());
    ASSERT_TRUE(pager.activate(*otherWindow));

    ASSERT_TRUE(pager.activate(window()));

    expectShown("", ready);
}

TEST_F(GeneralPaneTest, ACopyThatIsNotInstalledSaysSoUnderLaunchAtLogin) {
    ASSERT_NO_FATAL_FAILURE(open());
    expectShown("", "Launch at Login is unavailable for this copy of the app.");
    EXPECT_FALSE(isChecked("Launch at Login"));

    press("check box", "Launch at Login");

    EXPECT_TRUE(becomesChecked("Launch at Login", false));
    EXPECT_FALSE(fs::exists(configuration("autostart/app.velmorand.Velmorand.desktop")));
}

class InstalledGeneralPaneTest : public GeneralPaneTest {
protected:
    void SetUp() override {
        GeneralPaneTest::SetUp();
        const fs::path folder = fs::path(desktop().environment().at("XDG_DATA_HOME")) / "applications";
        fs::create_directories(folder);
        std::ofstream(folder / "app.velmorand.Velmorand.desktop")
            << "[Desktop Entry]\nType=Application\nName=Velmorand\nExec=velmorand\n";
    }
    [[nodiscard]] fs::path entry() const { return configuration("autostart/app.velmorand.Velmorand.desktop"); }
};

TEST_F(InstalledGeneralPaneTest, LaunchAtLoginIsSwitchedOnAndOff) {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_FALSE(isChecked("Launch at Login"));

    click("check box", "Launch at Login");
    EXPECT_TRUE(becomesChecked("Launch at Login", true));
    EXPECT_TRUE(fs::exists(entry()));

    press("check box", "Launch at Login");
    EXPECT_TRUE(becomesChecked("Launch at Login", false));
    EXPECT_FALSE(fs::exists(entry()));
}

TEST_F(InstalledGeneralPaneTest, AControlAtTheEdgeStaysUnderThePointerThatPressesIt) {
    ASSERT_NO_FATAL_FAILURE(open());
    Pager(observer()).requestFrame(window(), {100, 60, 720, 520});
    const auto inner = [&] { return observer().clientRect(window()).value_or(PixelRect{}); };
    ASSERT_TRUE(observer().waitUntil([&] { return inner().width == 720 && inner().height == 520; }));
    const std::string_view transitions = "Enable Window Transitions";
    ASSERT_TRUE(observer().waitUntil([&] {
        const auto box = expectShown("check box", transitions).frame.value_or(PixelRect{});
        return box.bottom() <= inner().bottom() && box.bottom() + 24 > inner().bottom();
    })) << "it is not at the edge, where the pane would scroll to show it with room around it";

    const PixelRect box = expectShown("check box", transitions).frame.value_or(PixelRect{});
    pointer().moveTo(box.x + box.width / 2, box.y + box.height / 2);
    pointer().press(PointerButton::left);
    const bool hasMoved = observer().waitUntil([&] { return expectShown("check box", transitions).frame != box; },
                                               std::chrono::milliseconds(300));
    pointer().release(PointerButton::left);

    EXPECT_FALSE(hasMoved);
    EXPECT_TRUE(becomesChecked(transitions, true));
}

TEST_F(InstalledGeneralPaneTest, ALoginItemThatTheUserSwitchedOffIsPending) {
    fs::create_directories(entry().parent_path());
    std::ofstream(entry()) << "[Desktop Entry]\nType=Application\nName=Velmorand\nExec=velmorand\nHidden=true\n";
    ASSERT_NO_FATAL_FAILURE(open());

    expectAllShown({"Pending approval — enable Velmorand under Login Items to finish.", "Open Login Items"});
    EXPECT_TRUE(isChecked("Launch at Login"));
    press("check box", "Launch at Login");
    EXPECT_TRUE(becomesChecked("Launch at Login", false));
    EXPECT_TRUE(goes("Open Login Items"));
    EXPECT_FALSE(fs::exists(entry()));
}

TEST_F(InstalledGeneralPaneTest, ALoginItemThatCannotBeWrittenKeepsItsStateAndSaysWhy) {
    std::ofstream(configuration("autostart")) << "a file where a folder should be";
    ASSERT_NO_FATAL_FAILURE(open());

    press("check box", "Launch at Login");

    EXPECT_TRUE(observer().waitUntil([&] {
        return std::ranges::any_of(tree().objects(), [](const AccessibleObject& object) {
            return object.is(AccessibleState::showing) && object.name.contains("autostart");
        });
    })) << tree().text();
    EXPECT_TRUE(becomesChecked("Launch at Login", false));
}

TEST_F(GeneralPaneTest, AValueThatCannotBeStoredIsShownAndInForce) {
    ASSERT_NO_FATAL_FAILURE(open());
    const fs::path folder = configuration("velmorand");
    fs::remove_all(folder);
    std::ofstream(folder) << "a file where a folder should be";

    press("check box", "Keep Windows Within Visible Screen Area");

    EXPECT_TRUE(becomesChecked("Keep Windows Within Visible Screen Area", false));
    EXPECT_TRUE(logs("velmorand [preferences] error:")) << program().log();
}

}  // namespace
}  // namespace velmorand::desktop
