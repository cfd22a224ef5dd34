#include "platform/simulated/SimulatedAccessibility.h"

#include "support/DesktopFixture.h"

#include <chrono>
#include <limits>

namespace velmorand {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

AXBoxedValue point(double x, double y) {
    return {AXValueType::point, Point{x, y}};
}

AXBoxedValue size(double width, double height) {
    return {AXValueType::size, Size{width, height}};
}

/// What the joined writes of the simulated desktop do, seen from behind.
class SimulatedAccessibilityTest : public DesktopFixture {
protected:
    [[nodiscard]] SimulatedAccessibility& simulated() { return platform.accessibility(); }
    [[nodiscard]] std::optional<AXError> write(std::string_view attribute, const AXBoxedValue& value) {
        return failureOf(simulated().setAttributeValue(element, attribute, value));
    }

    SimulatedWindowID id = openWindow();
    AXElement element = elementOf(id);
};

TEST_F(SimulatedAccessibilityTest, APositionAndTheSizeThatFollowsAreOneWrite) {
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_EQ(window(id).frame, startFrame);

    EXPECT_EQ(write("AXSize", size(300, 200)), std::nullopt);
    EXPECT_THAT(writes(), ElementsAre(SimulatedWrite{id, Point{1, 2}, Size{300, 200}}));
    EXPECT_EQ(window(id).frame, (Rect{1, 2, 300, 200}));
}

TEST_F(SimulatedAccessibilityTest, ASizeAloneIsWrittenAtOnce) {
    EXPECT_EQ(write("AXSize", size(300, 200)), std::nullopt);

    EXPECT_THAT(writes(), ElementsAre(SimulatedWrite{id, std::nullopt, Size{300, 200}}));
}

TEST_F(SimulatedAccessibilityTest, AReadSendsAHeldPosition) {
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);

    EXPECT_EQ(valueOf(simulated().copyAttributeValue(element, "AXPosition")), AXAttributeValue(point(1, 2)));

    EXPECT_THAT(writes(), ElementsAre(SimulatedWrite{id, Point{1, 2}, std::nullopt}));
}

TEST_F(SimulatedAccessibilityTest, AStateQuerySendsAHeldPosition) {
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);

    EXPECT_EQ(valueOf(simulated().isAttributeSettable(element, "AXSize")), true);

    EXPECT_THAT(writes(), ElementsAre(SimulatedWrite{id, Point{1, 2}, std::nullopt}));
}

TEST_F(SimulatedAccessibilityTest, AWriteToAnotherWindowSendsAHeldPosition) {
    const SimulatedWindowID other = openWindow();
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);

    EXPECT_EQ(failureOf(simulated().setAttributeValue(elementOf(other), "AXSize", size(300, 200))), std::nullopt);

    EXPECT_THAT(writes(), ElementsAre(SimulatedWrite{id, Point{1, 2}, std::nullopt},
                                      SimulatedWrite{other, std::nullopt, Size{300, 200}}));
}

TEST_F(SimulatedAccessibilityTest, ASecondPositionSendsTheHeldOne) {
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);
    EXPECT_EQ(write("AXPosition", point(3, 4)), std::nullopt);
    EXPECT_EQ(write("AXSize", size(300, 200)), std::nullopt);

    EXPECT_THAT(writes(), ElementsAre(SimulatedWrite{id, Point{1, 2}, std::nullopt},
                                      SimulatedWrite{id, Point{3, 4}, Size{300, 200}}));
}

TEST_F(SimulatedAccessibilityTest, TheEndOfTheTurnSendsAHeldPosition) {
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);

    platform.runLoop().runPending();

    EXPECT_THAT(writes(), ElementsAre(SimulatedWrite{id, Point{1, 2}, std::nullopt}));
    EXPECT_EQ(window(id).frame, (Rect{1, 2, 800, 600}));
}

TEST_F(SimulatedAccessibilityTest, AFailedSizeDropsTheHeldPosition) {
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);
    window(id).sizeWriteError = AXError::cannotComplete;

    EXPECT_EQ(write("AXSize", size(300, 200)), AXError::cannotComplete);
    platform.runLoop().runPending();

    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(SimulatedAccessibilityTest, AFailedPositionHoldsNothing) {
    window(id).positionWriteError = AXError::cannotComplete;

    EXPECT_EQ(write("AXPosition", point(1, 2)), AXError::cannotComplete);
    platform.runLoop().runPending();

    EXPECT_THAT(writes(), IsEmpty());
}

TEST_F(SimulatedAccessibilityTest, AHeldPositionOfAWindowThatClosesIsForgotten) {
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);

    desktop().closeWindow(id);
    platform.runLoop().runPending();

    EXPECT_THAT(writes(), IsEmpty());
}

struct WriteErrorRow {
    std::string_view name;
    std::function<void(SimulatedWindow&)> spoil;
    std::string_view attribute;
    AXBoxedValue value;
    AXError error;
};

TEST_F(SimulatedAccessibilityTest, RefusesAWriteWithTheCodeOfItsReason) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    const auto nothing = [](SimulatedWindow&) {};
    const std::vector<WriteErrorRow> rows{
        {"infinite position", nothing, "AXPosition", point(infinite, 0), AXError::illegalArgument},
        {"position that is no number", nothing, "AXPosition", point(0, notANumber), AXError::illegalArgument},
        {"infinite size", nothing, "AXSize", size(1, infinite), AXError::illegalArgument},
        {"a size as a position", nothing, "AXPosition", size(1, 1), AXError::illegalArgument},
        {"a position as a size", nothing, "AXSize", point(1, 1), AXError::illegalArgument},
        {"another attribute", nothing, "AXRole", point(1, 1), AXError::attributeUnsupported},
        {"a position that is not settable", [](auto& state) { state.positionSettable = false; }, "AXPosition",
         point(1, 1), AXError::attributeUnsupported},
        {"a size that is not settable", [](auto& state) { state.sizeSettable = false; }, "AXSize", size(1, 1),
         AXError::attributeUnsupported},
        {"full screen", [](auto& state) { state.fullScreen = true; }, "AXPosition", point(1, 1),
         AXError::attributeUnsupported},
    };
    for (const WriteErrorRow& row : rows) {
        SCOPED_TRACE(row.name);
        const SimulatedWindowID spoiled = openWindow();
        row.spoil(window(spoiled));
        EXPECT_EQ(failureOf(simulated().setAttributeValue(elementOf(spoiled), row.attribute, row.value)), row.error);
        EXPECT_EQ(window(spoiled).frame, startFrame);
    }
}

