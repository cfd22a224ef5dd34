#include "simulation/MenuJudge.h"

#include "simulation/Broken.h"

#include <fmt/format.h>

#include <algorithm>

namespace velmorand::simulation {
namespace {

constexpr std::chrono::milliseconds warningLasts{2500};
constexpr std::chrono::seconds issueIsListed{60};

bool isListed(const std::string& message, const std::vector<MenuItem>& items) {
    return std::ranges::any_of(
        items, [&](const MenuItem& item) { return item.title == message && !item.isEnabled && item.action.empty(); });
}

}  // namespace

void MenuJudge::judgeMenu(World& world, const ManagerModel& model) const {
    const auto& menu = world.shownMenu();
    if (!menu) return;
    const auto& ignored = world.program().preferencesStore()->current().ignoredApps;
    const auto own = world.platform().bundle().identifier();
    const auto& front = menu->frontmost;
    const bool isArrangeable = menu->trusted && front && front->bundleIdentifier != own &&
                               (!front->bundleIdentifier || std::ranges::count(ignored, *front->bundleIdentifier) == 0);
    const bool hasEntry = front && model.hasEntry(front->pid);
    const bool hasOtherDisplay = modelScreens(world.platform().desktop().displays).size() > 1;
    std::size_t actions = 0;
    for (const MenuItem& item : menu->items) {
        const auto action = windowActionFromRawValue(item.representedObject.value_or(""));
        if (!action) continue;
        ++actions;
        bool isEnabled = isArrangeable;
        if (action == WindowAction::nextDisplay || action == WindowAction::previousDisplay)
            isEnabled = isEnabled && hasOtherDisplay;
        if (action == WindowAction::restore) isEnabled = isEnabled && hasEntry;
        if (item.isEnabled != isEnabled)
            throw Broken{"menu", fmt::format(R"("{}" can{} be chosen)", item.title, isEnabled ? "not" : "")};
    }
    if (actions != allWindowActions.size()) throw Broken{"menu", fmt::format("it offers {} actions", actions)};
    if (!listed_) return;
    const bool isNew = menu->date - listed_->at.date < issueIsListed;
    if (isNew != isListed(listed_->message, menu->items))
        throw Broken{"menu", fmt::format(R"("{}" is {}listed)", listed_->message, isNew ? "not " : "")};
}

/// A choice that was not refused takes the line away, also that of a move which did not land.
void MenuJudge::judgeIcon(World& world, const ManagerModel& model) {
    const auto& told = world.told();
    if (!told) listed_.reset();
    if (told && told->number != tellings_) {
        listed_ = told;
        tellings_ = told->number;
    }
    const auto& menu = world.shownMenu();
    if (menu && menu->chosen && !model.lastWasRefused()) listed_.reset();

    const std::string& toolTip = world.platform().statusBar().items().front()->toolTip();
    const bool mayRest = !told || world.now().time >= told->at.time + warningLasts;
    const bool mustRest = !told || world.settled() >= told->at.time + warningLasts;
    if (told && !mayRest && toolTip != told->message)
        throw Broken{"menu", fmt::format(R"(the icon says "{}", not "{}")", toolTip, told->message)};
    if (mustRest && toolTip != "Velmorand") throw Broken{"menu", fmt::format(R"(the icon still says "{}")", toolTip)};
}

}  // namespace velmorand::simulation
