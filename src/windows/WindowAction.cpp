#include "windows/WindowAction.h"

#include "base/TranslatableText.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <string>
#include <utility>

namespace velmorand {
namespace {

constexpr ShortcutModifiers commandOption{ShortcutModifiers::command, ShortcutModifiers::option};
constexpr ShortcutModifiers commandShiftOption{ShortcutModifiers::command, ShortcutModifiers::shift,
                                               ShortcutModifiers::option};
constexpr ShortcutModifiers commandOptionControl{ShortcutModifiers::command, ShortcutModifiers::option,
                                                 ShortcutModifiers::control};

struct CatalogueRow {
    WindowAction action;
    std::string_view rawValue;
    std::string_view title;
    std::string_view menuTitle;
    WindowActionGroup group;
    WindowActionKind kind;
    std::uint32_t keyCode;
    ShortcutModifiers modifiers;
    std::string_view keyLabel;
};

// clang-format off
constexpr std::array<CatalogueRow, allWindowActions.size()> catalogue{{
    {WindowAction::leftHalf, "left", translatable("WindowAction", "Left"), "Move to Left Half", WindowActionGroup::halves, Fraction{0, 0, 0.5, 1}, 123, commandOption, "Left Arrow"},
    {WindowAction::rightHalf, "right", translatable("WindowAction", "Right"), "Move to Right Half", WindowActionGroup::halves, Fraction{0.5, 0, 0.5, 1}, 124, commandOption, "Right Arrow"},
    {WindowAction::topHalf, "top", translatable("WindowAction", "Top"), "Move to Top Half", WindowActionGroup::halves, Fraction{0, 0, 1, 0.5}, 126, commandOption, "Up Arrow"},
    {WindowAction::bottomHalf, "bottom", translatable("WindowAction", "Bottom"), "Move to Bottom Half", WindowActionGroup::halves, Fraction{0, 0.5, 1, 0.5}, 125, commandOption, "Down Arrow"},
    {WindowAction::topLeft, "topLeft", translatable("WindowAction", "Top Left"), "Move to Top Left", WindowActionGroup::quarters, Fraction{0, 0, 0.5, 0.5}, 14, commandShiftOption, "E"},
    {WindowAction::topRight, "topRight", translatable("WindowAction", "Top Right"), "Move to Top Right", WindowActionGroup::quarters, Fraction{0.5, 0, 0.5, 0.5}, 15, commandShiftOption, "R"},
    {WindowAction::bottomLeft, "bottomLeft", translatable("WindowAction", "Bottom Left"), "Move to Bottom Left", WindowActionGroup::quarters, Fraction{0, 0.5, 0.5, 0.5}, 17, commandShiftOption, "T"},
    {WindowAction::bottomRight, "bottomRight", translatable("WindowAction", "Bottom Right"), "Move to Bottom Right", WindowActionGroup::quarters, Fraction{0.5, 0.5, 0.5, 0.5}, 16, commandShiftOption, "Y"},
    {WindowAction::leftThird, "leftThird", translatable("WindowAction", "Left Third"), "Move to Left Third", WindowActionGroup::thirds, Fraction{0, 0, 1.0 / 3, 1}, 123, commandOptionControl, "Left Arrow"},
    {WindowAction::centerThird, "centerThird", translatable("WindowAction", "Center Third"), "Move to Center Third", WindowActionGroup::thirds, Fraction{1.0 / 3, 0, 1.0 / 3, 1}, 125, commandOptionControl, "Down Arrow"},
    {WindowAction::rightThird, "rightThird", translatable("WindowAction", "Right Third"), "Move to Right Third", WindowActionGroup::thirds, Fraction{2.0 / 3, 0, 1.0 / 3, 1}, 124, commandOptionControl, "Right Arrow"},
    {WindowAction::leftTwoThirds, "leftTwoThirds", translatable("WindowAction", "Left Two Thirds"), "Move to Left Two Thirds", WindowActionGroup::twoThirds, Fraction{0, 0, 2.0 / 3, 1}, 14, commandOptionControl, "E"},
    {WindowAction::centerTwoThirds, "centerTwoThirds", translatable("WindowAction", "Center Two Thirds"), "Move to Center Two Thirds", WindowActionGroup::twoThirds, Fraction{1.0 / 6, 0, 2.0 / 3, 1}, 15, commandOptionControl, "R"},
    {WindowAction::rightTwoThirds, "rightTwoThirds", translatable("WindowAction", "Right Two Thirds"), "Move to Right Two Thirds", WindowActionGroup::twoThirds, Fraction{1.0 / 3, 0, 2.0 / 3, 1}, 17, commandOptionControl, "T"},
    {WindowAction::nextDisplay, "nextDisplay", translatable("WindowAction", "Next Display"), "Move to Next Display", WindowActionGroup::displays, MoveDisplay{1}, 30, commandOption, "]"},
    {WindowAction::previousDisplay, "previousDisplay", translatable("WindowAction", "Previous Display"), "Move to Previous Display", WindowActionGroup::displays, MoveDisplay{-1}, 33, commandOption, "["},
    {WindowAction::maximizeWindow, "maximize", translatable("WindowAction", "Maximize"), "Maximize Window", WindowActionGroup::utility, Maximize{}, 36, commandOption, "Return"},
    {WindowAction::centerWindow, "center", translatable("WindowAction", "Center"), "Center Window", WindowActionGroup::utility, Center{}, 36, commandOptionControl, "Return"},
    {WindowAction::restore, "restore", translatable("WindowAction", "Restore Previous Frame"), "Restore Previous Frame", WindowActionGroup::utility, Restore{}, 35, commandShiftOption, "P"},
}};
// clang-format on

constexpr const CatalogueRow& row(WindowAction action) {
    return catalogue[static_cast<std::size_t>(std::to_underlying(action))];
}

static_assert(std::ranges::all_of(allWindowActions, [](WindowAction action) { return row(action).action == action; }),
              "the catalogue is in declaration order");

consteval bool rawValuesAreUnique() {
    for (const CatalogueRow& first : catalogue) {
        if (std::ranges::count(catalogue, first.rawValue, &CatalogueRow::rawValue) != 1) return false;
    }
    return true;
}
static_assert(rawValuesAreUnique(), "actions are stored under their raw values");

}  // namespace

WindowActionMetadata metadata(WindowAction action) {
    const CatalogueRow& entry = row(action);
    return {.title = entry.title,
            .menuTitle = entry.menuTitle,
            .group = entry.group,
            .kind = entry.kind,
            .defaultShortcut = {{entry.keyCode, entry.modifiers}, std::string(entry.keyLabel)}};
}

WindowActionKind kind(WindowAction action) {
    return row(action).kind;
}

std::string_view rawValue(WindowAction action) {
    return row(action).rawValue;
}

std::optional<WindowAction> windowActionFromRawValue(std::string_view rawValue) {
    const auto found = std::ranges::find(catalogue, rawValue, &CatalogueRow::rawValue);
    if (found == catalogue.end()) return std::nullopt;
    return found->action;
}

std::string_view rawValue(WindowActionGroup group) {
    switch (group) {
        case WindowActionGroup::halves: return "halves";
        case WindowActionGroup::quarters: return "quarters";
        case WindowActionGroup::thirds: return "thirds";
        case WindowActionGroup::twoThirds: return "twoThirds";
        case WindowActionGroup::displays: return "displays";
        case WindowActionGroup::utility: return "utility";
    }
    std::unreachable();
}

std::vector<WindowAction> actionsIn(WindowActionGroup group) {
    std::vector<WindowAction> actions;
    for (const WindowAction action : allWindowActions) {
        if (row(action).group == group) actions.push_back(action);
    }
    return actions;
}

}  // namespace velmorand
