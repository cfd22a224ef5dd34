#include "desktop/harness/Pager.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/program/ProgramTest.h"
#include "desktop/settings/SettingsWindowTest.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

class SettingsFrameTest : public SettingsWindowTest {
protected:
    [[nodiscard]] PixelRect client() { return observer().clientRect(window()).value_or(PixelRect{}); }
    [[nodiscard]] bool hasMapped(std::string_view library) {
        std::ifstream maps(fmt::format("/proc/{}/maps", program().pid()));
        const std::string text{std::istreambuf_iterator<char>(maps), {}};
        return text.contains(library);
    }
    void close() {
        constexpr std::uint32_t fromPager = 2;
        observer().connection().sendToWindowManager(window(), "_NET_CLOSE_WINDOW",
                                                    {XCB_CURRENT_TIME, fromPager, 0, 0, 0});
        EXPECT_TRUE(observer().waitUntil([&] { return !observer().isViewable(window()); }));
    }
};

TEST_F(SettingsFrameTest, NothingOfItIsInTheProcessBeforeItIsShown) {
    ASSERT_NO_FATAL_FAILURE(startProgram());
    EXPECT_FALSE(hasMapped("libQt6Quick"));
    EXPECT_FALSE(hasMapped("libQt6Qml"));
    EXPECT_FALSE(hasMapped("velmorand_settings"));

    ASSERT_NO_FATAL_FAILURE(openWindow());

    EXPECT_TRUE(hasMapped("libQt6Quick"));
    EXPECT_TRUE(hasMapped("velmorand_settings"));
}

TEST_F(SettingsFrameTest, OpensInItsSizeInTheMiddleOfTheDisplay) {
    ASSERT_NO_FATAL_FAILURE(open());

    EXPECT_EQ(client().width, 780);
    EXPECT_EQ(client().height, 560);
    const PixelRect display = desktop().monitors().front().rect;
    EXPECT_NEAR(client().x + client().width / 2, display.x + display.width / 2, 20);
    EXPECT_NEAR(client().y + client().height / 2, display.y + display.height / 2, 30);
}

TEST_F(SettingsFrameTest, ShowingItTwiceMakesOneWindow) {
    ASSERT_NO_FATAL_FAILURE(open());
    const xcb_window_t first = window();
    ASSERT_NO_FATAL_FAILURE(openWindow());

    EXPECT_EQ(window(), first);
    const auto clients = observer().clients();
    EXPECT_EQ(std::ranges::count(clients, title, &ClientWindow::title), 1);
}

TEST_F(SettingsFrameTest, ClosingHidesItAndThePaneStays) {
    ASSERT_NO_FATAL_FAILURE(open());
    choosePane("About");
    expectShown("", "Velmorand collects no data.");
    close();
    EXPECT_TRUE(program().isRunning());

    ASSERT_NO_FATAL_FAILURE(openWindow());

    expectShown("", "Velmorand collects no data.");
}

TEST_F(SettingsFrameTest, IsNeverSmallerThanItsMinimum) {
    ASSERT_NO_FATAL_FAILURE(open());
    Pager(observer()).requestFrame(window(), {100, 100, 300, 200});

    EXPECT_TRUE(observer().waitUntil([&] { return client().width == 720 && client().height == 520; }))
        << client().text();
    EXPECT_EQ(observer().sizeLimits(window()).minimumWidth, 720);
    EXPECT_EQ(observer().sizeLimits(window()).minimumHeight, 520);
}

TEST_F(SettingsFrameTest, ItsFrameIsRememberedFromOneRunToTheNext) {
    ASSERT_NO_FATAL_FAILURE(open());
    const auto placed = Pager(observer()).place(window(), {140, 90, 900, 640});
    ASSERT_TRUE(placed) << placed.error();
    const PixelRect before = client();
    EXPECT_TRUE(endProgram().isSuccess());
    ASSERT_TRUE(fs::exists(configuration("velmorand/VelmorandSettingsWindow")));

    ASSERT_NO_FATAL_FAILURE(open());

    EXPECT_TRUE(observer().waitUntil([&] { return framesAgree(client(), before, 1); })) << client().text();
}

TEST_F(SettingsFrameTest, AFrameBeyondTheDisplaysIsBroughtBack) {
    fs::create_directories(configuration("velmorand"));
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(Pager(observer()).place(window(), {140, 90, 900, 640}));
    EXPECT_TRUE(endProgram().isSuccess());
    std::string text;
    {
        std::ifstream stream(configuration("velmorand/VelmorandSettingsWindow"));
        text.assign(std::istreambuf_iterator<char>(stream), {});
    }
    const auto number = text.find_first_of("0123456789");
    ASSERT_NE(number, std::string::npos) << text;
    text.replace(number, text.find_first_not_of("0123456789", number) - number, "9000");
    std::ofstream(configuration("velmorand/VelmorandSettingsWindow")) << text;

    ASSERT_NO_FATAL_FAILURE(open());

    const PixelRect display = desktop().monitors().front().rect;
    const PixelRect frame = observer().visibleFrame(window()).value_or(PixelRect{});
    EXPECT_GE(frame.x, display.x) << frame.text();
    EXPECT_GE(frame.y, display.y) << frame.text();
    EXPECT_LE(frame.right(), display.right()) << frame.text();
    EXPECT_LE(frame.bottom(), display.bottom()) << frame.text();
}

