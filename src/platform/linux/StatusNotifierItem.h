#pragma once

#include "platform/StatusBar.h"
#include "platform/linux/BusMenu.h"
#include "platform/linux/BusObject.h"
#include "platform/linux/StatusIcons.h"
#include "platform/linux/StatusNotifierRegistration.h"

#include <QString>

namespace velmorand {

/// What the tool tip of an item is over the bus, signature (sa(iiay)ss).
struct BusToolTip {
    QString iconName = {};
    QList<BusPixmap> pixmaps = {};
    QString title = {};
    /// Read as markup.
    QString text = {};
};
QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& toolTip);

/// A status item as panels on the bus draw it (org.kde.StatusNotifierItem), with its menu. The toolkit's own class looks
/// for a panel once, at its start, and loses parts of a menu.
class StatusNotifierItem final : public BusObject, public StatusItem {
    Q_OBJECT

public:
    static constexpr QLatin1StringView path{"/StatusNotifierItem"};

    /// `applicationTitle` stands for the item where it has no title of its own; `iconFolder` holds the icons and may be
    /// empty. One item at a time can be on a bus. The run loop must outlive it.
    StatusNotifierItem(const QDBusConnection& bus, RunLoop& runLoop, QString applicationTitle, QString iconFolder);

    [[nodiscard]] bool hasButton() const override { return true; }
    void setImage(const StatusImage& image) override;
    void setTitle(std::string_view title) override;
    void setToolTip(std::string_view toolTip) override;
    void attachMenu(StatusMenuEvents events) override { menu_.attach(std::move(events)); }
    void setMenuItems(std::vector<MenuItem> items) override { menu_.setItems(std::move(items)); }

protected:
    [[nodiscard]] QVariantMap properties() const override;
    bool call(const QDBusMessage& message) override;

private:
    QString applicationTitle_;
    QString iconFolder_;
    QString iconName_;
    QString iconDescription_;
    QList<BusPixmap> pixmaps_;
    QString title_;
    QString toolTip_;
    BusMenu menu_;
    StatusNotifierRegistration registration_;
};

}  // namespace velmorand
