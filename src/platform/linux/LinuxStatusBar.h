#pragma once

#include "platform/StatusBar.h"

#include <QDBusConnection>
#include <QString>
#include <utility>

namespace velmorand {

class RunLoop;

/// The status bar of Linux desktops: any panel that shows items from the bus.
class LinuxStatusBar final : public StatusBar {
public:
    /// `bus` is the session bus, which need not be connected; `iconFolder` holds the icons, and without it there are no
    /// images. The run loop must outlive the bar and its items.
    LinuxStatusBar(QDBusConnection bus, RunLoop& runLoop, QString iconFolder)
        : bus_(std::move(bus)), runLoop_(runLoop), iconFolder_(std::move(iconFolder)) {}

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;
    [[nodiscard]] std::optional<StatusImage> image(StatusImageKind kind, std::string_view name,
                                                   std::string_view description) const override;

private:
    QDBusConnection bus_;
    RunLoop& runLoop_;
    QString iconFolder_;
};

}  // namespace velmorand
