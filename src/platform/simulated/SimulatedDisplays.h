#pragma once

#include "platform/Displays.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace velmorand {

/// The displays of a simulated desktop.
class SimulatedDisplays final : public Displays {
public:
    explicit SimulatedDisplays(SimulatedDesktop& desktop) : desktop_(desktop) {}

    [[nodiscard]] std::vector<DisplayDescription> screens() override { return desktop_.displays; }

private:
    SimulatedDesktop& desktop_;
};

}  // namespace velmorand
