#include "simulation/MemoryModel.h"

#include "simulation/GeometryModel.h"

#include <algorithm>

namespace velmorand::simulation {

bool MemoryModel::hasEntry(std::int32_t pid) const {
    return std::ranges::any_of(entries, [pid](const auto& item) { return item.second.pid == pid; });
}

std::optional<ModelAnchor> MemoryModel::anchorOf(SimulatedWindowID window) const {
    const auto found = anchors.find(window);
    return found == anchors.end() ? std::nullopt : std::optional(found->second);
}

void MemoryModel::putBack(SimulatedWindowID window, const std::optional<ModelAnchor>& anchor) {
    if (anchor) anchors[window] = *anchor;
}

void MemoryModel::dropAnchor(SimulatedWindowID window, const Rect& frame) {
    const auto found = anchors.find(window);
    if (found != anchors.end() && found->second.frame == frame) anchors.erase(found);
}

void MemoryModel::record(std::int32_t pid, SimulatedWindowID window, const Rect& source, const Rect& applied,
                         Date now) {
    Entry& entry = entries.try_emplace(window, Entry{pid, source, source, now}).first->second;
    const bool isWhereItWasPut = modelSame(entry.lastApplied, source);
    if (!isWhereItWasPut) entry.restoreFrame = source;
    entry.lastApplied = applied;
    entry.updatedAt = now;
}

void MemoryModel::forget(std::int32_t pid) {
    std::erase_if(entries, [pid](const auto& item) { return item.second.pid == pid; });
    std::erase_if(anchors, [pid](const auto& item) { return item.second.pid == pid; });
}

}  // namespace velmorand::simulation
