#include "desktop/demo/DemoActions.h"
#include "desktop/demo/ProgramStart.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/TestKeyboard.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/harness/TrayUser.h"
#include "desktop/program/ProgramTest.h"

#include <fmt/format.h>

#include <fstream>
#include <iterator>

namespace velmorand::desktop {
namespace {

constexpr PixelRect display{0, 0, 1280, 1000};
constexpr PixelRect start{700, 150, 500, 400};
constexpr std::size_t allShortcuts = 19;

/// The lines of the menu when everything is in order: 29 with text and 7 that separate.
constexpr int textLines = 29;
constexpr int separators = 7;

/// The program's status item on panels that people use.
class MenuTest : public testing::TestWithParam<TrayHostKind> {
protected:
    void SetUp() override {
        auto desktop = TestDesktop::create(
            {.windowManager = {.kind = WindowManagerKind::openbox}, .monitors = {{"main", display, true}}});
        ASSERT_TRUE(desktop) << desktop.error();
        desktop_ = std::move(*desktop);
        user_.emplace(*desktop_);
        const auto host = user_->startHost(GetParam());
        ASSERT_TRUE(host) << host.error();
        const auto icon = user_->findIcon([this] { startProgram(); });
        ASSERT_TRUE(icon) << icon.error();
        openWindow();
    }
    void TearDown() override {
        if (HasFailure() && program_) ADD_FAILURE() << program_->logTail();
    }

    void startProgram() {
        auto program = desktop::startProgram(*desktop_, programUnderTest(), allShortcuts);
        ASSERT_TRUE(program) << program.error();
        program_ = std::move(*program);
    }
    void endProgram() {
        program_->terminate();
        program_.reset();
    }
    void openWindow() {
        auto client = desktop_->start(plainWindow({.title = "Window", .applicationId = "org.example.Tasks"}));
        ASSERT_TRUE(client) << client.error();
        client_ = std::move(*client);
        const auto window = observer().findWindow("Window");
        ASSERT_TRUE(window) << window.error();
        window_ = *window;
        Pager pager(observer());
        ASSERT_TRUE(pager.activate(window_));
        ASSERT_TRUE(pager.place(window_, start, 0));
        user_->letSettle();  // panels ask for the menu when the icon appears, which counts as an opening for a moment
    }
    /// One of the panels gives a menu the place of the lines that it had before, so it is opened a second time.
    void openMenu() {
        const auto first = user_->openMenu();
        ASSERT_TRUE(first) << first.error();
        auto keyboard = TestKeyboard::attach(observer());
        ASSERT_TRUE(keyboard) << keyboard.error();
        keyboard->press(Key::escape);
        user_->letSettle();
        const auto menu = user_->openMenu();
        ASSERT_TRUE(menu) << menu.error();
        menu_ = *menu;
    }
    /// The line's number, counted from 0 at the top among those with text, where no separator is above it; or from -1 at
    /// the bottom, with one separator below all but the last.
    void clickLine(int line) {
        const double height = menu_.height / (textLines + separators * separatorHeight);
        const double fromBottom = line < -1 ? (-line - 0.5 + separatorHeight) * height : 0.5 * height;
        const double y = line >= 0 ? (line + 0.5) * height : menu_.height - fromBottom;
        user_->click(menu_.x + menu_.width / 3, menu_.y + static_cast<int>(y));
    }
    void press(std::string_view action) {
        auto keyboard = TestKeyboard::attach(observer());
        ASSERT_TRUE(keyboard) << keyboard.error();
        keyboard->press(demoAction(action).modifiers, demoAction(action).key);
    }

