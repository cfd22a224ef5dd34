#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

namespace velmorand {
namespace {

using testing::ElementsAre;

/// Beyond the largest process number of any system.
constexpr std::int32_t nobodysPid = 2'147'483'000;

template <typename Value>
std::optional<AXError> errorOf(const std::expected<Value, AXError>& result) {
    return result ? std::nullopt : std::optional(result.error());
}

template <typename Value>
std::optional<Value> read(Accessibility& accessibility, const AXElement& element, std::string_view attribute) {
    const auto value = accessibility.copyAttributeValue(element, attribute);
    return value && std::holds_alternative<Value>(*value) ? std::optional(std::get<Value>(*value)) : std::nullopt;
}

}  // namespace

TEST_P(AccessibilityContract, IsTrustedOnADesktopThatIsReady) {
    EXPECT_TRUE(accessibility().isProcessTrusted());
    EXPECT_TRUE(accessibility().isProcessTrustedWithPrompt());
}

TEST_P(AccessibilityContract, WithoutTrustQuestionsFailWithTheirCode) {
    VELMORAND_NEEDS(Ability::revokeTrust);
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    desktop->revokeTrust();

    EXPECT_FALSE(accessibility().isProcessTrusted());
    EXPECT_FALSE(accessibility().isProcessTrustedWithPrompt());
    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(element, "AXRole")), AXError::apiDisabled);
    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(applicationOf(window), "AXWindows")), AXError::apiDisabled);
}

TEST_P(AccessibilityContract, AProcessThatDoesNotExistShowsWhenItsElementIsUsed) {
    const AXElement nobody = accessibility().createApplication(nobodysPid);

    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(nobody, "AXFocusedWindow")), AXError::invalidElement);
    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(nobody, "AXWindows")), AXError::invalidElement);
}

TEST_P(AccessibilityContract, TheOnlyWindowIsFocusedAndMainAndListed) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement application = applicationOf(window);
    const AXElement element = elementOf(window);

    EXPECT_EQ(read<AXElement>(accessibility(), application, "AXMainWindow"), element);
    EXPECT_EQ(read<std::vector<AXElement>>(accessibility(), application, "AXWindows"), std::vector{element});
}

TEST_P(AccessibilityContract, ReferencesThatAreObtainedSeparatelyAreEqual) {
    const ContractWindow window = desktop->openWindow({});

    EXPECT_TRUE(elementOf(window) == elementOf(window));
    EXPECT_EQ(elementOf(window).hash(), elementOf(window).hash());
    EXPECT_TRUE(applicationOf(window) == applicationOf(window));
    EXPECT_FALSE(applicationOf(window) == elementOf(window));
}

TEST_P(AccessibilityContract, WindowsOfTwoApplicationsAreNotEqual) {
    const ContractWindow first = desktop->openWindow({});
    const AXElement firstElement = elementOf(first);
    const ContractWindow second = desktop->openWindow({.applicationIdentifier = "org.example.Viewer"});

    EXPECT_FALSE(elementOf(second) == firstElement);
}

TEST_P(AccessibilityContract, ListsTheWindowsOfOneApplicationFrontToBack) {
    VELMORAND_NEEDS(Ability::openSeveralWindowsPerApplication);
    const ContractWindow back = desktop->openWindow({});
    const AXElement backElement = elementOf(back);
    const ContractWindow front = desktop->openSibling(back, {200, 200, 300, 250});
    const AXElement frontElement = elementOf(front);

    EXPECT_EQ(read<std::vector<AXElement>>(accessibility(), applicationOf(back), "AXWindows"),
              (std::vector{frontElement, backElement}));

    desktop->focusWindow(back);
    EXPECT_EQ(elementOf(back), backElement);
    EXPECT_EQ(read<std::vector<AXElement>>(accessibility(), applicationOf(back), "AXWindows"),
              (std::vector{backElement, frontElement}));
}

TEST_P(AccessibilityContract, AnOrdinaryWindowSaysWhatItIs) {
    const AXElement element = elementOf(desktop->openWindow({}));

    EXPECT_EQ(read<std::string>(accessibility(), element, "AXRole"), "AXWindow");
    EXPECT_EQ(read<std::string>(accessibility(), element, "AXSubrole"), "AXStandardWindow");
    EXPECT_EQ(read<bool>(accessibility(), element, "AXMinimized"), false);
    EXPECT_EQ(read<bool>(accessibility(), element, "AXFullScreen"), false);
}

TEST_P(AccessibilityContract, AnUnknownAttributeIsUnsupported) {
    const ContractWindow window = desktop->openWindow({});

    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(elementOf(window), "AXNonsense")),
              AXError::attributeUnsupported);
    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(applicationOf(window), "AXNonsense")),
              AXError::attributeUnsupported);
}

