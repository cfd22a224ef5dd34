#include "desktop/demo/ProgramStart.h"
#include "desktop/harness/NotificationServer.h"
#include "desktop/harness/SettingsFile.h"
#include "desktop/program/ProgramTest.h"
#include "desktop/x11/GrabbingClient.h"

#include <vector>

namespace velmorand::desktop {
namespace {

using testing::Test;

constexpr std::uint32_t superAndAlt = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;
constexpr std::string_view takenTitle = "Velmorand: Shortcut Issue";
constexpr std::string_view takenText =
    "Could not register Left (Option + Command + Left Arrow). Another app may already be using it.";

/// The program on a desktop with a notification server.
class ShortcutProblemTest : public Test {
protected:
    void SetUp() override {
        auto desktop = TestDesktop::create({.windowManager = {.kind = WindowManagerKind::openbox}});
        ASSERT_TRUE(desktop) << desktop.error();
        desktop_ = std::move(*desktop);
        auto server = NotificationServer::start(*desktop_);
        ASSERT_TRUE(server) << server.error();
        server_.emplace(std::move(*server));
    }

    void startProgram(std::size_t shortcuts) {
        auto program = desktop::startProgram(*desktop_, programUnderTest(), shortcuts);
        ASSERT_TRUE(program) << program.error();
        program_ = std::move(*program);
    }
    void leave(std::string_view document) {
        const auto written = writeSettingsFile(storedSettingsFile(desktop_->environment()), document);
        ASSERT_TRUE(written) << written.error();
    }
    [[nodiscard]] bool comeToBeShown(std::size_t count) {
        return observer().waitUntil([&] { return server_->shown().size() >= count; });
    }
    [[nodiscard]] bool logs(std::string_view line) {
        return observer().waitUntil([&] { return program_->log().contains(line); });
    }

    [[nodiscard]] XObserver& observer() { return desktop_->observer(); }
    [[nodiscard]] TestDesktop& desktop() { return *desktop_; }
    [[nodiscard]] std::vector<ShownNotification> shown() { return server_->shown(); }
    [[nodiscard]] ChildProcess& program() { return *program_; }
    void endProgram() { program_->terminate(); }

private:
    std::unique_ptr<TestDesktop> desktop_;
    std::optional<NotificationServer> server_;
    std::optional<ChildProcess> program_;
};

class TakenShortcutTest : public ShortcutProblemTest, public testing::WithParamInterface<GrabKind> {};

TEST_P(TakenShortcutTest, ACombinationThatAnotherClientHoldsIsReportedOnce) {
    GrabbingClient other(desktop().displayName());
    ASSERT_TRUE(other.grab(GetParam(), Key::left, superAndAlt));

    startProgram(18);

    ASSERT_TRUE(comeToBeShown(1));
    EXPECT_EQ(shown().front().title, takenTitle);
    EXPECT_EQ(shown().front().body, takenText);
    EXPECT_TRUE(logs("velmorand [shortcuts] error: Failed shortcut left: Could not register the shortcut (error "
                     "-9878)."));
    endProgram();  // with everything that it had to say
    EXPECT_EQ(shown().size(), 1U);
}

std::string grabKindName(const testing::TestParamInfo<GrabKind>& info) {
    return info.param == GrabKind::core ? "core" : "inputExtension";
}

INSTANTIATE_TEST_SUITE_P(By, TakenShortcutTest, testing::Values(GrabKind::core, GrabKind::inputExtension),
                         grabKindName);

TEST_F(ShortcutProblemTest, TwoActionsOnOneCombinationFireNothingAndAreReportedAsAConflict) {
    leave(R"({"shortcuts": {"left": {"keyCode": 40, "modifiers": 2304, "keyDisplay": "K"},
                            "right": {"keyCode": 40, "modifiers": 2304, "keyDisplay": "K"}}})");

    startProgram(17);

    ASSERT_TRUE(comeToBeShown(1));
    EXPECT_EQ(shown().front().title, "Velmorand: Shortcut Conflict");
    EXPECT_EQ(shown().front().body, "Shortcut conflict, not registered: Left, Right.");
    auto keyboard = TestKeyboard::attach(observer());
    ASSERT_TRUE(keyboard) << keyboard.error();
    keyboard->press({Key::leftSuper, Key::leftAlt}, Key::k);
    keyboard->press({Key::leftSuper, Key::leftAlt}, Key::up);
    EXPECT_TRUE(logs("Dispatching shortcut top")) << "the one behind it works";
    EXPECT_FALSE(program().log().contains("Dispatching shortcut left"));
    EXPECT_FALSE(program().log().contains("Dispatching shortcut right"));
}

TEST_F(ShortcutProblemTest, WithoutAnyProblemNothingIsShown) {
    startProgram(19);
    // The next program's notification shows that none of the first one came before.
    endProgram();
    GrabbingClient other(desktop().displayName());
    ASSERT_TRUE(other.grab(GrabKind::core, Key::left, superAndAlt));
    startProgram(18);

    ASSERT_TRUE(comeToBeShown(1));
    EXPECT_EQ(shown().size(), 1U);
}

}  // namespace
}  // namespace velmorand::desktop
