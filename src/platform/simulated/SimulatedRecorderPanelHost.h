#pragma once

#include "platform/RecorderPanelHost.h"
#include "platform/simulated/SimulatedRunLoop.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace velmorand {

/// The recorder panel of a simulated desktop. A test is its user: it presses keys, takes the keyboard away and closes
/// it. What the user does reaches only a panel that is shown and, for keys, is the key window; it is told in turns of
/// the loop.
class SimulatedRecorderPanelHost final : public RecorderPanelHost {
public:
    /// `runLoop` must outlive the host.
    explicit SimulatedRecorderPanelHost(SimulatedRunLoop& runLoop) : runLoop_(runLoop) {}

    void show(RecorderPanelContent content, RecorderPanelEvents events) override;
    void update(RecorderPanelContent content) override;
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
    /// What the panel shows now; absent without one.
    [[nodiscard]] std::optional<RecorderPanelContent> content() const;
    /// Everything that was ever shown, in order; an update counts too.
    [[nodiscard]] const std::vector<RecorderPanelContent>& shownContents() const { return shownContents_; }

private:
    struct Panel {
        RecorderPanelContent content;
        RecorderPanelEvents events;
        bool isKey = true;
    };

    void tell(std::function<void(const RecorderPanelEvents&)> what);

    SimulatedRunLoop& runLoop_;
    std::shared_ptr<Panel> panel_;
    std::shared_ptr<Panel> closedByUser_;  // kept until its last event has been told
    std::vector<RecorderPanelContent> shownContents_;
};

}  // namespace velmorand
