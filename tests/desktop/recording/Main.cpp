#include "desktop/demo/DemoActions.h"
#include "desktop/demo/DemoDesktop.h"
#include "desktop/harness/FrameRecorder.h"
#include "desktop/recording/MoveRecording.h"

#include <fmt/format.h>

#include <cstdio>
#include <fstream>
#include <span>

namespace velmorand::desktop {
namespace {

constexpr std::string_view settings = R"({"enableAnimations": true, "animationDuration": 0.5})";
constexpr double duration = 500;  // milliseconds, as above
constexpr DemoWindow movedWindow = DemoWindow::serverSide;
constexpr std::string_view action = "right";
constexpr std::string_view pictureName = "images/animated-move.svg";

double millisecondsSince(std::chrono::steady_clock::time_point begin, std::chrono::steady_clock::time_point moment) {
    return std::chrono::duration<double, std::milli>(moment - begin).count();
}

/// What the window manager is asked for is the client's own rectangle.
PixelRect withDecorations(const PixelRect& client, const Extents& outside) {
    return {client.x - outside.left, client.y - outside.top, client.width + outside.left + outside.right,
            client.height + outside.top + outside.bottom};
}

std::expected<MoveRecording, HarnessError> record(DemoDesktop& desktop) {
    XObserver& observer = desktop.observer();
    const xcb_window_t window = desktop.idOf(movedWindow);
    if (auto active = desktop.pager().activate(window); !active) return std::unexpected(active.error());
    const auto start = desktop.frameOf(movedWindow);
    const auto outside = observer.frameExtents(window);
    if (!start || !outside) return std::unexpected(HarnessError{"the window is gone"});
    const auto target = DemoModel(desktop.workAreas()).wanted(0, demoAction(action), *start);
    if (!target) return std::unexpected(HarnessError{"the action has no target"});
    auto recorder = FrameRecorder::attach(desktop.test().displayName(), window);
    if (!recorder) return std::unexpected(recorder.error());

    MoveRecording recording{.windowManager = observer.windowManagerName().value_or("no window manager"),
                            .duration = duration,
                            .start = *start,
                            .target = *target};
    const auto pressed = std::chrono::steady_clock::now();
    desktop.keyboard().press(demoAction(action).modifiers, demoAction(action).key);
    const bool arrived = recorder->recordUntil([&] {
        const auto frame = desktop.frameOf(movedWindow);
        if (!frame) return false;
        const bool isNew = *frame != (recording.seen.empty() ? *start : recording.seen.back().frame);
        if (isNew) recording.seen.push_back({millisecondsSince(pressed, std::chrono::steady_clock::now()), *frame});
        return *frame == *target;
    });
    if (!arrived) return std::unexpected(HarnessError{"the window did not arrive\n" + desktop.logTails()});
    for (const FrameRequest& request : recorder->requests()) {
        recording.requested.push_back(
            {millisecondsSince(pressed, request.at), desktop.fromRoot(withDecorations(request.clientRect, *outside))});
    }
    return recording;
}

std::expected<void, HarnessError> write(const std::filesystem::path& file, const std::string& content) {
    std::ofstream stream(file, std::ios::binary);
    stream << content;
    stream.close();
    if (stream) return {};
    return std::unexpected(HarnessError{fmt::format("cannot write {}", file.string())});
}

std::expected<void, HarnessError> run(const std::filesystem::path& program, const std::filesystem::path& documents) {
    const auto desktop = DemoDesktop::open(program, demoActions().size(), WindowManagerKind::xfwm4, settings);
    if (!desktop) return std::unexpected(desktop.error());
    const auto recording = record(**desktop);
    if (!recording) return std::unexpected(recording.error());
    fmt::print("{} requests in {:.0f} ms\n", recording->requested.size(), recording->requested.back().milliseconds);
    if (auto written = write(documents / pictureName, pictureOf(*recording)); !written) return written;
    return write(documents / "animated-moves.md", pageOf(*recording, std::string(pictureName)));
}

}  // namespace
}  // namespace velmorand::desktop

int main(int argumentCount, char** argumentValues) {
    const std::span arguments(argumentValues, static_cast<std::size_t>(argumentCount));
    if (arguments.size() != 3) {
        std::fputs("Usage: velmorand_record_move PROGRAM FOLDER-OF-DOCUMENTS\n", stderr);
        return 2;
    }
    const auto done = velmorand::desktop::run(std::filesystem::absolute(arguments[1]), arguments[2]);
    if (done) return 0;
    fmt::print(stderr, "record-move: {}\n", done.error().message);
    return 1;
}
