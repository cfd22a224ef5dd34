#include "platform/linux/x11/X11WindowSystem.h"

#include "platform/linux/QtRunLoop.h"
#include "platform/linux/x11/X11Desktops.h"
#include "platform/linux/x11/X11PropertyReader.h"

#include <algorithm>
#include <chrono>
#include <ranges>
#include <string_view>
#include <utility>

namespace velmorand {
namespace {

/// Bounds calls that are not on one element and so have no messaging timeout of their own.
constexpr std::chrono::milliseconds queryTimeout{750};
/// Changes of displays and panels come in bursts.
constexpr std::chrono::milliseconds displaysSettle{50};
/// When the server did not answer, as while it looks at a monitor that was plugged in, it is asked again.
constexpr std::chrono::seconds displaysRetry{1};

/// How an X server that is a client of a Wayland compositor gives itself away: newer ones by an extension, older ones
/// by the names of their outputs.
constexpr std::string_view waylandServerMark = "XWAYLAND";

Deadline queryDeadline() {
    return std::chrono::steady_clock::now() + queryTimeout;
}

std::string roleOf(const X11WindowFacts& facts) {
    switch (facts.type) {
        case X11WindowType::normal:
        case X11WindowType::dialog:
        case X11WindowType::utility: return facts.overrideRedirect ? "AXUnknown" : "AXWindow";
        case X11WindowType::desktop:
        case X11WindowType::dock:
        case X11WindowType::toolbar:
        case X11WindowType::menu:
        case X11WindowType::splash:
        case X11WindowType::notification:
        case X11WindowType::other: return "AXUnknown";
    }
    std::unreachable();
}

std::optional<std::string> subroleOf(const X11WindowFacts& facts) {
    if (facts.type == X11WindowType::normal) return "AXStandardWindow";
    if (facts.type == X11WindowType::dialog) return "AXDialog";
    if (facts.type == X11WindowType::utility) return "AXFloatingWindow";
    return std::nullopt;
}

}  // namespace

std::expected<std::unique_ptr<X11WindowSystem>, std::string> X11WindowSystem::create(
    X11Connection& connection, QtRunLoop& runLoop, std::optional<std::string> ownIdentifier) {
    const auto atoms = X11Atoms::intern(connection, std::chrono::steady_clock::now() + X11Connection::startTimeout);
    if (!atoms) return std::unexpected("The X server does not answer.");
    return std::unique_ptr<X11WindowSystem>(new X11WindowSystem(connection, runLoop, *atoms, std::move(ownIdentifier)));
}

X11WindowSystem::X11WindowSystem(X11Connection& connection, QtRunLoop& runLoop, const X11Atoms& atoms,
                                 std::optional<std::string> ownIdentifier)
    : connection_(connection),
      runLoop_(runLoop),
      atoms_(atoms),
      processWatcher_(runLoop,
                      [this](std::int32_t pid) {
                          if (observer_.applicationTerminated) observer_.applicationTerminated(pid);
                      }),
      registry_(connection),
      applications_(connection, atoms_, registry_, processWatcher_, std::move(ownIdentifier)),
      monitors_(connection, atoms_),
      windowManager_(connection, atoms_),
      writer_(connection, atoms_, windowManager_) {
    connection.requestEvents(connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);

    const Deadline deadline = std::chrono::steady_clock::now() + X11Connection::startTimeout;
    const auto nested = connection.reply<xcb_query_extension_reply_t>(
        xcb_query_extension(connection.raw(), static_cast<std::uint16_t>(waylandServerMark.size()),
                            waylandServerMark.data()),
        deadline);
    isNested_ = nested && (*nested)->present != 0;

    registry_.setLastWindowClosed([this](std::int32_t pid) {
        if (pid >= 0) return;  // a process may live on without windows
        applications_.forget(pid);
        if (observer_.applicationTerminated) observer_.applicationTerminated(pid);
    });
    registry_.noteActive(activeWindow(deadline).value_or(XCB_WINDOW_NONE));
    getToKnowWindows(deadline);
    toldDisplays_ = displays();
    isNested_ |= std::ranges::any_of(toldDisplays_, [](const DisplayDescription& display) {
        return display.localizedName.starts_with(waylandServerMark);
    });
    handler_ = connection.handle([this](const xcb_generic_event_t& event) { handle(event); });
}

X11WindowSystem::~X11WindowSystem() = default;

std::expected<std::optional<std::uint32_t>, X11Failure> X11WindowSystem::rootItem(X11AtomName property,
                                                                                  std::uint32_t type,
                                                                                  Deadline deadline) const {
    const auto value = readProperty(
        connection_, requestProperty(connection_, connection_.root(), atoms_[property], x11_property_limit::numbers),
        deadline);
    if (!value) return std::unexpected(value.error());
    return decodeFirstItem(*value, type);
}

std::expected<std::vector<std::uint32_t>, X11Failure> X11WindowSystem::rootWindows(X11AtomName property,
                                                                                   Deadline deadline) const {
    const auto value = readProperty(
        connection_, requestProperty(connection_, connection_.root(), atoms_[property], x11_property_limit::windows),
        deadline);
    if (!value) return std::unexpected(value.error());
    auto windows = decodeWindowList(*value, XCB_ATOM_WINDOW);
    std::erase(windows, connection_.root());
    return windows;
}

std::optional<TrustProblem> X11WindowSystem::missingForTrust(Deadline deadline) {
    if (connection_.isLost()) return TrustProblem{AXError::cannotComplete, "The connection to the X server is lost."};
    if (isNested_) {
        return TrustProblem{AXError::apiDisabled,
                            "This is a Wayland session: through its X server the windows of other applications cannot "
                            "be moved."};
    }
    if (!windowManager_.isAlive(deadline)) {
        if (std::chrono::steady_clock::now() >= deadline)
            return TrustProblem{AXError::cannotComplete, "The X server does not answer."};
        return TrustProblem{AXError::apiDisabled,
                            "No window manager that follows the desktop's conventions (EWMH) is running."};
    }
    return std::nullopt;
}

std::expected<xcb_window_t, X11Failure> X11WindowSystem::activeWindow(Deadline deadline) const {
    const auto active = rootItem(X11AtomName::netActiveWindow, XCB_ATOM_WINDOW, deadline);
    if (!active) return std::unexpected(active.error());
    const xcb_window_t window = active->value_or(XCB_WINDOW_NONE);
    return window == connection_.root() ? xcb_window_t{XCB_WINDOW_NONE} : window;
}

/// The active window, or the one that was active before a panel or a menu took its place.
std::optional<WindowID> X11WindowSystem::effectiveActiveWindow(Deadline deadline) {
    const xcb_window_t active = activeWindow(deadline).value_or(XCB_WINDOW_NONE);
    if (active != XCB_WINDOW_NONE) {
        const auto facts = readWindowFacts(connection_, atoms_, active, deadline);
        if (facts && facts->isOrdinary()) {
            registry_.noteActive(active);
            return registry_.identify(active);
        }
    }
    const auto listed = rootWindows(X11AtomName::netClientList, deadline);
    if (!listed) return std::nullopt;
    for (const WindowID window : registry_.byActivity()) {
        if (std::ranges::count(*listed, window.number) == 0) continue;
        const auto facts = readWindowFacts(connection_, atoms_, window.number, deadline);
        if (facts && facts->isOrdinary() && facts->viewable && isOnCurrentDesktop(window.number, *facts, deadline))
            return window;
    }
    return std::nullopt;
}

bool X11WindowSystem::isOnCurrentDesktop(xcb_window_t window, const X11WindowFacts& facts, Deadline deadline) const {
    if (windowManager_.showsSeveralDesktops()) return facts.viewable;
    const auto desktop = decodeFirstItem(
        readPropertyNow(connection_, window, atoms_[X11AtomName::netWMDesktop], x11_property_limit::numbers, deadline),
        XCB_ATOM_CARDINAL);
    const auto current = rootItem(X11AtomName::netCurrentDesktop, XCB_ATOM_CARDINAL, deadline);
    return isOnDesktop(desktop, current.value_or(std::nullopt));
}

std::optional<RunningApplication> X11WindowSystem::frontmostApplication() {
    const Deadline deadline = queryDeadline();
    const auto window = effectiveActiveWindow(deadline);
    if (!window) return std::nullopt;
    const auto application = applications_.applicationOf(*window, deadline);
    return application ? std::optional(*application) : std::nullopt;
}

bool X11WindowSystem::hasApplication(std::int32_t pid, Deadline /*deadline*/) {
    if (pid < 0) return registry_.hasApplication(pid);
    processWatcher_.watch(pid);
    return processWatcher_.isRunning(pid);
}

std::expected<std::vector<WindowID>, AXError> X11WindowSystem::windows(std::int32_t pid, Deadline deadline) {
    auto listed = rootWindows(X11AtomName::netClientListStacking, deadline);
    if (listed && listed->empty()) listed = rootWindows(X11AtomName::netClientList, deadline);
    if (!listed) return std::unexpected(asAXError(listed.error()));
    std::vector<WindowID> windows;
    for (const xcb_window_t number : std::views::reverse(*listed)) {
        const WindowID window = registry_.identify(number);
        const auto application = applications_.applicationOf(window, deadline);
        if (!application || application->pid != pid) continue;
        const auto facts = readWindowFacts(connection_, atoms_, number, deadline);
        if (facts && !facts->overrideRedirect && isOnCurrentDesktop(number, *facts, deadline))
            windows.push_back(window);
    }
    if (std::chrono::steady_clock::now() >= deadline || connection_.isLost())
        return std::unexpected(AXError::cannotComplete);
    return windows;
}

std::expected<WindowID, AXError> X11WindowSystem::focusedWindow(std::int32_t pid, Deadline deadline) {
    const auto active = activeWindow(deadline);
    if (!active) return std::unexpected(asAXError(active.error()));
    if (*active == XCB_WINDOW_NONE) return std::unexpected(AXError::noValue);
    const WindowID window = registry_.identify(*active);
    const auto application = applications_.applicationOf(window, deadline);
    if (!application && application.error() != X11Failure::error)
        return std::unexpected(asAXError(application.error()));
    if (!application || application->pid != pid) return std::unexpected(AXError::noValue);
    return window;
}

std::expected<WindowID, AXError> X11WindowSystem::mainWindow(std::int32_t pid, Deadline deadline) {
    const auto windows = this->windows(pid, deadline);
    if (!windows) return std::unexpected(windows.error());
    if (windows->empty()) return std::unexpected(AXError::noValue);
    std::optional<WindowID> mostRecent;
    for (const WindowID window : *windows) {
        if (registry_.lastActive(window) <= (mostRecent ? registry_.lastActive(*mostRecent) : 0)) continue;
        const auto facts = readWindowFacts(connection_, atoms_, window.number, deadline);
        if (facts && facts->type == X11WindowType::normal) mostRecent = window;
    }
    return mostRecent.value_or(windows->front());
}

std::expected<X11WindowFacts, AXError> X11WindowSystem::factsOf(WindowID window, Reading reading, Deadline deadline) {
    if (connection_.isLost()) return std::unexpected(AXError::cannotComplete);
    if (!registry_.isCurrent(window)) return std::unexpected(AXError::invalidElement);
    auto facts = writer_.facts(window.number, reading, deadline);
    // The window may have gone meanwhile and its number belong to another one already.
    if (!registry_.isCurrent(window)) return std::unexpected(AXError::invalidElement);
    return facts;
}

Rect X11WindowSystem::inAccessibilitySpace(const Rect& root, Deadline deadline) {
    const Point origin = monitors_.origin(deadline);
    return {root.x - origin.x, root.y - origin.y, root.width, root.height};
}

std::expected<WindowAttributes, AXError> X11WindowSystem::attributes(WindowID window, Reading reading,
                                                                     Deadline deadline) {
    const auto facts = factsOf(window, reading, deadline);
    if (!facts) return std::unexpected(facts.error());
    const bool isPlaceable = !facts->fullScreen && !facts->overrideRedirect;
    return WindowAttributes{.role = roleOf(*facts),
                            .subrole = subroleOf(*facts),
                            .minimized = facts->isMinimized(),
                            .fullScreen = facts->fullScreen,
                            .positionSettable = isPlaceable && facts->allowsMove,
                            .sizeSettable = isPlaceable && facts->allowsResize,
                            .frame = inAccessibilitySpace(facts->geometry.visible(), deadline)};
}

std::expected<void, AXError> X11WindowSystem::checkMovable(WindowID window, Deadline deadline) {
    if (isNested_) return std::unexpected(AXError::apiDisabled);
    const auto attributes = this->attributes(window, Reading::atOnce, deadline);
    if (!attributes) return std::unexpected(attributes.error());
    if (!attributes->positionSettable) return std::unexpected(AXError::attributeUnsupported);
    if (writer_.isWaitingForWindowManager() || !windowManager_.isAlive(deadline))
        return std::unexpected(AXError::cannotComplete);
    return {};
}

std::expected<Rect, AXError> X11WindowSystem::setFrame(WindowID window, const Rect& frame, Deadline deadline) {
    if (isNested_) return std::unexpected(AXError::apiDisabled);
    if (!registry_.isCurrent(window)) return std::unexpected(AXError::invalidElement);
    if (!windowManager_.isAlive(deadline)) return std::unexpected(AXError::cannotComplete);
    const Point origin = monitors_.origin(deadline);
    const Rect visible{frame.x + origin.x, frame.y + origin.y, frame.width, frame.height};
    const auto settled = writer_.place(window.number, visible, deadline);
    // As after reading: what answered may be another window under the same number.
    if (!registry_.isCurrent(window)) return std::unexpected(AXError::invalidElement);
    if (!settled) return std::unexpected(settled.error());
    return inAccessibilitySpace(*settled, deadline);
}

std::vector<DisplayDescription> X11WindowSystem::displays() {
    return displays(queryDeadline());
}

std::vector<DisplayDescription> X11WindowSystem::displays(Deadline deadline) {
    const bool showsOneDesktop = windowManager_.isAlive(deadline) && !windowManager_.showsSeveralDesktops();
    return monitors_.displays(showsOneDesktop, deadline);
}

void X11WindowSystem::handle(const xcb_generic_event_t& event) {
    if (monitors_.concerns(event)) checkDisplaysSoon();
    if (eventType(event) != XCB_PROPERTY_NOTIFY || isSentEvent(event)) return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == connection_.root()) handleRootProperty(change.atom);
}

