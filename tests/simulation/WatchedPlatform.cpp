#include "simulation/WatchedPlatform.h"

namespace velmorand::simulation {

void WatchedLog::write(LogLevel /*level*/, std::string_view category, std::string_view text) {
    constexpr std::string_view beginning = "perform ";
    if (category != "windows" || !text.starts_with(beginning)) return;
    tape_.emplace_back(TapedPerform{
        std::string(text.substr(beginning.size())), {runLoop_.now(), runLoop_.date()}, desktop_.windowFrames()});
}

}  // namespace velmorand::simulation
