#include "platform/linux/x11/X11SizeHints.h"

#include <array>
#include <cmath>

namespace velmorand {
namespace {

/// The property's words: the flags first, then at fixed places the pairs that a flag makes count.
constexpr std::uint32_t hasSmallest = 1U << 4U;
constexpr std::uint32_t hasLargest = 1U << 5U;
constexpr std::uint32_t hasSteps = 1U << 6U;
constexpr std::uint32_t hasBase = 1U << 8U;
constexpr std::uint32_t hasGravity = 1U << 9U;
constexpr std::size_t smallestAt = 5;
constexpr std::size_t largestAt = 7;
constexpr std::size_t stepsAt = 9;
constexpr std::size_t baseAt = 15;
constexpr std::size_t gravityAt = 17;

/// The X protocol carries sizes as 16-bit numbers; window managers treat larger ones as no limit.
constexpr std::uint32_t largestNumber = 32767;

using Words = std::vector<std::uint32_t>;

/// Absent when the flag is not set, the property too short, or a number none that a window can have.
std::optional<Size> pairAt(const Words& words, std::size_t place, std::uint32_t flag, std::uint32_t least) {
    if (words.size() < place + 2 || (words[0] & flag) == 0) return std::nullopt;
    const auto usable = [&](std::uint32_t number) { return number >= least && number <= largestNumber; };
    if (!usable(words[place]) || !usable(words[place + 1])) return std::nullopt;
    return Size{static_cast<double>(words[place]), static_cast<double>(words[place + 1])};
}

double roundedDown(double length, double base, double step) {
    return length <= base ? length : base + std::floor((length - base) / step) * step;
}

/// Where along an axis the reference point lies, as a part of the length; in the order of the protocol's numbers, which
/// begin with 1 and go row by row.
struct ReferencePoint {
    double across;
    double down;
};
constexpr std::array<ReferencePoint, 9> referencePoints{
    {{0, 0}, {0.5, 0}, {1, 0}, {0, 0.5}, {0.5, 0.5}, {1, 0.5}, {0, 1}, {0.5, 1}, {1, 1}}};

}  // namespace

bool X11SizeHints::allows(const Size& size) const {
    const bool isLargeEnough = !smallest || (size.width >= smallest->width && size.height >= smallest->height);
    const bool isSmallEnough = !largest || (size.width <= largest->width && size.height <= largest->height);
    return isLargeEnough && isSmallEnough;
}

Size X11SizeHints::rounded(const Size& size) const {
    return {roundedDown(size.width, base.width, step.width), roundedDown(size.height, base.height, step.height)};
}

X11SizeHints decodeSizeHints(const X11PropertyValue& property, std::uint32_t sizeHintsType) {
    X11SizeHints hints;
    const Words words = decodeItems(property, sizeHintsType).value_or(Words{});
    if (words.empty()) return hints;
    hints.smallest = pairAt(words, smallestAt, hasSmallest, 0);
    hints.largest = pairAt(words, largestAt, hasLargest, 1);
    hints.step = pairAt(words, stepsAt, hasSteps, 1).value_or(Size{1, 1});
    hints.base = pairAt(words, baseAt, hasBase, 0).value_or(hints.smallest.value_or(Size{}));
    const bool saysGravity = words.size() > gravityAt && (words[0] & hasGravity) != 0;
    if (saysGravity && words[gravityAt] >= XCB_GRAVITY_NORTH_WEST && words[gravityAt] <= XCB_GRAVITY_STATIC)
        hints.gravity = words[gravityAt];
    return hints;
}

Point positionForGravity(const Rect& client, const X11Extents& frame, std::uint32_t gravity) {
    if (gravity < XCB_GRAVITY_NORTH_WEST || gravity >= XCB_GRAVITY_STATIC) return client.origin();
    const ReferencePoint point = referencePoints[gravity - XCB_GRAVITY_NORTH_WEST];
    return {std::round(client.x - frame.left + point.across * (frame.left + frame.right)),
            std::round(client.y - frame.top + point.down * (frame.top + frame.bottom))};
}

}  // namespace velmorand
