#include "settings/ApplicationIconProvider.h"

#include "settings/ApplicationIconSource.h"
#include "settings/QtText.h"

#include <QFile>
#include <QIcon>
#include <algorithm>
#include <optional>

namespace velmorand {
namespace {

constexpr int usualSize = 36;
constexpr int largestSize = 512;

QIcon iconOf(const ApplicationIcon& icon) {
    switch (icon.source) {
        case ApplicationIcon::Source::theme: return QIcon::fromTheme(toQString(icon.name));
        case ApplicationIcon::Source::file: return QIcon(QFile::decodeName(icon.name.c_str()));
    }
    return {};
}

QPixmap pixmapOf(const QString& id, int side) {
    const auto icon = iconOfSourceId(id);
    return icon ? iconOf(*icon).pixmap(QSize(side, side), 1.0) : QPixmap();
}

}  // namespace

bool hasPictureOfIcon(const QString& source) {
    const auto id = idOfSource(source);
    return id && !pixmapOf(*id, usualSize).isNull();
}

QPixmap ApplicationIconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) {
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    const int side = std::min(wanted > 0 ? wanted : usualSize, largestSize);
    const QPixmap pixmap = pixmapOf(id, side);
    if (size != nullptr) *size = pixmap.size();
    return pixmap;
}

}  // namespace velmorand
