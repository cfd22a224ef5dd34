#pragma once

#include "platform/LocalNotificationCenter.h"
#include "platform/Platform.h"
#include "platform/simulated/SimulatedAccessibility.h"
#include "platform/simulated/SimulatedApplication.h"
#include "platform/simulated/SimulatedApplicationChooser.h"
#include "platform/simulated/SimulatedBundle.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "platform/simulated/SimulatedDisplays.h"
#include "platform/simulated/SimulatedHotKeyService.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedLoginItemService.h"
#include "platform/simulated/SimulatedRecorderPanelHost.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedStatusBar.h"
#include "platform/simulated/SimulatedUserDefaults.h"
#include "platform/simulated/SimulatedUserNotificationCenter.h"
#include "platform/simulated/SimulatedWorkspace.h"

namespace velmorand {

/// A whole platform in memory: a desktop that can be set, a keyboard that can be pressed and a clock that is
/// advanced by hand. It starts with one display of 1440 by 900 points whose top 25 points a panel covers.
class SimulatedPlatform final : public Platform {
public:
    SimulatedPlatform();

    [[nodiscard]] SimulatedAccessibility& accessibility() override { return accessibility_; }
    [[nodiscard]] SimulatedWorkspace& workspace() override { return workspace_; }
    [[nodiscard]] SimulatedDisplays& displays() override { return displays_; }
    [[nodiscard]] SimulatedHotKeyService& hotKeyService() override { return hotKeyService_; }
    [[nodiscard]] LocalNotificationCenter& workspaceNotificationCenter() override {
        return workspaceNotificationCenter_;
    }
    [[nodiscard]] LocalNotificationCenter& defaultNotificationCenter() override { return defaultNotificationCenter_; }
    [[nodiscard]] SimulatedUserNotificationCenter& userNotificationCenter() override { return userNotificationCenter_; }
    [[nodiscard]] SimulatedRecorderPanelHost& recorderPanelHost() override { return recorderPanelHost_; }
    [[nodiscard]] SimulatedLoginItemService& loginItemService() override { return loginItemService_; }
    [[nodiscard]] SimulatedStatusBar& statusBar() override { return statusBar_; }
    [[nodiscard]] SimulatedRunLoop& runLoop() override { return runLoop_; }
    [[nodiscard]] SimulatedApplication& application() override { return application_; }
    [[nodiscard]] const SimulatedBundle& bundle() const override { return bundle_; }
    [[nodiscard]] SimulatedUserDefaults& userDefaults() override { return userDefaults_; }
    [[nodiscard]] SimulatedLog& log() override { return log_; }

    /// Belongs to no platform's list of services: where the system has no such panel, the settings window brings it.
    [[nodiscard]] SimulatedApplicationChooser& applicationChooser() { return applicationChooser_; }

    /// The state behind the services.
    [[nodiscard]] SimulatedDesktop& desktop() { return desktop_; }
    [[nodiscard]] SimulatedBundle& settableBundle() { return bundle_; }

    /// Ends an application as the desktop would: its windows go and the workspace's observers are told.
    void terminateProcess(std::int32_t pid);

    /// Changes the displays and tells the observers.
    void setDisplays(std::vector<DisplayDescription> displays);

private:
    SimulatedDesktop desktop_;
    SimulatedRunLoop runLoop_;
    SimulatedLog log_;
    SimulatedBundle bundle_;
    SimulatedUserDefaults userDefaults_;
    SimulatedAccessibility accessibility_{desktop_, runLoop_};
    SimulatedWorkspace workspace_{desktop_, runLoop_};
    SimulatedDisplays displays_{desktop_};
    SimulatedHotKeyService hotKeyService_;
    LocalNotificationCenter workspaceNotificationCenter_;
    LocalNotificationCenter defaultNotificationCenter_;
    SimulatedUserNotificationCenter userNotificationCenter_{runLoop_};
    SimulatedRecorderPanelHost recorderPanelHost_{runLoop_};
    SimulatedLoginItemService loginItemService_;
    SimulatedApplicationChooser applicationChooser_{runLoop_};
    SimulatedStatusBar statusBar_;
    SimulatedApplication application_{runLoop_};
};

}  // namespace velmorand
