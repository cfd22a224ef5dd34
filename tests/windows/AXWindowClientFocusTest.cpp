#include "support/DesktopFixture.h"
#include "windows/AXWindowClient.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

LogLine fallback(int count) {
    return {LogLevel::info, "ax", "falling back to window list, count " + std::to_string(count)};
}

/// Windows open in front of the others, so the last one opened is the first of the window list.
class AXWindowClientFocusTest : public DesktopFixture {
protected:
    /// Neither of the two direct questions leads to a window.
    void askOnlyTheList() {
        application().focusedWindow.reset();
        application().mainWindow.reset();
    }

    SimulatedWindowID openDialog(double width, double height, const std::string& name = "window") {
        const SimulatedWindowID id = openWindow({100, 100, width, height}, name);
        window(id).subrole = "AXDialog";
        return id;
    }

    [[nodiscard]] std::optional<AXElement> found() { return valueOf(axClient->focusedWindow(applicationElement())); }
};

TEST_F(AXWindowClientFocusTest, TheFocusedWindowIsTakenWhenItIsEligible) {
    const SimulatedWindowID main = openWindow();
    const SimulatedWindowID focused = openWindow();
    application().mainWindow = main;

    EXPECT_EQ(found(), elementOf(focused));
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(AXWindowClientFocusTest, TheFocusedWindowGetsItsTimeoutBeforeItIsAskedAnything) {
    openWindow();

    ASSERT_NE(found(), std::nullopt);
    EXPECT_THAT(accessibility.calls(),
                ElementsAre("copy AXFocusedWindow of application", "timeout 0.75 of window", "copy AXRole of window",
                            "copy AXMinimized of window", "copy AXFullScreen of window",
                            "settable AXPosition of window", "settable AXSize of window"));
}

TEST_F(AXWindowClientFocusTest, AMinimisedFocusedWindowGivesWayToTheMainWindow) {
    const SimulatedWindowID main = openWindow(startFrame, "main");
    const SimulatedWindowID focused = openWindow(startFrame, "focused");
    application().mainWindow = main;
    window(focused).minimized = true;

    EXPECT_EQ(found(), elementOf(main));
    EXPECT_EQ(accessibility.count("timeout 0.75 of focused"), 1);
    EXPECT_EQ(accessibility.count("timeout 0.75 of main"), 1);
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(AXWindowClientFocusTest, AMissingFocusedWindowGivesWayToTheMainWindow) {
    const SimulatedWindowID main = openWindow();
    application().focusedWindow.reset();

    EXPECT_EQ(found(), elementOf(main));
}

TEST_F(AXWindowClientFocusTest, MinimisedFocusedAndMainWindowsGiveWayToTheList) {
    const SimulatedWindowID other = openWindow();
    const SimulatedWindowID minimised = openWindow();
    window(minimised).minimized = true;

    EXPECT_EQ(found(), elementOf(other));
    EXPECT_THAT(logLines(), ElementsAre(fallback(2)));
}

TEST_F(AXWindowClientFocusTest, TheFirstEligibleStandardWindowOfTheListIsTaken) {
    openWindow();
    const SimulatedWindowID second = openWindow();
    const SimulatedWindowID first = openWindow();
    window(first).fullScreen = true;
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(second));
}

TEST_F(AXWindowClientFocusTest, AStandardWindowWinsOverALargerOneThatIsNotStandard) {
    const SimulatedWindowID standard = openWindow();
    openDialog(1400, 850);
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(standard));
}

TEST_F(AXWindowClientFocusTest, AWindowWhoseSubroleCannotBeReadIsNotStandard) {
    const SimulatedWindowID standard = openWindow();
    const SimulatedWindowID mute = openWindow();
    window(mute).readErrors["AXSubrole"] = AXError::cannotComplete;
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(standard));
}

TEST_F(AXWindowClientFocusTest, AMinimisedStandardWindowGivesWayToAnEligibleDialog) {
    const SimulatedWindowID standard = openWindow();
    window(standard).minimized = true;
    const SimulatedWindowID dialog = openDialog(300, 200);
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(dialog));
}

TEST_F(AXWindowClientFocusTest, OfSeveralWindowsThatAreNotStandardTheLargestIsTaken) {
    openDialog(500, 400);
    const SimulatedWindowID largest = openDialog(600, 500);
    openDialog(900, 100);
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(largest));
}

