#include "desktop/x11/X11RecorderTest.h"

#include "desktop/harness/KeyboardProbe.h"
#include "desktop/x11/PanelWindow.h"
#include "shortcuts/ShortcutModifiers.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace velmorand::desktop {
namespace {

std::string namesOf(std::uint64_t flags) {
    const ShortcutModifiers modifiers = modifiersFromEventFlags(flags);
    std::string names;
    if (modifiers.contains(ShortcutModifiers::control)) names += " control";
    if (modifiers.contains(ShortcutModifiers::option)) names += " option";
    if (modifiers.contains(ShortcutModifiers::shift)) names += " shift";
    if (modifiers.contains(ShortcutModifiers::command)) names += " command";
    return names;
}

}  // namespace

X11RecorderTest::~X11RecorderTest() {
    host_.reset();
}

void X11RecorderTest::start(WindowManagerKind windowManager) {
    open({.windowManager = {.kind = windowManager}});
    startOnOpenDesktop();
}

void X11RecorderTest::startOnOpenDesktop() {
    auto attached = TestKeyboard::attach(observer());
    ASSERT_TRUE(attached) << attached.error().message;
    testKeyboard_.emplace(*attached);
    keyboard_ = std::make_unique<X11Keyboard>(connection());
    // The window's own connection has always done all that it was asked to.
    auto host = X11RecorderPanelHost::create(connection(), *keyboard_, runLoop, sessionLock_, log_, [] {});
    ASSERT_TRUE(host) << host.error();
    host_ = std::move(*host);
    auto views = XConnection::open(desktop().displayName());
    ASSERT_TRUE(views) << views.error().message;
    views_.emplace(std::move(*views));
    host_->setWindowMaker([this] { return std::make_unique<PanelWindow>(*views_, title, runLoop); });
}

RecorderPanelEvents X11RecorderTest::noting() {
    return {.keyDown =
                [this](const RecorderKeyEvent& event) {
                    told_.push_back("key " + std::to_string(event.keyCode) + " " + event.charactersIgnoringModifiers +
                                    namesOf(event.modifierFlags));
                },
            .modifiersChanged = [this](std::uint64_t flags) { told_.push_back("held" + namesOf(flags)); },
            .closed = [this] { told_.emplace_back("closed"); },
            .resignedKey = [this] { told_.emplace_back("resigned"); }};
}

void X11RecorderTest::show() {
    host_->show(noting());
}

void X11RecorderTest::showAsKey() {
    show();
    ASSERT_TRUE(runUntil([this] { return !keyboardIsFree(); }));
    settle();
}

void X11RecorderTest::settle() {
    for (int turn = 0; turn < 3; ++turn) {
        observer().connection().synchronise();
        if (!connection().check({}, soon())) throw std::runtime_error("the X server does not answer");
        runPosted();
    }
}

std::vector<std::string> X11RecorderTest::takeTold() {
    settle();
    return std::exchange(told_, {});
}

std::vector<std::string> X11RecorderTest::waitForTold(std::size_t count) {
    EXPECT_TRUE(runUntil([&] { return told_.size() >= count; }));
    return takeTold();
}

std::vector<std::string> X11RecorderTest::toldKeys(const std::vector<std::vector<Key>>& combinations) {
    for (const std::vector<Key>& combination : combinations)
        keyboard().press(std::span(combination).first(combination.size() - 1), combination.back());
    std::vector<std::string> keys = takeTold();
    std::erase_if(keys, [](const std::string& each) { return each.starts_with("held"); });
    return keys;
}

bool X11RecorderTest::grabKeyboard(XConnection& client) {
    const auto grab = client.reply<xcb_grab_keyboard_reply_t>(
        xcb_grab_keyboard(client.raw(), 0, client.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    return grab && grab->status == XCB_GRAB_STATUS_SUCCESS;
}

void X11RecorderTest::ungrabKeyboard(XConnection& client) {
    xcb_ungrab_keyboard(client.raw(), XCB_CURRENT_TIME);
    client.synchronise();
}

bool X11RecorderTest::keyboardIsFree() {
    // The server takes the requests of two clients in any order, so it must have answered the platform first.
    static_cast<void>(connection().check({}, soon()));
    return desktop::keyboardIsFree(observer().connection());
}

std::vector<std::string> X11RecorderTest::refusals() {
    std::vector<std::string> found;
    for (const auto& line : log_.lines()) {
        if (line.text.contains("does not get the whole keyboard (")) found.push_back(line.text);
    }
    return found;
}

void X11RecorderTest::takeKeyboard() {
    if (!otherClient_) {
        auto client = XConnection::open(desktop().displayName());
        ASSERT_TRUE(client) << client.error().message;
        otherClient_.emplace(std::move(*client));
    }
    ASSERT_TRUE(grabKeyboard(*otherClient_));
}

void X11RecorderTest::giveKeyboardBack() {
    ungrabKeyboard(*otherClient_);
}

void X11RecorderTest::setLayout(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"setxkbmap", "-rules", "evdev", "-model", "pc105"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    auto process = desktop().start(command);
    ASSERT_TRUE(process) << process.error().message;
    const auto status = process->wait(std::chrono::milliseconds(patience));
    ASSERT_TRUE(status && status->isSuccess()) << process->logTail();
    settle();
}

xcb_window_t X11RecorderTest::panelWindow() {
    const auto window = observer().findWindow(title);
    if (!window) throw std::runtime_error(window.error().message);
    return *window;
}

}  // namespace velmorand::desktop
