#include "platform/simulated/SimulatedApplication.h"

#include "platform/simulated/SimulatedRunLoop.h"

#include <chrono>
#include <utility>

namespace velmorand {

int SimulatedApplication::run() {
    if (const auto delegate = delegate_.lock()) delegate->applicationDidFinishLaunching();
    hasLaunched_ = true;
    for (auto& activationToken : std::exchange(reopenings_, {})) reopen(std::move(activationToken));
    runLoop_.runPending();
    while (!terminating_ && !runLoop_.isIdle()) runLoop_.advance(std::chrono::milliseconds{1});
    if (const auto delegate = delegate_.lock()) delegate->applicationWillTerminate();
    return 0;
}

void SimulatedApplication::terminate() {
    terminating_ = true;
}

void SimulatedApplication::reopen(std::optional<std::string> activationToken) {
    if (!hasLaunched_)
        reopenings_.push_back(std::move(activationToken));
    else
        runLoop_.post([this, token = std::move(activationToken)] { tellOfReopening(token); });
}

void SimulatedApplication::tellOfReopening(const std::optional<std::string>& activationToken) {
    const auto delegate = delegate_.lock();
    if (delegate && !terminating_) delegate->applicationShouldHandleReopen(activationToken);
}

}  // namespace velmorand
