#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand::desktop {

/// The kinds of windows that are surveyed.
enum class SurveyWindow {
    plain,
    staticGravity,
    gtk3ServerSide,
    gtk3ClientSide,
    gtk4,
    qt,
    terminal,
    dialog,
    minimumSize,
    fixedSize
};

/// All of them, in the order of the table's columns.
[[nodiscard]] std::span<const SurveyWindow> surveyWindows();
/// The heading of its column.
[[nodiscard]] std::string_view headingOf(SurveyWindow window);
/// Opens it under that title.
[[nodiscard]] std::vector<std::string> commandOf(SurveyWindow window, const std::string& title);

}  // namespace velmorand::desktop
