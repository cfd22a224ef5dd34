#include "desktop/x11/PropertyContents.h"
#include "desktop/x11/X11Test.h"
#include "support/Printing.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::Field;

constexpr std::string_view activeWindow = "_NET_ACTIVE_WINDOW";
constexpr std::string_view clientList = "_NET_CLIENT_LIST";
constexpr std::string_view stackedList = "_NET_CLIENT_LIST_STACKING";
constexpr std::string_view currentDesktop = "_NET_CURRENT_DESKTOP";
constexpr std::string_view checkWindow = "_NET_SUPPORTING_WM_CHECK";
constexpr std::string_view abilities = "_NET_SUPPORTED";

/// Two windows, known to the platform, on a desktop whose root window other clients write on.
class X11HostileRootTest : public X11Test {
protected:
    void SetUp() override {
        open();
        other_ = openWindow(TestWindow{.title = "Other"});
        otherPid_ = lastClient().pid();
        front_ = openWindow(TestWindow{.title = "Front"});
        frontPid_ = lastClient().pid();
        ASSERT_TRUE(runUntil([this] { return isInFront(frontPid_); }));
        frontID_ = focusedWindow();
    }

    xcb_window_t root() { return observer().connection().root(); }

    void write(std::string_view property, const Content& content) {
        hostileClient().setProperty(root(), property, content.type, content.format, content.bytes);
        runPosted();
    }
    void writeWindows(std::string_view property, const std::vector<std::uint32_t>& windows) {
        write(property, {"windows", "WINDOW", 32, bytesOf(windows)});
    }

    /// Contents for a property of windows, or of numbers, that say nothing.
    std::vector<Content> malformedWindows() { return malformed({.type = "WINDOW"}, bytesOf({other_})); }
    static std::vector<Content> malformedNumbers() { return malformed({.type = "CARDINAL"}, numbers(1, 3)); }

    bool isInFront(std::int32_t pid) {
        const auto application = windowSystem().frontmostApplication();
        return application && application->pid == pid;
    }

    void expectMoves(WindowID window, const Rect& target) {
        const auto result = windowSystem().setFrame(window, target, soon());
        ASSERT_TRUE(result) << "AXError " << result.error().code;
        EXPECT_EQ(*result, target);
    }

    void expectFrontMoves() {
        expectMoves(frontID_, {100, 100, 400, 300});
        expectMoves(frontID_, {0, 0, 500, 350});
    }

    /// A window that no window manager looks after.
    xcb_window_t makeUnmanagedWindow(bool isShown) {
        XConnection& client = observer().connection();
        const xcb_window_t window = xcb_generate_id(client.raw());
        const std::uint32_t overridesRedirect = 1;
        xcb_create_window(client.raw(), XCB_COPY_FROM_PARENT, window, client.root(), 10, 10, 90, 70, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &overridesRedirect);
        if (isShown) xcb_map_window(client.raw(), window);
        client.synchronise();
        return window;
    }

    xcb_window_t makeDeadWindow() {
        const xcb_window_t window = makeUnmanagedWindow(false);
        hostileClient().destroyWindow(window);
        return window;
    }

    /// The number of something that is no window.
    std::uint32_t makePixmap() {
        XConnection& client = observer().connection();
        const xcb_pixmap_t pixmap = xcb_generate_id(client.raw());
        xcb_create_pixmap(client.raw(), client.screen().root_depth, pixmap, client.root(), 10, 10);
        client.synchronise();
        return pixmap;
    }

    xcb_window_t front_ = XCB_WINDOW_NONE;
    xcb_window_t other_ = XCB_WINDOW_NONE;
    std::int32_t frontPid_ = 0;
    std::int32_t otherPid_ = 0;
    WindowID frontID_;
};

TEST_F(X11HostileRootTest, AMalformedActiveWindowLeavesTheLastOneInFront) {
    for (const Content& content : malformedWindows()) {
        SCOPED_TRACE(content.name);
        write(activeWindow, content);
        EXPECT_TRUE(isInFront(frontPid_));
        EXPECT_EQ(windowSystem().focusedWindow(frontPid_, soon()), std::unexpected(AXError::noValue));
        expectFrontMoves();
    }
}

TEST_F(X11HostileRootTest, AnActiveWindowThatCannotBeOneLeavesTheLastOneInFront) {
    for (const std::uint32_t window :
         {makeDeadWindow(), root(), makeUnmanagedWindow(true), makeUnmanagedWindow(false), makePixmap(), 0xFFFFFFFFU}) {
        SCOPED_TRACE(window);
        writeWindows(activeWindow, {window, other_});
        EXPECT_TRUE(isInFront(frontPid_));
        EXPECT_EQ(windowSystem().focusedWindow(frontPid_, soon()), std::unexpected(AXError::noValue));
        expectFrontMoves();
    }
}

