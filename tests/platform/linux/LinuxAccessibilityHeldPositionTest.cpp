#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/support/LinuxAccessibilityFixture.h"

#include <limits>
#include <string>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A position was written to the front window, and nothing else yet.
class LinuxAccessibilityHeldPositionTest : public LinuxAccessibilityFixture {
protected:
    void SetUp() override {
        ASSERT_THAT(setPosition(frontWindow, {10, 20}), Succeeds());
        ASSERT_THAT(windowSystem.writes(), IsEmpty());
    }

    AXElement frontWindow = frontElement();
    AXElement backWindow = backElement();
    /// The position with the size that the window has.
    FrameWrite alone{front, {10, 20, 800, 600}};
};

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentAloneAtTheEndOfTheTurn) {
    runLoop.runPending();

    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentAloneByAReadOfTheWindowWhichSeesIt) {
    const auto position = copy(frontWindow, ax_attribute::position);

    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone));
    EXPECT_EQ(valueOf(position), AXAttributeValue(AXBoxedValue{AXValueType::point, Point{10, 20}}));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentAloneByAWriteToAnotherWindow) {
    EXPECT_THAT(setSize(backWindow, {30, 40}), Succeeds());

    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone, FrameWrite{back, {10, 20, 30, 40}}));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentAloneByAPositionForAnotherWindowWhichIsHeldInTurn) {
    EXPECT_THAT(setPosition(backWindow, {5, 6}), Succeeds());
    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone));

    EXPECT_THAT(setSize(backWindow, {30, 40}), Succeeds());
    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone, FrameWrite{back, {5, 6, 30, 40}}));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentAloneByAStateQuery) {
    EXPECT_THAT(accessibility->isAttributeSettable(frontWindow, ax_attribute::size), Succeeds());

    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentAloneByAQuestionForTrust) {
    EXPECT_TRUE(accessibility->isProcessTrusted());

    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentAloneByAPromptForTrust) {
    EXPECT_TRUE(accessibility->isProcessTrustedWithPrompt());

    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentAloneByAReadOfAnApplication) {
    EXPECT_THAT(copy(application(), ax_attribute::windows), Succeeds());

    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone));
}

TEST_F(LinuxAccessibilityHeldPositionTest, StaysHeldWhileAnotherWindowIsRead) {
    EXPECT_THAT(copy(backWindow, ax_attribute::role), Succeeds());
    EXPECT_THAT(windowSystem.writes(), IsEmpty());

    EXPECT_THAT(setSize(frontWindow, {300, 400}), Succeeds());
    EXPECT_THAT(windowSystem.writes(), ElementsAre(FrameWrite{front, {10, 20, 300, 400}}));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsSentOnlyOnce) {
    EXPECT_THAT(copy(frontWindow, ax_attribute::role), Succeeds());
    EXPECT_THAT(copy(frontWindow, ax_attribute::role), Succeeds());
    runLoop.runPending();

    EXPECT_THAT(windowSystem.writes(), SizeIs(1));
}

TEST_F(LinuxAccessibilityHeldPositionTest, GivesWayToALaterPosition) {
    EXPECT_THAT(setPosition(frontWindow, {50, 60}), Succeeds());
    EXPECT_THAT(setSize(frontWindow, {300, 400}), Succeeds());

    EXPECT_EQ(windowSystem.frameOf(front), (Rect{50, 60, 300, 400}));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsNotJoinedWithASizeOfALaterTurn) {
    runLoop.runPending();
    windowSystem.window(front).attributes.frame = {70, 80, 800, 600};  // by the user

    EXPECT_THAT(setSize(frontWindow, {300, 400}), Succeeds());

    EXPECT_THAT(windowSystem.writes(), ElementsAre(alone, FrameWrite{front, {70, 80, 300, 400}}));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsDroppedByASizeThatIsNoSize) {
    EXPECT_THAT(setSize(frontWindow, {std::numeric_limits<double>::quiet_NaN(), 400}),
                FailsWith(AXError::illegalArgument));

    runLoop.runPending();
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsDroppedByASizeThatIsNotSettable) {
    windowSystem.window(front).attributes.sizeSettable = false;

    EXPECT_THAT(setSize(frontWindow, {300, 400}), FailsWith(AXError::attributeUnsupported));

    runLoop.runPending();
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsDroppedByASizeThatTheWindowSystemFailsToPlace) {
    windowSystem.window(front).placingFailure = AXError::cannotComplete;
    EXPECT_THAT(setSize(frontWindow, {300, 400}), FailsWith(AXError::cannotComplete));
    windowSystem.window(front).placingFailure = std::nullopt;

    runLoop.runPending();
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsDroppedWithAWindowThatClosesBeforeItsSize) {
    windowSystem.close(front);
    windowSystem.openWithNumberOf(front, pid, {1, 2, 3, 4});

    EXPECT_THAT(setSize(frontWindow, {300, 400}), FailsWith(AXError::invalidElement));

    runLoop.runPending();
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsToldToTheLogWhenItFailsLate) {
    windowSystem.close(front);

    runLoop.runPending();

    EXPECT_THAT(windowSystem.writes(), IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::error, "ax", "late position write failed AXError -25202"}));
}

TEST_F(LinuxAccessibilityHeldPositionTest, IsForgottenWithItsService) {
    accessibility.reset();

    runLoop.runPending();

    EXPECT_THAT(windowSystem.writes(), IsEmpty());
}

}  // namespace
}  // namespace velmorand
