#include "desktop/harness/XObserver.h"

#include "desktop/harness/Screenshot.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmorand::desktop {

namespace {

constexpr std::chrono::milliseconds longestTimeBetweenLooks{20};
/// A frame counts as settled when it did not change for this long: longer than a window manager needs for a second
/// thought, and than a toolkit needs to announce its shadow anew.
constexpr std::chrono::milliseconds settlingTime{60};

bool contains(const std::vector<std::uint32_t>& atoms, xcb_atom_t atom) {
    return std::ranges::find(atoms, atom) != atoms.end();
}

std::string listed(const std::vector<ClientWindow>& windows) {
    std::string text;
    for (const auto& window : windows) text += fmt::format(" '{}'", window.title);
    return text.empty() ? " none" : text;
}

}  // namespace

std::expected<XObserver, HarnessError> XObserver::connect(const std::string& displayName) {
    auto connection = XConnection::open(displayName);
    if (!connection) return std::unexpected(connection.error());
    connection->watch(connection->root());
    return XObserver(std::move(*connection));
}

std::vector<ClientWindow> XObserver::clients() {
    std::vector<ClientWindow> windows;
    for (const auto id : connection_.numbers(connection_.root(), "_NET_CLIENT_LIST")) {
        if (auto window = describe(id)) windows.push_back(std::move(*window));
    }
    return windows;
}

std::optional<ClientWindow> XObserver::describe(xcb_window_t window) {
    if (!clientRect(window)) return std::nullopt;
    ClientWindow description{.id = window};
    const auto utf8Title = connection_.text(window, "_NET_WM_NAME");
    description.title = utf8Title ? *utf8Title : connection_.text(window, "WM_NAME").value_or("");
    if (const auto pid = connection_.numbers(window, "_NET_WM_PID"); pid.size() == 1) description.pid = pid.front();
    const auto names = connection_.text(window, "WM_CLASS").value_or("");
    const auto end = names.find('\0');
    description.instanceName = names.substr(0, end);
    if (end != std::string::npos) description.className = names.substr(end + 1, names.find('\0', end + 1) - end - 1);
    return description;
}

std::expected<xcb_window_t, HarnessError> XObserver::findWindow(std::string_view title,
                                                                std::chrono::milliseconds timeout) {
    xcb_window_t found = XCB_WINDOW_NONE;
    std::vector<ClientWindow> seen;
    const bool isThere = waitUntil(
        [&] {
            seen = clients();
            const auto match = std::ranges::find(seen, title, &ClientWindow::title);
            if (match == seen.end() || !isViewable(match->id)) return false;
            found = match->id;
            return true;
        },
        timeout);
    if (isThere) return found;
    return std::unexpected(HarnessError{fmt::format("no window '{}'; listed:{}", title, listed(seen))});
}

std::optional<PixelRect> XObserver::visibleFrame(xcb_window_t window) {
    const auto client = clientRect(window);
    if (!client) return std::nullopt;
    const auto outside = frameExtents(window).value_or(Extents{});
    const auto inside = clientShadow(window).value_or(Extents{});
    const int left = client->x - outside.left + inside.left;
    const int top = client->y - outside.top + inside.top;
    const int right = client->right() + outside.right - inside.right;
    const int bottom = client->bottom() + outside.bottom - inside.bottom;
    return PixelRect{left, top, right - left, bottom - top};
}

