#include "simulation/ProblemJudge.h"

#include "shortcuts/ShortcutManager.h"
#include "simulation/Broken.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace velmorand::simulation {
namespace {

constexpr std::uint32_t lastKeyOfAKeyboard = 127;
constexpr std::string_view conflictBeginning = "Shortcut conflict, not registered: ";

struct User {
    WindowAction action{};
    KeyboardShortcut shortcut;
};

}  // namespace

/// The conflicts in ascending order, then the others in the order of the actions.
std::vector<std::string> ProblemJudge::wanted(const PreferencesState& settings,
                                              const std::set<World::Combination>& taken) {
    std::map<World::Combination, std::vector<User>> users;
    std::vector<World::Combination> inOrder;
    for (const WindowAction action : allWindowActions) {
        const std::string name(rawValue(action));
        if (std::ranges::count(settings.disabledShortcutActions, name) > 0) continue;
        const auto assigned = settings.shortcuts.find(name);
        const KeyboardShortcut shortcut =
            assigned == settings.shortcuts.end() ? metadata(action).defaultShortcut : assigned->second;
        inOrder.emplace_back(shortcut.hotKey.keyCode, shortcut.hotKey.modifiers.rawValue());
        users[inOrder.back()].push_back({action, shortcut});
    }
    std::vector<std::string> problems;
    for (const auto& [combination, conflicting] : users) {
        if (conflicting.size() < 2) continue;
        std::vector<std::string_view> titles;
        for (const User& user : conflicting) titles.push_back(metadata(user.action).title);
        std::ranges::sort(titles);
        problems.push_back(fmt::format("{}{}.", conflictBeginning, fmt::join(titles, ", ")));
    }
    std::ranges::sort(problems);
    for (const World::Combination& combination : inOrder) {
        const User& user = users[combination].front();
        if (users[combination].size() > 1) continue;
        if (!taken.contains(combination) && combination.first <= lastKeyOfAKeyboard) continue;
        problems.push_back(fmt::format("Could not register {} ({}). Another app may already be using it.",
                                       metadata(user.action).title, spokenDescription(user.shortcut)));
    }
    return problems;
}

/// Every list is told once, and again only after there was nothing to tell.
void ProblemJudge::judge(World& world, bool registered) {
    if (starts_ != world.starts()) notified_.reset();
    starts_ = world.starts();
    const auto& sent = world.platform().simulated().userNotificationCenter().added();
    if (registered) {
        problems_ = wanted(world.program().preferencesStore()->current(), world.taken());
        if (world.program().shortcutManager().shortcutIssues() != problems_)
            throw Broken{"problems", fmt::format("there should be: {}", fmt::join(problems_, " "))};
        if (problems_.empty()) notified_.reset();
        if (!problems_.empty() && notified_ != problems_) {
            notified_ = problems_;
            if (world.allowsNotifications()) ++notifications_;
        }
    }
    if (sent.size() != notifications_)
        throw Broken{"problems", fmt::format("{} notifications were sent instead of {}", sent.size(), notifications_)};
    if (!registered || !notified_ || sent.empty()) return;
    const bool areConflicts = std::ranges::all_of(
        *notified_, [](const std::string& problem) { return problem.starts_with(conflictBeginning); });
    const std::string_view title = areConflicts ? "Velmorand: Shortcut Conflict" : "Velmorand: Shortcut Issue";
    if (sent.back().content.title != title ||
        sent.back().content.body != fmt::format("{}", fmt::join(*notified_, "\n")))
        throw Broken{"problems", fmt::format("the notification \"{}\" says: {}", sent.back().content.title,
                                             sent.back().content.body)};
}

}  // namespace velmorand::simulation
