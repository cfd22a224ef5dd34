#pragma once

#include "platform/Workspace.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace velmorand {

/// The workspace of a simulated desktop.
class SimulatedWorkspace final : public Workspace {
public:
    explicit SimulatedWorkspace(SimulatedDesktop& desktop) : desktop_(desktop) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        const SimulatedProcess* process = desktop_.frontmost ? desktop_.findProcess(*desktop_.frontmost) : nullptr;
        if (process == nullptr) return std::nullopt;
        return RunningApplication{process->pid, process->bundleIdentifier, process->localizedName};
    }

    [[nodiscard]] bool accessibilityDisplayShouldReduceMotion() override { return reducesMotion_; }
    void openAccessibilitySettings() override { ++openedAccessibilitySettings_; }

    void setReducesMotion(bool reducesMotion) { reducesMotion_ = reducesMotion; }
    /// How often the settings were opened.
    [[nodiscard]] int openedAccessibilitySettings() const { return openedAccessibilitySettings_; }

private:
    bool reducesMotion_ = false;
    int openedAccessibilitySettings_ = 0;
    SimulatedDesktop& desktop_;
};

}  // namespace velmorand
