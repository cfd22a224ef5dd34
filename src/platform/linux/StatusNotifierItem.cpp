#include "platform/linux/StatusNotifierItem.h"

#include "platform/linux/MenuText.h"
#include "platform/linux/StatusNotifierItemDescription.h"

#include <unistd.h>

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <algorithm>
#include <array>
#include <utility>

namespace velmorand {
namespace {

constexpr QLatin1StringView interface("org.kde.StatusNotifierItem");
/// Panels draw no title: an item that has nothing else gets an icon that every theme has.
constexpr QLatin1StringView iconForTitle("preferences-system");

/// A name of its own for each item of this process, also for one that follows another.
QString nextName() {
    static int items = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2").arg(getpid()).arg(++items);
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;  // NOLINT(bugprone-return-const-ref-from-parameter): as all of these
}

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& bus, RunLoop& runLoop, QString applicationTitle,
                                       QString iconFolder)
    : BusObject(bus, runLoop, {.path = path, .interface = interface, .description = statusNotifierItemDescription}),
      applicationTitle_(std::move(applicationTitle)),
      iconFolder_(std::move(iconFolder)),
      menu_(bus, runLoop),
      registration_(bus, runLoop, nextName()) {
    qDBusRegisterMetaType<BusPixmap>();
    qDBusRegisterMetaType<QList<BusPixmap>>();
    qDBusRegisterMetaType<BusToolTip>();
}

void StatusNotifierItem::setImage(const StatusImage& image) {
    const auto iconName = statusIconName(image.kind, image.name);
    if (!iconName) return;
    QString description = menuText(image.description, longestSentence);
    if (iconName_ == *iconName && iconDescription_ == description) return;
    if (iconName_ != *iconName) pixmaps_ = statusIconPixmaps(iconFolder_, *iconName);
    iconName_ = *iconName;
    iconDescription_ = std::move(description);
    tell(QStringLiteral("NewIcon"));
}

void StatusNotifierItem::setTitle(std::string_view title) {
    QString text = menuText(title, longestName);
    if (std::exchange(title_, text) != text) tell(QStringLiteral("NewTitle"));
}

void StatusNotifierItem::setToolTip(std::string_view toolTip) {
    QString text = toolTipText(toolTip);
    if (std::exchange(toolTip_, text) != text) tell(QStringLiteral("NewToolTip"));
}

QVariantMap StatusNotifierItem::properties() const {
    const QVariant noPixmaps = QVariant::fromValue(QList<BusPixmap>());
    return {
        {QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
        {QStringLiteral("Id"), QStringLiteral("velmorand")},
        {QStringLiteral("Title"), title_.isEmpty() ? applicationTitle_ : title_},
        {QStringLiteral("Status"), QStringLiteral("Active")},
        {QStringLiteral("WindowId"), 0},
        {QStringLiteral("IconThemePath"), iconFolder_},
        {QStringLiteral("IconName"), iconName_.isEmpty() ? QString(iconForTitle) : iconName_},
        {QStringLiteral("IconPixmap"), QVariant::fromValue(pixmaps_)},
        {QStringLiteral("IconAccessibleDesc"), iconDescription_},
        {QStringLiteral("OverlayIconName"), QString()},
        {QStringLiteral("OverlayIconPixmap"), noPixmaps},
        {QStringLiteral("AttentionIconName"), QString()},
        {QStringLiteral("AttentionIconPixmap"), noPixmaps},
        {QStringLiteral("AttentionMovieName"), QString()},
        {QStringLiteral("ToolTip"), QVariant::fromValue(BusToolTip{.title = toolTip_})},
        {QStringLiteral("ItemIsMenu"), true},
        {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(BusMenu::path))},
    };
}

/// A panel that calls these does not show the menu; there is nothing else to do.
bool StatusNotifierItem::call(const QDBusMessage& message) {
    static constexpr std::array harmless{QLatin1StringView("Activate"), QLatin1StringView("SecondaryActivate"),
                                         QLatin1StringView("ContextMenu"), QLatin1StringView("Scroll")};
    if (std::ranges::find(harmless, message.member()) == harmless.end()) return false;
    answer(message);
    return true;
}

}  // namespace velmorand
