#pragma once

#include "platform/Workspace.h"
#include "platform/linux/AccessibilitySettings.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/ReducedMotion.h"
#include "platform/linux/UrlOpener.h"
#include "platform/linux/WindowSystem.h"

namespace velmorand {

/// The workspace of a Linux session.
class LinuxWorkspace final : public Workspace {
public:
    /// All must outlive it.
    LinuxWorkspace(WindowSystem& windowSystem, const ReducedMotion& reducedMotion,
                   const AccessibilitySettings& accessibilitySettings, UrlOpener& urlOpener,
                   DesktopApplications& applications)
        : windowSystem_(windowSystem),
          reducedMotion_(reducedMotion),
          accessibilitySettings_(accessibilitySettings),
          urlOpener_(urlOpener),
          applications_(applications) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        return windowSystem_.frontmostApplication();
    }

    [[nodiscard]] bool accessibilityDisplayShouldReduceMotion() override { return reducedMotion_.isWanted(); }
    void openAccessibilitySettings() override { accessibilitySettings_.open(); }
    void openURL(std::string_view url, OpenURLCompletion completion) override {
        urlOpener_.open(url, std::move(completion));
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

private:
    WindowSystem& windowSystem_;
    const ReducedMotion& reducedMotion_;
    const AccessibilitySettings& accessibilitySettings_;
    UrlOpener& urlOpener_;
    DesktopApplications& applications_;
};

}  // namespace velmorand
