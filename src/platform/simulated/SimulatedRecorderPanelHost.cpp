#include "platform/simulated/SimulatedRecorderPanelHost.h"

#include <utility>

namespace velmorand {
namespace {

class BlankWindow final : public RecorderPanelWindow {
public:
    [[nodiscard]] std::uintptr_t handle() const override { return reinterpret_cast<std::uintptr_t>(this); }
    void show(std::function<void()> /*closed*/) override {}
};

}  // namespace

SimulatedRecorderPanelHost::SimulatedRecorderPanelHost(SimulatedRunLoop& runLoop)
    : runLoop_(runLoop), maker_([] { return std::make_unique<BlankWindow>(); }) {}

void SimulatedRecorderPanelHost::show(RecorderPanelEvents events) {
    close();
    panel_ = std::make_shared<Panel>(std::move(events), maker_ ? maker_() : nullptr);
    if (panel_->window)
        panel_->window->show([this] { closeByUser(); });
    else
        closeByUser();
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
    panel_->window.reset();
    closedByUser_ = std::exchange(panel_, nullptr);
}

void SimulatedRecorderPanelHost::resignKey() {
    if (!isKey()) return;
    panel_->isKey = false;
    tell([](const RecorderPanelEvents& events) {
        if (events.resignedKey) events.resignedKey();
    });
}

void SimulatedRecorderPanelHost::tell(std::function<void(const RecorderPanelEvents&)> what) {
    runLoop_.post([what = std::move(what), panel = std::weak_ptr(panel_)] {
        if (const auto alive = panel.lock()) what(alive->events);
    });
}

}  // namespace velmorand
