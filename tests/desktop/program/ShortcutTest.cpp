#include "desktop/demo/DemoRun.h"
#include "desktop/harness/TemporaryFolder.h"
#include "desktop/program/ProgramTest.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace velmorand::desktop {
namespace {

class ShortcutTest : public ProgramTest {};

TEST_P(ShortcutTest, EveryDefaultShortcutPutsTheFocusedWindowWhereItBelongs) {
    DemoRun run(desktop(), {});
    std::set<std::string_view> pressed;

    for (const DemoStep& step : demoScript()) {
        const auto row = run.perform(step);
        ASSERT_TRUE(row) << row.error();
        EXPECT_NE(row->verdict, DemoVerdict::failed)
            << step.action << " on the " << nameOf(step.window) << " window: wanted " << row->wanted << ", is at "
            << row->after << ", " << row->remark;
        pressed.insert(step.action);
    }

    EXPECT_EQ(pressed.size(), demoActions().size());
}

TEST_P(ShortcutTest, AWindowWithItsOwnShadowIsPlacedByWhatTheUserSees) {
    const bool isComposited = desktop().observer().isComposited();
    ASSERT_EQ(isComposited, GetParam() == WindowManagerKind::xfwm4);
    const auto shadow = desktop().observer().clientShadow(desktop().idOf(DemoWindow::clientSide)).value_or(Extents{});
    ASSERT_EQ(shadow != Extents{}, isComposited);

    focus(DemoWindow::clientSide);
    expectLanding("rightThird", DemoWindow::clientSide);
}

TEST_P(ShortcutTest, LocksDoNotKeepAShortcutFromWorking) {
    focus(DemoWindow::serverSide);
    struct Locks {
        bool numLock;
        bool capsLock;
        std::string_view action;
    };
    for (const auto& [numLock, capsLock, action] :
         {Locks{true, false, "left"}, Locks{false, true, "right"}, Locks{true, true, "bottomLeft"}}) {
        ASSERT_TRUE(desktop().keyboard().setNumLock(numLock));
        ASSERT_TRUE(desktop().keyboard().setCapsLock(capsLock));
        expectLanding(action, DemoWindow::serverSide);
    }
}

/// Takes the keys of one modifier off it and puts them on another, which has none.
void moveModifier(XConnection& connection, std::size_t from, std::size_t to) {
    const auto mapping = connection.reply<xcb_get_modifier_mapping_reply_t>(xcb_get_modifier_mapping(connection.raw()));
    ASSERT_NE(mapping, nullptr);
    const std::size_t perModifier = mapping->keycodes_per_modifier;
    xcb_keycode_t* keycodes = xcb_get_modifier_mapping_keycodes(mapping.get());
    std::swap_ranges(keycodes + from * perModifier, keycodes + (from + 1) * perModifier, keycodes + to * perModifier);
    const auto changed = connection.reply<xcb_set_modifier_mapping_reply_t>(
        xcb_set_modifier_mapping(connection.raw(), mapping->keycodes_per_modifier, keycodes));
    ASSERT_NE(changed, nullptr);
    ASSERT_EQ(changed->status, XCB_MAPPING_STATUS_SUCCESS);
}

TEST_P(ShortcutTest, ShortcutsFollowAModifierToItsNewPlace) {
    focus(DemoWindow::serverSide);
    expectLanding("left", DemoWindow::serverSide);
    const PixelRect target = wanted("right", DemoWindow::serverSide);

    moveModifier(desktop().observer().connection(), XCB_MAP_INDEX_4, XCB_MAP_INDEX_3);

    // Nothing tells that the program has followed, so the key is pressed until it works.
    EXPECT_TRUE(desktop().observer().waitUntil([&] {
        press("right");
        return count("Dispatching shortcut right") > 0;
    }));
    EXPECT_TRUE(framesAgree(settledFrame(DemoWindow::serverSide, target), target, frameTolerance));
}

TEST_P(ShortcutTest, ShortcutsStayAtTheirPlaceInAnotherLayout) {
    focus(DemoWindow::serverSide);

    auto layout = desktop().test().start({"setxkbmap", "-layout", "us", "-variant", "dvorak"});
    ASSERT_TRUE(layout) << layout.error();
    const auto status = layout->wait(patience);
    ASSERT_TRUE(status && status->isSuccess()) << layout->logTail();

    expectLanding("topLeft", DemoWindow::serverSide);
    expectLanding("leftTwoThirds", DemoWindow::serverSide);
}

/// What the log says was pressed, in order.
std::vector<std::string> dispatched(const std::string& log) {
    constexpr std::string_view before = "Dispatching shortcut ";
    std::vector<std::string> actions;
    for (auto at = log.find(before); at != std::string::npos; at = log.find(before, at + 1)) {
        const auto name = at + before.size();
        actions.push_back(log.substr(name, log.find('\n', name) - name));
    }
    return actions;
}

TEST_P(ShortcutTest, PressesWhileAnActionStillRunsAreAllPerformedOnceAndInOrder) {
    focus(DemoWindow::serverSide);
    std::vector<std::string> pressed;
    for (int round = 0; round < 5; ++round) {
        for (const char* action : {"left", "topRight", "bottom", "right", "rightThird"}) pressed.emplace_back(action);
    }

    for (const std::string& action : pressed) press(action);

    EXPECT_TRUE(
        desktop().observer().waitUntil([&] { return dispatched(desktop().program().log()).size() >= pressed.size(); }));
    EXPECT_EQ(dispatched(desktop().program().log()), pressed);
    const PixelRect target = wanted("rightThird", DemoWindow::serverSide);
    const PixelRect seen = settledFrame(DemoWindow::serverSide, target);
    EXPECT_TRUE(framesAgree(seen, target, frameTolerance)) << "wanted " << target << ", is at " << seen;
    EXPECT_EQ(dispatched(desktop().program().log()), pressed) << "a press was delivered a second time";
}

TEST_P(ShortcutTest, AHeldShortcutActsOnce) {
    focus(DemoWindow::serverSide);

    const HeldKey held = desktop().keyboard().hold({Key::leftSuper, Key::leftAlt}, Key::left);

    ASSERT_TRUE(logs("Dispatching shortcut left"));
    // The server repeats a held key for the first time after 660 ms and then every 40 ms.
    const bool repeated = desktop().observer().waitUntil([&] { return count("Dispatching shortcut left") > 1; },
                                                         std::chrono::milliseconds(1200));
    EXPECT_FALSE(repeated);
}

TEST_P(ShortcutTest, AFullScreenWindowIsLeftAlone) {
    focus(DemoWindow::serverSide);
    const auto window = desktop().idOf(DemoWindow::serverSide);
    const auto entered = desktop().pager().setFullscreen(window, true);
    ASSERT_TRUE(entered) << entered.error();
    const PixelRect wholeDisplay = desktop().fromRoot({0, 0, 1280, 1024});
    const PixelRect before = settledFrame(DemoWindow::serverSide, wholeDisplay);
    ASSERT_EQ(before, wholeDisplay);

    press("left");

    EXPECT_TRUE(logs("velmorand [windows] error: No focused window is available."));
    EXPECT_EQ(desktop().frameOf(DemoWindow::serverSide), before);
    EXPECT_TRUE(desktop().observer().states(window).fullscreen);
}

TEST_P(ShortcutTest, TwoActionsInARowAreUndoneByOneRestore) {
    focus(DemoWindow::serverSide);
    const PixelRect before = desktop().frameOf(DemoWindow::serverSide).value_or(PixelRect{});
    expectLanding("left", DemoWindow::serverSide);
    expectLanding("top", DemoWindow::serverSide);

    press("restore");

    const PixelRect seen = settledFrame(DemoWindow::serverSide, before);
    EXPECT_TRUE(framesAgree(seen, before, frameTolerance)) << "was at " << before << ", is at " << seen;
    press("restore");
    EXPECT_TRUE(logs("velmorand [windows] error: No previous frame is available to restore."));
}

TEST_P(ShortcutTest, OnlyTheFocusedWindowMoves) {
    focus(DemoWindow::clientSide);
    const auto terminal = desktop().frameOf(DemoWindow::terminal);
    const auto serverSide = desktop().frameOf(DemoWindow::serverSide);

    expectLanding("leftTwoThirds", DemoWindow::clientSide);

    EXPECT_EQ(desktop().frameOf(DemoWindow::terminal), terminal);
    EXPECT_EQ(desktop().frameOf(DemoWindow::serverSide), serverSide);
}

INSTANTIATE_TEST_SUITE_P(On, ShortcutTest, testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4),
                         windowManagerName);

}  // namespace
}  // namespace velmorand::desktop
