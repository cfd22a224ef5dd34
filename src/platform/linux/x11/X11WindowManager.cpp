#include "platform/linux/x11/X11WindowManager.h"

#include "platform/linux/x11/X11PropertyReader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmorand {
namespace {

constexpr std::size_t longestName = 256;

/// These advertise the message, but one gets a size or a position wrong by its decorations and the other does nothing.
constexpr std::array<std::string_view, 2> withUnusableMessage{"Fluxbox", "herbstluftwm"};

/// These number the desktops of all displays in one row and call one of them the current one.
constexpr std::array<std::string_view, 3> withADesktopOnEachDisplay{"awesome", "herbstluftwm", "i3"};

}  // namespace

X11PlacementMethod otherThan(X11PlacementMethod method) {
    switch (method) {
        case X11PlacementMethod::moveResizeMessage: return X11PlacementMethod::configureRequest;
        case X11PlacementMethod::configureRequest: return X11PlacementMethod::moveResizeMessage;
    }
    std::unreachable();
}

X11PlacementMethod placementMethodFor(std::string_view name, bool advertisesMessage) {
    const bool isUsable = advertisesMessage && std::ranges::count(withUnusableMessage, name) == 0;
    return isUsable ? X11PlacementMethod::moveResizeMessage : X11PlacementMethod::configureRequest;
}

bool showsSeveralDesktops(std::string_view name) {
    return std::ranges::count(withADesktopOnEachDisplay, name) > 0;
}

X11WindowManager::X11WindowManager(X11Connection& connection, const X11Atoms& atoms)
    : connection_(connection),
      atoms_(atoms),
      listener_(connection.listen([this](const xcb_generic_event_t& event) { note(event); })) {}

/// The properties of a dead window manager stay on the root window; only its own window goes. Once that window was
/// found alive, the event of its end is enough.
bool X11WindowManager::isAlive(Deadline deadline) {
    connection_.takeInEvents();
    if (checkWindow_ != XCB_WINDOW_NONE && knowsAbilities_) return true;
    const auto checkWindow = findCheckWindow(deadline);
    if (!checkWindow) return false;
    checkWindow_ = *checkWindow;  // from here on its end is listened for
    knowsAbilities_ = true;       // an event during the reading sets it back
    connection_.requestEvents(checkWindow_, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    if (!readAbilities(deadline)) checkWindow_ = XCB_WINDOW_NONE;  // also when no answer came: it is asked for again
    return checkWindow_ != XCB_WINDOW_NONE;
}

std::optional<xcb_window_t> X11WindowManager::findCheckWindow(Deadline deadline) {
    const auto window =
        decodeFirstItem(readPropertyNow(connection_, connection_.root(), atoms_[X11AtomName::netSupportingWMCheck],
                                        x11_property_limit::numbers, deadline),
                        XCB_ATOM_WINDOW);
    return window == connection_.root() ? std::nullopt : window;  // it would always name itself
}

/// False when the check window is none: gone, or another window that got its number.
bool X11WindowManager::readAbilities(Deadline deadline) {
    const xcb_window_t checkWindow = checkWindow_;
    const auto itself =
        decodeFirstItem(readPropertyNow(connection_, checkWindow, atoms_[X11AtomName::netSupportingWMCheck],
                                        x11_property_limit::numbers, deadline),
                        XCB_ATOM_WINDOW);
    if (itself != checkWindow || checkWindow_ != checkWindow) return false;
    const auto nameRequest =
        requestProperty(connection_, checkWindow, atoms_[X11AtomName::netWMName], x11_property_limit::text);
    const auto abilitiesRequest = requestProperty(connection_, connection_.root(), atoms_[X11AtomName::netSupported],
                                                  x11_property_limit::windows);
    const auto nameProperty = readProperty(connection_, nameRequest, deadline);
    const auto abilitiesProperty = readProperty(connection_, abilitiesRequest, deadline);
    if (!nameProperty || !abilitiesProperty) return false;

    const std::array textTypes{std::uint32_t{XCB_ATOM_STRING}, std::uint32_t{atoms_[X11AtomName::utf8String]}};
    const std::string name = decodeIdentifier(*nameProperty, textTypes, longestName).value_or("");
    const auto abilities = decodeItems(*abilitiesProperty, XCB_ATOM_ATOM);
    const bool listsAbilities = abilities && !abilities->empty();  // else nothing says what it cannot do
    const auto has = [&](X11AtomName ability) {
        return !listsAbilities || std::ranges::count(*abilities, atoms_[ability]) > 0;
    };
    showsSeveralDesktops_ = velmorand::showsSeveralDesktops(name);
    tellsFrameExtents_ = has(X11AtomName::netFrameExtents);
    maximizesWindows_ =
        has(X11AtomName::netWMStateMaximizedVertically) && has(X11AtomName::netWMStateMaximizedHorizontally);
    chooseMethod(name, has(X11AtomName::netMoveResizeWindow));
    return true;
}

/// What was learnt about a window manager stays as long as it is the same and says the same of itself.
void X11WindowManager::chooseMethod(std::string_view name, bool advertisesMessage) {
    Chosen current{checkWindow_, std::string(name), advertisesMessage};
    if (current == chosenFor_) return;
    chosenFor_ = std::move(current);
    method_ = placementMethodFor(name, advertisesMessage);
}

void X11WindowManager::note(const xcb_generic_event_t& event) {
    if (eventType(event) == XCB_DESTROY_NOTIFY && !isSentEvent(event)) {
        const xcb_window_t gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
        if (gone == checkWindow_) checkWindow_ = XCB_WINDOW_NONE;
        if (gone == chosenFor_.checkWindow) chosenFor_ = {};
    }
    if (eventType(event) != XCB_PROPERTY_NOTIFY) return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == checkWindow_ && change.atom == atoms_[X11AtomName::netWMName]) knowsAbilities_ = false;
    if (change.window != connection_.root()) return;
    if (change.atom == atoms_[X11AtomName::netSupportingWMCheck]) checkWindow_ = XCB_WINDOW_NONE;
    if (change.atom == atoms_[X11AtomName::netSupported]) knowsAbilities_ = false;
}

}  // namespace velmorand
