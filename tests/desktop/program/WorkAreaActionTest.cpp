#include "desktop/demo/DemoModel.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/TestDesktop.h"
#include "desktop/harness/TestKeyboard.h"
#include "desktop/harness/TestPanel.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/program/ProgramTest.h"

#include <list>

namespace velmorand::desktop {
namespace {

/// The primary display with one to its left and one above it; the root window is {0, 0, 2624, 1468}.
constexpr PixelRect left{0, 700, 1024, 768};
constexpr PixelRect above{1024, 0, 1600, 600};
constexpr PixelRect primary{1024, 600, 1280, 800};

/// The program on three displays with a panel at each edge of the root window.
class WorkAreaActionTest : public testing::Test {
protected:
    void SetUp() override {
        auto desktop =
            TestDesktop::create({.monitors = {{"left", left}, {"above", above}, {"primary", primary, true}}});
        ASSERT_TRUE(desktop) << desktop.error();
        desktop_ = std::move(*desktop);
        openPanel("Left panel", RootEdge::left, {0, 700, 60, 768});
        openPanel("Top panel", RootEdge::top, {1024, 0, 1600, 26});
        openPanel("Right panel", RootEdge::right, {2256, 600, 48, 800});
        openPanel("Bottom panel", RootEdge::bottom, {1024, 1360, 1280, 40});
        start(plainWindow({.title = "Window"}));
        window_ = find("Window");
        start({programUnderTest().string()});
        ASSERT_TRUE(observer().waitUntil([&] { return clients_.back().log().contains("Registered shortcut restore"); }))
            << clients_.back().logTail();
    }

    void TearDown() override {
        if (desktop_ && HasFailure())
            std::printf("%s\n%s\n", desktop_->logTails().c_str(), clients_.back().logTail().c_str());
    }

    void start(const std::vector<std::string>& command) {
        auto client = desktop_->start(command);
        ASSERT_TRUE(client) << client.error();
        clients_.push_back(std::move(*client));
    }

    xcb_window_t find(std::string_view title) {
        const auto window = observer().findWindow(title);
        EXPECT_TRUE(window) << window.error();
        return window.value_or(XCB_WINDOW_NONE);
    }

    void openPanel(std::string_view title, RootEdge edge, const PixelRect& frame) {
        start(panelWindow({.title = std::string(title),
                           .frame = frame,
                           .partialStrut = partialStrut(edge, frame, {0, 0, 2624, 1468})}));
        ASSERT_EQ(observer().clientRect(find(title)), frame) << "the panel is not where the test means it to be";
    }

    /// Puts the window there by hand and presses the action's shortcut.
    void act(const PixelRect& from, std::string_view action) {
        Pager pager(observer());
        const auto active = pager.activate(window_);
        ASSERT_TRUE(active) << active.error();
        const auto placed = pager.place(window_, from, 0);
        ASSERT_TRUE(placed) << placed.error();
        press(action);
    }

    void press(std::string_view action) {
        auto keyboard = TestKeyboard::attach(observer());
        ASSERT_TRUE(keyboard) << keyboard.error();
        keyboard->press(demoAction(action).modifiers, demoAction(action).key);
    }

    void expectAt(const PixelRect& frame) { EXPECT_EQ(observer().waitForSettledFrame(window_, frame, 0), frame); }

    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }

private:
    std::unique_ptr<TestDesktop> desktop_;
    std::list<ChildProcess> clients_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

TEST_F(WorkAreaActionTest, ActionsFillWhatThePanelsLeaveOfEachDisplay) {
    act({1400, 700, 500, 400}, "maximize");
    expectAt({1024, 600, 1232, 760});
    act({1400, 700, 500, 400}, "bottomRight");
    expectAt({1640, 980, 616, 380});
    act({100, 800, 500, 400}, "left");
    expectAt({60, 700, 482, 768});
    act({1400, 100, 500, 400}, "top");
    expectAt({1024, 26, 1600, 287});
}

TEST_F(WorkAreaActionTest, DisplayMovesGoAroundThroughAllDisplays) {
    act({1400, 700, 500, 400}, "maximize");
    expectAt({1024, 600, 1232, 760});

    press("nextDisplay");
    expectAt({60, 700, 964, 768});
    press("nextDisplay");
    expectAt({1024, 26, 1600, 574});
    press("previousDisplay");
    expectAt({60, 700, 964, 768});
    press("previousDisplay");
    expectAt({1024, 600, 1232, 760});
}

TEST_F(WorkAreaActionTest, APanelThatAppearsIsHeededAtTheNextPress) {
    act({1400, 700, 500, 400}, "left");
    expectAt({1024, 600, 616, 760});

    openPanel("New panel", RootEdge::top, {1024, 600, 1280, 30});
    press("left");

    expectAt({1024, 630, 616, 730});
}

}  // namespace
}  // namespace velmorand::desktop
