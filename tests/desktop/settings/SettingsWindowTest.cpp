#include "desktop/settings/SettingsWindowTest.h"

#include "desktop/demo/DemoActions.h"
#include "desktop/demo/ProgramStart.h"
#include "desktop/program/ProgramTest.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace velmorand::desktop {

void SettingsWindowTest::SetUp() {
    auto desktop = TestDesktop::create(desktopOptions());
    ASSERT_TRUE(desktop) << desktop.error();
    desktop_ = std::move(*desktop);
    auto bus = AccessibilityBus::start(*desktop_);
    ASSERT_TRUE(bus) << bus.error();
    bus_ = std::move(*bus);
    auto keyboard = TestKeyboard::attach(observer());
    ASSERT_TRUE(keyboard) << keyboard.error();
    keyboard_.emplace(*keyboard);
    pointer_.emplace(observer().connection());
    pointer_->moveTo(2, 2);
}

void SettingsWindowTest::TearDown() {
    if (testing::Test::HasFailure() && desktop_) {
        ADD_FAILURE() << desktop_->logTails() << (program_ ? program_->logTail() : std::string()) << tree().text();
    }
    if (program_) {
        EXPECT_FALSE(program_->log().contains(".qml:")) << "a view is wrong\n" << program_->log();
        const auto before = program_->logSize();
        const ExitStatus status = program_->terminate();
        EXPECT_TRUE(status.isSuccess() || endsBadly_) << "it did not end well\n" << program_->log(before);
        program_.reset();
    }
    bus_.reset();
}

DesktopOptions SettingsWindowTest::desktopOptions() const {
    return {.windowManager = {.kind = WindowManagerKind::openbox}};
}

void SettingsWindowTest::startProgram(const Environment& additions) {
    startProgram(additions, demoActions().size());
}

void SettingsWindowTest::startProgram(const Environment& additions, std::size_t shortcuts) {
    Environment all = bus_->invitation();
    all["ASAN_OPTIONS"] = "detect_leaks=0";  // the toolkit keeps some of what it has drawn with to the end
    all.insert(additions.begin(), additions.end());
    auto program = desktop::startProgram(*desktop_, programUnderTest(), shortcuts, all);
    ASSERT_TRUE(program) << program.error();
    program_.emplace(std::move(*program));
}

void SettingsWindowTest::openWindow() {
    const auto before = program_->logSize();
    auto second = desktop_->start({programUnderTest().string()});
    ASSERT_TRUE(second) << second.error();
    const auto ended = second->wait(patience);
    ASSERT_TRUE(ended && ended->isSuccess()) << second->logTail();
    const auto window = observer().findWindow(title);
    ASSERT_TRUE(window) << window.error();
    window_ = *window;
    // It asks for the keyboard more than once; what the test does next shall come after all of it.
    ASSERT_TRUE(
        observer().waitUntil([&] { return program_->log(before).contains("The settings window is in front."); }));
    ASSERT_TRUE(observer().waitForWindowManager());
    ASSERT_TRUE(observer().waitUntil([&] { return observer().activeWindow() == window_; }));
}

void SettingsWindowTest::open() {
    ASSERT_NO_FATAL_FAILURE(startProgram());
    openWindow();
}

ExitStatus SettingsWindowTest::endProgram() {
    const ExitStatus status = program_->terminate();
    program_.reset();
    return status;
}

AccessibleObject SettingsWindowTest::expectShown(std::string_view role, std::string_view name) {
    AccessibleTree seen({});
    observer().waitUntil([&] {
        seen = tree();
        return seen.find(role, name) != nullptr;
    });
    const AccessibleObject* found = seen.find(role, name);
    EXPECT_NE(found, nullptr) << role << " \"" << name << "\" is not shown";
    return found == nullptr ? AccessibleObject{} : *found;
}

void SettingsWindowTest::expectAllShown(const std::vector<std::string_view>& names) {
    AccessibleTree seen({});
    const auto areAllShown = [&] {
        seen = tree();
        return std::ranges::all_of(names, [&](std::string_view name) { return seen.shows(name); });
    };
    if (observer().waitUntil(areAllShown)) return;
    for (const std::string_view name : names) EXPECT_TRUE(seen.shows(name)) << '"' << name << '"';
}

bool SettingsWindowTest::goes(std::string_view name) {
    return observer().waitUntil([&] { return !tree().shows(name); });
}

void SettingsWindowTest::press(std::string_view role, std::string_view name) {
    const AccessibleObject object = expectShown(role, name);
    EXPECT_TRUE(bus_->press(object)) << name << " refuses";
}

void SettingsWindowTest::click(std::string_view role, std::string_view name) {
    const AccessibleObject object = expectShown(role, name);
    ASSERT_TRUE(object.frame) << name;
    pointer_->moveTo(object.frame->x + object.frame->width / 2, object.frame->y + object.frame->height / 2);
    pointer_->click(PointerButton::left);
}

bool SettingsWindowTest::isChecked(std::string_view name) {
    return expectShown("check box", name).is(AccessibleState::checked);
}

bool SettingsWindowTest::becomesChecked(std::string_view name, bool checked) {
    return observer().waitUntil([&] {
        const AccessibleTree seen = tree();
        const AccessibleObject* object = seen.find("check box", name);
        return object != nullptr && object->is(AccessibleState::checked) == checked;
    });
}

std::filesystem::path SettingsWindowTest::configuration(const std::string& file) const {
    return std::filesystem::path(desktop_->environment().at("XDG_CONFIG_HOME")) / file;
}

std::string SettingsWindowTest::stored() const {
    std::ifstream stream(storedSettingsFile(desktop_->environment()), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool SettingsWindowTest::isStored(std::string_view text) {
    return observer().waitUntil([&] { return stored().contains(text); });
}

bool SettingsWindowTest::logs(std::string_view line) {
    return observer().waitUntil([&] { return program_->log().contains(line); });
}

}  // namespace velmorand::desktop
