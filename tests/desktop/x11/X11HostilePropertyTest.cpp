#include "desktop/x11/PropertyContents.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/support/ScopedEnvironment.h"
#include "platform/linux/support/ScratchFolder.h"
#include "support/Printing.h"

#include <gmock/gmock.h>

#include <ostream>
#include <tuple>

namespace velmorand::desktop {
namespace {

constexpr Rect wanted{200, 150, 500, 400};
constexpr Rect wantedOfBystander{700, 100, 333, 222};
constexpr std::size_t hugeAmount = std::size_t{64} << 20U;

/// All that the platform makes of a window and its desktop.
struct Seen {
    std::optional<RunningApplication> application;
    WindowAttributes attributes;
    std::size_t windowCount = 0;
    std::vector<DisplayDescription> displays;

    bool operator==(const Seen& other) const {
        const auto tied = [](const Seen& seen) {
            const WindowAttributes& window = seen.attributes;
            return std::tie(seen.application, window.role, window.subrole, window.minimized, window.fullScreen,
                            window.positionSettable, window.sizeSettable, window.frame, seen.windowCount,
                            seen.displays);
        };
        return tied(*this) == tied(other);
    }
};

void PrintTo(const Seen& seen, std::ostream* out) {
    const WindowAttributes& window = seen.attributes;
    const RunningApplication application = seen.application.value_or(RunningApplication{});
    *out << "application " << application.pid << ' ' << application.bundleIdentifier.value_or("-") << ' '
         << application.localizedName.value_or("-") << ", " << window.role << ' ' << window.subrole.value_or("-")
         << (window.minimized ? " minimised" : "") << (window.fullScreen ? " full screen" : "")
         << (window.positionSettable ? "" : " not movable") << (window.sizeSettable ? "" : " of fixed size") << " at "
         << describe(window.frame) << ", windows " << seen.windowCount << ", work areas";
    for (const DisplayDescription& display : seen.displays) *out << ' ' << describe(display.visibleFrame);
}

/// A window in front whose properties another client writes, and one beside it.
class X11HostilePropertyTest : public X11Test, public testing::WithParamInterface<PropertyRow> {
protected:
    void SetUp() override {
        data_.write("applications/elsewhere.desktop", "[Desktop Entry]\nType=Application\nName=Elsewhere\n");
        open();
        bystander_ = openWindow(TestWindow{.title = "Bystander", .applicationId = "bystander"});
        bystanderPid_ = lastClient().pid();
        victim_ = openWindow(TestWindow{.title = "Victim", .applicationId = "victim"});
        victimPid_ = lastClient().pid();
    }

    /// What tells something when it has the right form.
    std::vector<std::uint8_t> telling() {
        const PropertyRow& row = GetParam();
        if (row.format == 8) return text(row.tellingName);
        if (!row.tellingName.empty()) return bytesOf({observer().connection().atom(row.tellingName)});
        return bytesOf(row.tellingNumbers);
    }

    void write(const Content& content) {
        hostileClient().setProperty(victim_, GetParam().property, content.type, content.format, content.bytes);
    }

    /// What a program that is started now makes of the victim.
    Seen lookAfresh() {
        connect();
        Seen seen{windowSystem().frontmostApplication(), {}, 0, windowSystem().displays()};
        const std::int32_t pid = seen.application.value_or(RunningApplication{}).pid;
        const auto window = windowSystem().focusedWindow(pid, soon()).value_or(WindowID{});
        EXPECT_EQ(window.number, victim_);
        const auto attributes = windowSystem().attributes(window, Reading::atOnce, soon());
        EXPECT_TRUE(attributes);
        seen.attributes = attributes.value_or(WindowAttributes{});
        seen.windowCount = windowSystem().windows(pid, soon()).value_or(std::vector<WindowID>{}).size();
        return seen;
    }

    /// The victim, which must be known as the window in front of its own process.
    WindowID victimID() { return onlyWindow(windowSystem().focusedWindow(victimPid_, soon()), victim_); }

    static WindowID onlyWindow(const std::expected<WindowID, AXError>& window, xcb_window_t expected) {
        EXPECT_TRUE(window);
        EXPECT_EQ(window.value_or(WindowID{}).number, expected);
        return window.value_or(WindowID{});
    }

    /// Moves a window and asks the server itself how far it went.
    void expectMoves(WindowID window, const Rect& target) {
        const auto before = windowSystem().attributes(window, Reading::atOnce, soon());
        ASSERT_TRUE(before);
        const auto clientBefore = observer().clientRect(window.number);
        const auto result = windowSystem().setFrame(window, target, soon());
        ASSERT_TRUE(result);
        EXPECT_EQ(*result, target);
        const auto client = observer().clientRect(window.number);
        ASSERT_TRUE(clientBefore && client);
        EXPECT_EQ(client->x - clientBefore->x, target.x - before->frame.x);
        EXPECT_EQ(client->y - clientBefore->y, target.y - before->frame.y);
        EXPECT_EQ(client->width - clientBefore->width, target.width - before->frame.width);
        EXPECT_EQ(client->height - clientBefore->height, target.height - before->frame.height);
    }

    void expectBothMove() {
        connect();
        ASSERT_EQ(windowSystem().missingForTrust(soon()), std::nullopt);
        expectMoves(victimID(), wanted);
        expectMoves(onlyWindow(windowSystem().mainWindow(bystanderPid_, soon()), bystander_), wantedOfBystander);
        expectMoves(victimID(), {0, 0, 600, 300});
        EXPECT_FALSE(connection().isLost());
        EXPECT_TRUE(desktop().windowManager()->isRunning());
    }

