#pragma once

#include <QString>
#include <QStringView>
#include <string_view>

namespace velmorand {

/// How much of a text a notification shows, in UTF-16 code units. More than this nobody reads there; a server may take
/// seconds to lay out far more, and the bus cuts off who sends a message of many megabytes.
inline constexpr qsizetype longestNotificationTitle = 500;
inline constexpr qsizetype longestNotificationBody = 4000;

/// The text as it may be sent over the bus: valid throughout (U+FFFD in place of what is not UTF-8), without control
/// characters other than line feed and tab, and no longer than `longest`, at least 1, with an ellipsis for the rest.
[[nodiscard]] QString notificationText(std::string_view utf8, qsizetype longest);

/// Plain text for a server that reads markup.
[[nodiscard]] QString escapedForMarkup(QStringView text);

}  // namespace velmorand
