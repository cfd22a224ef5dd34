#include "desktop/survey/SurveyManagers.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmorand::desktop {

namespace {

using enum WindowManagerKind;

constexpr std::array managers{
    SurveyManager{"openbox", "openbox", {.kind = openbox}},
    SurveyManager{"xfwm4", "xfwm4, compositing", {.kind = xfwm4, .isCompositing = true}},
    SurveyManager{"fluxbox", "fluxbox", {.kind = fluxbox}},
    SurveyManager{"icewm", "icewm", {.kind = icewm}},
    SurveyManager{"marco", "marco, compositing", {.kind = marco, .isCompositing = true}},
    SurveyManager{"i3", "i3, floating windows", {.kind = i3}},
    SurveyManager{"i3-tiling", "i3, tiled windows", {.kind = i3, .isTiling = true}},
    SurveyManager{"awesome", "awesome, floating layout", {.kind = awesome}},
    SurveyManager{"kwin", "kwin, compositing", {.kind = kwin, .isCompositing = true}},
};

}  // namespace

std::span<const SurveyManager> surveyManagers() {
    return managers;
}

const SurveyManager* surveyManager(std::string_view name) {
    const auto* found = std::ranges::find(managers, name, &SurveyManager::name);
    return found == managers.end() ? nullptr : found;
}

std::vector<std::string> versionCommandOf(WindowManagerKind kind) {
    switch (kind) {
        case none: break;
        case fluxbox: return {"fluxbox", "-version"};
        case kwin: return {"kwin_x11", "--version"};
        case openbox:
        case xfwm4:
        case icewm:
        case marco:
        case i3:
        case awesome: return {std::string(nameOf(kind)), "--version"};
    }
    std::unreachable();
}

}  // namespace velmorand::desktop