TEST_F(X11HostileRootTest, TheNextActiveWindowIsSeenAfterAllThat) {
    writeWindows(activeWindow, {makeDeadWindow()});
    writeWindows(activeWindow, {root()});
    ASSERT_TRUE(pager().activate(other_));

    EXPECT_TRUE(isInFront(otherPid_));
    EXPECT_EQ(focusedWindow().number, other_);
}

TEST_F(X11HostileRootTest, OneMalformedListOfWindowsIsMadeUpForByTheOther) {
    const auto stacked = observer().connection().numbers(root(), stackedList);
    for (const std::string_view property : {stackedList, clientList}) {
        for (const Content& content : malformedWindows()) {
            SCOPED_TRACE(content.name);
            write(property, content);
            EXPECT_THAT(windowSystem().windows(frontPid_, soon()).value(), ElementsAre(frontID_));
            expectFrontMoves();
        }
        writeWindows(stackedList, stacked);
    }
}

TEST_F(X11HostileRootTest, AListOfWindowsMayHoldAnything) {
    const std::vector<std::uint32_t> anything{
        0,          root(), makeDeadWindow(),         front_, other_, makePixmap(), front_,
        0xFFFFFFFF, root(), makeUnmanagedWindow(true)};
    writeWindows(stackedList, anything);
    writeWindows(clientList, anything);

    EXPECT_THAT(windowSystem().windows(frontPid_, soon()).value(), ElementsAre(frontID_));
    EXPECT_THAT(windowSystem().windows(otherPid_, soon()).value(), ElementsAre(Field(&WindowID::number, other_)));
    EXPECT_TRUE(isInFront(frontPid_));
    expectFrontMoves();
}

TEST_F(X11HostileRootTest, TheRootWindowIsNoWindowOfItsApplication) {
    const std::array<std::uint32_t, 1> pid{static_cast<std::uint32_t>(frontPid_)};
    hostileClient().setNumbers(root(), "_NET_WM_PID", "CARDINAL", pid);
    writeWindows(stackedList, {root()});
    const auto owner = static_cast<std::int32_t>(desktop().server().pid());

    EXPECT_THAT(windowSystem().windows(owner, soon()).value(), testing::IsEmpty());
}

TEST_F(X11HostileRootTest, ListsOfThousandsOfDeadWindowsKeepNothingFromBeingMoved) {
    std::vector<std::uint32_t> windows(5000);
    for (std::size_t i = 0; i < windows.size(); ++i) windows[i] = static_cast<std::uint32_t>(0x7F000000 + i);
    writeWindows(clientList, windows);
    writeWindows(stackedList, windows);

    EXPECT_TRUE(isInFront(frontPid_));
    EXPECT_EQ(windowSystem().focusedWindow(frontPid_, soon()), frontID_);
    EXPECT_FALSE(windowSystem().displays().empty());
    expectFrontMoves();
}

TEST_F(X11HostileRootTest, WithoutACurrentDesktopEveryWindowCounts) {
    for (const Content& content : malformedNumbers()) {
        SCOPED_TRACE(content.name);
        write(currentDesktop, content);
        EXPECT_THAT(windowSystem().windows(frontPid_, soon()).value(), ElementsAre(frontID_));
        expectFrontMoves();
    }
}

TEST_F(X11HostileRootTest, WithoutAListOfAbilitiesWindowsMoveAllTheSame) {
    const std::uint32_t moves = observer().connection().atom("_NET_MOVERESIZE_WINDOW");
    for (const Content& content : malformed({.type = "ATOM"}, bytesOf({moves}))) {
        SCOPED_TRACE(content.name);
        write(abilities, content);
        EXPECT_EQ(windowSystem().missingForTrust(soon()), std::nullopt);
        expectFrontMoves();
    }
}

/// The check window of the running window manager stands on the root window and on itself.
class X11HostileCheckWindowTest : public X11HostileRootTest {
protected:
    void SetUp() override {
        X11HostileRootTest::SetUp();
        real_ = observer().connection().numbers(root(), checkWindow);
        ASSERT_EQ(real_.size(), 1U);
    }

    void expectNobodyMovesWindows() {
        EXPECT_NE(windowSystem().missingForTrust(soon()), std::nullopt);
        EXPECT_EQ(windowSystem().setFrame(frontID_, {10, 10, 300, 300}, soon()).error(), AXError::cannotComplete);
    }

    void expectUsualAgain() {
        writeWindows(checkWindow, real_);
        EXPECT_EQ(windowSystem().missingForTrust(soon()), std::nullopt);
        expectFrontMoves();
    }

    std::vector<std::uint32_t> real_;
};

