#include "platform/LocalNotificationCenter.h"
#include "platform/Platform.h"
#include "platform/linux/AccessibilitySettings.h"
#include "platform/linux/ApplicationService.h"
#include "platform/linux/BaseFolders.h"
#include "platform/linux/BusSessionLock.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/DesktopEnvironment.h"
#include "platform/linux/DesktopNotifications.h"
#include "platform/linux/EarlyBus.h"
#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/HiddenSessionBus.h"
#include "platform/linux/KdeAnimationSpeed.h"
#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/LinuxBundle.h"
#include "platform/linux/LinuxDisplays.h"
#include "platform/linux/LinuxLog.h"
#include "platform/linux/LinuxStatusBar.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/LoginItemSettings.h"
#include "platform/linux/PortalSettings.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/QtRunLoop.h"
#include "platform/linux/ReducedMotion.h"
#include "platform/linux/RunningCopy.h"
#include "platform/linux/StartupToken.h"
#include "platform/linux/StatusIcons.h"
#include "platform/linux/TrustPrompt.h"
#include "platform/linux/UrlOpener.h"
#include "platform/linux/XdgLoginItems.h"
#include "platform/linux/x11/ToolkitBarrier.h"
#include "platform/linux/x11/ToolkitConnection.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11HotKeyService.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/X11RecorderPanelHost.h"
#include "platform/linux/x11/X11Settings.h"
#include "platform/linux/x11/X11StartupNotification.h"
#include "platform/linux/x11/X11WindowActivation.h"
#include "platform/linux/x11/X11WindowSystem.h"

#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

/// A Linux session on X11.
class LinuxPlatform final : public Platform {
public:
    /// Our own connection comes first: without a server the toolkit would abort the process.
    static std::expected<std::unique_ptr<Platform>, EarlyEnd> create(int& argumentCount, char** arguments) {
        const StartupTokens tokens = takeStartupTokens();
        auto connection = X11Connection::open();
        if (!connection) return std::unexpected(EarlyEnd{connection.error()});
        LinuxLog log(VELMORAND_IDENTIFIER);
        auto place = takePlaceInSession(tokens, log);
        if (!place) {
            if (tokens.desktopStartupId) completeStartup(**connection, *tokens.desktopStartupId);
            return std::unexpected(EarlyEnd{"Another copy is running and comes to the front.", 0});
        }
        if (place->busIsSilent) hideSessionBus();  // nothing has started a thread yet
        std::unique_ptr<LinuxPlatform> platform(
            new LinuxPlatform(std::move(*connection), std::move(place->bus), argumentCount, arguments));
        auto windowSystem =
            X11WindowSystem::create(*platform->connection_, platform->runLoop_, platform->bundle_.identifier());
        if (!windowSystem) return std::unexpected(EarlyEnd{windowSystem.error()});
        platform->assemble(std::move(*windowSystem));
        auto recorderPanelHost =
            X11RecorderPanelHost::create(*platform->connection_, platform->keyboard_, platform->runLoop_,
                                         platform->sessionLock_, platform->log_, synchroniseToolkitConnection);
        if (!recorderPanelHost) return std::unexpected(EarlyEnd{recorderPanelHost.error()});
        platform->recorderPanelHost_ = std::move(*recorderPanelHost);
        platform->application_.afterLaunch([launched = platform.get(), tokens] { launched->handleLaunch(tokens); });
        return platform;
    }

    [[nodiscard]] Accessibility& accessibility() override { return *accessibility_; }
    [[nodiscard]] Workspace& workspace() override { return *workspace_; }
    [[nodiscard]] Displays& displays() override { return *displays_; }
    [[nodiscard]] HotKeyService& hotKeyService() override { return hotKeyService_; }
    [[nodiscard]] RecorderPanelHost& recorderPanelHost() override { return *recorderPanelHost_; }
    [[nodiscard]] NotificationCenter& workspaceNotificationCenter() override { return workspaceNotificationCenter_; }
    [[nodiscard]] NotificationCenter& defaultNotificationCenter() override { return defaultNotificationCenter_; }
    [[nodiscard]] UserNotificationCenter& userNotificationCenter() override { return userNotificationCenter_; }
    [[nodiscard]] LoginItemService& loginItemService() override { return loginItemService_; }
    [[nodiscard]] StatusBar& statusBar() override { return statusBar_; }
    [[nodiscard]] RunLoop& runLoop() override { return runLoop_; }
    [[nodiscard]] Application& application() override { return application_; }
    [[nodiscard]] const Bundle& bundle() const override { return bundle_; }
    [[nodiscard]] UserDefaults& userDefaults() override { return userDefaults_; }
    [[nodiscard]] Log& log() override { return log_; }

private:
    LinuxPlatform(std::unique_ptr<X11Connection> connection, std::optional<EarlyBus> bus, int& argumentCount,
                  char** arguments)
        : bus_(std::move(bus)),
          connection_(std::move(connection)),
          application_(argumentCount, arguments, log_),
          keyboard_(*connection_),
          hotKeyService_(*connection_, keyboard_, runLoop_) {
        silenceToolkitConnectionErrors();
        application_.endOnSignals(runLoop_);
        if (bus_) serveReopening(*bus_);
        application_.setOnActivation(
            [this] { defaultNotificationCenter_.post({NotificationName::applicationBecameActive, std::nullopt}); });
        application_.setWindowActivator([this](std::uint32_t window) { activateWindow(*connection_, window); });
        readable_ = runLoop_.watch(connection_->file(), [this] { handleConnection(); });
        sleeping_ = runLoop_.beforeSleeping([this] { handleConnection(); });
    }

