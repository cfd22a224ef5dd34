#include "desktop/harness/XRelay.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/X11HotKeyService.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace velmorand::desktop {
namespace {

constexpr Rect wanted{60, 50, 500, 400};

/// A server that lacks some extensions.
class X11MissingExtensionTest : public X11Test {
protected:
    void SetUp() override {
        open();
        window_ = openWindow(TestWindow{.title = "Window"});
        pid_ = lastClient().pid();
    }

    ~X11MissingExtensionTest() override {
        if (relay_) connect();
    }

    void connectWithout(std::vector<std::string> extensions) {
        auto relay = XRelay::start({.server = desktop().displayName(), .hiddenExtensions = std::move(extensions)});
        if (!relay) throw std::runtime_error(relay.error().message);
        relay_ = std::move(*relay);
        connect(relay_->displayName());
    }

    std::int32_t frontmostPid() { return windowSystem().frontmostApplication().value_or(RunningApplication{}).pid; }

    void expectWindowMoves() {
        const WindowID window = focusedWindow();
        EXPECT_EQ(window.number, window_);
        EXPECT_EQ(windowSystem().setFrame(window, wanted, soon()), wanted);
        EXPECT_FALSE(connection().isLost());
    }

    xcb_window_t window_ = XCB_WINDOW_NONE;
    std::int32_t pid_ = 0;

private:
    std::unique_ptr<XRelay> relay_;
};

TEST_F(X11MissingExtensionTest, WithoutRandRTheWholeScreenIsTheOnlyDisplay) {
    connectWithout({"RANDR"});

    const auto displays = windowSystem().displays();
    ASSERT_EQ(displays.size(), 1U);
    EXPECT_EQ(displays[0].frame, (Rect{0, 0, 1280, 800}));
    EXPECT_EQ(displays[0].localizedName, "Screen");
    expectWindowMoves();
}

TEST_F(X11MissingExtensionTest, WithoutTheInputExtensionHotKeysAreRefusedAndWindowsMove) {
    connectWithout({"XInputExtension"});
    const X11Keyboard keyboard(connection());
    X11HotKeyService hotKeys(connection(), keyboard, runLoop);

    const HotKeyRegistration registration = hotKeys.registerHotKey(8, 0x0900, {});
    EXPECT_EQ(registration.status, hotKeyInternalError);
    EXPECT_EQ(registration.reference, std::nullopt);
    EXPECT_EQ(hotKeys.installHandler([](const HotKeyEvent*) { return noError; }), std::unexpected(hotKeyInternalError));
    expectWindowMoves();
}

TEST_F(X11MissingExtensionTest, WithoutTheKeyboardExtensionNothingIsKnownOfTheKeyboard) {
    connectWithout({"XKEYBOARD"});
    X11Keyboard keyboard(connection());

    EXPECT_EQ(keyboard.describe(soon()), std::nullopt);
    keyboard.followModifiers(true);
    EXPECT_TRUE(connection().check({}, soon()));
    EXPECT_FALSE(connection().isLost());
}

TEST_F(X11MissingExtensionTest, WithoutAnyOfThemWindowsMove) {
    connectWithout({"RANDR", "XInputExtension", "X-Resource", "BIG-REQUESTS", "XKEYBOARD"});

    EXPECT_EQ(windowSystem().missingForTrust(soon()), std::nullopt);
    expectWindowMoves();
}

/// What a window says of its process, and whose it then is.
struct ClaimRow {
    enum class Pid : std::uint8_t { none, zero, init, nobody, test, windowManager, itself };
    enum class Machine : std::uint8_t { none, ours, another };
    enum class Owner : std::uint8_t { itself, test, windowManager, unknown };

    std::string name;
    Pid pid{};
    Machine machine{};
    Owner ownerForTheServer{};
    /// Without the extension by which the server tells.
    Owner ownerByClaim{};

    friend void PrintTo(const ClaimRow& row, std::ostream* out) { *out << row.name; }
};

class X11ClaimedProcessTest : public X11MissingExtensionTest, public testing::WithParamInterface<ClaimRow> {
protected:
    void SetUp() override {
        X11MissingExtensionTest::SetUp();
        claimPid();
        claimMachine();
    }

