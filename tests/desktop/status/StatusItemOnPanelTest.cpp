#include "desktop/harness/ScreenArea.h"
#include "desktop/harness/Screenshot.h"
#include "desktop/harness/TestPointer.h"
#include "desktop/harness/TrayHost.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
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
        pointer_.emplace(desktop_->observer().connection());
        pointer_->moveTo(400, 100);
    }
    void TearDown() override {
        if (!HasFailure()) return;
        ADD_FAILURE() << (program_ ? program_->logTail() : "") << (host_ ? host_->process().logTail(8) : "");
    }

    void startProgram() {
        auto program = desktop_->start({VELMORAND_STATUS_PROGRAM});
        ASSERT_TRUE(program) << program.error();
        program_.emplace(std::move(*program));
        ASSERT_TRUE(logs("does not warn"));
    }
    void startHost() {
        auto host = TrayHost::start(*desktop_, GetParam());
        ASSERT_TRUE(host) << host.error();
        host_.emplace(std::move(*host));
    }

    /// Whether the program prints the line, from byte `from` of its log on.
    [[nodiscard]] bool logs(const std::string& line, std::uintmax_t from = 0) {
        return desktop_->observer().waitUntil([&] { return program_->log(from).contains(line); });
    }
    [[nodiscard]] ScreenArea look(const PixelRect& rect) {
        return readScreenArea(desktop_->observer().connection(), rect);
    }
    /// The screen above the panel.
    [[nodiscard]] PixelRect desk() const { return {0, 0, 800, 600 - host_->frame().height}; }
    /// What has changed since, once it changes no more.
    [[nodiscard]] std::optional<PixelRect> waitForChange(const ScreenArea& before) {
        ScreenArea last = before;
        static_cast<void>(desktop_->observer().waitUntil([&] {
            ScreenArea now = look(before.rect);
            const bool isSettled = now == last && now != before;
            last = std::move(now);
            if (!isSettled) desktop_->observer().waitUntil([] { return false; }, std::chrono::milliseconds(150));
            return isSettled;
        }));
        return changedPart(before, last);
    }
    void letSettle() {
        desktop_->observer().waitUntil([] { return false; }, std::chrono::milliseconds(1200));
    }
    /// Where the item stands on the panel: the panel without it looks otherwise.
    void findIcon() {
        startHost();
        letSettle();
        const ScreenArea empty = look(host_->frame());
        startProgram();
        const auto icon = waitForChange(empty);
        ASSERT_TRUE(icon) << "no icon is seen";
        icon_ = *icon;
        ASSERT_LE(icon_.width, 32) << "more than an icon";
    }
    void clickIcon() {
        const ScreenArea before = look(desk());
        pointer_->moveTo(icon_.x + icon_.width / 2, icon_.y + icon_.height / 2);
        // One of them opens the menu of an item with the right button only.
        pointer_->click(GetParam() == TrayHostKind::xfce ? PointerButton::left : PointerButton::right);
        const auto menu = waitForChange(before);
        ASSERT_TRUE(menu) << "no menu is seen";
        menu_ = *menu;
        picture("menu");
    }
    /// Eight lines and a separator.
    void clickLine(int place) {
        constexpr double lines = 8.3;
        const double lineHeight = menu_.height / lines;
        pointer_->moveTo(menu_.x + menu_.width / 3, menu_.y + static_cast<int>((place + 0.5) * lineHeight));
        letSettle();
        pointer_->click(PointerButton::left);
    }
    /// For a look, where one is wanted.
    void picture(const std::string& name) {
        const char* folder = std::getenv("VELMORAND_TEST_PICTURES");
        if (folder == nullptr) return;
        const auto file = std::filesystem::path(folder) / (nameOf(GetParam()) + "-" + name + ".png");
        static_cast<void>(saveScreenshot(desktop_->observer().connection(), file));
    }

    std::unique_ptr<TestDesktop> desktop_;
    std::optional<TestPointer> pointer_;
    std::optional<TrayHost> host_;
    std::optional<ChildProcess> program_;
    PixelRect icon_;
    PixelRect menu_;
};

TEST_P(StatusItemOnPanelTest, ItsMenuOpensAndALineIsChosenEachTimeItIsClicked) {
    findIcon();

    clickIcon();
    clickLine(1);
    EXPECT_TRUE(logs("chosen perform left"));
    letSettle();
    const auto before = program_->logSize();
    clickIcon();
    EXPECT_TRUE(logs("needs update", before)) << "the lines are of this opening";
    clickLine(1);
    EXPECT_TRUE(logs("chosen perform left", before));
}

TEST_P(StatusItemOnPanelTest, ALineThatCannotBeChosenIsNotChosen) {
    findIcon();

    clickIcon();
    clickLine(2);
    letSettle();

    EXPECT_FALSE(program_->log().contains("chosen"));
}

TEST_P(StatusItemOnPanelTest, ItsImageChangesAndComesBack) {
    findIcon();
    const ScreenArea usual = look(host_->frame());
    picture("usual");

    program_->sendSignal(SIGUSR1);
    EXPECT_TRUE(waitForChange(usual));
    picture("warning");
    program_->sendSignal(SIGUSR2);

    EXPECT_TRUE(desktop_->observer().waitUntil([&] { return look(host_->frame()) == usual; }));
}

TEST_P(StatusItemOnPanelTest, ItIsSeenOnAPanelThatComesLaterAndOnTheNextOne) {
    startProgram();
    startHost();
    letSettle();
    const ScreenArea first = look(host_->frame());
    host_->process().terminate();
    host_.reset();
    startHost();
    EXPECT_TRUE(desktop_->observer().waitUntil([&] { return look(host_->frame()) == first; }));

    program_->terminate();
    EXPECT_TRUE(waitForChange(first)) << "the item goes with its program";
    startProgram();
    EXPECT_TRUE(desktop_->observer().waitUntil([&] { return look(host_->frame()) == first; }));
}

std::string hostName(const testing::TestParamInfo<TrayHostKind>& host) {
    return host.param == TrayHostKind::xfce ? "Xfce" : "LXQt";
}

INSTANTIATE_TEST_SUITE_P(On, StatusItemOnPanelTest, testing::Values(TrayHostKind::xfce, TrayHostKind::lxqt), hostName);

}  // namespace
}  // namespace velmorand::desktop
