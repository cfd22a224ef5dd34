#include "platform/simulated/SimulatedRecorderPanelHost.h"

#include <utility>

namespace velmorand {

void SimulatedRecorderPanelHost::show(RecorderPanelContent content, RecorderPanelEvents events) {
    close();
    shownContents_.push_back(content);
    panel_ = std::make_shared<Panel>(std::move(content), std::move(events));
}

void SimulatedRecorderPanelHost::update(RecorderPanelContent content) {
    if (!panel_) return;
    shownContents_.push_back(content);
    panel_->content = std::move(content);
}

void SimulatedRecorderPanelHost::close() {
    panel_.reset();
    closedByUser_.reset();
}

void SimulatedRecorderPanelHost::press(const RecorderKeyEvent& event) {
    if (!isKey()) return;
    tell([event](const RecorderPanelEvents& events) {
        if (events.keyDown) events.keyDown(event);
    });
}

void SimulatedRecorderPanelHost::changeModifiers(std::uint64_t modifierFlags) {
    if (!isKey()) return;
    tell([modifierFlags](const RecorderPanelEvents& events) {
        if (events.modifiersChanged) events.modifiersChanged(modifierFlags);
    });
}

void SimulatedRecorderPanelHost::closeByUser() {
    if (!panel_) return;
    tell([](const RecorderPanelEvents& events) {
        if (events.closed) events.closed();
    });
    closedByUser_ = std::exchange(panel_, nullptr);
}

void SimulatedRecorderPanelHost::resignKey() {
    if (!isKey()) return;
    panel_->isKey = false;
    tell([](const RecorderPanelEvents& events) {
        if (events.resignedKey) events.resignedKey();
    });
}

std::optional<RecorderPanelContent> SimulatedRecorderPanelHost::content() const {
    return panel_ ? std::optional(panel_->content) : std::nullopt;
}

void SimulatedRecorderPanelHost::tell(std::function<void(const RecorderPanelEvents&)> what) {
    runLoop_.post([what = std::move(what), panel = std::weak_ptr(panel_)] {
        if (const auto alive = panel.lock()) what(alive->events);
    });
}

}  // namespace velmorand