    void expectOwner(ClaimRow::Owner owner) {
        switch (owner) {
            case ClaimRow::Owner::itself: EXPECT_EQ(frontmostPid(), pid_); break;
            case ClaimRow::Owner::test: EXPECT_EQ(frontmostPid(), getpid()); break;
            case ClaimRow::Owner::windowManager: EXPECT_EQ(frontmostPid(), desktop().windowManager()->pid()); break;
            case ClaimRow::Owner::unknown: EXPECT_LT(frontmostPid(), 0); break;
        }
        expectWindowMoves();
    }

private:
    void claimPid() {
        constexpr std::uint32_t largestPid = 0x7FFFFFFF;
        hostileClient().deleteProperty(window_, "_NET_WM_PID");
        switch (GetParam().pid) {
            case ClaimRow::Pid::none: break;
            case ClaimRow::Pid::zero: writePid(0); break;
            case ClaimRow::Pid::init: writePid(1); break;
            case ClaimRow::Pid::nobody: writePid(largestPid); break;
            case ClaimRow::Pid::test: writePid(getpid()); break;
            case ClaimRow::Pid::windowManager: writePid(desktop().windowManager()->pid()); break;
            case ClaimRow::Pid::itself: writePid(pid_); break;
        }
    }

    void writePid(std::int64_t pid) {
        const std::array<std::uint32_t, 1> items{static_cast<std::uint32_t>(pid)};
        hostileClient().setNumbers(window_, "_NET_WM_PID", "CARDINAL", items);
    }

    void claimMachine() {
        hostileClient().deleteProperty(window_, "WM_CLIENT_MACHINE");
        switch (GetParam().machine) {
            case ClaimRow::Machine::none: break;
            case ClaimRow::Machine::ours: {
                std::array<char, 256> name{};
                ASSERT_EQ(gethostname(name.data(), name.size() - 1), 0);
                writeMachine(name.data());
                break;
            }
            case ClaimRow::Machine::another: writeMachine("another.example.org"); break;
        }
    }

    void writeMachine(std::string_view name) {
        const std::vector<std::uint8_t> bytes(name.begin(), name.end());
        hostileClient().setProperty(window_, "WM_CLIENT_MACHINE", "STRING", 8, bytes);
    }
};

TEST_P(X11ClaimedProcessTest, DoesNotCountAgainstTheServersKnowledge) {
    connect();

    expectOwner(GetParam().ownerForTheServer);
}

TEST_P(X11ClaimedProcessTest, CountsWhereTheServerKnowsNothingAndItCanBeTrue) {
    connectWithout({"X-Resource"});

    expectOwner(GetParam().ownerByClaim);
}

using enum ClaimRow::Owner;

INSTANTIATE_TEST_SUITE_P(
    Table, X11ClaimedProcessTest,
    testing::Values(
        ClaimRow{"Nothing", ClaimRow::Pid::none, ClaimRow::Machine::none, itself, unknown},
        ClaimRow{"MachineOnly", ClaimRow::Pid::none, ClaimRow::Machine::ours, itself, unknown},
        ClaimRow{"ItselfHere", ClaimRow::Pid::itself, ClaimRow::Machine::ours, itself, itself},
        ClaimRow{"ItselfSomewhere", ClaimRow::Pid::itself, ClaimRow::Machine::none, itself, unknown},
        ClaimRow{"ItselfElsewhere", ClaimRow::Pid::itself, ClaimRow::Machine::another, unknown, unknown},
        ClaimRow{"ZeroHere", ClaimRow::Pid::zero, ClaimRow::Machine::ours, itself, unknown},
        ClaimRow{"InitHere", ClaimRow::Pid::init, ClaimRow::Machine::ours, itself, unknown},
        ClaimRow{"InitSomewhere", ClaimRow::Pid::init, ClaimRow::Machine::none, itself, unknown},
        ClaimRow{"NobodyHere", ClaimRow::Pid::nobody, ClaimRow::Machine::ours, itself, unknown},
        ClaimRow{"ThisProcessHere", ClaimRow::Pid::test, ClaimRow::Machine::ours, itself, test},
        ClaimRow{"ThisProcessElsewhere", ClaimRow::Pid::test, ClaimRow::Machine::another, unknown, unknown},
        ClaimRow{"AnotherProcessHere", ClaimRow::Pid::windowManager, ClaimRow::Machine::ours, itself, windowManager},
        ClaimRow{"AnotherProcessSomewhere", ClaimRow::Pid::windowManager, ClaimRow::Machine::none, itself, unknown}),
    [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmorand::desktop
