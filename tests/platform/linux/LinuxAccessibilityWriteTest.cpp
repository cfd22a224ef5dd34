#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/support/LinuxAccessibilityFixture.h"

#include <limits>
#include <ostream>
#include <string>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using LinuxAccessibilityWriteTest = LinuxAccessibilityFixture;

TEST_F(LinuxAccessibilityWriteTest, JoinsAPositionAndASizeIntoOneFrame) {
    const AXElement element = frontElement();

    EXPECT_THAT(setPosition(element, {10, 20}), Succeeds());
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
    EXPECT_THAT(setSize(element, {300, 400}), Succeeds());
    EXPECT_THAT(windowSystem.writes(), ElementsAre(FrameWrite{front, {10, 20, 300, 400}}));

    runLoop.runPending();
    EXPECT_THAT(windowSystem.writes(), ElementsAre(FrameWrite{front, {10, 20, 300, 400}}));
}

TEST_F(LinuxAccessibilityWriteTest, JoinsThroughElementsThatWereObtainedSeparately) {
    const AXElement first = frontElement();
    const AXElement second = frontElement();

    EXPECT_THAT(setPosition(first, {10, 20}), Succeeds());
    EXPECT_THAT(setSize(second, {300, 400}), Succeeds());

    EXPECT_THAT(windowSystem.writes(), ElementsAre(FrameWrite{front, {10, 20, 300, 400}}));
}

TEST_F(LinuxAccessibilityWriteTest, WritesASizeAloneAtTheOriginThatTheWindowHas) {
    EXPECT_THAT(setSize(frontElement(), {300, 400}), Succeeds());

    EXPECT_THAT(windowSystem.writes(), ElementsAre(FrameWrite{front, {100, 120, 300, 400}}));
}

TEST_F(LinuxAccessibilityWriteTest, WritesASecondSizeAloneWhereTheFirstPairPutTheWindow) {
    const AXElement element = frontElement();

    EXPECT_THAT(setPosition(element, {10, 20}), Succeeds());
    EXPECT_THAT(setSize(element, {300, 400}), Succeeds());
    EXPECT_THAT(setSize(element, {310, 410}), Succeeds());

    EXPECT_THAT(windowSystem.writes(),
                ElementsAre(FrameWrite{front, {10, 20, 300, 400}}, FrameWrite{front, {10, 20, 310, 410}}));
}

TEST_F(LinuxAccessibilityWriteTest, FailsWithThePositionsCodeAtOnce) {
    const AXElement element = frontElement();
    windowSystem.window(front).attributes.fullScreen = true;

    EXPECT_THAT(setPosition(element, {10, 20}), FailsWith(AXError::attributeUnsupported));
    runLoop.runPending();
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
    EXPECT_TRUE(runLoop.isIdle());
}

TEST_F(LinuxAccessibilityWriteTest, FailsAtOnceForAPositionThatIsNotSettable) {
    const AXElement element = frontElement();
    windowSystem.window(front).attributes.positionSettable = false;

    EXPECT_THAT(setPosition(element, {10, 20}), FailsWith(AXError::attributeUnsupported));
}

TEST_F(LinuxAccessibilityWriteTest, FailsAtOnceWhenTheWindowSystemDoesNotAnswer) {
    const AXElement element = frontElement();
    windowSystem.window(front).failure = AXError::cannotComplete;

    EXPECT_THAT(setPosition(element, {10, 20}), FailsWith(AXError::cannotComplete));
    EXPECT_THAT(setSize(element, {300, 400}), FailsWith(AXError::cannotComplete));
}

TEST_F(LinuxAccessibilityWriteTest, FailsForAWindowThatIsGone) {
    const AXElement gone = frontElement();
    windowSystem.close(front);

    EXPECT_THAT(setPosition(gone, {10, 20}), FailsWith(AXError::invalidElement));
    EXPECT_THAT(setSize(gone, {300, 400}), FailsWith(AXError::invalidElement));
}

