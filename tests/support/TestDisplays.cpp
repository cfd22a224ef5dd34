#include "support/TestDisplays.h"

namespace velmorand {
namespace {

Rect flipped(const Rect& rect, double primaryHeight) {
    return {rect.x, primaryHeight - rect.y - rect.height, rect.width, rect.height};
}

}  // namespace

std::vector<DisplayDescription> describedByWindowServer(const std::vector<TestDisplay>& displays) {
    std::vector<DisplayDescription> described;
    for (const TestDisplay& display : displays) {
        const double primaryHeight = displays.front().axFrame.height;
        Rect visible = display.axFrame;
        visible.y += display.panelHeight;
        visible.height -= display.panelHeight;
        described.push_back(
            {display.number, display.name, flipped(display.axFrame, primaryHeight), flipped(visible, primaryHeight)});
    }
    return described;
}

TestDisplay mainDisplay() {
    return {.number = 1, .name = "Main", .axFrame = {0, 0, 1440, 900}, .panelHeight = 25};
}

TestDisplay rightDisplay() {
    return {.number = 2, .name = "Right", .axFrame = {1440, 0, 1920, 1080}, .panelHeight = 25};
}

}  // namespace velmorand
