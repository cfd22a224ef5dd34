#include "app/AppDelegate.h"
#include "platform/Application.h"
#include "platform/Platform.h"
#include "platform/RunLoop.h"
#include "shortcuts/ShortcutRecorderPanel.h"
#include "windows/WindowAction.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <utility>

namespace velmorand {
namespace {

std::atomic<int> recordingsWanted{0};

void wantRecording(int /*signal*/) {
    ++recordingsWanted;
}

/// What the panel asks or says, as one line of the log.
void print(const ShortcutRecorderModel& model) {
    const auto question = recorderQuestion(model);
    const std::string pending = model.pendingShortcut ? spokenDescription(*model.pendingShortcut) : "nothing";
    std::string held;
    for (const std::string& symbol : model.heldModifierSymbols) held += symbol;
    std::printf("recorder: held '%s' pending %s; %s\n", held.c_str(), pending.c_str(),
                (question ? question->message : recorderHint(model)).c_str());
    std::fflush(stdout);
}

}  // namespace
}  // namespace velmorand

/// The whole program, and one thing more: SIGUSR1 opens the recorder, for the left half at first and then for the next
/// action of the catalogue each time.
int main(int argumentCount, char** arguments) {
    using namespace velmorand;
    auto platform = makePlatform(argumentCount, arguments);
    if (!platform) {
        std::fprintf(stderr, "%s\n", platform.error().message.c_str());
        return platform.error().exitStatus;
    }
    const auto delegate = std::make_shared<AppDelegate>(
        **platform, [](const auto&...) -> std::expected<std::unique_ptr<SettingsWindow>, std::string> {
            return std::unexpected("The recorder's program has none.");
        });
    (*platform)->application().setDelegate(delegate);
    std::signal(SIGUSR1, wantRecording);
    int opened = 0;
    const auto watching = (*platform)->runLoop().every(std::chrono::milliseconds(10), [&] {
        if (opened == recordingsWanted) return;
        delegate->recordShortcut(allWindowActions[static_cast<std::size_t>(opened++)]);
    });
    const auto printing = delegate->shortcutRecorderPanel().model().subscribe(print);
    return (*platform)->application().run();
}
