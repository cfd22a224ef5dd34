#include "platform/linux/LinuxStatusBar.h"

namespace velmorand {
namespace {

class HiddenStatusItem final : public StatusItem {
public:
    [[nodiscard]] bool hasButton() const override { return false; }
    void setImage(const StatusImage& /*image*/) override {}
    void setTitle(std::string_view /*title*/) override {}
    void setToolTip(std::string_view /*toolTip*/) override {}
    void attachMenu(StatusMenuEvents /*events*/) override {}
    void setMenuItems(std::vector<MenuItem> /*items*/) override {}
};

}  // namespace

std::unique_ptr<StatusItem> LinuxStatusBar::makeStatusItem() {
    return std::make_unique<HiddenStatusItem>();
}

std::optional<StatusImage> LinuxStatusBar::image(StatusImageKind /*kind*/, std::string_view /*name*/,
                                                 std::string_view /*description*/) const {
    return std::nullopt;
}

}  // namespace velmorand
