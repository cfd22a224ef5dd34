#include "desktop/demo/DemoActions.h"
#include "desktop/demo/ProgramStart.h"
#include "desktop/harness/Pager.h"
#include "desktop/harness/SettingsFile.h"
#include "desktop/harness/TestPanel.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/program/ProgramTest.h"
#include "desktop/x11/GrabbingClient.h"

#include <sys/stat.h>

#include <array>
#include <csignal>
#include <fstream>
#include <iterator>
#include <list>
#include <sstream>
#include <vector>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

constexpr PixelRect display{0, 0, 1280, 800};
constexpr PixelRect panel{0, 760, 1280, 40};
constexpr PixelRect start{200, 150, 500, 400};
constexpr std::size_t allShortcuts = 19;
constexpr std::uint32_t superAndAlt = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The program on a desktop with a panel and a window, started over a stored document that an earlier run, or the user,
/// has left.
class StoredSettingsTest : public testing::Test {
protected:
    void SetUp() override {
        auto desktop = TestDesktop::create({.windowManager = {.kind = WindowManagerKind::openbox}});
        ASSERT_TRUE(desktop) << desktop.error();
        desktop_ = std::move(*desktop);
        const TestPanel dock{.frame = panel, .partialStrut = partialStrut(RootEdge::bottom, panel, display)};
        ASSERT_TRUE(open(panelWindow(dock), "Panel"));
        window_ = open(plainWindow({.title = "Window"}), "Window").value_or(XCB_WINDOW_NONE);
        ASSERT_NE(window_, XCB_WINDOW_NONE);
    }

    void TearDown() override {
        if (!desktop_ || !HasFailure()) return;
        std::printf("%s\n", desktop_->logTails().c_str());
        if (program_) std::printf("%s\n", program_->logTail().c_str());
    }

    std::optional<xcb_window_t> open(const std::vector<std::string>& command, std::string_view title) {
        auto client = desktop_->start(command);
        EXPECT_TRUE(client) << client.error();
        if (!client) return std::nullopt;
        clients_.push_back(std::move(*client));
        const auto found = observer().findWindow(title);
        EXPECT_TRUE(found) << found.error();
        return found ? std::optional(*found) : std::nullopt;
    }

    [[nodiscard]] fs::path file() const { return storedSettingsFile(desktop_->environment()); }
    void leave(std::string_view document) const {
        const auto written = writeSettingsFile(file(), document);
        ASSERT_TRUE(written) << written.error();
    }

    /// Returns when that many shortcuts are registered.
    void startProgram(std::size_t shortcuts = allShortcuts, const Environment& additions = {}) {
        auto program = desktop::startProgram(*desktop_, programUnderTest(), shortcuts, additions);
        ASSERT_TRUE(program) << program.error();
        program_ = std::move(*program);
    }
    void startProgramOver(std::string_view document, std::size_t shortcuts = allShortcuts) {
        leave(document);
        startProgram(shortcuts);
    }
    void endProgram() {
        program_->sendSignal(SIGTERM);
        const auto status = program_->wait(std::chrono::seconds(10));
        ASSERT_TRUE(status && status->isSuccess()) << program_->logTail();
    }

    void press(std::span<const Key> modifiers, Key key) {
        auto keyboard = TestKeyboard::attach(observer());
        ASSERT_TRUE(keyboard) << keyboard.error();
        keyboard->press(modifiers, key);
    }
    void press(std::string_view action) { press(demoAction(action).modifiers, demoAction(action).key); }

    /// Puts the window where no action puts it, and gives it the focus.
    void putAside() {
        Pager pager(observer());
        const auto active = pager.activate(window_);
        ASSERT_TRUE(active) << active.error();
        const auto placed = pager.place(window_, start, 0);
        ASSERT_TRUE(placed) << placed.error();
    }
    void expectAt(const PixelRect& frame) { EXPECT_EQ(observer().waitForSettledFrame(window_, frame, 0), frame); }
    /// Presses the default shortcut of the action and expects the window exactly there.
    void expectLanding(std::string_view action, const PixelRect& frame) {
        putAside();
        press(action);
        expectAt(frame);
    }

    /// The lines of the program's log in which the text occurs.
    [[nodiscard]] std::vector<std::string> linesWith(std::string_view text) const {
        std::vector<std::string> lines;
        std::istringstream log(program_->log());
        for (std::string line; std::getline(log, line);) {
            if (line.contains(text)) lines.push_back(line);
        }
        return lines;
    }

    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }
    [[nodiscard]] TestDesktop& desktop() { return *desktop_; }

private:
    std::unique_ptr<TestDesktop> desktop_;
    std::list<ChildProcess> clients_;
    std::optional<ChildProcess> program_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

TEST_F(StoredSettingsTest, WithoutAnyTheDefaultsCountAndNothingIsWritten) {
    startProgram();
    expectLanding("left", {0, 0, 640, 760});

    endProgram();

    EXPECT_FALSE(fs::exists(file().parent_path()));
    EXPECT_TRUE(linesWith("[preferences]").empty());
}

TEST_F(StoredSettingsTest, PaddingAndGapShowInTheNextMove) {
    startProgramOver(R"({"outerPadding":10,"innerGap":8})");

    expectLanding("left", {10, 10, 626, 740});
    expectLanding("right", {644, 10, 626, 740});
    expectLanding("bottomRight", {644, 384, 626, 366});
    expectLanding("maximize", {10, 10, 1260, 740});
}