std::optional<PixelRect> XObserver::clientRect(xcb_window_t window) {
    auto* raw = connection_.raw();
    const auto geometry = connection_.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(raw, window));
    const auto origin = connection_.reply<xcb_translate_coordinates_reply_t>(
        xcb_translate_coordinates(raw, window, connection_.root(), 0, 0));
    if (!geometry || !origin) return std::nullopt;
    return PixelRect{origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

std::optional<Extents> XObserver::frameExtents(xcb_window_t window) {
    constexpr std::string_view property = "_NET_FRAME_EXTENTS";
    if (const auto told = extents(window, property)) return told;
    return isSupported(property) ? std::nullopt : frameOutside(window);
}

std::optional<Extents> XObserver::clientShadow(xcb_window_t window) {
    return extents(window, "_GTK_FRAME_EXTENTS");
}

std::optional<Extents> XObserver::extents(xcb_window_t window, std::string_view property) {
    const auto values = connection_.numbers(window, property);
    if (values.size() != 4) return std::nullopt;
    return Extents{static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
                   static_cast<int>(values[3])};
}

std::optional<Extents> XObserver::frameOutside(xcb_window_t window) {
    const auto client = clientRect(window);
    xcb_window_t outermost = window;
    while (true) {
        const auto tree = connection_.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection_.raw(), outermost));
        if (!tree) return std::nullopt;
        if (tree->parent == XCB_WINDOW_NONE || tree->parent == tree->root) break;
        outermost = tree->parent;
    }
    const auto frame = clientRect(outermost);
    if (!client || !frame || outermost == window) return std::nullopt;
    return Extents{client->x - frame->x, frame->right() - client->right(), client->y - frame->y,
                   frame->bottom() - client->bottom()};
}

WindowStates XObserver::states(xcb_window_t window) {
    const auto atoms = connection_.numbers(window, "_NET_WM_STATE");
    const auto has = [&](std::string_view name) { return contains(atoms, connection_.atom(name)); };
    return {.maximizedHorizontally = has("_NET_WM_STATE_MAXIMIZED_HORZ"),
            .maximizedVertically = has("_NET_WM_STATE_MAXIMIZED_VERT"),
            .fullscreen = has("_NET_WM_STATE_FULLSCREEN"),
            .hidden = has("_NET_WM_STATE_HIDDEN"),
            .shaded = has("_NET_WM_STATE_SHADED"),
            .focused = has("_NET_WM_STATE_FOCUSED")};
}

bool XObserver::isViewable(xcb_window_t window) {
    const auto attributes =
        connection_.reply<xcb_get_window_attributes_reply_t>(xcb_get_window_attributes(connection_.raw(), window));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::optional<SizeSteps> XObserver::sizeSteps(xcb_window_t window) {
    constexpr std::uint32_t resizeIncrements = 1U << 6U;
    const auto hints = connection_.numbers(window, "WM_NORMAL_HINTS");
    if (hints.size() < 11 || (hints[0] & resizeIncrements) == 0) return std::nullopt;
    return SizeSteps{static_cast<int>(hints[9]), static_cast<int>(hints[10])};
}

SizeLimits XObserver::sizeLimits(xcb_window_t window) {
    constexpr std::uint32_t hasMinimum = 1U << 4U;
    constexpr std::uint32_t hasMaximum = 1U << 5U;
    SizeLimits limits;
    const auto hints = connection_.numbers(window, "WM_NORMAL_HINTS");
    if (hints.size() < 9) return limits;
    if ((hints[0] & hasMinimum) != 0) {
        limits.minimumWidth = static_cast<int>(hints[5]);
        limits.minimumHeight = static_cast<int>(hints[6]);
    }
    if ((hints[0] & hasMaximum) != 0) {
        limits.maximumWidth = static_cast<int>(hints[7]);
        limits.maximumHeight = static_cast<int>(hints[8]);
    }
    return limits;
}

std::uint32_t XObserver::gravity(xcb_window_t window) {
    constexpr std::uint32_t hasGravity = 1U << 9U;
    const auto hints = connection_.numbers(window, "WM_NORMAL_HINTS");
    return hints.size() < 18 || (hints[0] & hasGravity) == 0 ? std::uint32_t{XCB_GRAVITY_NORTH_WEST} : hints[17];
}

std::optional<xcb_window_t> XObserver::activeWindow() {
    const auto values = connection_.numbers(connection_.root(), "_NET_ACTIVE_WINDOW");
    if (values.empty() || values.front() == XCB_WINDOW_NONE) return std::nullopt;
    return values.front();
}

std::vector<std::uint32_t> XObserver::reservedEdges() {
    // Some window managers do not list panels among the windows; these are in the tree, in a frame or without.
    auto candidates = connection_.numbers(connection_.root(), "_NET_CLIENT_LIST");
    for (const auto child : childrenOf(connection_.root())) {
        candidates.push_back(child);
        std::ranges::copy(childrenOf(child), std::back_inserter(candidates));
    }
    for (const auto id : candidates) {
        auto strut = connection_.numbers(id, "_NET_WM_STRUT_PARTIAL");
        const bool reserves =
            strut.size() == 12 && std::any_of(strut.begin(), strut.begin() + 4, [](auto edge) { return edge > 0; });
        if (reserves && isViewable(id)) return strut;
    }
    return {};
}

std::vector<xcb_window_t> XObserver::childrenOf(xcb_window_t window) {
    const auto tree = connection_.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection_.raw(), window));
    if (!tree) return {};
    const auto* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::optional<std::string> XObserver::windowManagerName() {
    constexpr std::string_view check = "_NET_SUPPORTING_WM_CHECK";
    const auto named = connection_.numbers(connection_.root(), check);
    if (named.size() != 1) return std::nullopt;
    // The property of the root window outlives its window manager; only the check window's own tells that it lives.
    if (connection_.numbers(named.front(), check) != named) return std::nullopt;
    return connection_.text(named.front(), "_NET_WM_NAME");
}

