#pragma once

#include <QRectF>
#include <QString>
#include <ostream>

/// How the toolkit's values appear in failure messages.

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QRectF& rect, std::ostream* out) {
    *out << rect.x() << ", " << rect.y() << ", " << rect.width() << " x " << rect.height();
}
