#include "platform/linux/support/FakeWindowSystem.h"

#include <algorithm>
#include <ostream>

namespace velmorand {

void PrintTo(const FrameWrite& write, std::ostream* out) {
    *out << "window " << write.window.number << " (serial " << write.window.serial << ") to " << describe(write.frame);
}

WindowID FakeWindowSystem::open(std::int32_t pid, const Rect& frame) {
    return add(++lastNumber_, pid, frame);
}

WindowID FakeWindowSystem::openWithNumberOf(WindowID closed, std::int32_t pid, const Rect& frame) {
    return add(closed.number, pid, frame);
}

WindowID FakeWindowSystem::add(std::uint32_t number, std::int32_t pid, const Rect& frame) {
    Window window;
    window.pid = pid;
    window.serial = ++lastSerial_;
    window.attributes = {.role = "AXWindow",
                         .subrole = "AXStandardWindow",
                         .positionSettable = true,
                         .sizeSettable = true,
                         .frame = frame};
    windows_.insert_or_assign(number, window);
    frontToBack_.insert(frontToBack_.begin(), number);
    return {number, window.serial};
}

void FakeWindowSystem::close(WindowID window) {
    windows_.erase(window.number);
    std::erase(frontToBack_, window.number);
    if (focused == window) focused.reset();
}

std::optional<TrustProblem> FakeWindowSystem::missingForTrust(Deadline deadline) {
    deadlines_.push_back(deadline);
    return missing;
}

bool FakeWindowSystem::hasApplication(std::int32_t pid, Deadline deadline) {
    deadlines_.push_back(deadline);
    return std::ranges::any_of(windows_, [pid](const auto& entry) { return entry.second.pid == pid; });
}

std::expected<std::vector<WindowID>, AXError> FakeWindowSystem::windows(std::int32_t pid, Deadline deadline) {
    deadlines_.push_back(deadline);
    std::vector<WindowID> found;
    for (const std::uint32_t number : frontToBack_) {
        const Window& window = windows_.at(number);
        if (window.pid == pid) found.push_back({number, window.serial});
    }
    return found;
}

std::expected<WindowID, AXError> FakeWindowSystem::focusedWindow(std::int32_t pid, Deadline deadline) {
    deadlines_.push_back(deadline);
    if (!focused || window(*focused).pid != pid) return std::unexpected(AXError::noValue);
    return *focused;
}

std::expected<WindowID, AXError> FakeWindowSystem::mainWindow(std::int32_t pid, Deadline deadline) {
    const auto found = windows(pid, deadline);
    if (found->empty()) return std::unexpected(AXError::noValue);
    return found->front();
}

std::expected<WindowAttributes, AXError> FakeWindowSystem::attributes(WindowID window, Reading /*reading*/,
                                                                      Deadline deadline) {
    deadlines_.push_back(deadline);
    const auto found = living(window);
    if (!found) return std::unexpected(found.error());
    return (*found)->attributes;
}

std::expected<void, AXError> FakeWindowSystem::checkMovable(WindowID window, Deadline deadline) {
    deadlines_.push_back(deadline);
    const auto found = movable(window);
    if (!found) return std::unexpected(found.error());
    return {};
}

std::expected<Rect, AXError> FakeWindowSystem::setFrame(WindowID window, const Rect& frame, Deadline deadline) {
    deadlines_.push_back(deadline);
    if (whilePlacing) whilePlacing();
    const auto found = movable(window);
    if (!found) return std::unexpected(found.error());
    if ((*found)->placingFailure) return std::unexpected(*(*found)->placingFailure);
    writes_.push_back({window, frame});
    (*found)->attributes.frame = frame;
    return frame;
}

std::expected<FakeWindowSystem::Window*, AXError> FakeWindowSystem::living(WindowID window) {
    const auto found = windows_.find(window.number);
    if (found == windows_.end() || found->second.serial != window.serial)
        return std::unexpected(AXError::invalidElement);
    if (found->second.failure) return std::unexpected(*found->second.failure);
    return &found->second;
}

std::expected<FakeWindowSystem::Window*, AXError> FakeWindowSystem::movable(WindowID window) {
    const auto found = living(window);
    if (!found) return found;
    const WindowAttributes& attributes = (*found)->attributes;
    if (attributes.fullScreen || !attributes.positionSettable) return std::unexpected(AXError::attributeUnsupported);
    return found;
}

}  // namespace velmorand