    void serveReopening(EarlyBus& bus) {
        service_.emplace(
            bus, runLoop_, [this] { return !application_.isTerminating(); },
            [this](const std::optional<std::string>& activationToken) { application_.reopen(activationToken); });
    }

    void handleLaunch(const StartupTokens& tokens) {
        if (service_) service_->start();
        if (tokens.desktopStartupId) completeStartup(*connection_, *tokens.desktopStartupId);
    }

    void assemble(std::unique_ptr<WindowSystem> windowSystem) {
        windowSystem_ = std::move(windowSystem);
        accessibility_ = std::make_unique<LinuxAccessibility>(*windowSystem_, runLoop_, trustPrompt_, log_);
        followReducedMotion();
        workspace_ = std::make_unique<LinuxWorkspace>(*windowSystem_, *reducedMotion_, accessibilitySettings_,
                                                      urlOpener_, applications_);
        displays_ = std::make_unique<LinuxDisplays>(*windowSystem_);
        windowSystem_->setObserver(
            {.applicationTerminated =
                 [this](std::int32_t pid) {
                     workspaceNotificationCenter_.post({NotificationName::applicationTerminated, pid});
                 },
             .displaysChanged =
                 [this] {
                     defaultNotificationCenter_.post({NotificationName::screenParametersChanged, std::nullopt});
                 }});
    }

    /// What the desktop publishes for all programs counts before what stands in its own files. The connection to the
    /// bus is the one that the toolkit has made at its start.
    void followReducedMotion() {
        x11Settings_ = std::make_unique<X11Settings>(*connection_, runLoop_);
        portalSettings_ = std::make_unique<PortalSettings>(QDBusConnection::sessionBus());
        std::vector<MotionSource*> sources{x11Settings_.get(), portalSettings_.get()};
        if (desktopEnvironmentNamedIn(currentDesktopNames()) == DesktopEnvironment::kde) {
            kdeAnimationSpeed_ = std::make_unique<KdeAnimationSpeed>(configurationFolder("kdeglobals"));
            sources.push_back(kdeAnimationSpeed_.get());
        }
        reducedMotion_ = std::make_unique<ReducedMotion>(std::move(sources));
    }

    void handleConnection() {
        const bool hasMore = !connection_->isLost() && connection_->handleEvents();
        if (hasMore) runLoop_.post([this] { handleConnection(); });
        if (!connection_->isLost()) return;
        readable_.cancel();
        application_.endAfterLoss();
    }

    LinuxBundle bundle_;
    FileUserDefaults userDefaults_{configurationFolder("velmorand")};
    LinuxLog log_{VELMORAND_IDENTIFIER};
    LoginItemSettings loginItemSettings_{log_};
    XdgLoginItems loginItemService_{VELMORAND_IDENTIFIER, LoginItemPlaces::ofSession(), loginItemSettings_};
    LocalNotificationCenter workspaceNotificationCenter_;
    LocalNotificationCenter defaultNotificationCenter_;
    /// Ends after the connection to the X server, and with that the hot keys: who takes the place finds them free.
    std::optional<EarlyBus> bus_;
    std::unique_ptr<X11Connection> connection_;
    QtApplication application_;
    QtRunLoop runLoop_;
    std::optional<ApplicationService> service_;
    DesktopNotifications userNotificationCenter_{QDBusConnection::sessionBus(), runLoop_, VELMORAND_IDENTIFIER};
    LinuxStatusBar statusBar_{QDBusConnection::sessionBus(), runLoop_, statusIconFolder()};
    TrustPrompt trustPrompt_{userNotificationCenter_, log_, VELMORAND_IDENTIFIER};
    X11Keyboard keyboard_;
    X11HotKeyService hotKeyService_;
    BusSessionLock sessionLock_{QDBusConnection::sessionBus(), QDBusConnection::systemBus()};
    std::unique_ptr<X11RecorderPanelHost> recorderPanelHost_;
    std::unique_ptr<WindowSystem> windowSystem_;
    std::unique_ptr<LinuxAccessibility> accessibility_;
    std::unique_ptr<X11Settings> x11Settings_;
    std::unique_ptr<PortalSettings> portalSettings_;
    std::unique_ptr<KdeAnimationSpeed> kdeAnimationSpeed_;
    std::unique_ptr<ReducedMotion> reducedMotion_;
    AccessibilitySettings accessibilitySettings_{log_};
    UrlOpener urlOpener_{log_};
    DesktopApplications applications_{DesktopEntries::ofSession()};
    std::unique_ptr<LinuxWorkspace> workspace_;
    std::unique_ptr<LinuxDisplays> displays_;
    Subscription readable_;
    Subscription sleeping_;
};

}  // namespace

std::expected<std::unique_ptr<Platform>, EarlyEnd> makePlatform(int& argumentCount, char** arguments) {
    return LinuxPlatform::create(argumentCount, arguments);
}

}  // namespace velmorand