TEST_P(AccessibilityContract, PositionAndSizeAreBoxedAndMeanWhatTheUserSees) {
    const ContractWindow window = desktop->openWindow({.frame = {150, 90, 420, 310}});
    const AXElement element = elementOf(window);

    EXPECT_EQ(desktop->trueFrameOf(window), (Rect{150, 90, 420, 310}));
    EXPECT_EQ(read<AXBoxedValue>(accessibility(), element, "AXPosition"),
              (AXBoxedValue{AXValueType::point, Point{150, 90}}));
    EXPECT_EQ(read<AXBoxedValue>(accessibility(), element, "AXSize"),
              (AXBoxedValue{AXValueType::size, Size{420, 310}}));
}

TEST_P(AccessibilityContract, TheFrameIsReadAfresh) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    desktop->placeByHand(window, {40, 60, 500, 350});

    EXPECT_EQ(read<AXBoxedValue>(accessibility(), element, "AXPosition"),
              (AXBoxedValue{AXValueType::point, Point{40, 60}}));
    EXPECT_EQ(read<AXBoxedValue>(accessibility(), element, "AXSize"),
              (AXBoxedValue{AXValueType::size, Size{500, 350}}));
}

TEST_P(AccessibilityContract, AWindowSaysThatItIsMinimised) {
    VELMORAND_NEEDS(Ability::minimiseWindows);
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    desktop->minimiseWindow(window);

    EXPECT_EQ(read<bool>(accessibility(), element, "AXMinimized"), true);
}

TEST_P(AccessibilityContract, AWindowSaysThatItIsFullScreen) {
    VELMORAND_NEEDS(Ability::makeWindowsFullScreen);
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    desktop->makeFullScreen(window);

    EXPECT_EQ(read<bool>(accessibility(), element, "AXFullScreen"), true);
}

TEST_P(AccessibilityContract, PositionAndSizeOfAnOrdinaryWindowAreSettableAndNothingElse) {
    const AXElement element = elementOf(desktop->openWindow({}));

    EXPECT_EQ(accessibility().isAttributeSettable(element, "AXPosition").value_or(false), true);
    EXPECT_EQ(accessibility().isAttributeSettable(element, "AXSize").value_or(false), true);
    EXPECT_EQ(accessibility().isAttributeSettable(element, "AXRole").value_or(false), false);
}

TEST_P(AccessibilityContract, TheSizeOfAWindowOfFixedSizeIsNotSettable) {
    VELMORAND_NEEDS(Ability::openFixedSizeWindows);
    const AXElement element = elementOf(desktop->openWindow({.resizable = false}));

    const auto settable = accessibility().isAttributeSettable(element, "AXSize");
    ASSERT_TRUE(settable.has_value());
    EXPECT_FALSE(*settable);
}

TEST_P(AccessibilityContract, AWindowThatWasClosedIsInvalid) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement element = elementOf(window);

    desktop->closeWindow(window);

    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(element, "AXRole")), AXError::invalidElement);
    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(element, "AXPosition")), AXError::invalidElement);
    EXPECT_EQ(errorOf(accessibility().isAttributeSettable(element, "AXSize")), AXError::invalidElement);
}

TEST_P(AccessibilityContract, AnApplicationThatEndedIsInvalid) {
    const ContractWindow window = desktop->openWindow({});
    const AXElement application = applicationOf(window);

    desktop->endApplicationOf(window);

    EXPECT_EQ(errorOf(accessibility().copyAttributeValue(application, "AXWindows")), AXError::invalidElement);
}

TEST_P(AccessibilityContract, AnApplicationInTheBackgroundHasNoFocusedWindowOrItsOwn) {
    const ContractWindow first = desktop->openWindow({});
    const AXElement firstElement = elementOf(first);
    const AXElement firstApplication = applicationOf(first);
    desktop->openWindow({.applicationIdentifier = "org.example.Viewer"});

    EXPECT_EQ(read<AXElement>(accessibility(), firstApplication, "AXFocusedWindow").value_or(firstElement),
              firstElement);
    EXPECT_EQ(read<AXElement>(accessibility(), firstApplication, "AXMainWindow"), firstElement);
}

TEST_P(AccessibilityContract, BoxesPointsAndSizes) {
    EXPECT_EQ(accessibility().createValue(Point{1.5, -2}), (AXBoxedValue{AXValueType::point, Point{1.5, -2}}));
    EXPECT_EQ(accessibility().createValue(Size{3, 4}), (AXBoxedValue{AXValueType::size, Size{3, 4}}));
}

}  // namespace velmorand
