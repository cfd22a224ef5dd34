#include "simulation/Scenario.h"

#include "windows/WindowAction.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace velmorand::simulation {
namespace {

constexpr auto displaySizes =
    std::to_array<Size>({{1440, 900}, {1920, 1080}, {2560, 1440}, {1080, 1920}, {1366, 768}, {801, 601}, {90, 60}});

/// Panels take something off the edges.
Rect withoutPanels(const Rect& whole, Random& random) {
    if (random.chance(20)) return whole;
    const double left = random.chance(25) ? random.wholeBetween(1, 80) : 0;
    const double bottom = random.chance(35) ? random.wholeBetween(1, 60) : 0;
    const double right = random.chance(15) ? random.wholeBetween(1, 80) : 0;
    const double top = random.chance(60) ? random.wholeBetween(20, 40) : 0;
    return {whole.x + left, whole.y + bottom, std::max(0.0, whole.width - left - right),
            std::max(0.0, whole.height - bottom - top)};
}

/// Beside an earlier display or anywhere.
Point placeBeside(const Rect& neighbour, const Size& size, Random& random) {
    switch (random.below(6)) {
        case 0: return {neighbour.maxX(), neighbour.y};
        case 1: return {neighbour.x - size.width, neighbour.y};
        case 2: return {neighbour.x, neighbour.maxY()};
        case 3: return {neighbour.x, neighbour.y - size.height};
        case 4: return {neighbour.maxX(), neighbour.y + random.wholeBetween(-400, 400)};
        default: return {random.wholeBetween(-4000, 4000), random.wholeBetween(-3000, 3000)};
    }
}

Rect makeFrame(Random& random) {
    Rect frame{random.wholeBetween(-600, 2400), random.wholeBetween(-400, 1400), random.wholeBetween(1, 1600),
               random.wholeBetween(1, 1100)};
    if (random.chance(5)) frame.x += 9000;
    if (random.chance(10)) frame.y += 0.5;
    return frame;
}

void limitSize(SimulatedWindow& window, Random& random) {
    if (random.chance(20)) window.minimumSize = {random.wholeBetween(1, 900), random.wholeBetween(1, 700)};
    if (random.chance(15))
        window.maximumSize = Size{window.minimumSize.width + random.wholeBetween(0, 900),
                                  window.minimumSize.height + random.wholeBetween(0, 700)};
    if (random.chance(20)) window.sizeStep = {random.wholeBetween(2, 13), random.wholeBetween(2, 23)};
}

constexpr auto writeErrors = std::to_array<AXError>(
    {AXError::cannotComplete, AXError::attributeUnsupported, AXError::illegalArgument, AXError{-25200}});

/// What it refuses, and what it cannot be asked.
void makeStubborn(SimulatedWindow& window, Random& random) {
    if (random.chance(8)) window.subrole = "AXDialog";
    if (random.chance(3)) window.subrole.reset();
    if (random.chance(4)) window.role = "AXUnknown";
    if (random.chance(5)) window.minimized = true;
    if (random.chance(5)) window.fullScreen = true;
    if (random.chance(6)) window.positionSettable = false;
    if (random.chance(6)) window.sizeSettable = false;
    if (random.chance(6)) window.ignoresWrites = true;
    if (random.chance(5)) window.positionWriteError = random.of(writeErrors);
    if (random.chance(5)) window.sizeWriteError = random.of(writeErrors);
    if (random.chance(4)) window.readErrors["AXPosition"] = AXError::cannotComplete;
    if (random.chance(2)) window.readErrors["AXRole"] = AXError::noValue;
    if (random.chance(3)) window.readOverrides["AXSize"] = AXBoxedValue{AXValueType::size, Size{0, 300}};
    if (random.chance(3)) window.readOverrides["AXPosition"] = AXOtherValue{};
    if (random.chance(2)) window.readErrors["AXMinimized"] = AXError::attributeUnsupported;
}

/// Windows among which an action has to find one by itself; several are of equal size.
void makePalettes(ApplicationPlan& application, Random& random) {
    constexpr auto sizes = std::to_array<Size>({{400, 300}, {300, 400}, {200, 600}, {500, 300}});
    application.focusesNothing = true;
    for (SimulatedWindow& window : application.windows) {
        const Size size = random.of(sizes);
        window = SimulatedWindow{};
        window.frame = {random.wholeBetween(0, 1000), random.wholeBetween(0, 500), size.width, size.height};
        window.subrole = "AXFloatingWindow";
    }
}

}  // namespace

