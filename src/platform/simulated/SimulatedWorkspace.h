#pragma once

#include "platform/Workspace.h"
#include "platform/simulated/SimulatedApplications.h"
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

    [[nodiscard]] std::optional<std::filesystem::path> applicationWithIdentifier(
        std::string_view bundleIdentifier) override {
        return applications_.withIdentifier(bundleIdentifier);
    }
    [[nodiscard]] std::string displayName(const std::filesystem::path& location) override {
        return applications_.displayName(location);
    }
    [[nodiscard]] std::optional<ApplicationIcon> icon(const std::filesystem::path& location) override {
        return applications_.icon(location);
    }
    [[nodiscard]] std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) override {
        return applications_.identifier(location);
    }
    [[nodiscard]] std::vector<InstalledApplication> installedApplications() override { return applications_.listed(); }

    /// What is installed; nothing at first.
    [[nodiscard]] SimulatedApplications& applications() { return applications_; }

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
    SimulatedApplications applications_;
    SimulatedDesktop& desktop_;
    SimulatedRunLoop& runLoop_;
};

}  // namespace velmorand
