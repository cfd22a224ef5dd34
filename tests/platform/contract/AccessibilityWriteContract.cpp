#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

#include <limits>

namespace velmorand {

std::optional<AXError> AccessibilityWriteContract::writePosition(const AXElement& element, Point position) {
    const auto written =
        accessibility().setAttributeValue(element, "AXPosition", AXBoxedValue{AXValueType::point, position});
    return written ? std::nullopt : std::optional(written.error());
}

std::optional<AXError> AccessibilityWriteContract::writeSize(const AXElement& element, Size size) {
    const auto written = accessibility().setAttributeValue(element, "AXSize", AXBoxedValue{AXValueType::size, size});
    return written ? std::nullopt : std::optional(written.error());
}

std::optional<Rect> AccessibilityWriteContract::readFrame(const AXElement& element) {
    const auto position = accessibility().copyAttributeValue(element, "AXPosition");
    const auto size = accessibility().copyAttributeValue(element, "AXSize");
    if (!position || !size) return std::nullopt;
    const auto point = std::get<Point>(std::get<AXBoxedValue>(*position).value);
    const auto extent = std::get<Size>(std::get<AXBoxedValue>(*size).value);
    return Rect{point.x, point.y, extent.width, extent.height};
}

TEST_P(AccessibilityWriteContract, AFrameIsThereWhenTheSizeWriteReturns) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    EXPECT_EQ(writePosition(element, {30, 50}), std::nullopt);
    EXPECT_EQ(writeSize(element, {520, 360}), std::nullopt);

    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{30, 50, 520, 360}));
    EXPECT_EQ(readFrame(element), (Rect{30, 50, 520, 360}));
}

TEST_P(AccessibilityWriteContract, AFrameCanBeWrittenAgainAndAgain) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);
    const std::vector<Rect> frames{{0, 0, 400, 600}, {400, 0, 400, 600}, {0, 300, 800, 300}, {200, 150, 400, 300}};

    for (const Rect& frame : frames) {
        SCOPED_TRACE(describe(frame));
        EXPECT_EQ(writePosition(element, frame.origin()), std::nullopt);
        EXPECT_EQ(writeSize(element, frame.size()), std::nullopt);
        EXPECT_EQ(desktop->trueFrameOf(window), frame);
    }
}

TEST_P(AccessibilityWriteContract, APositionAloneIsHeldUntilTheEndOfTheTurn) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    EXPECT_EQ(writePosition(element, {30, 50}), std::nullopt);
    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{100, 120, 400, 300}));

    EXPECT_TRUE(desktop->runUntil([&] { return desktop->trueFrameOf(window) == Rect{30, 50, 400, 300}; }, deadline));
}

TEST_P(AccessibilityWriteContract, AReadOfTheWindowSendsAHeldPosition) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    EXPECT_EQ(writePosition(element, {30, 50}), std::nullopt);

    EXPECT_EQ(readFrame(element), (Rect{30, 50, 400, 300}));
    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{30, 50, 400, 300}));
}

TEST_P(AccessibilityWriteContract, AStateQuerySendsAHeldPosition) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    EXPECT_EQ(writePosition(element, {30, 50}), std::nullopt);
    EXPECT_TRUE(accessibility().isAttributeSettable(element, "AXSize").has_value());

    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{30, 50, 400, 300}));
}

TEST_P(AccessibilityWriteContract, AWriteToAnotherWindowSendsAHeldPosition) {
    const ContractWindow first = desktop->openWindow({});
    const AXElement firstElement = elementOf(first);
    const ContractWindow second = desktop->openWindow({.applicationIdentifier = "org.example.Viewer"});
    const AXElement secondElement = elementOf(second);

    EXPECT_EQ(writePosition(firstElement, {30, 50}), std::nullopt);
    EXPECT_EQ(writePosition(secondElement, {60, 80}), std::nullopt);
    EXPECT_EQ(writeSize(secondElement, {500, 340}), std::nullopt);

    EXPECT_EQ(desktop->trueFrameOf(first), (Rect{30, 50, 400, 300}));
    EXPECT_EQ(desktop->trueFrameOf(second), (Rect{60, 80, 500, 340}));
}

TEST_P(AccessibilityWriteContract, ASizeAloneKeepsThePosition) {
    const ContractWindow window = desktop->openWindow({});

    EXPECT_EQ(writeSize(elementOf(window), {520, 360}), std::nullopt);

    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{100, 120, 520, 360}));
}

TEST_P(AccessibilityWriteContract, AFailedSizeWriteDropsTheHeldPosition) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    EXPECT_EQ(writePosition(element, {30, 50}), std::nullopt);
    EXPECT_EQ(writeSize(element, {std::numeric_limits<double>::infinity(), 300}), AXError::illegalArgument);
    finishTurn();

    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{100, 120, 400, 300}));
    EXPECT_EQ(readFrame(element), (Rect{100, 120, 400, 300}));
}

