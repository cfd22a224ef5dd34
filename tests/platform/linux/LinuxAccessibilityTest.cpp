#include "platform/linux/LinuxAccessibility.h"

#include "platform/linux/support/LinuxAccessibilityFixture.h"

#include <memory>
#include <vector>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Optional;
using testing::SizeIs;

using LinuxAccessibilityTest = LinuxAccessibilityFixture;

TEST_F(LinuxAccessibilityTest, IsTrustedWhileNothingIsMissing) {
    EXPECT_TRUE(accessibility->isProcessTrusted());
    EXPECT_TRUE(accessibility->isProcessTrustedWithPrompt());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LinuxAccessibilityTest, AnswersWithoutPromptSilently) {
    windowSystem.missing = TrustProblem{AXError::apiDisabled, "No window manager is running."};

    EXPECT_FALSE(accessibility->isProcessTrusted());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LinuxAccessibilityTest, TellsWhatIsMissingAsOneErrorLineWhenPrompted) {
    windowSystem.missing = TrustProblem{AXError::apiDisabled, "No window manager is running."};

    EXPECT_FALSE(accessibility->isProcessTrustedWithPrompt());
    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::error, "ax", "No window manager is running."}));
}

TEST_F(LinuxAccessibilityTest, ShowsWhatIsMissingWhenPromptedAndDoesNotWaitForIt) {
    userNotificationCenter.setAuthorization(NotificationAuthorization::authorized);
    windowSystem.missing = TrustProblem{AXError::apiDisabled, "No window manager is running."};

    EXPECT_FALSE(accessibility->isProcessTrustedWithPrompt());
    EXPECT_THAT(userNotificationCenter.shown(), IsEmpty());
    runLoop.runPending();

    EXPECT_THAT(userNotificationCenter.shown(),
                ElementsAre(testing::Pair("app.velmorand.Velmorand.trust",
                                          UserNotificationContent{"Velmorand", "No window manager is running."})));
}

TEST_F(LinuxAccessibilityTest, TakesBracesInTheSentenceAsTheyAre) {
    windowSystem.missing = TrustProblem{AXError::apiDisabled, "{} {0} {"};

    EXPECT_FALSE(accessibility->isProcessTrustedWithPrompt());
    EXPECT_TRUE(log.contains(LogLevel::error, "ax", "{} {0} {"));
}

TEST_F(LinuxAccessibilityTest, RefusesAttributesOfApplicationsWithoutTrust) {
    windowSystem.missing = TrustProblem{AXError::apiDisabled, "No window manager is running."};

    EXPECT_THAT(copy(application(), ax_attribute::windows), FailsWith(AXError::apiDisabled));
    EXPECT_THAT(copy(application(), ax_attribute::focusedWindow), FailsWith(AXError::apiDisabled));
    EXPECT_THAT(copy(application(), ax_attribute::mainWindow), FailsWith(AXError::apiDisabled));
    EXPECT_THAT(copy(application(), "AXTitle"), FailsWith(AXError::apiDisabled));
}

TEST_F(LinuxAccessibilityTest, RefusesAttributesOfWindowsWithoutTrust) {
    const AXElement window = frontElement();
    windowSystem.missing = TrustProblem{AXError::apiDisabled, "No window manager is running."};

    EXPECT_THAT(copy(window, ax_attribute::role), FailsWith(AXError::apiDisabled));
    EXPECT_THAT(copy(window, "AXTitle"), FailsWith(AXError::apiDisabled));
    EXPECT_THAT(accessibility->isAttributeSettable(window, ax_attribute::size), FailsWith(AXError::apiDisabled));
}

TEST_F(LinuxAccessibilityTest, SaysThatNobodyAnswersWhenTheConnectionIsLost) {
    const AXElement window = frontElement();
    windowSystem.missing = TrustProblem{AXError::cannotComplete, "The connection is lost."};

    EXPECT_THAT(copy(application(), ax_attribute::windows), FailsWith(AXError::cannotComplete));
    EXPECT_THAT(copy(window, ax_attribute::role), FailsWith(AXError::cannotComplete));
    EXPECT_THAT(accessibility->isAttributeSettable(window, ax_attribute::size), FailsWith(AXError::cannotComplete));
}

