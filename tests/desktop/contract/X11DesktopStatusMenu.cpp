#include "desktop/contract/X11DesktopUnderContract.h"

#include <stdexcept>

/// The status item's menu of the X11 desktop under contract, as a panel reads it.
namespace velmorand::desktop {

void X11DesktopUnderContract::openStatusMenu() {
    if (panel_->waitForItem().isEmpty()) throw std::runtime_error("no status item makes itself known");
    openMenu_ = panel_->open();
}

/// Panels read it again when they are told that it has changed.
std::vector<ContractMenuLine> X11DesktopUnderContract::statusMenu() {
    openMenu_ = panel_->layout();
    std::vector<ContractMenuLine> lines;
    for (const ReceivedLine& line : openMenu_.lines) {
        const bool isSeparator = line.properties.value(QStringLiteral("type")) == QStringLiteral("separator");
        const bool isEnabled = line.properties.value(QStringLiteral("enabled"), true).toBool();
        QString title = line.properties.value(QStringLiteral("label")).toString();
        title.replace(QStringLiteral("__"), QStringLiteral("_"));
        lines.push_back({title.toStdString(), isEnabled && !isSeparator});
    }
    return lines;
}

void X11DesktopUnderContract::chooseFromStatusMenu(std::size_t place) {
    panel_->event(openMenu_.lines.at(place).id, QStringLiteral("clicked"));
}

}  // namespace velmorand::desktop
