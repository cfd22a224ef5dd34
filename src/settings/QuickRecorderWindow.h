#pragma once

#include "platform/Logger.h"
#include "platform/RecorderPanelHost.h"

#include <cstdint>
#include <functional>
#include <memory>

class QQuickView;

namespace velmorand {

class ShortcutRecorderViewModel;

/// The window of the recorder panel, drawn by Qt Quick: a dialog of the settings window, as large as what it shows.
class QuickRecorderWindow final : public RecorderPanelWindow {
public:
    /// It belongs to `settingsWindow`, uses its engine and comes up in its middle; both must outlive it. Null, with the
    /// reason in the log, when it cannot be drawn.
    [[nodiscard]] static std::unique_ptr<RecorderPanelWindow> create(ShortcutRecorderViewModel& model,
                                                                     QQuickView& settingsWindow, const Logger& logger);
    ~QuickRecorderWindow() override;

    [[nodiscard]] std::uintptr_t handle() const override;
    void show(std::function<void()> closed) override;

private:
    class View;

    QuickRecorderWindow(ShortcutRecorderViewModel& model, QQuickView& settingsWindow);

    /// What ends it may be one of its own buttons.
    struct DeleteLater {
        void operator()(View* view) const;
    };

    std::unique_ptr<View, DeleteLater> view_;
};

}  // namespace velmorand
