#include "desktop/program/CopiesTest.h"

#include "desktop/demo/DemoActions.h"
#include "desktop/demo/ProgramStart.h"
#include "desktop/harness/TestKeyboard.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/program/ProgramTest.h"

#include <stdexcept>
#include <utility>

namespace velmorand::desktop {
namespace {

constexpr PixelRect display{0, 0, 1280, 800};
constexpr PixelRect leftHalf{0, 0, display.width / 2, display.height};
constexpr PixelRect elsewhere{700, 150, 500, 400};
constexpr std::size_t allShortcuts = 19;

template <class Value>
Value require(std::expected<Value, HarnessError> value) {
    if (!value) throw std::runtime_error(value.error().message);
    return std::move(*value);
}

}  // namespace

void CopiesTest::SetUp() {
    desktop_ = require(TestDesktop::create(
        {.windowManager = {.kind = WindowManagerKind::openbox}, .monitors = {{"main", display, true}}}));
    client_ = require(desktop_->start(plainWindow({.title = "Window"})));
    window_ = require(observer().findWindow("Window"));
}

void CopiesTest::TearDown() {
    if (desktop_ && HasFailure()) std::printf("%s\n", desktop_->logTails().c_str());
}

ChildProcess CopiesTest::start(const Environment& additions) {
    return require(desktop_->start({programUnderTest().string()}, additions));
}

ChildProcess CopiesTest::startFully(const Environment& additions) {
    return require(startProgram(*desktop_, programUnderTest(), allShortcuts, additions));
}

ChildProcess CopiesTest::takeName(std::string_view behaviour) {
    ChildProcess owner = require(desktop_->start({VELMORAND_NAME_OWNER, std::string(behaviour)}));
    EXPECT_TRUE(logs(owner, "owns\n")) << owner.logTail();
    return owner;
}

void CopiesTest::expectHandedOver(ChildProcess& program) {
    const auto status = program.wait(patience);
    ASSERT_TRUE(status) << "still running\n" << program.logTail();
    EXPECT_TRUE(status->isSuccess()) << status->text();
    EXPECT_EQ(program.log(), handedOver);
}

void CopiesTest::expectSettingsInFront() {
    const auto settings = observer().findWindow("Velmorand Settings");
    ASSERT_TRUE(settings) << settings.error();
    EXPECT_TRUE(observer().waitUntil([&] { return observer().activeWindow() == *settings; }));
    // It asks for the keyboard more than once; what the test does next shall come after all of it.
    observer().waitUntil([] { return false; }, std::chrono::milliseconds(300));
}

void CopiesTest::expectShortcutWorks(ChildProcess& program) {
    Pager pager(observer());
    ASSERT_TRUE(pager.activate(window_));
    ASSERT_TRUE(pager.place(window_, elsewhere));
    auto keyboard = TestKeyboard::attach(observer());
    ASSERT_TRUE(keyboard) << keyboard.error();
    // A settings window that was shown a moment ago may still be taking the keyboard.
    ASSERT_TRUE(observer().waitUntil([&] {
        observer().waitUntil([] { return false; }, std::chrono::milliseconds(150));
        if (observer().activeWindow() == window_) return true;
        static_cast<void>(pager.activate(window_));
        return false;
    }));
    const auto before = program.logSize();

    keyboard->press(demoAction("left").modifiers, demoAction("left").key);

    const auto seen = observer().waitForSettledFrame(window_, leftHalf);
    EXPECT_TRUE(seen && framesAgree(*seen, leftHalf, 2)) << seen.value_or(PixelRect{});
    EXPECT_TRUE(program.log(before).contains("Dispatching shortcut left")) << program.logTail();
}

bool CopiesTest::logs(const ChildProcess& program, std::string_view line) {
    return observer().waitUntil([&] { return program.log().contains(line); });
}

}  // namespace velmorand::desktop
