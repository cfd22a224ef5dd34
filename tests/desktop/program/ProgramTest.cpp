#include "desktop/program/ProgramTest.h"

namespace velmorand::desktop {

std::filesystem::path programUnderTest() {
    return VELMORAND_PROGRAM;
}

void ProgramTest::SetUp() {
    auto opened = DemoDesktop::open(program(), demoActions().size(), GetParam(), storedSettings());
    ASSERT_TRUE(opened) << opened.error();
    desktop_ = std::move(*opened);
}

void ProgramTest::TearDown() {
    if (desktop_ && HasFailure()) std::printf("%s\n", desktop_->logTails().c_str());
}

void ProgramTest::press(std::string_view action) {
    desktop_->keyboard().press(demoAction(action).modifiers, demoAction(action).key);
}

void ProgramTest::focus(DemoWindow window) {
    const auto active = desktop_->pager().activate(desktop_->idOf(window));
    ASSERT_TRUE(active) << active.error();
}

PixelRect ProgramTest::wanted(std::string_view action, DemoWindow window) {
    const DemoModel model(desktop_->workAreas());
    const auto before = desktop_->frameOf(window).value_or(PixelRect{});
    return model.wanted(0, demoAction(action), before).value_or(PixelRect{});
}

PixelRect ProgramTest::settledFrame(DemoWindow window, const PixelRect& frame) {
    const auto seen = desktop_->observer().waitForSettledFrame(desktop_->idOf(window), desktop_->toRoot(frame));
    return seen ? desktop_->fromRoot(*seen) : PixelRect{};
}

void ProgramTest::expectLanding(std::string_view action, DemoWindow window) {
    const PixelRect target = wanted(action, window);
    ASSERT_FALSE(framesAgree(desktop_->frameOf(window).value_or(PixelRect{}), target, frameTolerance))
        << "the window is there already, so the test would see nothing";
    press(action);
    const PixelRect seen = settledFrame(window, target);
    EXPECT_TRUE(framesAgree(seen, target, frameTolerance)) << action << ": wanted " << target << ", is at " << seen;
}

bool ProgramTest::logs(std::string_view line, std::uintmax_t from) {
    return desktop_->observer().waitUntil([&] { return desktop_->program().log(from).contains(line); });
}

int ProgramTest::count(std::string_view line) {
    const std::string log = desktop_->program().log();
    int occurrences = 0;
    for (auto at = log.find(line); at != std::string::npos; at = log.find(line, at + 1)) ++occurrences;
    return occurrences;
}

std::string windowManagerName(const testing::TestParamInfo<WindowManagerKind>& info) {
    return std::string(nameOf(info.param));
}

}  // namespace velmorand::desktop
