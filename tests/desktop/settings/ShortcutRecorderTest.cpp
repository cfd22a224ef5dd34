#include "desktop/settings/ShortcutRecorderTest.h"

#include "desktop/demo/DemoActions.h"
#include "desktop/harness/KeyboardProbe.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace velmorand::desktop {
namespace {

namespace fs = std::filesystem;

/// The shortcut of the action that is registered last, and which no test takes away.
constexpr std::string_view lastRegistered = "Registered shortcut restore id";

int occurrences(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

}  // namespace

void ShortcutRecorderTest::store(std::string_view document) {
    const fs::path folder = configuration("velmorand");
    fs::create_directories(folder);
    std::ofstream(folder / "VelmorandPreferencesState", std::ios::binary) << document;
}

void ShortcutRecorderTest::openPane() {
    openPane(demoActions().size());
}

void ShortcutRecorderTest::openPane(std::size_t shortcuts) {
    ASSERT_NO_FATAL_FAILURE(startProgram({}, shortcuts));
    ASSERT_NO_FATAL_FAILURE(openWindow());
    choosePane("Shortcuts");
    expectShown("push button", "Restore Previous Frame");
}

void ShortcutRecorderTest::record(std::string_view action) {
    press("push button", action);
    waitForRecorder();
}

void ShortcutRecorderTest::waitForRecorder() {
    const auto found = observer().findWindow(recorderTitle);
    ASSERT_TRUE(found) << found.error();
    recorder_ = *found;
    ASSERT_TRUE(observer().waitUntil([&] { return observer().activeWindow() == recorder_; }));
    ASSERT_TRUE(observer().waitUntil([&] { return !keyboardIsFree(); }));
    logBefore_ = program().logSize();  // every shortcut has been given up before
}

bool ShortcutRecorderTest::recorderGoes() {
    return observer().waitUntil([&] {
        return !observer().isViewable(recorder_) && keyboardIsFree() &&
               program().log(logBefore_).contains(lastRegistered);
    });
}

bool ShortcutRecorderTest::recordingEnds() {
    return recorderGoes() && observer().waitUntil([&] { return observer().activeWindow() == window(); });
}

bool ShortcutRecorderTest::keyboardIsFree() {
    return desktop::keyboardIsFree(observer().connection());
}

std::string ShortcutRecorderTest::waitForShortcut(std::string_view action, std::string_view spoken) {
    std::string last;
    observer().waitUntil([&] {
        const AccessibleTree seen = tree();
        const AccessibleObject* row = seen.find("push button", action);
        if (row != nullptr) last = row->description;
        return last == spoken;
    });
    return last;
}

int ShortcutRecorderTest::dispatches(std::string_view action) {
    return occurrences(program().log(), "Dispatching shortcut " + std::string(action) + "\n");
}

bool ShortcutRecorderTest::performs(std::string_view action, std::initializer_list<Key> modifiers, Key key) {
    const int before = dispatches(action);
    const int marksBefore = dispatches("restore");
    keyboard().press(modifiers, key);
    keyboard().press({Key::leftSuper, Key::leftShift, Key::leftAlt}, Key::p);
    EXPECT_TRUE(observer().waitUntil([&] { return dispatches("restore") > marksBefore; }));
    return dispatches(action) == before + 1;
}

}  // namespace velmorand::desktop
