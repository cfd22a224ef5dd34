#include "desktop/survey/SurveyDesktop.h"

#include "desktop/demo/DemoActions.h"
#include "desktop/demo/ProgramStart.h"
#include "desktop/survey/SurveyManagers.h"

#include <fmt/format.h>

#include <regex>

namespace velmorand::desktop {

namespace {

constexpr PixelRect secondary{0, 0, 1280, 1024};
constexpr PixelRect primary{1280, 24, 1600, 1000};

}  // namespace

std::expected<std::unique_ptr<SurveyDesktop>, HarnessError> SurveyDesktop::open(
    const std::filesystem::path& program, const WindowManagerOptions& windowManager) {
    auto desktop = TestDesktop::create({.windowManager = windowManager,
                                        .monitors = {{"secondary", secondary, false}, {"primary", primary, true}},
                                        .hasOutputs = true});
    if (!desktop) return std::unexpected(desktop.error());
    auto keyboard = TestKeyboard::attach((*desktop)->observer());
    if (!keyboard) return std::unexpected(keyboard.error());
    auto process = startProgram(**desktop, program, demoActions().size());
    if (!process) return std::unexpected(HarnessError{process.error().message + (*desktop)->logTails()});
    std::unique_ptr<SurveyDesktop> survey(new SurveyDesktop(std::move(*desktop), *keyboard, windowManager));
    survey->program_ = std::move(*process);
    return survey;
}

std::vector<PixelRect> SurveyDesktop::workAreas() {
    return {secondary, primary};
}

std::expected<xcb_window_t, HarnessError> SurveyDesktop::show(SurveyWindow window) {
    client_.reset();
    const std::string title(headingOf(window));
    auto client = desktop_->start(commandOf(window, title));
    if (!client) return std::unexpected(client.error());
    client_ = std::move(*client);
    const auto found = observer().findWindow(title);
    if (!found) return std::unexpected(HarnessError{found.error().message + '\n' + logTails()});
    if (auto active = pager_.activate(*found); !active) return std::unexpected(active.error());
    if (!observer().waitForSettledFrame(*found, [](const PixelRect&) { return true; })) {
        return std::unexpected(HarnessError{fmt::format("the window '{}' has gone\n{}", title, logTails())});
    }
    return *found;
}

std::string SurveyDesktop::windowManagerVersion() {
    const std::regex version("[0-9]+([.][0-9]+)+");
    auto process = desktop_->start(versionCommandOf(windowManager_.kind));
    if (!process) return "of unknown version";
    process->wait(patience);
    const auto log = process->log();
    std::smatch found;
    return std::regex_search(log, found, version) ? found.str() : "of unknown version";
}

std::string SurveyDesktop::logTails() const {
    std::string text = desktop_->logTails();
    if (client_) text += client_->logTail();
    if (program_) text += program_->logTail();
    return text;
}

}  // namespace velmorand::desktop