TEST_F(StoredSettingsTest, APaddingBeyondTheLimitIsTheLimit) {
    startProgramOver(R"({"outerPadding":75})");

    expectLanding("maximize", {50, 50, 1180, 660});
}

TEST_F(StoredSettingsTest, WindowsAreKeptOffThePanelOnlyWhereThatIsWanted) {
    startProgramOver(R"({"snapToVisibleArea":true})");
    expectLanding("maximize", {0, 0, 1280, 760});
    endProgram();

    startProgramOver(R"({"snapToVisibleArea":false})");
    expectLanding("maximize", display);
}

TEST_F(StoredSettingsTest, ADisabledActionIsSilentAndItsKeysAreFree) {
    startProgramOver(R"({"disabledShortcutActions":["left"]})", allShortcuts - 1);
    EXPECT_TRUE(linesWith("shortcut left id").empty());
    GrabbingClient other(desktop().displayName());

    EXPECT_TRUE(other.grab(GrabKind::core, Key::left, superAndAlt));
    press("left");
    EXPECT_EQ(other.takePresses(), 1);
    other.release(GrabKind::core, Key::left, superAndAlt);
    EXPECT_TRUE(other.grab(GrabKind::inputExtension, Key::left, superAndAlt));
    press("left");
    EXPECT_EQ(other.takePresses(), 1);

    expectLanding("right", {640, 0, 640, 760});
    EXPECT_EQ(linesWith("Dispatching shortcut").size(), 1U) << "of the right half alone";
}

TEST_F(StoredSettingsTest, ARemappedShortcutFiresAndTheDefaultOneDoesNot) {
    startProgramOver(R"({"shortcuts":{"left":{"keyCode":40,"modifiers":2304,"keyDisplay":"K"}}})");

    putAside();
    press(std::array{Key::leftSuper, Key::leftAlt}, Key::k);
    expectAt({0, 0, 640, 760});

    putAside();
    press("left");
    press("right");
    expectAt({640, 0, 640, 760});
    EXPECT_EQ(linesWith("Dispatching shortcut left").size(), 1U);
}

TEST_F(StoredSettingsTest, AValidDocumentIsLeftByteForByte) {
    const std::string document = "{ \"outerPadding\" : 10,\n  \"innerGap\" : 75, \"unknown\" : [] }\n";
    leave(document);
    fs::permissions(file(), fs::perms(0644));
    const auto written = fs::last_write_time(file());
    startProgram();
    expectLanding("maximize", {10, 10, 1260, 740});

    endProgram();

    EXPECT_EQ(contentOf(file()), document);
    EXPECT_EQ(fs::last_write_time(file()), written);
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms(0644));
    EXPECT_TRUE(linesWith("[preferences]").empty());
}

TEST_F(StoredSettingsTest, ARelativeConfigurationFolderDoesNotCount) {
    leave(R"({"outerPadding":10})");

    startProgram(allShortcuts, {{"XDG_CONFIG_HOME", "settings"}});

    expectLanding("maximize", {10, 10, 1260, 740});
}

TEST_F(StoredSettingsTest, APipeInTheDocumentsPlaceDoesNotKeepTheProgramWaiting) {
    fs::create_directories(file().parent_path());
    ASSERT_EQ(mkfifo(file().c_str(), S_IRUSR | S_IWUSR), 0);

    startProgram();

    expectLanding("left", {0, 0, 640, 760});
    EXPECT_EQ(linesWith("[preferences]"),
              std::vector{"velmorand [preferences] error: Failed to load preferences, using defaults: Cannot read " +
                          file().string() + ": it is no file"});
}

struct Unreadable {
    const char* name;
    const char* document;
    const char* reason;
};

void PrintTo(const Unreadable& row, std::ostream* stream) {
    *stream << row.name;
}

class UnreadableSettingsTest : public StoredSettingsTest, public testing::WithParamInterface<Unreadable> {};

TEST_P(UnreadableSettingsTest, GiveTheDefaultsAndOneLineAndAreLeftByteForByte) {
    const std::string_view document = GetParam().document;
    startProgramOver(document);

    expectLanding("left", {0, 0, 640, 760});
    endProgram();

    EXPECT_EQ(contentOf(file()), document);
    const auto lines = linesWith("[preferences]");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(
        lines.front().starts_with("velmorand [preferences] error: Failed to load preferences, using defaults: "))
        << lines.front();
    EXPECT_TRUE(lines.front().contains(GetParam().reason)) << lines.front();
}

INSTANTIATE_TEST_SUITE_P(Of, UnreadableSettingsTest,
                         testing::Values(Unreadable{"AWrongType", R"({"outerPadding":10,"ignoredApps":"x"})",
                                                    R"("ignoredApps")"},
                                         Unreadable{"HalfADocument", R"({"outerPadding":10,"inn)", ""},
                                         Unreadable{"NoObject", "[]", ""}, Unreadable{"NothingAtAll", "", ""}),
                         [](const testing::TestParamInfo<Unreadable>& row) { return row.param.name; });

}  // namespace
}  // namespace velmorand::desktop
