#pragma once

#include "base/Rect.h"
#include "platform/RunLoop.h"
#include "platform/simulated/SimulatedDesktop.h"

#include <cstdint>
#include <map>
#include <optional>

namespace velmorand::simulation {

/// Where a window was before an animated move that is not recorded yet.
struct ModelAnchor {
    std::int32_t pid = 0;
    Rect frame;
};

/// What has to be remembered of windows, so that they can be put back.
struct MemoryModel {
    struct Entry {
        std::int32_t pid = 0;
        Rect restoreFrame;
        Rect lastApplied;
        Date updatedAt;
    };

    std::map<SimulatedWindowID, Entry> entries;
    std::map<SimulatedWindowID, ModelAnchor> anchors;

    [[nodiscard]] bool hasEntry(std::int32_t pid) const;
    [[nodiscard]] std::optional<ModelAnchor> anchorOf(SimulatedWindowID window) const;
    void putBack(SimulatedWindowID window, const std::optional<ModelAnchor>& anchor);
    /// Only an anchor with exactly this frame.
    void dropAnchor(SimulatedWindowID window, const Rect& frame);
    /// The window was moved from `source` to `applied`.
    void record(std::int32_t pid, SimulatedWindowID window, const Rect& source, const Rect& applied, Date now);
    void forget(std::int32_t pid);
};

}  // namespace velmorand::simulation
