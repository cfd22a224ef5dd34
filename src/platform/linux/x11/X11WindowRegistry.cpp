#include "platform/linux/x11/X11WindowRegistry.h"

#include <algorithm>
#include <utility>

namespace velmorand {

X11WindowRegistry::X11WindowRegistry(X11Connection& connection)
    : connection_(connection),
      listener_(connection.listen([this](const xcb_generic_event_t& event) { drop(event); })),
      handler_(connection.handle([this](const xcb_generic_event_t&) { tellOfClosedApplications(); })) {}

WindowID X11WindowRegistry::identify(xcb_window_t window) {
    connection_.takeInEvents();
    const auto [record, isNew] = records_.try_emplace(window);
    if (isNew) {
        record->second.serial = ++lastSerial_;
        connection_.requestEvents(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    return {window, record->second.serial};
}

const X11WindowRegistry::Record* X11WindowRegistry::find(WindowID id) const {
    const auto found = records_.find(id.number);
    return found != records_.end() && found->second.serial == id.serial ? &found->second : nullptr;
}

bool X11WindowRegistry::isCurrent(WindowID id) const {
    connection_.takeInEvents();
    return find(id) != nullptr;
}

void X11WindowRegistry::noteActive(xcb_window_t window) {
    if (window == XCB_WINDOW_NONE) return;
    static_cast<void>(identify(window));
    const auto record = records_.find(window);
    if (record != records_.end()) record->second.lastActive = ++activations_;
}

std::uint64_t X11WindowRegistry::lastActive(WindowID id) const {
    const Record* record = find(id);
    return record == nullptr ? 0 : record->lastActive;
}

std::vector<WindowID> X11WindowRegistry::byActivity() const {
    std::vector<WindowID> windows;
    for (const auto& [window, record] : records_) {
        if (record.lastActive > 0) windows.push_back({window, record.serial});
    }
    std::ranges::sort(windows, std::greater{}, [this](WindowID id) { return lastActive(id); });
    return windows;
}

const RunningApplication* X11WindowRegistry::application(WindowID id) const {
    const Record* record = find(id);
    return record == nullptr || !record->application ? nullptr : &*record->application;
}

void X11WindowRegistry::setApplication(WindowID id, RunningApplication application) {
    const auto found = records_.find(id.number);
    if (found != records_.end() && found->second.serial == id.serial)
        found->second.application = std::move(application);
}

bool X11WindowRegistry::hasApplication(std::int32_t pid) const {
    return std::ranges::any_of(records_, [pid](const auto& entry) {
        return entry.second.application && entry.second.application->pid == pid;
    });
}

void X11WindowRegistry::drop(const xcb_generic_event_t& event) {
    if (eventType(event) == 0) {
        // A window that was gone when its events were asked for: nothing would tell of its end any more.
        const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
        if (error.major_code == XCB_CHANGE_WINDOW_ATTRIBUTES) records_.erase(error.resource_id);
        return;
    }
    if (eventType(event) != XCB_DESTROY_NOTIFY || isSentEvent(event)) return;
    const auto window = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
    const auto node = records_.extract(window);
    if (node.empty()) return;
    if (const auto& application = node.mapped().application) closed_.push_back(application->pid);
}

void X11WindowRegistry::tellOfClosedApplications() {
    for (const std::int32_t pid : std::exchange(closed_, {})) {
        if (!hasApplication(pid) && lastWindowClosed_) lastWindowClosed_(pid);
    }
}

}  // namespace velmorand
