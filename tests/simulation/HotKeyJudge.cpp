#include "simulation/HotKeyJudge.h"

#include "shortcuts/ShortcutRecorderPanel.h"
#include "simulation/Broken.h"

#include <fmt/format.h>

#include <algorithm>

namespace velmorand::simulation {
namespace {

constexpr std::uint32_t signature = 0x564C4D52;
constexpr std::uint32_t lastKeyOfAKeyboard = 127;
/// Everything is looked at when something changed, and now and then in between.
constexpr std::uint32_t stepsBetweenLooks = 16;

}  // namespace

/// Of two actions with the same shortcut neither has it; what another program holds cannot be had.
HotKeyJudge::HotKeys HotKeyJudge::wanted(const PreferencesState& settings, const std::set<World::Combination>& taken) {
    std::map<World::Combination, std::vector<std::uint32_t>> users;
    std::uint32_t id = 0;
    for (const WindowAction action : allWindowActions) {
        ++id;
        const std::string name(rawValue(action));
        if (std::ranges::count(settings.disabledShortcutActions, name) > 0) continue;
        const auto assigned = settings.shortcuts.find(name);
        const HotKey hotKey =
            assigned == settings.shortcuts.end() ? metadata(action).defaultShortcut.hotKey : assigned->second.hotKey;
        users[{hotKey.keyCode, hotKey.modifiers.rawValue()}].push_back(id);
    }
    HotKeys hotKeys;
    for (const auto& [combination, ids] : users) {
        if (ids.size() == 1 && !taken.contains(combination) && combination.first <= lastKeyOfAKeyboard)
            hotKeys[combination] = ids[0];
    }
    return hotKeys;
}

void HotKeyJudge::registerAgain(World& world) {
    const PreferencesState& settings = world.program().preferencesStore()->current();
    registered_ = wanted(settings, world.taken());
    shortcuts_ = settings.shortcuts;
    disabled_ = settings.disabledShortcutActions;
}

void HotKeyJudge::judge(World& world) {
    if (world.leftBehind() > 0)
        throw Broken{"hot keys", fmt::format("{} registrations outlive the program", world.leftBehind())};
    const bool isRecording = world.program().shortcutRecorderPanel().isRecording();
    const bool isNew = starts_ != world.starts() || recordingsEnded_ != world.recordingsEnded();
    const bool isPublished = publications_ != world.publications();
    const PreferencesState& settings = world.program().preferencesStore()->current();
    const bool isChanged =
        isPublished && (shortcuts_ != settings.shortcuts || disabled_ != settings.disabledShortcutActions);
    registeredAgain_ = (isNew || isChanged) && !isRecording;
    if (isNew || isChanged) registerAgain(world);
    starts_ = world.starts();
    recordingsEnded_ = world.recordingsEnded();
    publications_ = world.publications();

    const HotKeys& expected = isRecording ? HotKeys{} : registered_;
    const SimulatedHotKeyService& service = world.platform().hotKeyService();
    if (service.registrationCount() != expected.size())
        throw Broken{"hot keys", fmt::format("{} hot keys are registered instead of {}", service.registrationCount(),
                                             expected.size())};
    if (!isNew && !isPublished && ++steps_ % stepsBetweenLooks != 0) return;
    for (const auto& [combination, id] : expected) {
        const auto found = service.registeredID(combination.first, combination.second);
        if (found != HotKeyID{signature, id})
            throw Broken{"hot keys", fmt::format("key {} with modifiers {} is not registered for action {}",
                                                 combination.first, combination.second, id)};
    }
}

}  // namespace velmorand::simulation
