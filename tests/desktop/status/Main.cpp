#include "platform/Application.h"
#include "platform/Platform.h"
#include "platform/RunLoop.h"
#include "platform/StatusBar.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

std::atomic<bool> warns{false};

void changeWarning(int signal) {
    warns = signal == SIGUSR1;
}

void print(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

MenuItem heading(std::string title) {
    return {.kind = MenuItemKind::sectionHeader, .title = std::move(title)};
}

/// The lines of the menu at its opening number `opening`.
std::vector<MenuItem> menu(int opening) {
    const KeyEquivalentModifiers optionCommand{.option = true, .command = true};
    return {
        heading("Opening " + std::to_string(opening)),
        {.title = "Left Half",
         .action = "perform",
         .representedObject = "left",
         .keyEquivalent = "\uF702",
         .keyEquivalentModifiers = optionCommand,
         .isEnabled = true},
        {.title = "Not Now", .action = "perform", .representedObject = "never"},
        {.kind = MenuItemKind::separator},
        {.title = "snake_case & Fish && Chips <b>bold</b>",
         .action = "ignore",
         .representedObject = std::to_string(opening),
         .isEnabled = true},
        {.title = "Settings…",
         .action = "settings",
         .keyEquivalent = ",",
         .keyEquivalentModifiers = {.command = true},
         .isEnabled = true},
        {.title = "Bracket",
         .action = "bracket",
         .keyEquivalent = "[",
         .keyEquivalentModifiers = {.control = true, .shift = true},
         .isEnabled = true},
        {.title = "Return",
         .action = "return",
         .keyEquivalent = "\r",
         .keyEquivalentModifiers = optionCommand,
         .isEnabled = true},
        {.title = "Quit",
         .action = "quit",
         .keyEquivalent = "q",
         .keyEquivalentModifiers = {.command = true},
         .isEnabled = true},
    };
}

/// Shows one status item whose menu says at which opening it is, and prints what is told of it.
class StatusProgram {
public:
    explicit StatusProgram(Platform& platform) : bar_(platform.statusBar()), item_(bar_.makeStatusItem()) {
        item_->setToolTip("Fish & Chips <b>bold</b>");
        setWarning(false);
        item_->attachMenu({.needsUpdate =
                               [this] {
                                   print("needs update");
                                   item_->setMenuItems(menu(++openings_));
                               },
                           .didClose = [] { print("closed"); },
                           .chosen =
                               [](const MenuItem& chosen) {
                                   print("chosen " + chosen.action + " " +
                                         chosen.representedObject.value_or("nothing"));
                               }});
        watching_ = platform.runLoop().every(std::chrono::milliseconds(10), [this] {
            if (warns != isWarning_) setWarning(warns);
        });
    }

private:
    void setWarning(bool warning) {
        isWarning_ = warning;
        const auto image = warning ? bar_.image(StatusImageKind::symbol, "exclamationmark.triangle", "Warning")
                                   : bar_.image(StatusImageKind::resource, "MenuBarTemplate", "Velmorand");
        if (image) item_->setImage(*image);
        print(warning ? "warns" : "does not warn");
    }

    StatusBar& bar_;
    std::unique_ptr<StatusItem> item_;
    RunLoop::Timer watching_;
    int openings_ = 0;
    bool isWarning_ = false;
};

}  // namespace
}  // namespace velmorand

/// A status item with a fixed menu. SIGUSR1 gives it the image of a warning, SIGUSR2 takes it back.
int main(int argumentCount, char** arguments) {
    using namespace velmorand;
    auto platform = makePlatform(argumentCount, arguments);
    if (!platform) {
        std::fprintf(stderr, "%s\n", platform.error().message.c_str());
        return platform.error().exitStatus;
    }
    std::signal(SIGUSR1, changeWarning);
    std::signal(SIGUSR2, changeWarning);
    const StatusProgram program(**platform);
    return (*platform)->application().run();
}
