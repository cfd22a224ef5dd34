#pragma once

#include "desktop/harness/ScreenArea.h"
#include "desktop/harness/TestPointer.h"
#include "desktop/harness/TrayHost.h"

#include <functional>
#include <optional>
#include <string>

namespace velmorand::desktop {

/// Somebody who looks at the panel of status items and uses a mouse.
class TrayUser {
public:
    /// Until a host is started or named there is no panel to look at. \p desktop must outlive the user.
    explicit TrayUser(TestDesktop& desktop);

    /// Returns when the panel is there and looks as it will.
    [[nodiscard]] std::expected<void, HarnessError> startHost(TrayHostKind kind);
    void stopHost();
    [[nodiscard]] TrayHost& host() { return *host_; }
    /// Looks at a panel of the desktop's own, where status items come into \p part of it, in root coordinates.
    void useHost(TrayHostKind kind, const PixelRect& part);

    /// Where the icon stands that comes when \p appear is called: the panel without it looks otherwise.
    [[nodiscard]] std::expected<PixelRect, HarnessError> findIcon(const std::function<void()>& appear);
    /// Where the icon stands that was not there yet in \p empty, a look at the panel.
    [[nodiscard]] std::expected<PixelRect, HarnessError> findIcon(const ScreenArea& empty);
    /// Clicks the icon that was found and answers where the menu is seen.
    [[nodiscard]] std::expected<PixelRect, HarnessError> openMenu();
    /// Moves there, waits until what is under the pointer has seen it, and clicks.
    void click(int x, int y);

    [[nodiscard]] ScreenArea lookAtPanel() { return look(panel_); }
    /// What has changed since, once it changes no more; absent when nothing does.
    [[nodiscard]] std::optional<PixelRect> waitForChange(const ScreenArea& before);
    [[nodiscard]] bool comesToLookLike(const ScreenArea& area);
    /// Panels draw a little after they are asked to.
    void letSettle();

    /// Keeps a picture of the screen under this name, for a look, where VELMORAND_TEST_PICTURES names a folder.
    void picture(const std::string& name);

private:
    [[nodiscard]] ScreenArea look(const PixelRect& rect);
    [[nodiscard]] PixelRect whereMenusAre() const;

    TestDesktop& desktop_;
    TestPointer pointer_;
    std::optional<TrayHost> host_;
    TrayHostKind kind_ = TrayHostKind::xfce;
    /// What is looked at of the panel.
    PixelRect panel_;
    PixelRect icon_;
};

}  // namespace velmorand::desktop
