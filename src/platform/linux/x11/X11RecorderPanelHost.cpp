#include "platform/linux/x11/X11RecorderPanelHost.h"

#include "platform/linux/x11/X11PropertyReader.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

/// Bounds everything that is asked before a panel is shown.
constexpr std::chrono::milliseconds queryTimeout{500};

bool holds(const Rect& rect, const Point& point) {
    return point.x >= rect.minX() && point.x < rect.maxX() && point.y >= rect.minY() && point.y < rect.maxY();
}

}  // namespace

std::expected<std::unique_ptr<X11RecorderPanelHost>, std::string> X11RecorderPanelHost::create(
    X11Connection& connection, X11Keyboard& keyboard, RunLoop& runLoop, SessionLock& sessionLock, Log& log,
    RecorderPainter painter) {
    const auto atoms = X11Atoms::intern(connection, std::chrono::steady_clock::now() + X11Connection::startTimeout);
    if (!atoms) return std::unexpected("The X server does not answer.");
    return std::unique_ptr<X11RecorderPanelHost>(
        new X11RecorderPanelHost(connection, keyboard, runLoop, sessionLock, log, std::move(painter), *atoms));
}

X11RecorderPanelHost::X11RecorderPanelHost(X11Connection& connection, X11Keyboard& keyboard, RunLoop& runLoop,
                                           SessionLock& sessionLock, Log& log, RecorderPainter painter,
                                           const X11Atoms& atoms)
    : connection_(connection),
      atoms_(atoms),
      windowManager_(connection, atoms_),
      monitors_(connection, atoms_),
      services_{.connection = connection,
                .runLoop = runLoop,
                .atoms = atoms_,
                .keyboard = keyboard,
                .windowManager = windowManager_,
                .sessionLock = sessionLock,
                .logger = Logger(log, "shortcuts"),
                .painter = std::move(painter)} {}

X11RecorderPanelHost::~X11RecorderPanelHost() = default;

void X11RecorderPanelHost::show(RecorderPanelContent content, RecorderPanelEvents events) {
    close();
    const Rect area = areaForPanel(std::chrono::steady_clock::now() + queryTimeout);
    panel_ = std::make_unique<X11RecorderPanel>(services_, area, content, std::move(events));
}

void X11RecorderPanelHost::update(RecorderPanelContent content) {
    if (panel_) panel_->update(content);
}

void X11RecorderPanelHost::close() {
    panel_.reset();
}

/// What panels leave free of the display where the user works, in root coordinates.
Rect X11RecorderPanelHost::areaForPanel(Deadline deadline) {
    const std::vector<DisplayDescription> displays = monitors_.displays(true, deadline);
    if (displays.empty()) {
        return {0, 0, static_cast<double>(connection_.screen().width_in_pixels),
                static_cast<double>(connection_.screen().height_in_pixels)};
    }
    const Point origin = monitors_.origin(deadline);
    const double primaryHeight = displays.front().frame.height;
    // Back from the window server's coordinates, whose origin is the primary's bottom-left corner.
    const auto inRoot = [&](const Rect& rect) {
        return Rect{origin.x + rect.minX(), origin.y + primaryHeight - rect.maxY(), rect.width, rect.height};
    };
    const Point point = whereTheUserWorks(deadline);
    const auto found = std::ranges::find_if(
        displays, [&](const DisplayDescription& display) { return holds(inRoot(display.frame), point); });
    return inRoot((found == displays.end() ? displays.front() : *found).visibleFrame);
}

/// The middle of the active window, else the pointer.
Point X11RecorderPanelHost::whereTheUserWorks(Deadline deadline) const {
    const auto active =
        decodeFirstItem(readPropertyNow(connection_, connection_.root(), atoms_[X11AtomName::netActiveWindow],
                                        x11_property_limit::numbers, deadline),
                        XCB_ATOM_WINDOW);
    const xcb_window_t window = active.value_or(XCB_WINDOW_NONE);
    const auto positionRequest = xcb_translate_coordinates(connection_.raw(), window, connection_.root(), 0, 0);
    const auto sizeRequest = xcb_get_geometry(connection_.raw(), window);
    const auto pointerRequest = xcb_query_pointer(connection_.raw(), connection_.root());
    const auto position = connection_.reply<xcb_translate_coordinates_reply_t>(positionRequest, deadline);
    const auto size = connection_.reply<xcb_get_geometry_reply_t>(sizeRequest, deadline);
    const auto pointer = connection_.reply<xcb_query_pointer_reply_t>(pointerRequest, deadline);
    if (position && size && window != connection_.root())
        return {(*position)->dst_x + (*size)->width / 2.0, (*position)->dst_y + (*size)->height / 2.0};
    if (pointer) return {static_cast<double>((*pointer)->root_x), static_cast<double>((*pointer)->root_y)};
    return {};
}

}  // namespace velmorand