SimulatedWindow makeWindow(Random& random) {
    SimulatedWindow window;
    window.frame = makeFrame(random);
    if (random.chance(35)) limitSize(window, random);
    if (random.chance(20)) window.writeSeconds = random.between(0.01, 0.06);
    if (random.chance(3)) window.writeSeconds = random.between(0.06, 0.8);
    if (random.chance(35)) makeStubborn(window, random);
    return window;
}

std::string makeIdentifier(Random& random) {
    if (random.chance(3)) return "app.velmorand.Velmorand";
    return fmt::format("org.example.{}", static_cast<char>('A' + random.below(5)));
}

std::vector<DisplayDescription> makeDisplays(Random& random) {
    std::vector<DisplayDescription> displays;
    if (random.chance(2)) return displays;
    const std::uint32_t count = random.chance(40) ? 1 : 1 + random.below(6);
    for (std::uint32_t i = 0; i < count; ++i) {
        const Size size = displaySizes[random.below(random.chance(90) ? 6 : 7)];
        const Point place = displays.empty() ? Point{} : placeBeside(random.of(displays).frame, size, random);
        const Rect whole{place.x, place.y, size.width, size.height};
        std::optional<std::int64_t> number = i + 1;
        if (random.chance(3)) number.reset();
        if (random.chance(3)) number = 1;
        displays.push_back({number, fmt::format("Display {}", i + 1), whole, withoutPanels(whole, random)});
    }
    return displays;
}

ApplicationPlan makeApplication(Random& random) {
    ApplicationPlan application{makeIdentifier(random), "An application", 0, {}, false};
    if (random.chance(15)) application.bundleIdentifier.reset();
    if (random.chance(15)) application.localizedName.reset();
    if (random.chance(8)) application.answerSeconds = random.between(0.01, 0.05);
    if (random.chance(2)) application.answerSeconds = random.between(0.05, 0.8);
    const std::uint32_t count = random.chance(10) ? 0 : 1 + random.below(3);
    for (std::uint32_t i = 0; i < count; ++i) application.windows.push_back(makeWindow(random));
    if (random.chance(5)) makePalettes(application, random);
    return application;
}

KeyboardShortcut makeShortcut(Random& random) {
    // Few, so that they meet; now and then one that no keyboard has.
    constexpr auto keyCodes = std::to_array<std::uint32_t>({0, 1, 2, 14, 30, 36, 123, 124});
    constexpr auto modifiers = std::to_array<std::uint32_t>({0x900, 0xB00, 0x1900});
    if (random.chance(4)) return {{4711, ShortcutModifiers(0x900)}, "?"};
    return {{random.of(keyCodes), ShortcutModifiers(random.of(modifiers))}, "K"};
}

PreferencesState makePreferences(Random& random) {
    PreferencesState state = defaultPreferencesState();
    if (random.chance(50)) state.outerPadding = random.wholeBetween(0, 50);
    if (random.chance(50)) state.innerGap = random.wholeBetween(0, 50) * 0.5;
    state.clampToVisibleArea = random.chance(70);
    state.enableAnimations = random.chance(60);
    state.animationDuration = random.between(0.05, 0.5);
    if (random.chance(20)) state.ignoredApps = {makeIdentifier(random)};
    for (std::uint32_t changes = random.below(4); changes > 0; --changes)
        state.shortcuts[std::string(rawValue(random.of(allWindowActions)))] = makeShortcut(random);
    if (random.chance(30)) state.disabledShortcutActions.emplace_back(rawValue(random.of(allWindowActions)));
    return state;
}

Scenario makeScenario(std::uint64_t seed) {
    Random random(seed);
    Scenario scenario{.displays = makeDisplays(random),
                      .applications = {},
                      .preferences = makePreferences(random),
                      .ownIdentifier = "app.velmorand.Velmorand",
                      .trusted = random.chance(95),
                      .reducesMotion = random.chance(10),
                      .allowsNotifications = random.chance(80)};
    if (random.chance(3)) scenario.ownIdentifier.reset();
    for (std::uint32_t count = 1 + random.below(4); count > 0; --count)
        scenario.applications.push_back(makeApplication(random));
    return scenario;
}

}  // namespace velmorand::simulation
