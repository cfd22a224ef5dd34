#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/x11/X11FrameGeometry.h"

#include <xcb/xproto.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace velmorand {
namespace {

constexpr double smallestPosition = -32768;
constexpr double largestPosition = 32767;
constexpr double largestSize = 32767;

bool isDecoration(const X11Extents& extents) {
    return std::ranges::all_of(std::array{extents.left, extents.right, extents.top, extents.bottom},
                               [](double side) { return side >= 0 && side <= 512; });
}

bool isWhole(double number) {
    return std::floor(number) == number;
}

void checkSent(const Rect& client) {
    require(isWhole(client.x) && isWhole(client.y) && isWhole(client.width) && isWhole(client.height),
            "what is sent lies on whole pixels");
    require(client.x >= smallestPosition && client.x <= largestPosition, "the server can carry x");
    require(client.y >= smallestPosition && client.y <= largestPosition, "the server can carry y");
    require(client.width >= 1 && client.width <= largestSize, "the server can carry the width");
    require(client.height >= 1 && client.height <= largestSize, "the server can carry the height");
}

void checkGeometry(FuzzInput& input) {
    X11FrameGeometry geometry{input.protocolRect(), {}, {}};
    geometry.frame = decodeExtents(input.property(XCB_ATOM_CARDINAL, 32), XCB_ATOM_CARDINAL);
    geometry.shadow = decodeExtents(input.property(XCB_ATOM_CARDINAL, 32), XCB_ATOM_CARDINAL);
    require(isDecoration(geometry.frame) && isDecoration(geometry.shadow), "extents are those of a decoration");

    const X11FrameGeometry sane = geometry.sanitized();
    require(sane.sanitized() == sane, "a sane geometry stays as it is");
    require(sane.client == geometry.client && sane.frame == geometry.frame, "only the shadow is ever ignored");
    require(sane.shadow == geometry.shadow || sane.shadow == X11Extents{}, "a shadow is taken whole or not at all");

    const Rect visible = sane.visible();
    require(visible.width > 0 && visible.height > 0, "something of the window can be seen");
    const bool isCarried = sane.client.width <= largestSize && sane.client.height <= largestSize;
    require(!isCarried || sane.clientFor(visible) == sane.client, "a window that shall stay where it is stays there");
    checkSent(sane.clientFor(visible));
    checkSent(sane.clientFor(input.protocolRect(true)));
    checkSent(sane.clientFor(input.anyRect()));
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    velmorand::checkGeometry(input);
    return 0;
}
