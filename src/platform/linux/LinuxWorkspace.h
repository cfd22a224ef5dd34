#pragma once

#include "platform/Workspace.h"
#include "platform/linux/AccessibilitySettings.h"
#include "platform/linux/ReducedMotion.h"
#include "platform/linux/UrlOpener.h"
#include "platform/linux/WindowSystem.h"

namespace velmorand {

/// The workspace of a Linux session.
class LinuxWorkspace final : public Workspace {
public:
    /// All must outlive it.
    LinuxWorkspace(WindowSystem& windowSystem, const ReducedMotion& reducedMotion,
                   const AccessibilitySettings& accessibilitySettings, UrlOpener& urlOpener)
        : windowSystem_(windowSystem),
          reducedMotion_(reducedMotion),
          accessibilitySettings_(accessibilitySettings),
          urlOpener_(urlOpener) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override {
        return windowSystem_.frontmostApplication();
    }

    [[nodiscard]] bool accessibilityDisplayShouldReduceMotion() override { return reducedMotion_.isWanted(); }
    void openAccessibilitySettings() override { accessibilitySettings_.open(); }
    void openURL(std::string_view url, OpenURLCompletion completion) override {
        urlOpener_.open(url, std::move(completion));
    }

private:
    WindowSystem& windowSystem_;
    const ReducedMotion& reducedMotion_;
    const AccessibilitySettings& accessibilitySettings_;
    UrlOpener& urlOpener_;
};

}  // namespace velmorand
