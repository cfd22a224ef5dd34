#pragma once

#include "platform/RecorderPanelHost.h"
#include "platform/simulated/SimulatedRunLoop.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace velmorand {

/// The recorder panel of a simulated desktop. A test is its user: it presses keys, takes the keyboard away and closes
/// it. What the user does reaches only a panel that is shown and, for keys, is the key window; it is told in turns of
/// the loop.
class SimulatedRecorderPanelHost final : public RecorderPanelHost {
public:
    /// `runLoop` must outlive the host.
    explicit SimulatedRecorderPanelHost(SimulatedRunLoop& runLoop);

    /// At the start panels have windows that show nothing.
    void setWindowMaker(RecorderPanelWindowMaker maker) override { maker_ = std::move(maker); }
    void show(RecorderPanelEvents events) override;
    void close() override;

    /// Presses a key.
    void press(const RecorderKeyEvent& event);
    /// Presses or releases modifier keys: from now on these are held.
    void changeModifiers(std::uint64_t modifierFlags);
    /// Closes the panel as its user does: it is gone at once.
    void closeByUser();
    /// Gives the keyboard to another window; the panel stays on screen.
    void resignKey();

    [[nodiscard]] bool isShown() const { return panel_ != nullptr; }
    /// Whether keys go to the panel.
    [[nodiscard]] bool isKey() const { return panel_ != nullptr && panel_->isKey; }

private:
    struct Panel {
        RecorderPanelEvents events;
        std::unique_ptr<RecorderPanelWindow> window;
        bool isKey = true;
    };

    void tell(std::function<void(const RecorderPanelEvents&)> what);

    SimulatedRunLoop& runLoop_;
    RecorderPanelWindowMaker maker_;
    std::shared_ptr<Panel> panel_;
    std::shared_ptr<Panel> closedByUser_;  // kept until its last event has been told
};

}  // namespace velmorand
