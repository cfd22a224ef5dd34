#include "desktop/harness/TestPointer.h"

#include <xcb/xtest.h>

#include <utility>

namespace velmorand::desktop {

void TestPointer::moveTo(int x, int y) {
    send(XCB_MOTION_NOTIFY, 0, x, y);
    connection_.synchronise();
}

void TestPointer::click(PointerButton button) {
    send(XCB_BUTTON_PRESS, std::to_underlying(button), 0, 0);
    send(XCB_BUTTON_RELEASE, std::to_underlying(button), 0, 0);
    connection_.synchronise();
}

void TestPointer::press(PointerButton button) {
    send(XCB_BUTTON_PRESS, std::to_underlying(button), 0, 0);
    connection_.synchronise();
}

void TestPointer::release(PointerButton button) {
    send(XCB_BUTTON_RELEASE, std::to_underlying(button), 0, 0);
    connection_.synchronise();
}

void TestPointer::send(std::uint8_t event, std::uint8_t detail, int x, int y) {
    xcb_test_fake_input(connection_.raw(), event, detail, XCB_CURRENT_TIME, connection_.root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
}

}  // namespace velmorand::desktop