void X11WindowSystem::handleRootProperty(xcb_atom_t property) {
    if (property == atoms_[X11AtomName::netSupportingWMCheck]) writer_.windowManagerChanged();
    const bool concernsWindows =
        property == atoms_[X11AtomName::netActiveWindow] || property == atoms_[X11AtomName::netClientList];
    // Changes come in bursts, and a burst is looked at once.
    if (!concernsWindows || std::exchange(looksAtWindows_, true)) return;
    windowsLook_ = runLoop_.after(Duration::zero(), [this] { lookAtWindows(); });
}

void X11WindowSystem::lookAtWindows() {
    looksAtWindows_ = false;
    const Deadline deadline = queryDeadline();
    registry_.noteActive(activeWindow(deadline).value_or(XCB_WINDOW_NONE));
    getToKnowWindows(deadline);
}

/// Every window and its application are known from the beginning: a later window with the same number is told from it,
/// the end of any application is noticed, and a press finds the answers ready.
void X11WindowSystem::getToKnowWindows(Deadline deadline) {
    const auto listed = rootWindows(X11AtomName::netClientList, deadline);
    if (!listed) return;
    for (const xcb_window_t window : *listed) {
        [[maybe_unused]] const auto application = applications_.applicationOf(registry_.identify(window), deadline);
    }
}

void X11WindowSystem::checkDisplaysSoon() {
    // From the first change of a burst on, so that one without end cannot keep it from being told.
    checkDisplaysIn(displaysSettle);
}

void X11WindowSystem::checkDisplaysIn(Duration delay) {
    if (std::exchange(checksDisplays_, true)) return;
    displaysCheck_ = runLoop_.after(delay, [this] { checkDisplays(); });
}

void X11WindowSystem::checkDisplays() {
    checksDisplays_ = false;
    const Deadline deadline = queryDeadline();
    auto current = displays(deadline);
    const bool isCertain = std::chrono::steady_clock::now() < deadline;
    if (!isCertain) checkDisplaysIn(displaysRetry);
    if (connection_.isLost() || current == toldDisplays_) return;
    toldDisplays_ = std::move(current);
    if (observer_.displaysChanged) observer_.displaysChanged();
}

}  // namespace velmorand
