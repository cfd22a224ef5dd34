#pragma once

#include "platform/Workspace.h"
#include "platform/linux/WindowSystem.h"

namespace velmorand {

/// The workspace of a Linux session.
class LinuxWorkspace final : public Workspace {
public:
    explicit LinuxWorkspace(WindowSystem& windowSystem) : windowSystem_(windowSystem) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        return windowSystem_.frontmostApplication();
    }

    [[nodiscard]] bool accessibilityDisplayShouldReduceMotion() override { return false; }
    void openAccessibilitySettings() override {}

private:
    WindowSystem& windowSystem_;
};

}  // namespace velmorand
