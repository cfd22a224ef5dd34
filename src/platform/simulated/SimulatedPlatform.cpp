#include "platform/simulated/SimulatedPlatform.h"

#include <utility>

namespace velmorand {

SimulatedPlatform::SimulatedPlatform() {
    desktop_.displays = {{1, "Simulated Display", {0, 0, 1440, 900}, {0, 0, 1440, 875}}};
}

void SimulatedPlatform::terminateProcess(std::int32_t pid) {
    desktop_.removeProcess(pid);
    workspaceNotificationCenter_.post({NotificationName::applicationTerminated, pid});
}

void SimulatedPlatform::setDisplays(std::vector<DisplayDescription> displays) {
    desktop_.displays = std::move(displays);
    defaultNotificationCenter_.post({NotificationName::screenParametersChanged, std::nullopt});
}

}  // namespace velmorand
