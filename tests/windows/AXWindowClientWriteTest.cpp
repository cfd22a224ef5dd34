#include "support/DesktopFixture.h"
#include "windows/AXWindowClient.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view notResponding = "The target app did not respond to Accessibility requests.";

LogLine info(std::string text) {
    return {LogLevel::info, "ax", std::move(text)};
}

LogLine error(std::string text) {
    return {LogLevel::error, "ax", std::move(text)};
}

class AXWindowClientWriteTest : public DesktopFixture {
protected:
    static constexpr Rect wanted{0, 25, 720, 875};

    SimulatedWindowID id = openWindow();
    AXElement element = elementOf(id);
    SimulatedWrite wholeFrame{id, Point{0, 25}, Size{720, 875}};
};

TEST_F(AXWindowClientWriteTest, SetPositionMovesTheWindowAndKeepsItsSize) {
    EXPECT_EQ(failureOf(axClient->setPosition(element, {7, -3})), std::nullopt);
    platform.runLoop().runPending();

    EXPECT_EQ(window(id).frame, (Rect{7, -3, 800, 600}));
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(AXWindowClientWriteTest, SetSizeResizesTheWindowAndKeepsItsPosition) {
    EXPECT_EQ(failureOf(axClient->setSize(element, {640, 480})), std::nullopt);

    EXPECT_EQ(window(id).frame, (Rect{100, 100, 640, 480}));
    EXPECT_THAT(logLines(), IsEmpty());
}

struct WriteFailure {
    AXError error;
    std::string positionMessage;
    std::string sizeMessage;
    std::string code;
};

std::vector<WriteFailure> writeFailures() {
    return {
        {AXError{-25204}, std::string(notResponding), std::string(notResponding), "-25204"},
        {AXError{-25205}, "Could not move the focused window (AX error -25205).",
         "Could not resize the focused window (AX error -25205).", "-25205"},
        {AXError{-25202}, "Could not move the focused window (AX error -25202).",
         "Could not resize the focused window (AX error -25202).", "-25202"},
        {AXError{-25200}, "Could not move the focused window (AX error -25200).",
         "Could not resize the focused window (AX error -25200).", "-25200"},
    };
}

TEST_F(AXWindowClientWriteTest, AFailedPositionWriteSaysThatTheWindowCouldNotBeMoved) {
    for (const WriteFailure& row : writeFailures()) {
        SCOPED_TRACE(row.code);
        clearRecords();
        window(id).positionWriteError = row.error;
        EXPECT_EQ(failureOf(axClient->setPosition(element, {1, 2})),
                  WindowOperationError::accessibility(row.positionMessage));
        EXPECT_THAT(logLines(), ElementsAre(error("set position failed AXError " + row.code)));
        EXPECT_THAT(writes(), IsEmpty());
    }
}

TEST_F(AXWindowClientWriteTest, AFailedSizeWriteSaysThatTheWindowCouldNotBeResized) {
    for (const WriteFailure& row : writeFailures()) {
        SCOPED_TRACE(row.code);
        clearRecords();
        window(id).sizeWriteError = row.error;
        EXPECT_EQ(failureOf(axClient->setSize(element, {1, 2})), WindowOperationError::accessibility(row.sizeMessage));
        EXPECT_THAT(logLines(), ElementsAre(error("set size failed AXError " + row.code)));
        EXPECT_THAT(writes(), IsEmpty());
    }
}

TEST_F(AXWindowClientWriteTest, AValueThatCannotBeBoxedIsAMissingWindowFrameAndNothingIsWritten) {
    platform.accessibility().failBoxing(true);

    EXPECT_EQ(failureOf(axClient->setPosition(element, {1, 2})), WindowOperationError::missingWindowFrame);
    EXPECT_EQ(failureOf(axClient->setSize(element, {3, 4})), WindowOperationError::missingWindowFrame);
    EXPECT_EQ(failureOf(axClient->setFrame(element, wanted)), WindowOperationError::missingWindowFrame);
    EXPECT_THAT(accessibility.calls(), ElementsAre("box", "box", "box"));
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(AXWindowClientWriteTest, SetFrameWritesPositionThenSizeOnceWhenTheWindowArrives) {
    const auto outcome = axClient->setFrame(element, wanted);

    EXPECT_EQ(valueOf(outcome), (FrameOutcome{wanted, wanted, true}));
    EXPECT_THAT(accessibility.calls(), ElementsAre("box", "set AXPosition of window", "box", "set AXSize of window",
                                                   "copy AXPosition of window", "copy AXSize of window",
                                                   "copy AXPosition of window", "copy AXSize of window"));
    EXPECT_THAT(writes(), ElementsAre(wholeFrame));
    EXPECT_THAT(logLines(), ElementsAre(info("final frame (0, 25, 720, 875)")));
}

TEST_F(AXWindowClientWriteTest, AWindowThatIsClampedIsWrittenExactlyTwiceAndReportedWithItsAchievedFrame) {
    window(id).minimumSize = {900, 400};

    const auto outcome = axClient->setFrame(element, wanted);

    EXPECT_EQ(valueOf(outcome), (FrameOutcome{wanted, Rect{0, 25, 900, 875}, false}));
    EXPECT_THAT(writes(), ElementsAre(wholeFrame, wholeFrame));
    EXPECT_THAT(logLines(),
                ElementsAre(info("retrying, achieved (0, 25, 900, 875)"), info("final frame (0, 25, 900, 875)")));
}

TEST_F(AXWindowClientWriteTest, TheRetryWritesPositionThenSizeAgain) {
    window(id).ignoresWrites = true;

    ASSERT_EQ(failureOf(axClient->setFrame(element, wanted)), std::nullopt);

    EXPECT_THAT(accessibility.calls(),
                ElementsAre("box", "set AXPosition of window", "box", "set AXSize of window",
                            "copy AXPosition of window", "copy AXSize of window", "box", "set AXPosition of window",
                            "box", "set AXSize of window", "copy AXPosition of window", "copy AXSize of window"));
}

TEST_F(AXWindowClientWriteTest, AWindowThatIsTwoPointsOffHasArrived) {
    window(id).maximumSize = Size{718, 1000};

    const auto outcome = axClient->setFrame(element, wanted);

    EXPECT_EQ(valueOf(outcome), (FrameOutcome{wanted, Rect{0, 25, 718, 875}, true}));
    EXPECT_THAT(writes(), ElementsAre(wholeFrame));
}

TEST_F(AXWindowClientWriteTest, AWindowThatIsThreePointsOffIsWrittenAgain) {
    window(id).maximumSize = Size{717, 1000};

    const auto outcome = axClient->setFrame(element, wanted);

    EXPECT_EQ(valueOf(outcome), (FrameOutcome{wanted, Rect{0, 25, 717, 875}, false}));
    EXPECT_THAT(writes(), ElementsAre(wholeFrame, wholeFrame));
}

TEST_F(AXWindowClientWriteTest, AWindowThatArrivesOnlyAtTheRetryHasArrived) {
    window(id).ignoresWrites = true;
    accessibility.interruptBefore("set AXPosition of window", 2, [this] { window(id).ignoresWrites = false; });

    const auto outcome = axClient->setFrame(element, wanted);

    EXPECT_EQ(valueOf(outcome), (FrameOutcome{wanted, wanted, true}));
    EXPECT_THAT(logLines(),
                ElementsAre(info("retrying, achieved (100, 100, 800, 600)"), info("final frame (0, 25, 720, 875)")));
}

TEST_F(AXWindowClientWriteTest, AFrameThatCannotBeReadBackIsUnknownAndHasNotArrived) {
    window(id).readErrors["AXSize"] = AXError::cannotComplete;

    const auto outcome = axClient->setFrame(element, wanted);

    EXPECT_EQ(valueOf(outcome), (FrameOutcome{wanted, std::nullopt, false}));
    EXPECT_THAT(writes(), ElementsAre(wholeFrame, wholeFrame));
    EXPECT_THAT(logLines(), ElementsAre(info("retrying, achieved unknown"), info("final frame unknown")));
}

TEST_F(AXWindowClientWriteTest, TheFinalFrameIsReadAfreshAfterTheCheck) {
    accessibility.interruptBefore("copy AXPosition of window", 2, [this] { window(id).frame = {50, 60, 70, 80}; });

    const auto outcome = axClient->setFrame(element, wanted);

    EXPECT_EQ(valueOf(outcome), (FrameOutcome{wanted, Rect{50, 60, 70, 80}, false}));
    EXPECT_THAT(writes(), ElementsAre(wholeFrame));
    EXPECT_THAT(logLines(), ElementsAre(info("final frame (50, 60, 70, 80)")));
}

TEST_F(AXWindowClientWriteTest, SetFrameEndsWithAFailedPositionWrite) {
    window(id).positionWriteError = AXError::attributeUnsupported;

    EXPECT_EQ(failureOf(axClient->setFrame(element, wanted)),
              WindowOperationError::accessibility("Could not move the focused window (AX error -25205)."));
    EXPECT_THAT(accessibility.calls(), ElementsAre("box", "set AXPosition of window"));
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(AXWindowClientWriteTest, SetFrameEndsWithAFailedSizeWriteAndThePositionIsNotSentEither) {
    window(id).sizeWriteError = AXError::cannotComplete;

    EXPECT_EQ(failureOf(axClient->setFrame(element, wanted)),
              WindowOperationError::accessibility(std::string(notResponding)));
    platform.runLoop().runPending();

    EXPECT_THAT(logLines(), ElementsAre(error("set size failed AXError -25204")));
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_EQ(window(id).frame, startFrame);
}

TEST_F(AXWindowClientWriteTest, SetFrameEndsWithAFailureOfTheRetry) {
    window(id).minimumSize = {900, 400};
    accessibility.interruptBefore("set AXSize of window", 2,
                                  [this] { window(id).sizeWriteError = AXError::cannotComplete; });

    EXPECT_EQ(failureOf(axClient->setFrame(element, wanted)),
              WindowOperationError::accessibility(std::string(notResponding)));
    EXPECT_THAT(writes(), ElementsAre(wholeFrame));
    EXPECT_THAT(logLines(),
                ElementsAre(info("retrying, achieved (0, 25, 900, 875)"), error("set size failed AXError -25204")));
}

TEST_F(AXWindowClientWriteTest, AWindowThatClosesBetweenTheWritesFailsTheSecondOne) {
    accessibility.interruptBefore("set AXSize of window", 1, [this] { desktop().closeWindow(id); });

    EXPECT_EQ(failureOf(axClient->setFrame(element, wanted)),
              WindowOperationError::accessibility("Could not resize the focused window (AX error -25202)."));
    EXPECT_THAT(writes(), IsEmpty());
}

TEST_F(AXWindowClientWriteTest, AFrozenApplicationCostsOneMessagingTimeout) {
    platform.accessibility().setMessagingTimeout(element, accessibilityMessagingTimeout);
    application().frozen = true;
    const MonotonicTime start = platform.runLoop().now();

    EXPECT_EQ(failureOf(axClient->setFrame(element, wanted)),
              WindowOperationError::accessibility(std::string(notResponding)));
    EXPECT_EQ(platform.runLoop().now() - start, std::chrono::milliseconds{750});
    EXPECT_THAT(logLines(), ElementsAre(error("set position failed AXError -25204")));
}

}  // namespace
}  // namespace velmorand
