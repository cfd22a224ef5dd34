#pragma once

#include "platform/Displays.h"
#include "platform/linux/WindowSystem.h"

namespace velmorand {

/// The displays of a Linux session.
class LinuxDisplays final : public Displays {
public:
    explicit LinuxDisplays(WindowSystem& windowSystem) : windowSystem_(windowSystem) {}

    [[nodiscard]] std::vector<DisplayDescription> screens() override { return windowSystem_.displays(); }

private:
    WindowSystem& windowSystem_;
};

}  // namespace velmorand
