#pragma once

#include <QPixmap>
#include <QQuickImageProvider>

namespace velmorand {

/// Whether there is a picture behind the address of an icon (`sourceOfIcon`). A view that asks for one that is not there
/// or cannot be read has the toolkit log an error.
[[nodiscard]] bool hasPictureOfIcon(const QString& source);

/// Draws the icons of applications for the views: those of the desktop's theme and those of files. What is not there or
/// cannot be read is answered by no picture, and the view shows its own.
class ApplicationIconProvider final : public QQuickImageProvider {
public:
    ApplicationIconProvider() : QQuickImageProvider(Pixmap) {}

    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace velmorand
