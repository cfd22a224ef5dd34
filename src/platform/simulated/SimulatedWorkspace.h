#pragma once

#include "platform/Workspace.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/SimulatedRunLoop.h"

#include <string>
#include <utility>
#include <vector>

namespace velmorand {

/// The workspace of a simulated desktop.
class SimulatedWorkspace final : public Workspace {
public:
    SimulatedWorkspace(SimulatedDesktop& desktop, SimulatedRunLoop& runLoop) : desktop_(desktop), runLoop_(runLoop) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        const SimulatedProcess* process = desktop_.frontmost ? desktop_.findProcess(*desktop_.frontmost) : nullptr;
        if (process == nullptr) return std::nullopt;
        return RunningApplication{process->pid, process->bundleIdentifier, process->localizedName};
    }

    [[nodiscard]] bool accessibilityDisplayShouldReduceMotion() override { return reducesMotion_; }
    void openAccessibilitySettings() override { ++openedAccessibilitySettings_; }

    void openURL(std::string_view url, OpenURLCompletion completion) override {
        if (opensURLs_) openedURLs_.emplace_back(url);
        runLoop_.post([opened = opensURLs_, completion = std::move(completion)] { completion(opened); });
    }

    void setReducesMotion(bool reducesMotion) { reducesMotion_ = reducesMotion; }
    /// How often the settings were opened.
    [[nodiscard]] int openedAccessibilitySettings() const { return openedAccessibilitySettings_; }
    /// Whether there is a program for addresses; there is one at first.
    void setOpensURLs(bool opens) { opensURLs_ = opens; }
    /// The addresses that were opened, in order.
    [[nodiscard]] const std::vector<std::string>& openedURLs() const { return openedURLs_; }

private:
    bool reducesMotion_ = false;
    int openedAccessibilitySettings_ = 0;
    bool opensURLs_ = true;
    std::vector<std::string> openedURLs_;
    SimulatedDesktop& desktop_;
    SimulatedRunLoop& runLoop_;
};

}  // namespace velmorand
