#pragma once

#include "platform/StatusBar.h"

#include <QDBusConnection>
#include <utility>

namespace velmorand {

class RunLoop;

/// The status bar of Linux desktops: any panel that shows items from the bus. One item at a time is shown.
class LinuxStatusBar final : public StatusBar {
public:
    /// `bus` is the session bus, which need not be connected. The run loop must outlive the bar and its items.
    LinuxStatusBar(QDBusConnection bus, RunLoop& runLoop) : bus_(std::move(bus)), runLoop_(runLoop) {}

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;
    [[nodiscard]] std::optional<StatusImage> image(StatusImageKind kind, std::string_view name,
                                                   std::string_view description) const override;

private:
    QDBusConnection bus_;
    RunLoop& runLoop_;
};

}  // namespace velmorand