TEST_F(AXWindowClientFocusTest, EachWindowsFrameIsReadOnceToFindTheLargest) {
    openDialog(500, 400, "back");
    openDialog(600, 500, "middle");
    openDialog(900, 100, "front");
    askOnlyTheList();

    ASSERT_NE(found(), std::nullopt);
    for (const char* name : {"back", "middle", "front"}) {
        EXPECT_EQ(accessibility.count(std::string("copy AXPosition of ") + name), 1);
        EXPECT_EQ(accessibility.count(std::string("copy AXSize of ") + name), 1);
    }
}

TEST_F(AXWindowClientFocusTest, OfWindowsOfEqualSizeTheFirstIsTaken) {
    openDialog(600, 400);
    openDialog(400, 600);
    const SimulatedWindowID first = openDialog(600, 400);
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(first));
}

TEST_F(AXWindowClientFocusTest, AWindowWhoseFrameCannotBeReadHasNoArea) {
    const SimulatedWindowID small = openDialog(20, 10);
    const SimulatedWindowID unreadable = openDialog(900, 800);
    window(unreadable).readErrors["AXSize"] = AXError::cannotComplete;
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(small));
}

TEST_F(AXWindowClientFocusTest, AWindowOfNegativeWidthAndHeightHasNoArea) {
    const SimulatedWindowID small = openDialog(20, 10);
    openDialog(-900, -800);
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(small));
}

TEST_F(AXWindowClientFocusTest, TheOnlyEligibleWindowIsTakenWithoutReadingItsFrame) {
    const SimulatedWindowID dialog = openDialog(300, 200);
    askOnlyTheList();

    EXPECT_EQ(found(), elementOf(dialog));
    EXPECT_EQ(accessibility.count("copy AXPosition of window"), 0);
    EXPECT_EQ(accessibility.count("copy AXSize of window"), 0);
}

TEST_F(AXWindowClientFocusTest, EveryWindowOfTheListGetsItsTimeoutBeforeItIsAskedInEachPass) {
    openDialog(300, 200, "back");
    openDialog(400, 300, "front");
    window(application().windows.front()).minimized = true;
    askOnlyTheList();

    ASSERT_NE(found(), std::nullopt);
    EXPECT_THAT(accessibility.calls(),
                ElementsAre("copy AXFocusedWindow of application", "copy AXMainWindow of application",
                            "copy AXWindows of application", "timeout 0.75 of front", "copy AXSubrole of front",
                            "timeout 0.75 of back", "copy AXSubrole of back", "timeout 0.75 of front",
                            "copy AXRole of front", "copy AXMinimized of front", "timeout 0.75 of back",
                            "copy AXRole of back", "copy AXMinimized of back", "copy AXFullScreen of back",
                            "settable AXPosition of back", "settable AXSize of back"));
}

TEST_F(AXWindowClientFocusTest, AnApplicationWithoutWindowsHasNoFocusedWindow) {
    EXPECT_EQ(failureOf(axClient->focusedWindow(applicationElement())), WindowOperationError::noFocusedWindow);
    EXPECT_THAT(logLines(), ElementsAre(fallback(0)));
}

TEST_F(AXWindowClientFocusTest, WithoutAnyEligibleWindowThereIsNoFocusedWindow) {
    window(openWindow()).minimized = true;
    window(openWindow()).role = "AXPopover";

    EXPECT_EQ(failureOf(axClient->focusedWindow(applicationElement())), WindowOperationError::noFocusedWindow);
    EXPECT_THAT(logLines(), ElementsAre(fallback(2)));
}

TEST_F(AXWindowClientFocusTest, AWindowListThatCannotBeReadCountsAsEmpty) {
    openWindow();
    askOnlyTheList();
    application().windowListError = AXError::cannotComplete;

    EXPECT_EQ(failureOf(axClient->focusedWindow(applicationElement())), WindowOperationError::noFocusedWindow);
    EXPECT_THAT(logLines(),
                ElementsAre(LogLine{LogLevel::error, "ax", "read windows failed AXError -25204"}, fallback(0)));
}

TEST_F(AXWindowClientFocusTest, AnApplicationThatEndedHasNoFocusedWindow) {
    const AXElement element = applicationElement();
    openWindow();
    desktop().removeProcess(pid);

    EXPECT_EQ(failureOf(axClient->focusedWindow(element)), WindowOperationError::noFocusedWindow);
    EXPECT_THAT(logLines(),
                ElementsAre(LogLine{LogLevel::error, "ax", "read windows failed AXError -25202"}, fallback(0)));
}

}  // namespace
}  // namespace velmorand
