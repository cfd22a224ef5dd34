#include "platform/linux/LinuxStatusBar.h"

#include "platform/linux/StatusIcons.h"
#include "platform/linux/StatusNotifierItem.h"

namespace velmorand {

std::unique_ptr<StatusItem> LinuxStatusBar::makeStatusItem() {
    return std::make_unique<StatusNotifierItem>(bus_, runLoop_, QStringLiteral("Velmorand"), iconFolder_);
}

std::optional<StatusImage> LinuxStatusBar::image(StatusImageKind kind, std::string_view name,
                                                 std::string_view description) const {
    const auto iconName = statusIconName(kind, name);
    if (!iconName || !hasStatusIcon(iconFolder_, *iconName)) return std::nullopt;
    return StatusImage{
        .kind = kind, .name = std::string(name), .description = std::string(description), .isTemplate = false};
}

}  // namespace velmorand
