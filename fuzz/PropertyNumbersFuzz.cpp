#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/x11/X11Property.h"

#include <xcb/xproto.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <set>

namespace velmorand {
namespace {

void checkItems(const X11PropertyValue& property) {
    const auto items = decodeItems(property, XCB_ATOM_CARDINAL);
    require(items.has_value() == (property.type == XCB_ATOM_CARDINAL && property.format == 32),
            "numbers are there exactly when type and format are right");
    require(decodeFirstItem(property, XCB_ATOM_CARDINAL) ==
                (items && !items->empty() ? std::optional(items->front()) : std::nullopt),
            "the first number is the first of all");
    if (!items) return;
    require(items->size() == property.data.size() / sizeof(std::uint32_t), "every whole number is read");
    require(items->empty() || std::memcmp(items->data(), property.data.data(), items->size() * 4) == 0,
            "numbers are the bytes that came");
}

void checkWindowList(const X11PropertyValue& property) {
    std::vector<std::uint32_t> expected;
    std::set<std::uint32_t> seen{0};
    for (const std::uint32_t window : decodeItems(property, XCB_ATOM_WINDOW).value_or(std::vector<std::uint32_t>{})) {
        if (seen.insert(window).second) expected.push_back(window);
    }
    require(decodeWindowList(property, XCB_ATOM_WINDOW) == expected,
            "a window list keeps its order and loses zeros and repetitions");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    velmorand::checkItems(input.property(XCB_ATOM_CARDINAL, 32));
    velmorand::checkWindowList(input.property(XCB_ATOM_WINDOW, 32));
    return 0;
}
