#include "settings/ApplicationIconProvider.h"

#include "settings/ApplicationIconSource.h"
#include "settings/QtText.h"

#include <QFile>
#include <QIcon>
#include <algorithm>

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

}  // namespace

QPixmap ApplicationIconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) {
    const auto icon = iconOfSourceId(id);
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    const int side = std::min(wanted > 0 ? wanted : usualSize, largestSize);
    const QPixmap pixmap = icon ? iconOf(*icon).pixmap(QSize(side, side), 1.0) : QPixmap();
    if (size != nullptr) *size = pixmap.size();
    return pixmap;
}

}  // namespace velmorand