TEST_F(LinuxAccessibilityWriteTest, LeavesTheWindowAloneThatGotTheNumberOfOneThatIsGone) {
    const AXElement gone = frontElement();
    windowSystem.close(front);
    const WindowID successor = windowSystem.openWithNumberOf(front, pid, {1, 2, 3, 4});

    EXPECT_THAT(setPosition(gone, {10, 20}), FailsWith(AXError::invalidElement));
    EXPECT_THAT(setSize(gone, {300, 400}), FailsWith(AXError::invalidElement));
    EXPECT_EQ(windowSystem.frameOf(successor), (Rect{1, 2, 3, 4}));
}

TEST_F(LinuxAccessibilityWriteTest, TellsWhatOnlyPlacingShowsAsTheSizesResult) {
    const AXElement element = frontElement();
    windowSystem.window(front).placingFailure = AXError::cannotComplete;

    EXPECT_THAT(setPosition(element, {10, 20}), Succeeds());
    EXPECT_THAT(setSize(element, {300, 400}), FailsWith(AXError::cannotComplete));
}

TEST_F(LinuxAccessibilityWriteTest, RefusesASizeThatIsNotSettable) {
    const AXElement element = frontElement();
    windowSystem.window(front).attributes.sizeSettable = false;

    EXPECT_THAT(setSize(element, {300, 400}), FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
}

TEST_F(LinuxAccessibilityWriteTest, RefusesEveryOtherAttribute) {
    const AXBoxedValue point{AXValueType::point, Point{10, 20}};
    const AXElement window = frontElement();

    EXPECT_THAT(accessibility->setAttributeValue(window, "AXFrame", point), FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(accessibility->setAttributeValue(window, ax_attribute::minimized, point),
                FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(accessibility->setAttributeValue(application(), ax_attribute::position, point),
                FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
}

struct BadValueRow {
    std::string name;
    std::string_view attribute;
    AXBoxedValue value;

    friend void PrintTo(const BadValueRow& row, std::ostream* out) { *out << row.name; }
};

class LinuxAccessibilityBadValueTest : public LinuxAccessibilityFixture,
                                       public testing::WithParamInterface<BadValueRow> {};

TEST_P(LinuxAccessibilityBadValueTest, IsRefusedAndNothingIsSent) {
    EXPECT_THAT(accessibility->setAttributeValue(frontElement(), GetParam().attribute, GetParam().value),
                FailsWith(AXError::illegalArgument));

    runLoop.runPending();
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
}

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Table, LinuxAccessibilityBadValueTest,
    testing::Values(BadValueRow{"SizeAsPosition", ax_attribute::position, {AXValueType::size, Size{1, 2}}},
                    BadValueRow{"PointAsSize", ax_attribute::size, {AXValueType::point, Point{1, 2}}},
                    BadValueRow{"NothingAsPosition", ax_attribute::position, {}},
                    BadValueRow{"NothingAsSize", ax_attribute::size, {}},
                    BadValueRow{"XNotANumber", ax_attribute::position, {AXValueType::point, Point{notANumber, 2}}},
                    BadValueRow{"YNotANumber", ax_attribute::position, {AXValueType::point, Point{1, notANumber}}},
                    BadValueRow{"XInfinite", ax_attribute::position, {AXValueType::point, Point{infinite, 2}}},
                    BadValueRow{"YInfinite", ax_attribute::position, {AXValueType::point, Point{1, -infinite}}},
                    BadValueRow{"WidthNotANumber", ax_attribute::size, {AXValueType::size, Size{notANumber, 2}}},
                    BadValueRow{"HeightNotANumber", ax_attribute::size, {AXValueType::size, Size{1, notANumber}}},
                    BadValueRow{"WidthInfinite", ax_attribute::size, {AXValueType::size, Size{infinite, 2}}},
                    BadValueRow{"HeightInfinite", ax_attribute::size, {AXValueType::size, Size{1, infinite}}}),
    [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmorand
