#pragma once

#include "platform/Log.h"
#include "platform/Platform.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "simulation/Tape.h"
#include "simulation/WatchedAccessibility.h"

#include <string_view>
#include <utility>

namespace velmorand::simulation {

/// Passes every question on to the simulated workspace and tapes what actions ask.
class WatchedWorkspace final : public Workspace {
public:
    WatchedWorkspace(SimulatedWorkspace& watched, Tape& tape) : watched_(watched), tape_(tape) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        auto application = watched_.frontmostApplication();
        tape_.emplace_back(TapedFrontmost{application});
        return application;
    }
    [[nodiscard]] bool accessibilityDisplayShouldReduceMotion() override {
        const bool reduces = watched_.accessibilityDisplayShouldReduceMotion();
        tape_.emplace_back(TapedReduceMotion{reduces});
        return reduces;
    }
    void openAccessibilitySettings() override { watched_.openAccessibilitySettings(); }
    void openURL(std::string_view url, OpenURLCompletion completion) override {
        watched_.openURL(url, std::move(completion));
    }
    [[nodiscard]] std::optional<std::filesystem::path> applicationWithIdentifier(
        std::string_view bundleIdentifier) override {
        return watched_.applicationWithIdentifier(bundleIdentifier);
    }
    [[nodiscard]] std::string displayName(const std::filesystem::path& location) override {
        return watched_.displayName(location);
    }
    [[nodiscard]] std::optional<ApplicationIcon> icon(const std::filesystem::path& location) override {
        return watched_.icon(location);
    }
    [[nodiscard]] std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) override {
        return watched_.bundleIdentifier(location);
    }
    [[nodiscard]] std::vector<InstalledApplication> installedApplications() override {
        return watched_.installedApplications();
    }

private:
    SimulatedWorkspace& watched_;
    Tape& tape_;
};

/// Tapes where actions begin. The lines are not kept.
class WatchedLog final : public Log {
public:
    WatchedLog(SimulatedDesktop& desktop, SimulatedRunLoop& runLoop, Tape& tape)
        : desktop_(desktop), runLoop_(runLoop), tape_(tape) {}

    void write(LogLevel level, std::string_view category, std::string_view text) override;

private:
    SimulatedDesktop& desktop_;
    SimulatedRunLoop& runLoop_;
    Tape& tape_;
};

/// The simulated platform with everything that an action uses under watch.
class WatchedPlatform final : public Platform {
public:
    [[nodiscard]] WatchedAccessibility& accessibility() override { return accessibility_; }
    [[nodiscard]] WatchedWorkspace& workspace() override { return workspace_; }
    [[nodiscard]] Displays& displays() override { return simulated_.displays(); }
    [[nodiscard]] SimulatedHotKeyService& hotKeyService() override { return simulated_.hotKeyService(); }
    [[nodiscard]] NotificationCenter& workspaceNotificationCenter() override {
        return simulated_.workspaceNotificationCenter();
    }
    [[nodiscard]] NotificationCenter& defaultNotificationCenter() override {
        return simulated_.defaultNotificationCenter();
    }
    [[nodiscard]] UserNotificationCenter& userNotificationCenter() override {
        return simulated_.userNotificationCenter();
    }
    [[nodiscard]] SimulatedRecorderPanelHost& recorderPanelHost() override { return simulated_.recorderPanelHost(); }
    [[nodiscard]] LoginItemService& loginItemService() override { return simulated_.loginItemService(); }
    [[nodiscard]] SimulatedStatusBar& statusBar() override { return simulated_.statusBar(); }
    [[nodiscard]] SimulatedRunLoop& runLoop() override { return simulated_.runLoop(); }
    [[nodiscard]] Application& application() override { return simulated_.application(); }
    [[nodiscard]] const Bundle& bundle() const override { return simulated_.bundle(); }
    [[nodiscard]] SimulatedUserDefaults& userDefaults() override { return simulated_.userDefaults(); }
    [[nodiscard]] Log& log() override { return log_; }

    /// What is behind.
    [[nodiscard]] SimulatedPlatform& simulated() { return simulated_; }
    [[nodiscard]] SimulatedDesktop& desktop() { return simulated_.desktop(); }
    [[nodiscard]] Tape& tape() { return tape_; }

private:
    Tape tape_;
    SimulatedPlatform simulated_;
    WatchedAccessibility accessibility_{simulated_.accessibility(), simulated_.runLoop(), tape_};
    WatchedWorkspace workspace_{simulated_.workspace(), tape_};
    WatchedLog log_{simulated_.desktop(), simulated_.runLoop(), tape_};
};

}  // namespace velmorand::simulation
