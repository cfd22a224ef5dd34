#include "desktop/x11/X11RecorderTest.h"
#include "platform/linux/support/ForkedProcess.h"
#include "platform/linux/x11/X11KeyboardGrab.h"
#include "platform/simulated/SimulatedRunLoop.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <ostream>
#include <span>

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

TEST_P(X11RecorderManagedTest, OpensInTheMiddleActiveAndWithTheWholeKeyboard) {
    showAsKey();

    EXPECT_TRUE(observer().waitUntil([this] { return observer().activeWindow() == panelWindow(); }));
    const auto frame = observer().clientRect(panelWindow());
    ASSERT_TRUE(frame);
    EXPECT_NEAR(frame->x + frame->width / 2, 640, 30);
    EXPECT_NEAR(frame->y + frame->height / 2, 400, 30);
    EXPECT_TRUE(observer().sizeLimits(panelWindow()).isFixed());
    EXPECT_THAT(log().lines(), IsEmpty());
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
    host().show(content(), noting());
    EXPECT_TRUE(runUntil([this] { return !keyboardIsFree(); }));
}

TEST_P(X11RecorderManagedTest, ShownAnewOnlyTheNewPanelTells) {
    showAsKey();
    int toldToFirst = 0;
    host().show(content(), {.keyDown = [&](const RecorderKeyEvent&) { ++toldToFirst; },
                            .modifiersChanged = {},
                            .closed = [&] { ++toldToFirst; },
                            .resignedKey = [&] { ++toldToFirst; }});
    static_cast<void>(runUntil([this] { return !keyboardIsFree(); }));
    host().show(content(), noting());
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
    host().update(content());
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
    const RunLoop::Timer later = runLoop.after(std::chrono::milliseconds(200), [&] {
        giveKeyboardBack();
        isGivenBack = true;
    });

    EXPECT_TRUE(runUntil([&] { return isGivenBack && !keyboardIsFree(); }));
    EXPECT_THAT(toldKeys({{Key::leftAlt, Key::f4}}), ElementsAre("key 118  option"));
    EXPECT_THAT(log().lines(), IsEmpty());
}

TEST_F(X11RecorderPanelTest, WithoutTheWholeKeyboardTheKeysOfItsWindowAreToldAndOneLineIsLogged) {
    start(WindowManagerKind::openbox);
    takeKeyboard();
    show();

    EXPECT_TRUE(runUntil([this] { return !log().lines().empty(); }));
    EXPECT_THAT(toldKeys({{Key::a}}), IsEmpty());
    giveKeyboardBack();
    settle();

    EXPECT_THAT(toldKeys({{Key::leftSuper, Key::a}, {Key::b}}), ElementsAre("key 0 a command", "key 11 b"));
    ASSERT_THAT(log().lines(), SizeIs(1));
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
    EXPECT_TRUE(runUntil([this] { return !log().lines().empty(); }));
    giveKeyboardBack();
    takeKeyboard();
    settle();
    giveKeyboardBack();

    EXPECT_THAT(toldKeys({{Key::a}}), ElementsAre("key 0 a"));
}

TEST_F(X11RecorderPanelTest, ShowsWhatItIsToldToInAWindowAsLargeAsThat) {
    start(WindowManagerKind::openbox);
    host().update(content());
    showAsKey();
    RecorderPanelContent longer = content();
    longer.heldModifierSymbols = {"\u2318"};
    pictureHeight = 600;

    host().update(longer);

    EXPECT_THAT(drawn, ElementsAre(content(), longer));
    EXPECT_TRUE(observer().waitUntil([this] { return observer().clientRect(panelWindow())->height == 600; }));
    EXPECT_THAT(toldKeys({{Key::a}}), ElementsAre("key 0 a"));
}

TEST_F(X11RecorderPanelTest, AnswersTheWindowManagersPing) {
    start(WindowManagerKind::none);
    showAsKey();
    XConnection& other = observer().connection();
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(other.raw(), other.root(), XCB_CW_EVENT_MASK, &events);
    const auto tree = other.reply<xcb_query_tree_reply_t>(xcb_query_tree(other.raw(), other.root()));
    ASSERT_NE(tree, nullptr);
    for (const xcb_window_t window : std::span(xcb_query_tree_children(tree.get()), tree->children_len)) {
        xcb_client_message_event_t ping{};
        ping.response_type = XCB_CLIENT_MESSAGE;
        ping.format = 32;
        ping.window = window;
        ping.type = other.atom("WM_PROTOCOLS");
        ping.data.data32[0] = other.atom("_NET_WM_PING");
        ping.data.data32[1] = 4711;
        ping.data.data32[2] = window;
        xcb_send_event(other.raw(), 0, window, 0, reinterpret_cast<const char*>(&ping));
    }
    bool isAnswered = false;
    xcb_flush(other.raw());

    EXPECT_TRUE(runUntil([&] {
        while (const auto event = XReply<xcb_generic_event_t>(xcb_poll_for_event(other.raw()))) {
            if ((event->response_type & 0x7FU) != XCB_CLIENT_MESSAGE) continue;
            const auto& answer = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            isAnswered |= answer.window == other.root() && answer.data.data32[1] == 4711;
        }
        return isAnswered;
    }));
}

TEST_F(X11RecorderPanelTest, ALostConnectionIsNoReasonToFall) {
    start(WindowManagerKind::openbox);
    showAsKey();

    hostileClient().killClient(panelWindow());

    EXPECT_TRUE(runUntil([this] { return connection().isLost(); }));
    EXPECT_TRUE(keyboardIsFree());
    host().update(content());
    sessionLock().lock();
    runPosted();
    host().close();
    host().show(content(), {});
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

TEST_F(X11RecorderPanelTest, OddTitlesDoNotMatter) {
    start(WindowManagerKind::openbox);
    RecorderPanelContent odd = content();
    odd.title = std::string(100'000, 'x') + "\xC3";
    host().show(odd, noting());
    ASSERT_TRUE(runUntil([this] { return !keyboardIsFree(); }));

    odd.title.clear();
    host().update(odd);

    EXPECT_THAT(toldKeys({{Key::a}}), ElementsAre("key 0 a"));
}

TEST_F(X11RecorderPanelTest, OpensOnTheDisplayOfTheActiveWindow) {
    open({.monitors = {{"left", {0, 0, 800, 600}, true}, {"right", {800, 0, 1000, 800}, false}}});
    startOnOpenDesktop();
    const xcb_window_t window = openWindow(TestWindow{.title = "Window"});
    ASSERT_TRUE(pager().place(window, {900, 100, 400, 300}));
    settle();

    showAsKey();

    const auto frame = observer().clientRect(panelWindow());
    ASSERT_TRUE(frame);
    EXPECT_NEAR(frame->x + frame->width / 2, 1300, 30);
    EXPECT_NEAR(frame->y + frame->height / 2, 400, 30);
}

}  // namespace
}  // namespace velmorand::desktop
