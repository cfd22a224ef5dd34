#include "desktop/harness/TrayUser.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <optional>
#include <string>

namespace velmorand::desktop {
namespace {

/// A status item on panels that people use, seen on the screen and clicked with a mouse.
class StatusItemOnPanelTest : public testing::TestWithParam<TrayHostKind> {
protected:
    void SetUp() override {
        auto desktop = TestDesktop::create(
            {.windowManager = {.kind = WindowManagerKind::openbox}, .monitors = {{"main", {0, 0, 800, 600}, true}}});
        ASSERT_TRUE(desktop) << desktop.error();
        desktop_ = std::move(*desktop);
        user_.emplace(*desktop_);
    }
    void TearDown() override {
        if (HasFailure() && program_) ADD_FAILURE() << program_->logTail();
    }

    void startProgram() {
        auto program = desktop_->start({VELMORAND_STATUS_PROGRAM});
        ASSERT_TRUE(program) << program.error();
        program_.emplace(std::move(*program));
        ASSERT_TRUE(logs("does not warn"));
    }
    void startHost() {
        const auto started = user_->startHost(GetParam());
        ASSERT_TRUE(started) << started.error();
    }
    /// Starts both.
    void findIcon() {
        startHost();
        const auto icon = user_->findIcon([this] { startProgram(); });
        ASSERT_TRUE(icon) << icon.error();
    }
    void openMenu() {
        const auto menu = user_->openMenu();
        ASSERT_TRUE(menu) << menu.error();
        menu_ = *menu;
    }

    /// Whether the program prints the line, from byte `from` of its log on.
    [[nodiscard]] bool logs(const std::string& line, std::uintmax_t from = 0) {
        return desktop_->observer().waitUntil([&] { return program_->log(from).contains(line); });
    }
    /// Eight lines and a separator.
    void clickLine(int place) {
        constexpr double lines = 8.3;
        const double lineHeight = menu_.height / lines;
        user_->click(menu_.x + menu_.width / 3, menu_.y + static_cast<int>((place + 0.5) * lineHeight));
    }

    std::unique_ptr<TestDesktop> desktop_;
    std::optional<TrayUser> user_;
    std::optional<ChildProcess> program_;
    PixelRect menu_;
};

TEST_P(StatusItemOnPanelTest, ItsMenuOpensAndALineIsChosenEachTimeItIsClicked) {
    findIcon();

    openMenu();
    clickLine(1);
    EXPECT_TRUE(logs("chosen perform left"));
    user_->letSettle();
    const auto before = program_->logSize();
    openMenu();
    EXPECT_TRUE(logs("needs update", before)) << "the lines are of this opening";
    clickLine(1);
    EXPECT_TRUE(logs("chosen perform left", before));
}

TEST_P(StatusItemOnPanelTest, ALineThatCannotBeChosenIsNotChosen) {
    findIcon();

    openMenu();
    clickLine(2);
    user_->letSettle();

    EXPECT_FALSE(program_->log().contains("chosen"));
}

TEST_P(StatusItemOnPanelTest, ItsImageChangesAndComesBack) {
    findIcon();
    const ScreenArea usual = user_->lookAtPanel();

    program_->sendSignal(SIGUSR1);
    EXPECT_TRUE(user_->waitForChange(usual));
    program_->sendSignal(SIGUSR2);

    EXPECT_TRUE(user_->comesToLookLike(usual));
}

TEST_P(StatusItemOnPanelTest, ItIsSeenOnAPanelThatComesLaterAndOnTheNextOne) {
    startProgram();
    startHost();
    user_->letSettle();
    const ScreenArea first = user_->lookAtPanel();
    user_->stopHost();
    startHost();
    EXPECT_TRUE(user_->comesToLookLike(first));

    program_->terminate();
    EXPECT_TRUE(user_->waitForChange(first)) << "the item goes with its program";
    startProgram();
    EXPECT_TRUE(user_->comesToLookLike(first));
}

std::string hostName(const testing::TestParamInfo<TrayHostKind>& host) {
    return host.param == TrayHostKind::xfce ? "Xfce" : "LXQt";
}

INSTANTIATE_TEST_SUITE_P(On, StatusItemOnPanelTest, testing::Values(TrayHostKind::xfce, TrayHostKind::lxqt), hostName);

}  // namespace
}  // namespace velmorand::desktop
