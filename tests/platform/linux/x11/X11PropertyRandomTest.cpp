#include "base/UnicodeText.h"
#include "platform/linux/support/PropertyValues.h"
#include "platform/linux/x11/X11FrameGeometry.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/X11WindowFacts.h"
#include "platform/linux/x11/X11WorkAreas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

namespace velmorand {
namespace {

using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::Le;

constexpr std::size_t longest = 32;
constexpr Size root{3840, 2160};
constexpr std::array textTypes{std::uint32_t{XCB_ATOM_STRING}};

/// Properties as a hostile client may write them, from one seed: of a few types and formats, so that most get past the
/// first check, of random length, and of bytes of which many are small, so that numbers are often plausible.
class RandomProperties {
public:
    explicit RandomProperties(std::uint32_t seed) : random_(seed) {}

    [[nodiscard]] X11PropertyValue next(std::uint32_t likelyType, std::uint8_t likelyFormat) {
        constexpr std::array<std::uint8_t, 4> formats{8, 16, 32, 77};
        X11PropertyValue property{oneIn(8) ? below(100) : likelyType, oneIn(8) ? formats[below(4)] : likelyFormat, {}};
        property.data.resize(oneIn(16) ? below(5000) : below(64));
        std::ranges::generate(property.data, [this] { return nextByte(); });
        return property;
    }

    [[nodiscard]] Rect nextRect() {
        const auto number = [this] { return static_cast<double>(below(5000)) - 500; };
        return {number(), number(), number() + 501, number() + 501};
    }

private:
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    bool oneIn(std::uint32_t chance) { return below(chance) == 0; }
    std::byte nextByte() { return static_cast<std::byte>(oneIn(2) ? 0 : oneIn(3) ? below(256) : below(128)); }

    std::mt19937 random_;
};

[[nodiscard]] bool isAbsentOrIdentifier(const std::optional<std::string>& text, std::size_t limit) {
    return !text || (!text->empty() && text->size() <= limit && isValidUtf8(*text) && !hasControlCharacter(*text));
}

class X11PropertyRandomTest : public testing::TestWithParam<std::uint32_t> {
protected:
    static constexpr int rounds = 2000;

    RandomProperties properties{GetParam()};
};

TEST_P(X11PropertyRandomTest, NumbersAreNeverMoreThanTheBytesHold) {
    for (int round = 0; round < rounds; ++round) {
        const X11PropertyValue property = properties.next(XCB_ATOM_CARDINAL, 32);

        EXPECT_LE(decodeItems(property, XCB_ATOM_CARDINAL).value_or(std::vector<std::uint32_t>{}).size(),
                  property.data.size() / 4)
            << "round " << round;
    }
}

TEST_P(X11PropertyRandomTest, WindowListsHoldNoZerosAndNoRepetitions) {
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::uint32_t> windows = decodeWindowList(properties.next(XCB_ATOM_WINDOW, 32), XCB_ATOM_WINDOW);
        std::ranges::sort(windows);

        EXPECT_EQ(std::ranges::adjacent_find(windows), windows.end()) << "round " << round;
        EXPECT_THAT(windows, Each(Ge(1U))) << "round " << round;
    }
}

TEST_P(X11PropertyRandomTest, TextsAreAbsentOrFitToBeShown) {
    for (int round = 0; round < rounds; ++round) {
        const X11PropertyValue property = properties.next(XCB_ATOM_STRING, 8);
        const X11WindowClass windowClass = decodeWindowClass(property, XCB_ATOM_STRING);

        EXPECT_TRUE(isAbsentOrIdentifier(decodeIdentifier(property, textTypes, longest), longest)) << "round " << round;
        EXPECT_TRUE(isAbsentOrIdentifier(windowClass.instance, 256)) << "round " << round;
        EXPECT_TRUE(isAbsentOrIdentifier(windowClass.className, 256)) << "round " << round;
    }
}

TEST_P(X11PropertyRandomTest, ExtentsAreNeverLargerThanADecoration) {
    for (int round = 0; round < rounds; ++round) {
        const X11Extents extents = decodeExtents(properties.next(XCB_ATOM_CARDINAL, 32), XCB_ATOM_CARDINAL);

        EXPECT_THAT((std::array{extents.left, extents.right, extents.top, extents.bottom}),
                    Each(AllOf(Ge(0.0), Le(512.0))))
            << "round " << round;
    }
}

TEST_P(X11PropertyRandomTest, StrutsStayInsideTheRootWindowAndHaveAnArea) {
    for (int round = 0; round < rounds; ++round) {
        const auto struts = decodeStruts(properties.next(XCB_ATOM_CARDINAL, 32), properties.next(XCB_ATOM_CARDINAL, 32),
                                         XCB_ATOM_CARDINAL, root, properties.nextRect());

        EXPECT_TRUE(std::ranges::all_of(struts,
                                        [](const X11Strut& strut) {
                                            return intersection(strut.band, {0, 0, root.width, root.height}) ==
                                                   strut.band;
                                        }))
            << "round " << round;
    }
}

TEST_P(X11PropertyRandomTest, WorkAreasStayInsideTheirMonitorAndLeaveEnoughOfIt) {
    const std::array monitors{X11Monitor{1, "left", {0, 0, 1920, 1080}, true},
                              X11Monitor{2, "right", {1920, 200, 1280, 800}, false}};
    const std::array smallestHeights{1080 * 0.3, 800 * 0.3};
    for (int round = 0; round < rounds; ++round) {
        std::vector<X11Strut> struts;
        for (int panel = 0; panel < 4; ++panel) {
            const auto bands = decodeStruts(properties.next(XCB_ATOM_CARDINAL, 32), {}, XCB_ATOM_CARDINAL, root,
                                            properties.nextRect());
            struts.insert(struts.end(), bands.begin(), bands.end());
        }
        for (std::size_t i = 0; i < monitors.size(); ++i) {
            const Rect area = workArea(monitors[i], monitors, struts);
            EXPECT_EQ(intersection(area, monitors[i].frame), area) << "round " << round;
            EXPECT_GE(area.height, smallestHeights[i]) << "round " << round;
            EXPECT_GE(area.width, monitors[i].frame.width * 0.3) << "round " << round;
        }
    }
}

TEST_P(X11PropertyRandomTest, FixedSizesAreOnlySeenInCompleteHints) {
    for (int round = 0; round < rounds; ++round) {
        const X11PropertyValue property = properties.next(XCB_ATOM_WM_SIZE_HINTS, 32);
        const bool isComplete = property.type == XCB_ATOM_WM_SIZE_HINTS && property.format == 32 &&
                                property.data.size() >= 9 * sizeof(std::uint32_t);

        EXPECT_LE(decodeSizeHints(property, XCB_ATOM_WM_SIZE_HINTS).isFixed(), isComplete) << "round " << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, X11PropertyRandomTest, testing::Values(1U, 20250101U, 0xDEADBEEFU));

}  // namespace
}  // namespace velmorand
