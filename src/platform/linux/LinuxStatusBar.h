#pragma once

#include "platform/StatusBar.h"

namespace velmorand {

/// The status bar of Linux desktops. Its items are not shown yet.
class LinuxStatusBar final : public StatusBar {
public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;
    [[nodiscard]] std::optional<StatusImage> image(StatusImageKind kind, std::string_view name,
                                                   std::string_view description) const override;
};

}  // namespace velmorand