    ScratchFolder data_;
    ScopedEnvironment dataHome_{"XDG_DATA_HOME", data_.path().string()};
    xcb_window_t victim_ = XCB_WINDOW_NONE;
    xcb_window_t bystander_ = XCB_WINDOW_NONE;
    std::int32_t victimPid_ = 0;
    std::int32_t bystanderPid_ = 0;
};

TEST_P(X11HostilePropertyTest, SaysNothingWhenItIsMalformed) {
    hostileClient().deleteProperty(victim_, GetParam().property);
    const Seen absent = lookAfresh();
    for (const Content& content : malformed(GetParam(), telling())) {
        SCOPED_TRACE(content.name);
        write(content);
        EXPECT_EQ(lookAfresh(), absent);
    }
}

TEST_P(X11HostilePropertyTest, KeepsNoWindowFromBeingMovedWhenItIsMalformed) {
    for (const Content& content : malformed(GetParam(), telling())) {
        SCOPED_TRACE(content.name);
        write(content);
        expectBothMove();
    }
}

/// The properties of which one sees on this desktop whether they are believed.
class X11TellingPropertyTest : public X11HostilePropertyTest {};

TEST_P(X11TellingPropertyTest, SaysSomethingWhenItIsWellFormed) {
    hostileClient().deleteProperty(victim_, GetParam().property);
    const Seen absent = lookAfresh();
    write({"well-formed", GetParam().type, GetParam().format, telling()});

    EXPECT_NE(lookAfresh(), absent) << "else it would mean nothing that malformed contents change nothing";
}

/// The properties whose contents the window manager survives, whatever they are.
class X11ImpossiblePropertyTest : public X11HostilePropertyTest {};

TEST_P(X11ImpossiblePropertyTest, KeepsNoWindowFromBeingMoved) {
    const auto displays = windowSystem().displays();
    for (const Content& content : impossible(GetParam())) {
        SCOPED_TRACE(content.name);
        write(content);
        expectBothMove();
        EXPECT_EQ(windowSystem().displays(), displays);
    }
}

TEST_P(X11ImpossiblePropertyTest, IsReadInPartWhenItIsHuge) {
    hostileClient().fillProperty(victim_, GetParam().property, GetParam().type, GetParam().format, hugeAmount);
    ASSERT_TRUE(observer().waitForWindowManager(std::chrono::seconds(60))) << "it reads the whole";

    expectBothMove();
}

constexpr std::string_view cardinal = "CARDINAL";
constexpr std::string_view atom = "ATOM";

const PropertyRow pid{"Pid", "_NET_WM_PID", cardinal, 32, {1}, {}, {2, 5000}};
const PropertyRow normalHints{
    "NormalHints", "WM_NORMAL_HINTS", "WM_SIZE_HINTS", 32, {0x30, 0, 0, 0, 0, 600, 300, 600, 300}, {}, {1, 8}};
const std::vector<PropertyRow> otherProperties{
    {"State", "WM_STATE", "WM_STATE", 32, {3, 0}},
    {"NetState", "_NET_WM_STATE", atom, 32, {}, "_NET_WM_STATE_FULLSCREEN"},
    {"WindowType", "_NET_WM_WINDOW_TYPE", atom, 32, {}, "_NET_WM_WINDOW_TYPE_UTILITY"},
    {"TransientFor", "WM_TRANSIENT_FOR", "WINDOW", 32, {0x400001}},
    {"FrameExtents", "_NET_FRAME_EXTENTS", cardinal, 32, {7, 8, 9, 10}, {}, {1, 3, 5, 5000}},
    {"ShadowExtents", "_GTK_FRAME_EXTENTS", cardinal, 32, {7, 8, 9, 10}, {}, {1, 3, 5, 5000}},
    {"AllowedActions", "_NET_WM_ALLOWED_ACTIONS", atom, 32, {}, "_NET_WM_ACTION_CLOSE"},
    {"Desktop", "_NET_WM_DESKTOP", cardinal, 32, {3}},
    {"Strut", "_NET_WM_STRUT", cardinal, 32, {0, 0, 0, 40}, {}, {1, 3, 5, 5000}},
    {"PartialStrut", "_NET_WM_STRUT_PARTIAL", cardinal, 32, {0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 1279}, {}, {1, 11, 13}},
    {"ClientMachine", "WM_CLIENT_MACHINE", "STRING", 8, {}, "another.example.org"},
    {"WindowClass", "WM_CLASS", "STRING", 8, {}, "elsewhere"},
    {"ApplicationId", "_GTK_APPLICATION_ID", "UTF8_STRING", 8, {}, "elsewhere"},
    {"DesktopFile", "_KDE_NET_WM_DESKTOP_FILE", "UTF8_STRING", 8, {}, "elsewhere"}};

std::vector<PropertyRow> with(std::vector<PropertyRow> more) {
    more.insert(more.end(), otherProperties.begin(), otherProperties.end());
    return more;
}

constexpr auto nameOfRow = [](const auto& each) { return each.param.name; };

INSTANTIATE_TEST_SUITE_P(Table, X11HostilePropertyTest, testing::ValuesIn(with({pid, normalHints})), nameOfRow);
INSTANTIATE_TEST_SUITE_P(Table, X11TellingPropertyTest, testing::ValuesIn(with({normalHints})), nameOfRow);
INSTANTIATE_TEST_SUITE_P(Table, X11ImpossiblePropertyTest, testing::ValuesIn(with({pid})), nameOfRow);

}  // namespace
}  // namespace velmorand::desktop
