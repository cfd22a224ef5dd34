#include "desktop/recording/MoveRecording.h"

#include <fmt/format.h>

#include <cmath>

namespace velmorand::desktop {
namespace {

constexpr double tick = 1000.0 / 30;

/// The picture, in its own units.
constexpr double pictureWidth = 720;
constexpr double pictureHeight = 360;
constexpr double left = 64;
constexpr double right = 24;
constexpr double top = 28;
constexpr double bottom = 56;
constexpr double gridStep = 100;  // milliseconds

/// Places a moment and a part of the way in the picture.
struct Axes {
    double lastMoment;  // milliseconds

    [[nodiscard]] double x(double milliseconds) const {
        return left + milliseconds / lastMoment * (pictureWidth - left - right);
    }
    [[nodiscard]] static double y(double progress) {
        return pictureHeight - bottom - progress * (pictureHeight - top - bottom);
    }
};

double partOfTheWay(const MoveRecording& recording, const PixelRect& frame) {
    return progressOf(frame, recording.start, recording.target);
}

std::string grid(const Axes& axes) {
    std::string lines;
    for (const double part : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        lines += fmt::format(R"(<line class="grid" x1="{0}" y1="{2:.1f}" x2="{1}" y2="{2:.1f}"/>)"
                             R"(<text x="{3}" y="{4:.1f}" text-anchor="end">{5:.0f} %</text>)"
                             "\n",
                             left, pictureWidth - right, Axes::y(part), left - 8, Axes::y(part) + 4, part * 100);
    }
    const double lowest = Axes::y(0);
    for (double moment = 0; moment <= axes.lastMoment; moment += gridStep) {
        lines += fmt::format(R"(<line class="grid" x1="{0:.1f}" y1="{1:.1f}" x2="{0:.1f}" y2="{2:.1f}"/>)"
                             R"(<text x="{0:.1f}" y="{3:.1f}" text-anchor="middle">{4:.0f} ms</text>)"
                             "\n",
                             axes.x(moment), Axes::y(1), lowest, lowest + 18, moment);
    }
    return lines;
}

std::string easingCurve(const MoveRecording& recording, const Axes& axes) {
    constexpr int pieces = 60;
    std::string points;
    for (int piece = 0; piece <= pieces; ++piece) {
        const double part = static_cast<double>(piece) / pieces;
        points += fmt::format("{:.1f},{:.1f} ", axes.x(beginningOf(recording) + part * recording.duration),
                              Axes::y(part * (2 - part)));
    }
    return fmt::format(R"(<polyline class="easing" points="{}"/>)"
                       "\n",
                       points);
}

std::string dots(const MoveRecording& recording, const std::vector<TimedFrame>& frames, const Axes& axes,
                 std::string_view kind, double radius) {
    std::string circles;
    for (const TimedFrame& frame : frames) {
        circles += fmt::format(R"(<circle class="{}" cx="{:.1f}" cy="{:.1f}" r="{}"/>)"
                               "\n",
                               kind, axes.x(frame.milliseconds), Axes::y(partOfTheWay(recording, frame.frame)), radius);
    }
    return circles;
}

}  // namespace

double beginningOf(const MoveRecording& recording) {
    return recording.requested.empty() ? 0 : recording.requested.front().milliseconds - tick;
}

std::string pictureOf(const MoveRecording& recording) {
    const double end = beginningOf(recording) + recording.duration + tick;
    const Axes axes{std::ceil(end / gridStep) * gridStep};
    return fmt::format(R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {0} {1}" width="{0}" height="{1}">
<style>
text {{ font: 12px sans-serif; fill: #57534e }}
.paper {{ fill: #fbfaf8 }}
.grid {{ stroke: #e3dfd8 }}
.easing {{ fill: none; stroke: #b8b1a6; stroke-width: 2 }}
.requested {{ fill: none; stroke: #c2410c; stroke-width: 1.5 }}
.seen {{ fill: #1c1917 }}
</style>
<rect class="paper" width="{0}" height="{1}"/>
{2}{3}{4}{5}<circle class="requested" cx="{6}" cy="{7}" r="5"/><text x="{8}" y="{9}">requested</text>
<circle class="seen" cx="{10}" cy="{7}" r="2.5"/><text x="{11}" y="{9}">seen</text>
<line class="easing" x1="{12}" y1="{7}" x2="{13}" y2="{7}"/><text x="{14}" y="{9}">p (2 − p)</text>
</svg>
)svg",
                       pictureWidth, pictureHeight, grid(axes), easingCurve(recording, axes),
                       dots(recording, recording.requested, axes, "requested", 5),
                       dots(recording, recording.seen, axes, "seen", 2.5), left + 6, pictureHeight - 16, left + 18,
                       pictureHeight - 12, left + 116, left + 126, left + 186, left + 210, left + 218);
}

std::string pageOf(const MoveRecording& recording, const std::string& pictureName) {
    std::string page = fmt::format(
        R"(# Animated moves

One move of a real window under {}, recorded by `scripts/record-move`. The shortcut is pressed at 0 ms; the settings
give the move {:.0f} ms. The window goes from {} to {}.

![How much of the way the window has gone over time]({})

Each circle is one request to the window manager, for position and size at once, as a second client receives it. Each
dot is a frame that the window then had. The line is the curve that the move follows: it begins one tick (33.3 ms)
before the first request, and p is the part of the {:.0f} ms that has passed.

| ms | frame asked for | part of the way |
|---:|---|---:|
)",
        recording.windowManager, recording.duration, recording.start.text(), recording.target.text(), pictureName,
        recording.duration);
    for (const TimedFrame& request : recording.requested) {
        page += fmt::format("| {:.1f} | {} | {:.1f} % |\n", request.milliseconds, request.frame.text(),
                            100 * partOfTheWay(recording, request.frame));
    }
    return page;
}

}  // namespace velmorand::desktop
