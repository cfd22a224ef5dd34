#pragma once

#include "desktop/demo/DemoDesktop.h"
#include "desktop/demo/DemoModel.h"

namespace velmorand::desktop {

/// How a step ended.
enum class DemoVerdict {
    landed,
    /// As far as the window manager lets it: it rounds the terminal to its size steps, and the program said so.
    rounded,
    failed
};

/// A step and what became of it. Frames have their origin at the primary display's top-left corner.
struct DemoRow {
    DemoStep step;
    PixelRect before = {};
    PixelRect wanted = {};
    PixelRect after = {};
    DemoVerdict verdict = DemoVerdict::failed;
    /// What there is to say about it, for the table.
    std::string remark = {};
};

/// Plays the script on a desktop, one key press after the other.
class DemoRun {
public:
    /// \p desktop must outlive the run. Pictures go into \p pictures, which exists.
    DemoRun(DemoDesktop& desktop, std::filesystem::path pictures)
        : desktop_(desktop), model_(desktop.workAreas()), pictures_(std::move(pictures)) {}

    /// Performs a step. Fails when the desktop did not do its part; when the program did not do its, the row says so.
    [[nodiscard]] std::expected<DemoRow, HarnessError> perform(const DemoStep& step);
    /// Takes the next picture; \p name becomes part of its file's name.
    [[nodiscard]] std::expected<void, HarnessError> takePicture(std::string_view name);

private:
    [[nodiscard]] std::expected<void, HarnessError> prepare(const DemoStep& step);
    [[nodiscard]] bool isRounded(const DemoRow& row, const PixelRect& frame);
    void judge(DemoRow& row, std::uintmax_t logStart);

    DemoDesktop& desktop_;
    DemoModel model_;
    std::filesystem::path pictures_;
    int takenPictures_ = 0;
};

}  // namespace velmorand::desktop
