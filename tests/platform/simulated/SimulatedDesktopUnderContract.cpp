#include "platform/simulated/SimulatedDesktopUnderContract.h"

#include "support/TestDisplays.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <map>
#include <ranges>
#include <string>
#include <utility>

namespace velmorand {
namespace {

constexpr std::string_view simulatedVersion = "1.2.3";

SimulatedWindowID simulated(ContractWindow window) {
    return SimulatedWindowID{std::to_underlying(window)};
}

ContractWindow underContract(SimulatedWindowID id) {
    return ContractWindow{std::to_underlying(id)};
}

/// The modifier keys go down one after the other, and up again after the key.
void pressInPanel(SimulatedRecorderPanelHost& panel, std::uint32_t keyCode, std::uint32_t modifiers) {
    struct ModifierKey {
        std::uint32_t mask;
        std::uint64_t flag;
    };
    constexpr std::array modifierKeys{ModifierKey{0x1000, 1U << 18U}, ModifierKey{0x0800, 1U << 19U},
                                      ModifierKey{0x0200, 1U << 17U}, ModifierKey{0x0100, 1U << 20U}};
    static const std::map<std::uint32_t, std::string> characters{{0, "a"}, {14, "e"}, {15, "r"}, {46, "m"}};
    std::uint64_t flags = 0;
    for (const ModifierKey& key : modifierKeys) {
        if ((modifiers & key.mask) != 0) panel.changeModifiers(flags |= key.flag);
    }
    const auto written = characters.find(keyCode);
    panel.press({keyCode, flags, written == characters.end() ? std::string() : written->second});
    for (const ModifierKey& key : modifierKeys | std::views::reverse) {
        if ((modifiers & key.mask) != 0) panel.changeModifiers(flags &= ~key.flag);
    }
}

}  // namespace

SimulatedDesktopUnderContract::SimulatedDesktopUnderContract() {
    platform_.settableBundle().setInformationText("CFBundleShortVersionString", std::string(simulatedVersion));
}

std::optional<std::string> SimulatedDesktopUnderContract::reasonAgainst(Ability ability) const {
    switch (ability) {
        case Ability::holdKeys: return "the simulated keyboard does not repeat keys";
        case Ability::setLockKeys: return "the simulated keyboard has no lock keys";
        case Ability::revokeTrust:
        case Ability::openSeveralWindowsPerApplication:
        case Ability::minimiseWindows:
        case Ability::makeWindowsFullScreen:
        case Ability::openFixedSizeWindows:
        case Ability::limitWindowSizes:
        case Ability::stopAnswering:
        case Ability::leaveNothingInFront:
        case Ability::hideIdentifiers:
        case Ability::changeDisplays:
        case Ability::disconnectAllDisplays:
        case Ability::takeCombinations:
        case Ability::readLog:
        case Ability::reduceMotion:
        case Ability::showNotifications:
        case Ability::showStatusItems:
        case Ability::denyNotifications: return std::nullopt;
    }
    std::unreachable();
}

ContractWindow SimulatedDesktopUnderContract::openWindow(const ContractWindowRequest& request) {
    SimulatedProcess& process = platform_.desktop().addProcess(++lastPid_);
    process.bundleIdentifier = request.applicationIdentifier;
    if (request.hidesIdentifier) process.bundleIdentifier.reset();
    const SimulatedWindowID id = platform_.desktop().addWindow(process.pid);
    SimulatedWindow& window = platform_.desktop().window(id);
    window.frame = request.frame;
    window.sizeSettable = request.resizable;
    window.minimumSize = {std::max(1.0, request.minimumSize.width), std::max(1.0, request.minimumSize.height)};
    return underContract(id);
}

ContractWindow SimulatedDesktopUnderContract::openSibling(ContractWindow sibling, const Rect& frame) {
    const SimulatedWindowID id = platform_.desktop().addWindow(pidOf(sibling));
    platform_.desktop().window(id).frame = frame;
    platform_.desktop().frontmost = pidOf(sibling);
    return underContract(id);
}

void SimulatedDesktopUnderContract::closeWindow(ContractWindow window) {
    platform_.desktop().closeWindow(simulated(window));
}

void SimulatedDesktopUnderContract::focusWindow(ContractWindow window) {
    SimulatedProcess& process = *platform_.desktop().ownerOf(simulated(window));
    std::ranges::stable_partition(process.windows, [&](SimulatedWindowID id) { return id == simulated(window); });
    process.focusedWindow = simulated(window);
    process.mainWindow = simulated(window);
    platform_.desktop().frontmost = process.pid;
    platform_.recorderPanelHost().resignKey();
}

void SimulatedDesktopUnderContract::minimiseWindow(ContractWindow window) {
    platform_.desktop().window(simulated(window)).minimized = true;
}

void SimulatedDesktopUnderContract::makeFullScreen(ContractWindow window) {
    platform_.desktop().window(simulated(window)).fullScreen = true;
}

void SimulatedDesktopUnderContract::placeByHand(ContractWindow window, const Rect& frame) {
    platform_.desktop().window(simulated(window)).frame = frame;
}

void SimulatedDesktopUnderContract::stopAnswering(ContractWindow window) {
    platform_.desktop().ownerOf(simulated(window))->frozen = true;
}

std::int32_t SimulatedDesktopUnderContract::pidOf(ContractWindow window) {
    return platform_.desktop().ownerOf(simulated(window))->pid;
}

Rect SimulatedDesktopUnderContract::trueFrameOf(ContractWindow window) {
    return platform_.desktop().window(simulated(window)).frame;
}

void SimulatedDesktopUnderContract::endApplicationOf(ContractWindow window) {
    // The desktop ends it now; the news arrives in a turn of the main loop.
    const std::int32_t pid = pidOf(window);
    platform_.desktop().removeProcess(pid);
    platform_.runLoop().post([this, pid] { platform_.terminateProcess(pid); });
}

void SimulatedDesktopUnderContract::leaveNothingInFront() {
    platform_.desktop().frontmost.reset();
}

void SimulatedDesktopUnderContract::revokeTrust() {
    platform_.desktop().trusted = false;
}

void SimulatedDesktopUnderContract::setReducesMotion(bool reduces) {
    platform_.runLoop().post([this, reduces] { platform_.workspace().setReducesMotion(reduces); });
}

void SimulatedDesktopUnderContract::allowNotifications() {
    platform_.userNotificationCenter().setAuthorization(NotificationAuthorization::authorized);
}

void SimulatedDesktopUnderContract::denyNotifications() {
    platform_.userNotificationCenter().setAuthorization(NotificationAuthorization::denied);
}

std::vector<ContractNotification> SimulatedDesktopUnderContract::shownNotifications() {
    std::vector<ContractNotification> shown;
    for (const auto& [identifier, content] : platform_.userNotificationCenter().shown())
        shown.push_back({content.title, content.body});
    return shown;
}

std::vector<ContractMenuLine> SimulatedDesktopUnderContract::statusMenu() {
    std::vector<ContractMenuLine> lines;
    for (const MenuItem& item : platform_.statusBar().items().back()->menuItems())
        lines.push_back({item.title, item.kind == MenuItemKind::item && item.isEnabled});
    return lines;
}

std::filesystem::path SimulatedDesktopUnderContract::install(const ContractApplication& application) {
    const std::filesystem::path location = "/Applications/" + application.identifier;
    const auto icon = application.icon.empty()
                          ? std::nullopt
                          : std::optional(ApplicationIcon{ApplicationIcon::Source::theme, application.icon});
    platform_.workspace().applications().install(
        location, {application.identifier, application.name, icon, application.isListed});
    return location;
}

void SimulatedDesktopUnderContract::setDisplays(const std::vector<Rect>& axFrames) {
    std::vector<TestDisplay> displays;
    for (const Rect& frame : axFrames) {
        const auto number = static_cast<std::int64_t>(displays.size()) + 1;
        displays.push_back({number, "Display " + std::to_string(number), frame, 0});
    }
    platform_.desktop().displays = describedByWindowServer(displays);
    platform_.runLoop().post([this] {
        platform_.defaultNotificationCenter().post({NotificationName::screenParametersChanged, std::nullopt});
    });
}

void SimulatedDesktopUnderContract::press(std::uint32_t keyCode, std::uint32_t modifiers) {
    if (platform_.recorderPanelHost().isKey()) {
        pressInPanel(platform_.recorderPanelHost(), keyCode, modifiers);
        return;
    }
    platform_.runLoop().post([this, keyCode, modifiers] { platform_.hotKeyService().press(keyCode, modifiers); });
}

void SimulatedDesktopUnderContract::holdAndRelease(std::uint32_t keyCode, std::uint32_t modifiers) {
    press(keyCode, modifiers);
}

void SimulatedDesktopUnderContract::takeCombination(std::uint32_t keyCode, std::uint32_t modifiers) {
    platform_.hotKeyService().setTaken(keyCode, modifiers, true);
}

void SimulatedDesktopUnderContract::setLockKeys(bool) {}

void SimulatedDesktopUnderContract::closeRecorderPanel() {
    platform_.recorderPanelHost().closeByUser();
}

bool SimulatedDesktopUnderContract::runUntil(const std::function<bool()>& condition, Duration deadline) {
    const MonotonicTime end = platform_.runLoop().now() + deadline;
    platform_.runLoop().runPending();
    while (!condition() && platform_.runLoop().now() < end) platform_.runLoop().advance(std::chrono::milliseconds{1});
    return condition();
}

void SimulatedDesktopUnderContract::keepMainThreadBusy(Duration span) {
    platform_.runLoop().block(span);
}

std::vector<std::string> SimulatedDesktopUnderContract::logLines() {
    std::vector<std::string> texts;
    std::ranges::transform(platform_.log().lines(), std::back_inserter(texts), &LogLine::text);
    return texts;
}

std::string SimulatedDesktopUnderContract::version() const {
    return std::string(simulatedVersion);
}

}  // namespace velmorand