TEST_F(LinuxAccessibilityTest, ListsTheWindowsOfAnApplicationFrontToBack) {
    windowSystem.open(502, {0, 0, 10, 10});

    EXPECT_THAT(windowElements(), SizeIs(2));
    EXPECT_EQ(valueOf(copy(windowElements()[0], ax_attribute::position)),
              AXAttributeValue(AXBoxedValue{AXValueType::point, frontFrame.origin()}));
    EXPECT_EQ(valueOf(copy(windowElements()[1], ax_attribute::position)),
              AXAttributeValue(AXBoxedValue{AXValueType::point, backFrame.origin()}));
}

TEST_F(LinuxAccessibilityTest, KnowsTheFocusedAndTheMainWindow) {
    windowSystem.focused = back;

    EXPECT_EQ(valueOf(copy(application(), ax_attribute::focusedWindow)), AXAttributeValue(backElement()));
    EXPECT_EQ(valueOf(copy(application(), ax_attribute::mainWindow)), AXAttributeValue(frontElement()));
}

TEST_F(LinuxAccessibilityTest, HasNoValueForTheFocusedWindowWhenNoneIsTheApplications) {
    EXPECT_THAT(copy(application(), ax_attribute::focusedWindow), FailsWith(AXError::noValue));

    windowSystem.focused = windowSystem.open(502, {0, 0, 10, 10});
    EXPECT_THAT(copy(application(), ax_attribute::focusedWindow), FailsWith(AXError::noValue));
}

TEST_F(LinuxAccessibilityTest, FailsForAnApplicationThatIsGone) {
    const AXElement gone = accessibility->createApplication(777);

    EXPECT_THAT(copy(gone, ax_attribute::windows), FailsWith(AXError::invalidElement));
    EXPECT_THAT(copy(gone, ax_attribute::focusedWindow), FailsWith(AXError::invalidElement));
    EXPECT_THAT(copy(gone, ax_attribute::mainWindow), FailsWith(AXError::invalidElement));
}

