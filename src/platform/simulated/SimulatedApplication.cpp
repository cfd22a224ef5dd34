#include "platform/simulated/SimulatedApplication.h"

#include "platform/simulated/SimulatedRunLoop.h"

#include <chrono>

namespace velmorand {

int SimulatedApplication::run() {
    if (const auto delegate = delegate_.lock()) delegate->applicationDidFinishLaunching();
    runLoop_.runPending();
    while (!terminating_ && !runLoop_.isIdle()) runLoop_.advance(std::chrono::milliseconds{1});
    if (const auto delegate = delegate_.lock()) delegate->applicationWillTerminate();
    return 0;
}

void SimulatedApplication::terminate() {
    terminating_ = true;
}

}  // namespace velmorand
