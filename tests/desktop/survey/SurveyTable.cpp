#include "desktop/survey/SurveyTable.h"

#include "desktop/demo/DemoModel.h"
#include "desktop/survey/SurveyWindows.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>

namespace velmorand::desktop {

namespace {

constexpr std::string_view introduction = R"(# Window managers

What becomes of a window when its shortcut is pressed, under each window manager and with each kind of window: how many of
the 19 actions put it where it belongs, within {} pixels on every side. The window starts in the middle of the larger of two
displays, once in its normal state and once maximised; where it is already where it belongs it has to stay.

`scripts/survey` makes this page. It starts a desktop in memory for each window manager with the built program on it,
presses every shortcut as a keyboard would, and looks with a client of its own where the window is.

- **rounded**: it is at its place, but the window manager rounds its size down to whole lines and columns, and the program
  said so.
- **refused**: it is not where it belongs, for a reason that lies outside the program, and the program said so.
- **missed**: anything else.
- –: there is nothing to press, because the window manager does not maximise such a window.
)";

constexpr std::string_view kindsOfWindows = R"(
The first two are windows of a program without a toolkit; _static gravity_ asks for its positions to mean its own corner and
not that of its frame. _GTK 3_ leaves its title bar to the window manager; _GTK 3, own title bar_ and _GTK 4_ draw it
themselves, and a shadow around the window where windows are composited. The _terminal_ is sized in lines and columns.
_Large minimum_ does not want to be smaller than 860 x 640, which most targets are.
)";

/// The remarks of a whole document, numbered as they come up.
class Remarks {
public:
    /// " [1] [2]", or nothing.
    std::string marks(const SurveyCell& cell) {
        std::string text;
        for (const auto& remark : cell.remarks()) {
            auto known = std::ranges::find(remarks_, remark);
            if (known == remarks_.end()) known = remarks_.insert(remarks_.end(), remark);
            text += fmt::format(" [{}]", known - remarks_.begin() + 1);
        }
        return text;
    }

    [[nodiscard]] const std::vector<std::string>& all() const { return remarks_; }

private:
    std::vector<std::string> remarks_;
};

std::string cellText(const SurveyCell& cell, Remarks& remarks) {
    if (cell.isEmpty()) return "–";
    std::vector<std::string> parts;
    if (cell.landed() > 0) parts.push_back(std::to_string(cell.landed()));
    if (cell.rounded() > 0) parts.push_back(fmt::format("{} rounded", cell.rounded()));
    if (cell.refused() > 0) parts.push_back(fmt::format("{} refused", cell.refused()));
    if (cell.missed() > 0) parts.push_back(fmt::format("**{} missed**", cell.missed()));
    return fmt::format("{}{}", fmt::join(parts, " + "), remarks.marks(cell));
}

std::string table(std::span<const SurveyRow> rows, SurveyStart start, Remarks& remarks) {
    std::string text = "| |";
    for (const auto window : surveyWindows()) text += fmt::format(" {} |", headingOf(window));
    text += "\n|---|";
    for (std::size_t column = 0; column < surveyWindows().size(); ++column) text += "---|";
    text += '\n';
    for (const auto& row : rows) {
        text += fmt::format("| {} |", row.manager->heading);
        for (const auto& cell : row.cells.at(start)) text += fmt::format(" {} |", cellText(cell, remarks));
        text += '\n';
    }
    return text;
}

/// "openbox 3.6.1" and so on, each once.
std::vector<std::string> versions(std::span<const SurveyRow> rows) {
    std::vector<std::string> texts;
    for (const auto& row : rows) {
        auto text = fmt::format("{} {}", nameOf(row.manager->options.kind), row.version);
        if (std::ranges::find(texts, text) == texts.end()) texts.push_back(std::move(text));
    }
    return texts;
}

}  // namespace

void SurveyCell::add(const SurveyPress& press, const SurveyOutcome& outcome) {
    switch (outcome.verdict) {
        case SurveyVerdict::landed: ++landed_; return;
        case SurveyVerdict::rounded: ++rounded_; return;
        case SurveyVerdict::refused: ++refused_; break;
        case SurveyVerdict::missed: ++missed_; break;
    }
    auto& group = groups_[outcome.reason];
    group.verdict = outcome.verdict;
    group.actions.push_back(press.action->name);
}

std::vector<std::string> SurveyCell::remarks() const {
    std::vector<std::string> remarks;
    for (const auto& [reason, group] : groups_) {
        auto remark = group.verdict == SurveyVerdict::refused
                          ? fmt::format("Refused: {}.", reason)
                          : fmt::format("Missed: {}: {}.", fmt::join(group.actions, ", "), reason);
        remarks.push_back(std::move(remark));
    }
    return remarks;
}

std::string surveyDocument(std::span<const SurveyRow> rows) {
    Remarks remarks;
    std::string text = fmt::format(introduction, frameTolerance);
    text += kindsOfWindows;
    text += fmt::format("\n## In the normal state\n\n{}", table(rows, SurveyStart::normal, remarks));
    text += fmt::format("\n## Maximised before\n\n{}", table(rows, SurveyStart::maximized, remarks));
    text += "\n## Remarks\n\n";
    int number = 0;
    for (const auto& remark : remarks.all()) text += fmt::format("{}. {}\n", ++number, remark);
    text += fmt::format("\n## Versions\n\n{}.\n", fmt::join(versions(rows), ", "));
    return text;
}

}  // namespace velmorand::desktop