bool XObserver::waitForWindowManager(std::chrono::milliseconds timeout) {
    // It gets the requests on every window, and lets those pass that it does not manage.
    const xcb_window_t window = xcb_generate_id(connection_.raw());
    xcb_create_window(connection_.raw(), XCB_COPY_FROM_PARENT, window, connection_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    std::uint32_t width = 1;
    const bool handled = waitUntil(
        [&] {
            const auto geometry =
                connection_.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(connection_.raw(), window));
            if (geometry && geometry->width > 1) return true;  // whichever of the requests it was
            ++width;
            xcb_configure_window(connection_.raw(), window, XCB_CONFIG_WINDOW_WIDTH, &width);
            return false;
        },
        timeout);
    xcb_destroy_window(connection_.raw(), window);
    return handled;
}

bool XObserver::isSupported(std::string_view atomName) {
    return contains(connection_.numbers(connection_.root(), "_NET_SUPPORTED"), connection_.atom(atomName));
}

bool XObserver::isComposited() {
    const auto owner = connection_.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection_.raw(), connection_.atom("_NET_WM_CM_S0")));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool XObserver::waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    const Deadline deadline(timeout);
    while (!condition()) {
        if (deadline.passed() || !connection_.isAlive()) return false;
        connection_.waitForEvent(std::min(deadline.remaining(), longestTimeBetweenLooks));
    }
    return true;
}

std::optional<PixelRect> XObserver::waitForSettledFrame(xcb_window_t window,
                                                        const std::function<bool(const PixelRect&)>& accepted,
                                                        std::chrono::milliseconds timeout) {
    connection_.watch(window);
    const Deadline deadline(timeout);
    std::optional<PixelRect> frame;
    bool settled = false;
    while (!settled && !deadline.passed()) {
        const auto isAccepted = [&] {
            frame = visibleFrame(window);
            return !frame || accepted(*frame);
        };
        waitUntil(isAccepted, deadline.remaining());
        const auto first = frame;
        const auto hasChanged = [&] {
            frame = visibleFrame(window);
            return frame != first;
        };
        settled = !frame || !waitUntil(hasChanged, std::min(settlingTime, deadline.remaining()));
    }
    return frame;
}

std::optional<PixelRect> XObserver::waitForSettledFrame(xcb_window_t window, const PixelRect& wanted, int tolerance,
                                                        std::chrono::milliseconds timeout) {
    const auto agrees = [&](const PixelRect& frame) { return framesAgree(frame, wanted, tolerance); };
    return waitForSettledFrame(window, agrees, timeout);
}

std::expected<void, HarnessError> XObserver::screenshot(const std::filesystem::path& file) {
    return saveScreenshot(connection_, file);
}

}  // namespace velmorand::desktop