TEST_F(SettingsFrameTest, AFrameThatCannotBeReadCountsAsNone) {
    fs::create_directories(configuration("velmorand"));
    std::ofstream(configuration("velmorand/VelmorandSettingsWindow")) << "nonsense \xff";

    ASSERT_NO_FATAL_FAILURE(open());

    EXPECT_EQ(client().width, 780);
    EXPECT_EQ(client().height, 560);
}

TEST_F(SettingsFrameTest, WithoutItsModuleTheProgramSaysWhyAndRunsOn) {
    const fs::path copy = desktop().folder() / "alone/velmorand";
    fs::create_directories(copy.parent_path());
    fs::copy_file(programUnderTest(), copy);
    auto program = desktop().start({copy.string()});
    ASSERT_TRUE(program) << program.error();
    ASSERT_TRUE(observer().waitUntil([&] { return program->log().contains("Registered shortcut restore"); }));

    auto second = desktop().start({copy.string()});
    ASSERT_TRUE(second) << second.error();

    EXPECT_TRUE(observer().waitUntil([&] { return program->log().contains("velmorand [settings] error:"); }))
        << program->logTail();
    EXPECT_TRUE(program->isRunning());
}

TEST_F(SettingsFrameTest, AModuleOfAnotherBuildIsRefused) {
    const fs::path copy = desktop().folder() / "updated/velmorand";
    const fs::path module = copy.parent_path() / "lib/velmorand/libvelmorand_settings.so";
    fs::create_directories(module.parent_path());
    fs::copy_file(programUnderTest(), copy);
    fs::copy_file(VELMORAND_OTHER_SETTINGS_MODULE, module);
    auto program = desktop().start({copy.string()});
    ASSERT_TRUE(program) << program.error();
    ASSERT_TRUE(observer().waitUntil([&] { return program->log().contains("Registered shortcut restore"); }));

    auto second = desktop().start({copy.string()});
    ASSERT_TRUE(second) << second.error();

    EXPECT_TRUE(observer().waitUntil([&] {
        return program->log().contains("libvelmorand_settings.so is of another build than the running program");
    })) << program->logTail();
    EXPECT_TRUE(program->isRunning());
}

class SettingsWindowOnTest : public SettingsFrameTest, public testing::WithParamInterface<WindowManagerKind> {
protected:
    [[nodiscard]] DesktopOptions desktopOptions() const override { return {.windowManager = {.kind = GetParam()}}; }
};

TEST_P(SettingsWindowOnTest, ComesToTheFrontFromTheBackground) {
    auto other = desktop().start(terminalWindow({.title = "Other"}));
    ASSERT_TRUE(other) << other.error();
    const auto otherWindow = observer().findWindow("Other");
    ASSERT_TRUE(otherWindow) << otherWindow.error();
    Pager pager(observer());
    ASSERT_NO_FATAL_FAILURE(open());
    for (int round = 0; round < 2; ++round) {
        const auto activated = pager.activate(*otherWindow);
        ASSERT_TRUE(activated) << activated.error();
        keyboard().press(Key::a);

        ASSERT_NO_FATAL_FAILURE(openWindow()) << "also when the user has just typed elsewhere";
    }
    const auto clients = observer().clients();
    EXPECT_EQ(std::ranges::count(clients, title, &ClientWindow::title), 1);
    EXPECT_TRUE(observer().states(window()).focused || observer().activeWindow() == window());
}

TEST_P(SettingsWindowOnTest, StaysMaximisedWhenItIsAskedForAgainAndKeepsItsOwnFrame) {
    ASSERT_NO_FATAL_FAILURE(open());
    Pager pager(observer());
    const PixelRect own = client();
    const auto maximised = pager.maximize(window());
    ASSERT_TRUE(maximised) << maximised.error();
    const auto isMaximised = [&] {
        const auto states = observer().states(window());
        return states.maximizedHorizontally && states.maximizedVertically;
    };
    observer().waitUntil([] { return false; }, std::chrono::milliseconds(900));  // longer than it waits to store

    ASSERT_NO_FATAL_FAILURE(openWindow());
    EXPECT_TRUE(isMaximised());

    EXPECT_TRUE(endProgram().isSuccess());
    ASSERT_NO_FATAL_FAILURE(open());
    EXPECT_TRUE(observer().waitUntil([&] { return client().width == own.width && client().height == own.height; }))
        << client().text();
}

INSTANTIATE_TEST_SUITE_P(On, SettingsWindowOnTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4, WindowManagerKind::marco,
                                         WindowManagerKind::kwin),
                         windowManagerName);

}  // namespace
}  // namespace velmorand::desktop