TEST_F(LinuxAccessibilityTest, DoesNotKnowOtherAttributes) {
    EXPECT_THAT(copy(application(), "AXTitle"), FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(copy(application(), ax_attribute::position), FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(copy(application(), ""), FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(copy(frontElement(), "AXTitle"), FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(copy(frontElement(), ax_attribute::windows), FailsWith(AXError::attributeUnsupported));
    EXPECT_THAT(copy(frontElement(), "axrole"), FailsWith(AXError::attributeUnsupported));
}

TEST_F(LinuxAccessibilityTest, CopiesEveryAttributeOfAWindow) {
    windowSystem.window(front).attributes.minimized = true;
    const AXElement element = frontElement();

    EXPECT_EQ(valueOf(copy(element, ax_attribute::role)), AXAttributeValue("AXWindow"));
    EXPECT_EQ(valueOf(copy(element, ax_attribute::subrole)), AXAttributeValue("AXStandardWindow"));
    EXPECT_EQ(valueOf(copy(element, ax_attribute::minimized)), AXAttributeValue(true));
    EXPECT_EQ(valueOf(copy(element, ax_attribute::fullScreen)), AXAttributeValue(false));
    EXPECT_EQ(valueOf(copy(element, ax_attribute::position)),
              AXAttributeValue(AXBoxedValue{AXValueType::point, Point{100, 120}}));
    EXPECT_EQ(valueOf(copy(element, ax_attribute::size)),
              AXAttributeValue(AXBoxedValue{AXValueType::size, Size{800, 600}}));
}

TEST_F(LinuxAccessibilityTest, CopiesWhetherAWindowIsFullScreen) {
    windowSystem.window(front).attributes.fullScreen = true;

    EXPECT_EQ(valueOf(copy(frontElement(), ax_attribute::fullScreen)), AXAttributeValue(true));
    EXPECT_EQ(valueOf(copy(frontElement(), ax_attribute::minimized)), AXAttributeValue(false));
}

TEST_F(LinuxAccessibilityTest, HasNoValueForTheSubroleOfAWindowWithoutOne) {
    windowSystem.window(front).attributes.subrole = std::nullopt;

    EXPECT_THAT(copy(frontElement(), ax_attribute::subrole), FailsWith(AXError::noValue));
}

TEST_F(LinuxAccessibilityTest, FailsForAWindowThatIsGone) {
    const AXElement gone = frontElement();
    windowSystem.close(front);

    EXPECT_THAT(copy(gone, ax_attribute::role), FailsWith(AXError::invalidElement));
    EXPECT_THAT(accessibility->isAttributeSettable(gone, ax_attribute::size), FailsWith(AXError::invalidElement));
}

TEST_F(LinuxAccessibilityTest, FailsAsTheWindowSystemDoesWhenItDoesNotAnswer) {
    const AXElement element = frontElement();
    windowSystem.window(front).failure = AXError::cannotComplete;

    EXPECT_THAT(copy(element, ax_attribute::role), FailsWith(AXError::cannotComplete));
    EXPECT_THAT(accessibility->isAttributeSettable(element, ax_attribute::size), FailsWith(AXError::cannotComplete));
}

TEST_F(LinuxAccessibilityTest, SaysWhatAWindowAllowsToBeSet) {
    windowSystem.window(back).attributes.sizeSettable = false;
    const AXElement movable = backElement();

    EXPECT_THAT(accessibility->isAttributeSettable(frontElement(), ax_attribute::size), Optional(true));
    EXPECT_THAT(accessibility->isAttributeSettable(movable, ax_attribute::position), Optional(true));
    EXPECT_THAT(accessibility->isAttributeSettable(movable, ax_attribute::size), Optional(false));
    EXPECT_THAT(accessibility->isAttributeSettable(movable, ax_attribute::role), Optional(false));
    EXPECT_THAT(accessibility->isAttributeSettable(application(), ax_attribute::position), Optional(false));
}

TEST_F(LinuxAccessibilityTest, BoxesPointsAndSizes) {
    EXPECT_EQ(accessibility->createValue(Point{1, 2}), (AXBoxedValue{AXValueType::point, Point{1, 2}}));
    EXPECT_EQ(accessibility->createValue(Size{3, 4}), (AXBoxedValue{AXValueType::size, Size{3, 4}}));
}

TEST_F(LinuxAccessibilityTest, GivesEqualElementsForOneWindow) {
    windowSystem.focused = front;
    const AXElement listed = frontElement();
    const AXElement focused = std::get<AXElement>(copy(application(), ax_attribute::focusedWindow).value());

    EXPECT_EQ(listed, focused);
    EXPECT_EQ(listed.hash(), focused.hash());
    EXPECT_NE(listed, backElement());
}

TEST_F(LinuxAccessibilityTest, GivesEqualElementsForOneApplication) {
    EXPECT_EQ(application(), application());
    EXPECT_EQ(application().hash(), application().hash());
    EXPECT_NE(application(), accessibility->createApplication(502));
}

TEST_F(LinuxAccessibilityTest, NeverTakesAWindowForAnApplication) {
    const WindowID sameNumber = windowSystem.openWithNumberOf({static_cast<std::uint32_t>(pid), 0}, 502, frontFrame);
    const auto windows = copy(accessibility->createApplication(502), ax_attribute::windows);

    EXPECT_EQ(sameNumber.number, static_cast<std::uint32_t>(pid));
    EXPECT_NE(std::get<std::vector<AXElement>>(windows.value()).at(0), application());
}

TEST_F(LinuxAccessibilityTest, GivesAWindowWithAReusedNumberAnElementOfItsOwn) {
    const AXElement first = frontElement();
    windowSystem.close(front);
    windowSystem.openWithNumberOf(front, pid, {1, 2, 3, 4});

    EXPECT_NE(frontElement(), first);
    EXPECT_THAT(copy(first, ax_attribute::role), FailsWith(AXError::invalidElement));
    EXPECT_THAT(copy(frontElement(), ax_attribute::role), Succeeds());
}

/// An element that another platform made.
class ForeignBody final : public AXElementBody {
public:
    [[nodiscard]] bool equals(const AXElementBody& other) const override { return this == &other; }
    [[nodiscard]] std::size_t hash() const override { return 1; }
};

TEST_F(LinuxAccessibilityTest, RefusesElementsThatItDidNotMake) {
    const AXElement foreign(std::make_shared<ForeignBody>());

    EXPECT_THAT(copy(foreign, ax_attribute::role), FailsWith(AXError::invalidElement));
    EXPECT_THAT(setPosition(foreign, {1, 2}), Not(Succeeds()));
    EXPECT_THAT(windowSystem.writes(), IsEmpty());
}

}  // namespace
}  // namespace velmorand
