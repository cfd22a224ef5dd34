#pragma once

#include "platform/RecorderPanelHost.h"

#include <cstdint>
#include <functional>
#include <memory>

class QQuickView;
class QWindow;

namespace velmorand {

class ShortcutRecorderViewModel;

/// The window of the recorder panel, drawn by Qt Quick: a dialog of the settings window, as large as what it shows.
class QuickRecorderWindow final : public RecorderPanelWindow {
public:
    /// Belongs to `settingsWindow`, uses its engine and comes up in its middle; both must outlive it.
    QuickRecorderWindow(ShortcutRecorderViewModel& model, QQuickView& settingsWindow);
    ~QuickRecorderWindow() override;

    [[nodiscard]] std::uintptr_t handle() const override;
    void show(std::function<void()> closed) override;

private:
    class View;

    /// What ends it may be one of its own buttons.
    struct DeleteLater {
        void operator()(View* view) const;
    };

    std::unique_ptr<View, DeleteLater> view_;
};

}  // namespace velmorand
