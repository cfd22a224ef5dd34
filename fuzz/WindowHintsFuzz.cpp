#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/x11/X11WindowFacts.h"

#include <xcb/xproto.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

namespace velmorand {
namespace {

/// Small numbers, so that random ones are often an atom that is known.
X11Atoms someAtoms() {
    X11Atoms::Values values{};
    std::iota(values.begin(), values.end(), xcb_atom_t{1});
    return X11Atoms(values);
}

constexpr std::uint32_t unknownAtom = 0xFFFFFF;

X11PropertyValue withUnknownInFront(const X11PropertyValue& property) {
    X11PropertyValue longer = property;
    longer.data.insert(longer.data.begin(), sizeof(unknownAtom), std::byte{});
    std::memcpy(longer.data.data(), &unknownAtom, sizeof(unknownAtom));
    return longer;
}

X11PropertyValue cutTo(std::size_t bytes, X11PropertyValue property) {
    property.data.resize(std::min(bytes, property.data.size()));
    return property;
}

void checkWindowType(const X11PropertyValue& property, bool isTransient) {
    const X11Atoms atoms = someAtoms();
    const auto typeOf = [&](const X11PropertyValue& each) { return decodeWindowType(each, atoms, isTransient); };
    const auto claims = decodeItems(property, XCB_ATOM_ATOM).value_or(std::vector<std::uint32_t>{});
    const X11WindowType type = typeOf(property);
    if (claims.empty()) {
        require(type == (isTransient ? X11WindowType::dialog : X11WindowType::normal),
                "a window that claims no type is a dialog of another one, or a normal window");
        return;
    }
    require(typeOf(withUnknownInFront(property)) == type, "a type that is not known changes nothing");
    const X11WindowType first = typeOf(cutTo(sizeof(std::uint32_t), property));
    require(first == X11WindowType::other || first == type, "the first type that is known counts");
    require(decodeWindowType(property, atoms, !isTransient) == type, "a claimed type counts for dialogs too");
}

void checkSizeHints(const X11PropertyValue& property) {
    const X11SizeHints hints = decodeSizeHints(property, XCB_ATOM_WM_SIZE_HINTS);
    const auto words = decodeItems(property, XCB_ATOM_WM_SIZE_HINTS).value_or(std::vector<std::uint32_t>{});
    constexpr std::size_t shortest = 9;
    constexpr std::uint32_t bothLimits = 0x30;
    if (hints.isFixed()) {
        require(words.size() >= shortest, "hints that are cut off fix nothing");
        require((words[0] & bothLimits) == bothLimits && words[5] == words[7] && words[6] == words[8],
                "a size is fixed when the smallest and the largest count and are equal");
    }
    require(hints.step.width >= 1 && hints.step.height >= 1, "a step goes somewhere");
    require(hints.gravity >= 1 && hints.gravity <= 10, "the gravity is one");
    for (const Size& size : {Size{1, 1}, Size{640, 480}, Size{32767, 32767}}) {
        const Size rounded = hints.rounded(size);
        require(rounded.width <= size.width && rounded.height <= size.height, "sizes are rounded down");
        require(size.width - rounded.width < hints.step.width && size.height - rounded.height < hints.step.height,
                "by less than a step");
        require(hints.rounded(rounded) == rounded, "a rounded size stays as it is");
    }
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    const bool isTransient = input.boolean();
    velmorand::checkWindowType(input.property(XCB_ATOM_ATOM, 32), isTransient);
    velmorand::checkSizeHints(input.property(XCB_ATOM_WM_SIZE_HINTS, 32));
    return 0;
}
