#pragma once

#include "platform/linux/WindowSystem.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

/// A frame that reached a window.
struct FrameWrite {
    WindowID window;
    Rect frame;

    bool operator==(const FrameWrite&) const = default;
};

void PrintTo(const FrameWrite& write, std::ostream* out);

/// A window system in memory. It keeps to the contract: windows come and go, numbers are used again under a new serial,
/// a window that is full screen or fixed refuses, and one that answers is where it was put.
class FakeWindowSystem final : public WindowSystem {
public:
    /// What can be set of a window; the rest of its attributes follows from it.
    struct Window {
        std::int32_t pid = 0;
        std::uint64_t serial = 0;
        WindowAttributes attributes;
        /// Fails every placing of it, but not the check before.
        std::optional<AXError> placingFailure;
        /// Fails every use of it.
        std::optional<AXError> failure;
    };

    /// Opens a movable window of an application in front of its others.
    WindowID open(std::int32_t pid, const Rect& frame);
    /// Opens a window that gets the number of one that was closed.
    WindowID openWithNumberOf(WindowID closed, std::int32_t pid, const Rect& frame);
    void close(WindowID window);
    /// The window must exist.
    [[nodiscard]] Window& window(WindowID window) { return windows_.at(window.number); }
    [[nodiscard]] Rect frameOf(WindowID id) { return window(id).attributes.frame; }

    /// Every frame that reached a window, in order.
    [[nodiscard]] const std::vector<FrameWrite>& writes() const { return writes_; }
    /// The deadlines that calls were given, in order.
    [[nodiscard]] const std::vector<Deadline>& deadlines() const { return deadlines_; }
    void clearDeadlines() { deadlines_.clear(); }
    [[nodiscard]] Observer& observer() { return observer_; }

    std::optional<TrustProblem> missing;
    std::optional<RunningApplication> frontmost;
    std::optional<WindowID> focused;
    std::vector<DisplayDescription> displayList;
    /// Called while a window is placed, if there is one.
    std::function<void()> whilePlacing;

    [[nodiscard]] std::optional<TrustProblem> missingForTrust(Deadline deadline) override;
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override { return frontmost; }
    [[nodiscard]] bool hasApplication(std::int32_t pid, Deadline deadline) override;
    [[nodiscard]] std::expected<std::vector<WindowID>, AXError> windows(std::int32_t pid, Deadline deadline) override;
    [[nodiscard]] std::expected<WindowID, AXError> focusedWindow(std::int32_t pid, Deadline deadline) override;
    [[nodiscard]] std::expected<WindowID, AXError> mainWindow(std::int32_t pid, Deadline deadline) override;
    [[nodiscard]] std::expected<WindowAttributes, AXError> attributes(WindowID window, Reading reading,
                                                                      Deadline deadline) override;
    [[nodiscard]] std::expected<void, AXError> checkMovable(WindowID window, Deadline deadline) override;
    [[nodiscard]] std::expected<Rect, AXError> setFrame(WindowID window, const Rect& frame, Deadline deadline) override;
    [[nodiscard]] std::vector<DisplayDescription> displays() override { return displayList; }
    void setObserver(Observer observer) override { observer_ = std::move(observer); }

private:
    WindowID add(std::uint32_t number, std::int32_t pid, const Rect& frame);
    [[nodiscard]] std::expected<Window*, AXError> living(WindowID window);
    [[nodiscard]] std::expected<Window*, AXError> movable(WindowID window);

    std::map<std::uint32_t, Window> windows_;
    std::vector<std::uint32_t> frontToBack_;
    std::uint32_t lastNumber_ = 0x400000;
    std::uint64_t lastSerial_ = 0;
    std::vector<FrameWrite> writes_;
    std::vector<Deadline> deadlines_;
    Observer observer_;
};

}  // namespace velmorand