TEST_P(AccessibilityWriteContract, ANumberThatIsNotFiniteIsAnIllegalArgument) {
    const AXElement element = elementOf(desktop->openWindow({}));

    EXPECT_EQ(writePosition(element, {std::numeric_limits<double>::quiet_NaN(), 0}), AXError::illegalArgument);
    EXPECT_EQ(writePosition(element, {0, -std::numeric_limits<double>::infinity()}), AXError::illegalArgument);
    EXPECT_EQ(writeSize(element, {300, std::numeric_limits<double>::quiet_NaN()}), AXError::illegalArgument);
}

TEST_P(AccessibilityWriteContract, AValueOfTheWrongTypeIsAnIllegalArgument) {
    const AXElement element = elementOf(desktop->openWindow({}));

    const auto position =
        accessibility().setAttributeValue(element, "AXPosition", AXBoxedValue{AXValueType::size, Size{1, 1}});
    const auto size =
        accessibility().setAttributeValue(element, "AXSize", AXBoxedValue{AXValueType::point, Point{1, 1}});

    EXPECT_TRUE(position == std::unexpected(AXError::illegalArgument));
    EXPECT_TRUE(size == std::unexpected(AXError::illegalArgument));
}

TEST_P(AccessibilityWriteContract, OnlyPositionAndSizeOfWindowsCanBeWritten) {
    const ContractWindow window = desktop->openWindow({});
    const AXBoxedValue value{AXValueType::point, Point{1, 1}};

    EXPECT_TRUE(accessibility().setAttributeValue(elementOf(window), "AXRole", value) ==
                std::unexpected(AXError::attributeUnsupported));
    EXPECT_TRUE(accessibility().setAttributeValue(applicationOf(window), "AXPosition", value) ==
                std::unexpected(AXError::attributeUnsupported));
}

TEST_P(AccessibilityWriteContract, AWindowThatWasClosedFailsThePositionWrite) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    desktop->closeWindow(window);

    EXPECT_EQ(writePosition(element, {30, 50}), AXError::invalidElement);
    EXPECT_EQ(writeSize(element, {500, 340}), AXError::invalidElement);
}

TEST_P(AccessibilityWriteContract, AWindowThatClosesBetweenTheWritesFailsTheSizeWrite) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    EXPECT_EQ(writePosition(element, {30, 50}), std::nullopt);
    desktop->closeWindow(window);

    EXPECT_EQ(writeSize(element, {500, 340}), AXError::invalidElement);
}

TEST_P(AccessibilityWriteContract, AFullScreenWindowFailsThePositionWrite) {
    VELMORAND_NEEDS(Ability::makeWindowsFullScreen);
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);
    desktop->makeFullScreen(window);
    const Rect before = desktop->trueFrameOf(window);

    EXPECT_EQ(writePosition(element, {30, 50}), AXError::attributeUnsupported);
    finishTurn();

    EXPECT_EQ(desktop->trueFrameOf(window), before);
}

TEST_P(AccessibilityWriteContract, AWindowOfFixedSizeFailsTheSizeWrite) {
    VELMORAND_NEEDS(Ability::openFixedSizeWindows);
    const ContractWindow window = desktop->openWindow({.resizable = false});

    EXPECT_EQ(writeSize(elementOf(window), {500, 340}), AXError::attributeUnsupported);

    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{100, 120, 400, 300}));
}

TEST_P(AccessibilityWriteContract, AWriteThatIsOnlyClampedIsASuccess) {
    VELMORAND_NEEDS(Ability::limitWindowSizes);
    const ContractWindow window = desktop->openWindow({.frame = {100, 120, 500, 400}, .minimumSize = {500, 400}});
    const AXElement element = elementOf(window);

    EXPECT_EQ(writePosition(element, {30, 50}), std::nullopt);
    EXPECT_EQ(writeSize(element, {300, 200}), std::nullopt);

    EXPECT_EQ(readFrame(element), (Rect{30, 50, 500, 400}));
    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{30, 50, 500, 400}));
}

TEST_P(AccessibilityWriteContract, AWriteThatNobodyAnswersFailsWithinTheMessagingTimeout) {
    VELMORAND_NEEDS(Ability::stopAnswering);
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);
    accessibility().setMessagingTimeout(element, 0.75);
    desktop->stopAnswering(window);
    const MonotonicTime start = runLoop().now();

    const auto position = writePosition(element, {30, 50});
    const auto error = position ? position : writeSize(element, {520, 360});

    EXPECT_EQ(error, AXError::cannotComplete);
    EXPECT_LE(runLoop().now() - start, std::chrono::milliseconds{2 * 750 + 250});
}

}  // namespace velmorand