    /// What a panel is told of the menu, as the tool of the bus prints it.
    [[nodiscard]] std::string layout() {
        const std::string item = fmt::format("org.kde.StatusNotifierItem-{}-1", program_->pid());
        const auto call = [&](const std::vector<std::string>& rest) {
            std::vector<std::string> words{"dbus-send", "--session", "--print-reply", "--dest=" + item, "/MenuBar"};
            words.insert(words.end(), rest.begin(), rest.end());
            auto process = desktop_->start(words);
            const bool isDone = process && process->wait(patience);
            return isDone ? process->log() : std::string();
        };
        call({"com.canonical.dbusmenu.AboutToShow", "int32:0"});
        return call({"com.canonical.dbusmenu.GetLayout", "int32:0", "int32:-1", "array:string:"});
    }
    [[nodiscard]] bool logs(std::string_view line) {
        return observer().waitUntil([&] { return program_->log().contains(line); });
    }
    [[nodiscard]] std::string storedSettings() const {
        std::ifstream stream(storedSettingsFile(desktop_->environment()), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }
    [[nodiscard]] TrayUser& user() { return *user_; }
    [[nodiscard]] ChildProcess& program() { return *program_; }
    [[nodiscard]] xcb_window_t window() const { return window_; }
    /// What the panel leaves free.
    [[nodiscard]] PixelRect workArea() { return {0, 0, display.width, display.height - user().host().frame().height}; }

private:
    /// Of a line with text.
    static constexpr double separatorHeight = 0.1;

    std::unique_ptr<TestDesktop> desktop_;
    std::optional<TrayUser> user_;
    std::optional<ChildProcess> program_;
    std::optional<ChildProcess> client_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    PixelRect menu_;
};

TEST_P(MenuTest, OpensWithWhatCanBeDoneNow) {
    openMenu();
    user().picture("menu");

    const std::string lines = layout();
    for (const std::string_view title :
         {"Edges", "Move to Left Half", "Corners", "Thirds", "Two Thirds", "Displays", "Window Actions",
          "Ignore org.example.Tasks", "Refresh Permissions", "Settings...", "Quit Velmorand"})
        EXPECT_TRUE(lines.contains(fmt::format("string \"{}", title))) << title << "\n" << lines;
    EXPECT_FALSE(lines.contains("Accessibility permission required"));
}

TEST_P(MenuTest, AnActionChosenWithThePointerMovesTheFrontmostWindow) {
    const PixelRect leftHalf{0, 0, workArea().width / 2, workArea().height};
    openMenu();
    clickLine(1);

    const auto seen = observer().waitForSettledFrame(window(), leftHalf);
    EXPECT_TRUE(seen && framesAgree(*seen, leftHalf, 2)) << seen.value_or(PixelRect{});
    EXPECT_TRUE(logs("velmorand [windows] info: perform left"));
}

TEST_P(MenuTest, AnApplicationIgnoredFromTheMenuIsStillIgnoredAfterARestart) {
    openMenu();
    clickLine(-4);
    EXPECT_TRUE(observer().waitUntil([this] { return storedSettings().contains("ignoredApps\":[\""); }))
        << storedSettings();

    endProgram();
    startProgram();
    press("left");

    EXPECT_TRUE(logs(" is ignored."));
    EXPECT_EQ(observer().visibleFrame(window()), start);
    EXPECT_TRUE(layout().contains("string \"Stop Ignoring org.example.Tasks\""));
}

TEST_P(MenuTest, AFailureWarnsForAWhileAndIsListed) {
    const ScreenArea usual = user().lookAtPanel();
    press("nextDisplay");

    EXPECT_TRUE(user().waitForChange(usual));
    user().picture("warning");
    EXPECT_TRUE(layout().contains("string \"Only one display is connected.\""));
    EXPECT_TRUE(user().comesToLookLike(usual));
    EXPECT_TRUE(layout().contains("string \"Only one display is connected.\""));
}

TEST_P(MenuTest, QuittingFromTheMenuEndsTheProgramWell) {
    openMenu();
    clickLine(-1);

    const auto status = program().wait(patience);
    ASSERT_TRUE(status);
    EXPECT_TRUE(status->isSuccess()) << status->text();
}

std::string hostName(const testing::TestParamInfo<TrayHostKind>& host) {
    return host.param == TrayHostKind::xfce ? "Xfce" : "LXQt";
}

INSTANTIATE_TEST_SUITE_P(On, MenuTest, testing::Values(TrayHostKind::xfce, TrayHostKind::lxqt), hostName);

}  // namespace
}  // namespace velmorand::desktop
