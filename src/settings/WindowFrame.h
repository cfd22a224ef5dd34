#pragma once

#include <QList>
#include <QMargins>
#include <QRect>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// The stored form of the place of a window's content: "x y width height" in points.
[[nodiscard]] std::string windowFrameText(const QRect& frame);

/// The frame in a stored text; absent when the text is anything else or the frame is empty.
[[nodiscard]] std::optional<QRect> windowFrameFromText(std::string_view text);

/// What panels leave free of the displays there are now.
[[nodiscard]] QList<QRect> freeAreasOfDisplays();

/// The frame moved, and where it must be made smaller, so that it is wholly inside that one of the areas of which it
/// covers most, or which is nearest. It is not made smaller than `smallest`: then its top left corner is inside.
/// `areas` are what panels leave free of the displays; with none the frame stays as it is. A frame that has to be moved is
/// placed so that `decorations`, what the window manager draws around it, are inside as well.
[[nodiscard]] QRect windowFrameWithin(const QList<QRect>& areas, const QRect& frame, const QSize& smallest,
                                      const QMargins& decorations);

}  // namespace velmorand
