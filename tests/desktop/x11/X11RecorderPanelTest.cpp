#include "desktop/x11/X11RecorderTest.h"
#include "platform/linux/support/ForkedProcess.h"
#include "platform/linux/x11/X11KeyboardGrab.h"
#include "platform/simulated/SimulatedRunLoop.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <ostream>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint32_t secondDesktop = 1;

class X11RecorderManagedTest : public X11RecorderTest, public testing::WithParamInterface<WindowManagerKind> {
protected:
    void SetUp() override { start(GetParam()); }
};

TEST_P(X11RecorderManagedTest, OpensActiveAndWithTheWholeKeyboard) {
    showAsKey();

    EXPECT_TRUE(observer().waitUntil([this] { return observer().activeWindow() == panelWindow(); }));
    EXPECT_THAT(refusals(), IsEmpty());
}

TEST_P(X11RecorderManagedTest, OpensActiveAboveAnotherWindow) {
    static_cast<void>(openWindow(TestWindow{.title = "Window"}));

    showAsKey();

    EXPECT_TRUE(observer().waitUntil([this] { return observer().activeWindow() == panelWindow(); }));
    EXPECT_THAT(takeTold(), IsEmpty());
}

TEST_P(X11RecorderManagedTest, CombinationsOfTheDesktopReachThePanelAlone) {
    const xcb_window_t window = openWindow(TestWindow{.title = "Window"});
    showAsKey();

    EXPECT_THAT(toldKeys({{Key::leftAlt, Key::f4},
                          {Key::leftAlt, Key::tab},
                          {Key::leftControl, Key::leftAlt, Key::left},
                          {Key::leftAlt, Key::space},
                          {Key::leftSuper, Key::d},
                          {Key::leftControl, Key::leftAlt, Key::leftSuper, Key::right},
                          {Key::escape}}),
                ElementsAre("key 118  option", "key 48  option", "key 123  control option", "key 49   option",
                            "key 2 d command", "key 124  control option command", "key 53 "));
    EXPECT_TRUE(observer().isViewable(window));
    EXPECT_TRUE(observer().waitUntil([this] { return observer().activeWindow() == panelWindow(); }));
}

TEST_P(X11RecorderManagedTest, ResignsWhenAnotherWindowBecomesActive) {
    const xcb_window_t window = openWindow(TestWindow{.title = "Window"});
    showAsKey();
    EXPECT_TRUE(observer().waitUntil([this] { return observer().activeWindow() == panelWindow(); }));
    settle();

    ASSERT_TRUE(pager().activate(window));

    EXPECT_THAT(waitForTold(1), ElementsAre("resigned"));
    EXPECT_TRUE(keyboardIsFree());
    keyboard().press({Key::leftSuper}, Key::a);
    EXPECT_THAT(takeTold(), IsEmpty());
    EXPECT_TRUE(observer().isViewable(panelWindow()));
}

