#pragma once

#include "platform/StatusBar.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QString>
#include <optional>
#include <string_view>

namespace velmorand {

/// A picture as it goes over the bus: 32 bits for each pixel, alpha first, in the byte order of networks; signature
/// (iiay).
struct BusPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels = {};
};
QDBusArgument& operator<<(QDBusArgument& argument, const BusPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusPixmap& pixmap);

/// The name of the image among icons; absent when there is no such image.
[[nodiscard]] std::optional<QLatin1StringView> statusIconName(StatusImageKind kind, std::string_view name);

/// The folder with our own icons for panels: beside the executable where it was built, or with the data of the place where
/// it is installed. Empty when there is none.
[[nodiscard]] QString statusIconFolder();

/// Whether the folder has the drawing of the icon.
[[nodiscard]] bool hasStatusIcon(const QString& folder, QLatin1StringView iconName);

/// The icon in a colour that is seen on dark and light panels, in the sizes of panels, for those that do not read the
/// folder. Empty when its pictures are missing.
[[nodiscard]] QList<BusPixmap> statusIconPixmaps(const QString& folder, const QString& iconName);

}  // namespace velmorand
