#pragma once

#include "base/Rect.h"
#include "platform/Accessibility.h"
#include "platform/Logger.h"
#include "windows/WindowOperationError.h"

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// How long another application may take to answer, in seconds.
inline constexpr double accessibilityMessagingTimeout = 0.75;

/// What came of setting a window's frame.
struct FrameOutcome {
    Rect requested;
    /// The frame read back at the end; absent when it could not be read.
    std::optional<Rect> final;
    /// Whether the final frame is the requested one within the frame tolerance.
    bool landed = false;

    bool operator==(const FrameOutcome&) const = default;
};

/// The only place that talks to other applications' windows: finds the window to act on, reads its frame, writes
/// position and size, and verifies that the window arrived. Frames are in the accessibility space.
/// It keeps no state. Main thread only; every call is bounded by the messaging timeout.
class AXWindowClient {
public:
    AXWindowClient(Accessibility& accessibility, Log& log) : accessibility_(accessibility), logger_(log, "ax") {}

    AXWindowClient(const AXWindowClient&) = delete;
    AXWindowClient& operator=(const AXWindowClient&) = delete;
    ~AXWindowClient() = default;

    /// Fails with `noFocusedWindow` when the attribute cannot be read or is not an element.
    [[nodiscard]] std::expected<AXElement, WindowOperationError> elementAttribute(std::string_view attribute,
                                                                                  const AXElement& element) const;
    [[nodiscard]] std::optional<std::string> stringAttribute(std::string_view attribute,
                                                             const AXElement& element) const;
    [[nodiscard]] bool booleanAttribute(std::string_view attribute, const AXElement& element,
                                        bool defaultValue = false) const;
    /// Fails with `missingWindowFrame` when the attribute is missing or of another type.
    [[nodiscard]] std::expected<AXBoxedValue, WindowOperationError> valueAttribute(std::string_view attribute,
                                                                                   AXValueType type,
                                                                                   const AXElement& element) const;
    /// The application's windows, front to back; empty when they cannot be read.
    [[nodiscard]] std::vector<AXElement> windowList(const AXElement& application) const;

    /// Whether the window can be arranged: a window by its role, neither minimised nor full screen, its position
    /// and size settable.
    [[nodiscard]] bool isEligibleWindow(const AXElement& window) const;

    /// The window to act on: the focused one, else the main one, else the first standard one of the window list,
    /// else the largest, of those that are eligible. Fails with `noFocusedWindow` when there is none.
    [[nodiscard]] std::expected<AXElement, WindowOperationError> focusedWindow(const AXElement& application) const;

    /// Fails with `missingWindowFrame` when it cannot be read or has no area.
    [[nodiscard]] std::expected<Rect, WindowOperationError> readFrame(const AXElement& window) const;

    [[nodiscard]] bool canSetFrame(const AXElement& window) const;

    [[nodiscard]] std::expected<void, WindowOperationError> setPosition(const AXElement& window, Point position) const;
    [[nodiscard]] std::expected<void, WindowOperationError> setSize(const AXElement& window, Size size) const;

    /// Writes position and size, reads the frame back and writes once more when it did not land.
    [[nodiscard]] std::expected<FrameOutcome, WindowOperationError> setFrame(const AXElement& window,
                                                                             const Rect& frame) const;

private:
    [[nodiscard]] bool isSettable(std::string_view attribute, const AXElement& element) const;
    [[nodiscard]] std::optional<AXElement> eligible(std::string_view attribute, const AXElement& application) const;
    [[nodiscard]] std::expected<AXElement, WindowOperationError> windowFromList(const AXElement& application) const;
    [[nodiscard]] double area(const AXElement& window) const;
    [[nodiscard]] std::expected<void, WindowOperationError> writeFrame(const AXElement& window,
                                                                       const Rect& frame) const;
    [[nodiscard]] std::expected<void, WindowOperationError> write(const AXElement& window, std::string_view attribute,
                                                                  std::variant<Point, Size> value,
                                                                  std::string_view noun, std::string_view verb) const;

    Accessibility& accessibility_;
    Logger logger_;
};

}  // namespace velmorand