TEST_F(X11HostileCheckWindowTest, WithAMalformedOneNoWindowManagerRuns) {
    for (const Content& content : malformed({.type = "WINDOW"}, bytesOf(real_))) {
        SCOPED_TRACE(content.name);
        write(checkWindow, content);
        expectNobodyMovesWindows();
        expectUsualAgain();
    }
}

TEST_F(X11HostileCheckWindowTest, WithOneThatDoesNotNameItselfNoWindowManagerRuns) {
    for (const std::uint32_t window :
         {makeDeadWindow(), front_, makeUnmanagedWindow(true), makePixmap(), 0xFFFFFFFFU}) {
        SCOPED_TRACE(window);
        writeWindows(checkWindow, {window});
        expectNobodyMovesWindows();
        expectUsualAgain();
    }
}

TEST_F(X11HostileCheckWindowTest, ItsNameMayBeAnything) {
    const std::string_view name = "_NET_WM_NAME";
    for (const Content& content : malformed({.type = "UTF8_STRING", .format = 8}, text("Fluxbox"))) {
        SCOPED_TRACE(content.name);
        hostileClient().setProperty(real_.at(0), name, content.type, content.format, content.bytes);
        expectUsualAgain();
    }
    hostileClient().fillProperty(real_.at(0), name, "UTF8_STRING", 8, std::size_t{64} << 20U);
    expectUsualAgain();
}

TEST_F(X11HostileCheckWindowTest, TheRootWindowIsNone) {
    writeWindows(checkWindow, {root()});

    expectNobodyMovesWindows();
    expectUsualAgain();
    desktop().stopWindowManager();
    EXPECT_TRUE(runUntil([this] { return windowSystem().missingForTrust(soon()).has_value(); }));
}

/// What only the server may say, said by another client to the platform alone.
class X11ForgedEventTest : public X11HostileRootTest {
protected:
    template <typename Event>
    void send(const Event& event) {
        // Without a mask an event goes to the client that made the window.
        const xcb_window_t mailbox = xcb_generate_id(connection().raw());
        xcb_create_window(connection().raw(), XCB_COPY_FROM_PARENT, mailbox, root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        ASSERT_TRUE(connection().check({}, soon()));
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &event, sizeof(event));
        xcb_send_event(observer().connection().raw(), 0, mailbox, XCB_EVENT_MASK_NO_EVENT, bytes.data());
        observer().connection().synchronise();
        runPosted();
    }

    void sendDestroyNotify(xcb_window_t window) {
        xcb_destroy_notify_event_t event{};
        event.response_type = XCB_DESTROY_NOTIFY;
        event.event = window;
        event.window = window;
        send(event);
    }
};

TEST_F(X11ForgedEventTest, TheRootWindowKeepsItsSize) {
    const std::array<std::uint32_t, 12> bottom{0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 1279};
    hostileClient().setNumbers(other_, "_NET_WM_STRUT_PARTIAL", "CARDINAL", bottom);
    const auto displays = windowSystem().displays();
    ASSERT_EQ(displays.at(0).visibleFrame.height, 760);
    xcb_configure_notify_event_t event{};
    event.response_type = XCB_CONFIGURE_NOTIFY;
    event.event = root();
    event.window = root();
    event.width = 9000;
    event.height = 9000;
    send(event);

    EXPECT_EQ(windowSystem().displays(), displays);
}

TEST_F(X11ForgedEventTest, AWindowIsNotForgotten) {
    sendDestroyNotify(front_);

    expectFrontMoves();
    EXPECT_EQ(focusedWindow(), frontID_);
}

TEST_F(X11ForgedEventTest, TheWindowManagerIsNotTakenForDead) {
    const xcb_window_t window = observer().connection().numbers(root(), checkWindow).at(0);
    ASSERT_EQ(windowSystem().missingForTrust(soon()), std::nullopt);
    sendDestroyNotify(window);

    EXPECT_EQ(windowSystem().missingForTrust(soon()), std::nullopt);
    expectFrontMoves();
}

TEST_F(X11ForgedEventTest, AFrozenWindowManagerStillOwesItsAnswer) {
    desktop().windowManager()->freeze();
    ASSERT_EQ(windowSystem().setFrame(frontID_, {10, 10, 300, 300}, soon()).error(), AXError::cannotComplete);
    xcb_property_notify_event_t event{};
    event.response_type = XCB_PROPERTY_NOTIFY;
    event.window = root();
    event.atom = observer().connection().atom(checkWindow);
    send(event);

    EXPECT_EQ(windowSystem().checkMovable(frontID_, soon()).error(), AXError::cannotComplete);
    desktop().windowManager()->thaw();
    EXPECT_TRUE(runUntil([this] { return windowSystem().checkMovable(frontID_, soon()).has_value(); }));
}

}  // namespace
}  // namespace velmorand::desktop