TEST_F(SimulatedAccessibilityTest, AnApplicationHasNothingToWrite) {
    EXPECT_EQ(failureOf(simulated().setAttributeValue(applicationElement(), "AXPosition", point(1, 1))),
              AXError::attributeUnsupported);
    EXPECT_EQ(valueOf(simulated().isAttributeSettable(applicationElement(), "AXPosition")), false);
}

TEST_F(SimulatedAccessibilityTest, AFrozenApplicationCostsTheTimeoutOfTheElementThatIsAsked) {
    application().frozen = true;
    const MonotonicTime start = platform.runLoop().now();

    EXPECT_EQ(failureOf(simulated().copyAttributeValue(element, "AXRole")), AXError::cannotComplete);
    EXPECT_EQ(platform.runLoop().now() - start, 750ms);

    simulated().setMessagingTimeout(element, 0.2);
    EXPECT_EQ(failureOf(simulated().isAttributeSettable(element, "AXSize")), AXError::cannotComplete);
    EXPECT_EQ(platform.runLoop().now() - start, 950ms);

    EXPECT_EQ(failureOf(simulated().copyAttributeValue(applicationElement(), "AXWindows")), AXError::cannotComplete);
    EXPECT_EQ(platform.runLoop().now() - start, 1700ms);
}

TEST_F(SimulatedAccessibilityTest, ASlowApplicationTakesItsTimeOverEveryAnswer) {
    application().answerSeconds = 0.3;
    const MonotonicTime start = platform.runLoop().now();

    EXPECT_TRUE(simulated().copyAttributeValue(element, "AXRole"));
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);
    EXPECT_EQ(write("AXSize", size(300, 200)), std::nullopt);

    EXPECT_EQ(platform.runLoop().now() - start, 900ms);
    EXPECT_EQ(window(id).frame, (Rect{1, 2, 300, 200}));
}

TEST_F(SimulatedAccessibilityTest, AnAnswerThatTakesLongerThanTheTimeoutIsNotWaitedFor) {
    application().answerSeconds = 0.8;
    const MonotonicTime start = platform.runLoop().now();

    EXPECT_EQ(failureOf(simulated().copyAttributeValue(element, "AXRole")), AXError::cannotComplete);
    EXPECT_EQ(platform.runLoop().now() - start, 750ms);
}

TEST_F(SimulatedAccessibilityTest, AWriteThatTakesLongerThanTheTimeoutIsNotMade) {
    window(id).writeSeconds = 0.8;
    const MonotonicTime start = platform.runLoop().now();

    EXPECT_EQ(write("AXSize", size(300, 200)), AXError::cannotComplete);

    EXPECT_EQ(platform.runLoop().now() - start, 750ms);
    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(SimulatedAccessibilityTest, WritesFailForOnceInTheGivenOrder) {
    window(id).failingWrites = 0b101;

    EXPECT_EQ(write("AXSize", size(300, 200)), AXError::cannotComplete);
    EXPECT_EQ(write("AXSize", size(300, 200)), std::nullopt);
    EXPECT_EQ(write("AXPosition", point(1, 2)), AXError::cannotComplete);
    EXPECT_EQ(write("AXPosition", point(1, 2)), std::nullopt);
}

TEST_F(SimulatedAccessibilityTest, WithoutTrustEveryQuestionFails) {
    desktop().trusted = false;

    EXPECT_EQ(failureOf(simulated().copyAttributeValue(element, "AXRole")), AXError::apiDisabled);
    EXPECT_EQ(failureOf(simulated().copyAttributeValue(applicationElement(), "AXWindows")), AXError::apiDisabled);
    EXPECT_EQ(failureOf(simulated().isAttributeSettable(element, "AXSize")), AXError::apiDisabled);
    EXPECT_EQ(write("AXSize", size(1, 1)), AXError::apiDisabled);
}

TEST_F(SimulatedAccessibilityTest, WhatIsGoneIsInvalid) {
    desktop().closeWindow(id);
    EXPECT_EQ(failureOf(simulated().copyAttributeValue(element, "AXRole")), AXError::invalidElement);
    EXPECT_EQ(write("AXPosition", point(1, 1)), AXError::invalidElement);

    const AXElement gone = applicationElement();
    desktop().removeProcess(pid);
    EXPECT_EQ(failureOf(simulated().copyAttributeValue(gone, "AXWindows")), AXError::invalidElement);
}

TEST_F(SimulatedAccessibilityTest, TheUserIsAskedOnlyWhileAccessIsMissing) {
    EXPECT_TRUE(simulated().isProcessTrustedWithPrompt());
    EXPECT_EQ(desktop().promptCount, 0);

    desktop().trusted = false;
    EXPECT_FALSE(simulated().isProcessTrusted());
    EXPECT_EQ(desktop().promptCount, 0);
    EXPECT_FALSE(simulated().isProcessTrustedWithPrompt());
    EXPECT_EQ(desktop().promptCount, 1);
}

}  // namespace
}  // namespace velmorand
