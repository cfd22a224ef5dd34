#pragma once

#include "base/Subscription.h"
#include "platform/Logger.h"
#include "platform/RunLoop.h"
#include "settings/DesktopLook.h"
#include "settings/SettingsModel.h"
#include "settings/SettingsWindow.h"
#include "settings/ShortcutRecorderViewModel.h"
#include "windows/NotificationToken.h"

#include <QMargins>
#include <QQuickView>
#include <QRect>
#include <expected>
#include <memory>
#include <optional>
#include <string>

namespace velmorand {

/// The settings window, drawn by Qt Quick without a graphics driver. Closing hides it.
class QuickSettingsWindow final : public QQuickView, public SettingsWindow {
    Q_OBJECT

public:
    /// The key of the user defaults under which the place of the window is kept.
    static constexpr std::string_view frameKey = "VelmorandSettingsWindow";

    /// Fails with the reason when the window cannot be drawn.
    [[nodiscard]] static std::expected<std::unique_ptr<SettingsWindow>, std::string> create(
        const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure);
    ~QuickSettingsWindow() override;

    void bringToFront() override;
    void savePending() override;

protected:
    bool event(QEvent* event) override;

private:
    QuickSettingsWindow(const SettingsServices& services, const SettingsPlatform& platform,
                        SettingsFailureHandler onFailure);
    [[nodiscard]] std::optional<QRect> storedFrame() const;
    void place();
    void moveWithinDisplays();
    /// Has the frame stored once the window has come to rest.
    void noteFrame();
    void becameActive();
    void refreshLook();

    SettingsPlatform platform_;
    Logger logger_;
    SettingsModel model_;
    ShortcutRecorderViewModel recorder_;
    /// Belongs to the engine.
    DesktopLook* look_;
    /// Where the user has put the window, as far as that is known.
    QRect frame_;
    std::optional<RunLoop::Timer> pendingSave_;
    NotificationToken activation_;
    /// What the window manager draws around the window; a guess until it has.
    QMargins decorations_{1, 40, 1, 1};
};

}  // namespace velmorand
