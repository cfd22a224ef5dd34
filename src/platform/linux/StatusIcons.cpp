#include "platform/linux/StatusIcons.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QtEndian>
#include <algorithm>
#include <array>

namespace velmorand {
namespace {

struct NamedIcon {
    StatusImageKind kind;
    std::string_view image;
    QLatin1StringView icon;
};

constexpr std::array icons{
    NamedIcon{StatusImageKind::resource, "MenuBarTemplate", QLatin1StringView(VELMORAND_IDENTIFIER "-symbolic")},
    NamedIcon{StatusImageKind::symbol, "rectangle.3.group",
              QLatin1StringView(VELMORAND_IDENTIFIER ".windows-symbolic")},
    NamedIcon{StatusImageKind::symbol, "exclamationmark.triangle",
              QLatin1StringView(VELMORAND_IDENTIFIER ".warning-symbolic")},
};

/// In pixels.
constexpr std::array pixmapSizes{16, 22, 24, 32, 48};

BusPixmap pixmapOf(const QImage& picture) {
    BusPixmap pixmap{.width = picture.width(), .height = picture.height()};
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const auto pixel = qToBigEndian<quint32>(picture.pixel(x, y));
            pixmap.pixels.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
        }
    }
    return pixmap;
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const BusPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;  // NOLINT(bugprone-return-const-ref-from-parameter): as all of these
}

std::optional<QLatin1StringView> statusIconName(StatusImageKind kind, std::string_view name) {
    const auto isWanted = [&](const NamedIcon& icon) { return icon.kind == kind && icon.image == name; };
    const auto found = std::ranges::find_if(icons, isWanted);
    return found == icons.end() ? std::nullopt : std::optional(found->icon);
}

QString statusIconFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* place : {"share/velmorand/icons", "../share/velmorand/icons"}) {
        const QString folder = QDir::cleanPath(program.filePath(QString::fromLatin1(place)));
        if (QDir(folder).exists()) return folder;
    }
    return {};
}

bool hasStatusIcon(const QString& folder, QLatin1StringView iconName) {
    return !folder.isEmpty() &&
           QFile::exists(QStringLiteral("%1/hicolor/scalable/status/%2.svg").arg(folder, iconName));
}

QList<BusPixmap> statusIconPixmaps(const QString& folder, const QString& iconName) {
    QList<BusPixmap> pixmaps;
    if (folder.isEmpty()) return pixmaps;
    for (const int size : pixmapSizes) {
        const QImage picture(QStringLiteral("%1/pixmaps/%2-%3.png").arg(folder, iconName).arg(size));
        if (!picture.isNull()) pixmaps.append(pixmapOf(picture));
    }
    return pixmaps;
}

}  // namespace velmorand
