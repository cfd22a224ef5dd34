#pragma once

#include "base/Rect.h"
#include "base/ThreadChecker.h"
#include "windows/ManagedScreen.h"
#include "windows/TargetFrame.h"
#include "windows/WindowAction.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmorand {

class Displays;

/// The order in which "next display" and "previous display" step through the screens.
enum class DisplayTraversalOrder : std::uint8_t { spatialLeftToRightTopToBottom };

/// Turns the platform's displays into screens in the accessibility space. It keeps no cache: every call reads the
/// displays afresh. Main thread only.
class ScreenGeometryProvider {
public:
    explicit ScreenGeometryProvider(
        Displays& displays, DisplayTraversalOrder traversalOrder = DisplayTraversalOrder::spatialLeftToRightTopToBottom)
        : traversalOrder_(traversalOrder), displays_(displays) {}

    ScreenGeometryProvider(const ScreenGeometryProvider&) = delete;
    ScreenGeometryProvider& operator=(const ScreenGeometryProvider&) = delete;
    ~ScreenGeometryProvider() = default;

    [[nodiscard]] DisplayTraversalOrder traversalOrder() const { return traversalOrder_; }

    /// The screens in traversal order; empty when there is no display. A display without a number is left out.
    [[nodiscard]] std::vector<ManagedScreen> screens() const;

    /// The frame `action` gives a window whose frame is `current`, among the screens there are now; absent when
    /// there is no target.
    [[nodiscard]] std::optional<Rect> targetFrame(WindowAction action, const Rect& current,
                                                  const LayoutOptions& options) const;

private:
    DisplayTraversalOrder traversalOrder_;
    Displays& displays_;
    ThreadChecker thread_;
};

}  // namespace velmorand