TEST_P(X11RecorderManagedTest, TheWindowManagersCloseClosesIt) {
    showAsKey();

    ASSERT_TRUE(observer().waitUntil([this] { return observer().activeWindow() == panelWindow(); }));
    XConnection& other = observer().connection();
    other.sendToWindowManager(panelWindow(), "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, 2, 0, 0, 0});

    EXPECT_THAT(waitForTold(1), ElementsAre("closed"));
    EXPECT_TRUE(keyboardIsFree());
}

TEST_P(X11RecorderManagedTest, ResignsWhenItIsTakenOffTheScreen) {
    showAsKey();

    xcb_unmap_window(observer().connection().raw(), panelWindow());
    observer().connection().synchronise();

    EXPECT_THAT(waitForTold(1), ElementsAre("resigned"));
    EXPECT_TRUE(keyboardIsFree());
}

TEST_P(X11RecorderManagedTest, AWindowManagerThatEndsEndsNothingElse) {
    showAsKey();

    desktop().stopWindowManager();
    settle();
    host().close();

    EXPECT_TRUE(becomesFree());
    host().show(noting());
    EXPECT_TRUE(runUntil([this] { return !keyboardIsFree(); }));
}

TEST_P(X11RecorderManagedTest, ShownAnewOnlyTheNewPanelTells) {
    showAsKey();
    int toldToFirst = 0;
    host().show({.keyDown = [&](const RecorderKeyEvent&) { ++toldToFirst; },
                 .modifiersChanged = {},
                 .closed = [&] { ++toldToFirst; },
                 .resignedKey = [&] { ++toldToFirst; }});
    static_cast<void>(runUntil([this] { return !keyboardIsFree(); }));
    host().show(noting());
    ASSERT_TRUE(runUntil([this] { return !keyboardIsFree(); }));
    settle();

    EXPECT_THAT(toldKeys({{Key::a}}), ElementsAre("key 0 a"));
    EXPECT_EQ(toldToFirst, 0);
}

INSTANTIATE_TEST_SUITE_P(On, X11RecorderManagedTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         [](const auto& each) { return std::string(nameOf(each.param)); });

class X11RecorderOtherManagersTest : public X11RecorderManagedTest {};

TEST_P(X11RecorderOtherManagersTest, OpensActiveWithTheWholeKeyboard) {
    static_cast<void>(openWindow(TestWindow{.title = "Window"}));
    showAsKey();

    EXPECT_THAT(toldKeys({{Key::leftAlt, Key::f4}, {Key::leftSuper, Key::left}}),
                ElementsAre("key 118  option", "key 123  command"));
    host().close();
    EXPECT_TRUE(keyboardIsFree());
}

INSTANTIATE_TEST_SUITE_P(On, X11RecorderOtherManagersTest,
                         testing::Values(WindowManagerKind::fluxbox, WindowManagerKind::icewm, WindowManagerKind::marco,
                                         WindowManagerKind::i3, WindowManagerKind::awesome, WindowManagerKind::kwin),
                         [](const auto& each) { return std::string(nameOf(each.param)); });

class X11RecorderPanelTest : public X11RecorderTest {};

TEST_F(X11RecorderPanelTest, ResignsWhenTheDesktopChanges) {
    start(WindowManagerKind::openbox);
    showAsKey();

    XConnection& other = observer().connection();
    other.sendToWindowManager(other.root(), "_NET_CURRENT_DESKTOP", {secondDesktop, XCB_CURRENT_TIME, 0, 0, 0});

    EXPECT_THAT(waitForTold(1), ElementsAre("resigned"));
    EXPECT_TRUE(keyboardIsFree());
}

TEST_F(X11RecorderPanelTest, ResignsWhenTheFocusIsTakenWithoutAWindowManager) {
    start(WindowManagerKind::none);
    showAsKey();

    XConnection& other = observer().connection();
    xcb_set_input_focus(other.raw(), XCB_INPUT_FOCUS_POINTER_ROOT, other.root(), XCB_CURRENT_TIME);
    other.synchronise();

    EXPECT_THAT(waitForTold(1), ElementsAre("resigned"));
    EXPECT_TRUE(keyboardIsFree());
}

TEST_F(X11RecorderPanelTest, ResignsWhenTheSessionIsLocked) {
    start(WindowManagerKind::openbox);
    showAsKey();

    sessionLock().lock();

    EXPECT_TRUE(keyboardIsFree());  // at once: the lock screen wants it
    EXPECT_THAT(waitForTold(1), ElementsAre("resigned"));
    sessionLock().lock();
    EXPECT_THAT(takeTold(), IsEmpty());
    host().close();
    sessionLock().lock();
}

TEST_F(X11RecorderPanelTest, AWindowThatIsDestroyedIsClosed) {
    start(WindowManagerKind::openbox);
    showAsKey();

    hostileClient().destroyWindow(panelWindow());

    EXPECT_THAT(waitForTold(1), ElementsAre("closed"));
    EXPECT_TRUE(keyboardIsFree());
    host().close();
    EXPECT_THAT(takeTold(), IsEmpty());
}

TEST_F(X11RecorderPanelTest, GivesTheKeyboardBackWithTheCloseAndTellsNothingAfterwards) {
    start(WindowManagerKind::none);
    showAsKey();
    keyboard().press({Key::leftSuper}, Key::a);

    host().close();

    EXPECT_TRUE(keyboardIsFree());
    host().close();
    EXPECT_THAT(takeTold(), IsEmpty());
}

TEST_F(X11RecorderPanelTest, AKeyboardThatAnotherClientGivesBackInTimeIsTaken) {
    start(WindowManagerKind::openbox);
    takeKeyboard();
    show();
    bool isGivenBack = false;
    const RunLoop::Timer later = runLoop.after(std::chrono::milliseconds(60), [&] {
        giveKeyboardBack();
        isGivenBack = true;
    });

    EXPECT_TRUE(runUntil([&] { return isGivenBack && !keyboardIsFree(); }));
    EXPECT_THAT(toldKeys({{Key::leftAlt, Key::f4}}), ElementsAre("key 118  option"));
    EXPECT_THAT(refusals(), IsEmpty());
}

TEST_F(X11RecorderPanelTest, WithoutTheWholeKeyboardTheKeysOfItsWindowAreToldAndOneLineIsLogged) {
    start(WindowManagerKind::openbox);
    takeKeyboard();
    show();

    EXPECT_TRUE(runUntil([this] { return !refusals().empty(); }));
    EXPECT_THAT(toldKeys({{Key::a}}), IsEmpty());
    giveKeyboardBack();
    settle();

    EXPECT_THAT(toldKeys({{Key::leftSuper, Key::a}, {Key::b}}), ElementsAre("key 0 a command", "key 11 b"));
    EXPECT_THAT(refusals(), SizeIs(1));
    EXPECT_EQ(log().lines()[0].category, "shortcuts");
    host().close();
    EXPECT_TRUE(keyboardIsFree());
}

TEST_F(X11RecorderPanelTest, APanelThatDoesNotBecomeActiveSaysSoOnceAndTakesNoKeyboard) {
    start(WindowManagerKind::openbox);
    desktop().windowManager()->freeze();
    show();

    EXPECT_TRUE(runUntil([this] { return !log().lines().empty(); }));
    EXPECT_TRUE(keyboardIsFree());
    desktop().windowManager()->thaw();
    EXPECT_TRUE(runUntil([this] { return !keyboardIsFree(); })) << "it is active late";
    EXPECT_THAT(toldKeys({{Key::leftAlt, Key::f4}}), ElementsAre("key 118  option"));
    EXPECT_THAT(log().lines(), SizeIs(1));
}

TEST_F(X11RecorderPanelTest, AnotherProgramsGrabIsNoReasonToResign) {
    start(WindowManagerKind::openbox);
    takeKeyboard();
    show();
    EXPECT_TRUE(runUntil([this] { return !refusals().empty(); }));
    giveKeyboardBack();
    takeKeyboard();
    settle();
    giveKeyboardBack();

    EXPECT_THAT(toldKeys({{Key::a}}), ElementsAre("key 0 a"));
}

TEST_F(X11RecorderPanelTest, ALostConnectionIsNoReasonToFall) {
    start(WindowManagerKind::openbox);
    showAsKey();

    const xcb_window_t ours = xcb_generate_id(connection().raw());
    xcb_create_window(connection().raw(), XCB_COPY_FROM_PARENT, ours, connection().root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    settle();
    hostileClient().killClient(ours);

    EXPECT_TRUE(runUntil([this] { return connection().isLost(); }));
    EXPECT_TRUE(keyboardIsFree());
    sessionLock().lock();
    runPosted();
    host().close();
    host().show({});
    runPosted();
}

TEST_F(X11RecorderPanelTest, AProgramThatIsKilledGivesTheKeyboardBack) {
    start(WindowManagerKind::none);
    ForkedProcess program([](int output) {
        const auto connection = X11Connection::open();
        SimulatedRunLoop loop;
        X11KeyboardGrab grab(**connection, loop, (*connection)->root(), [](std::optional<int>) {});
        grab.acquire();
        tell(output, "asked");
        for (;;) pause();
    });
    ASSERT_TRUE(program.listenUntil([](const std::string& told) { return told == "asked"; },
                                    ForkedProcess::Clock::now() + patience));
    ASSERT_FALSE(keyboardIsFree());

    EXPECT_TRUE(WIFSIGNALED(program.kill()));

    EXPECT_TRUE(observer().waitUntil([this] { return keyboardIsFree(); }));
}

}  // namespace
}  // namespace velmorand::desktop
