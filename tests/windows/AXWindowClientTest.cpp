#include "windows/AXWindowClient.h"

#include "support/DesktopFixture.h"

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AXWindowClientTest : public DesktopFixture {
protected:
    SimulatedWindowID id = openWindow();
    AXElement element = elementOf(id);
};

TEST_F(AXWindowClientTest, ReadsAnElementAttribute) {
    EXPECT_EQ(valueOf(axClient->elementAttribute("AXFocusedWindow", applicationElement())), element);
}

TEST_F(AXWindowClientTest, AnElementAttributeThatCannotBeReadIsNoFocusedWindow) {
    application().focusedWindow.reset();

    EXPECT_EQ(failureOf(axClient->elementAttribute("AXFocusedWindow", applicationElement())),
              WindowOperationError::noFocusedWindow);
}

TEST_F(AXWindowClientTest, AnElementAttributeWithoutAValueIsNoFocusedWindow) {
    window(id).readOverrides["AXParent"] = AXOtherValue{};

    EXPECT_EQ(failureOf(axClient->elementAttribute("AXParent", element)), WindowOperationError::noFocusedWindow);
}

TEST_F(AXWindowClientTest, AnElementAttributeThatIsAnotherKindOfValueIsNoFocusedWindow) {
    EXPECT_EQ(failureOf(axClient->elementAttribute("AXRole", element)), WindowOperationError::noFocusedWindow);
}

TEST_F(AXWindowClientTest, ReadsAStringAttribute) {
    EXPECT_EQ(axClient->stringAttribute("AXRole", element), "AXWindow");
}

TEST_F(AXWindowClientTest, AStringAttributeThatCannotBeReadIsAbsent) {
    window(id).readErrors["AXRole"] = AXError::cannotComplete;

    EXPECT_EQ(axClient->stringAttribute("AXRole", element), std::nullopt);
}

TEST_F(AXWindowClientTest, AStringAttributeThatIsAnotherKindOfValueIsAbsent) {
    EXPECT_EQ(axClient->stringAttribute("AXMinimized", element), std::nullopt);
}

TEST_F(AXWindowClientTest, ReadsABooleanAttribute) {
    window(id).minimized = true;

    EXPECT_TRUE(axClient->booleanAttribute("AXMinimized", element));
}

TEST_F(AXWindowClientTest, ABooleanAttributeThatReadsAsFalseIsFalseWhateverTheDefault) {
    EXPECT_FALSE(axClient->booleanAttribute("AXMinimized", element, true));
}

TEST_F(AXWindowClientTest, ABooleanAttributeThatCannotBeReadIsFalseByDefault) {
    window(id).readErrors["AXMinimized"] = AXError::attributeUnsupported;

    EXPECT_FALSE(axClient->booleanAttribute("AXMinimized", element));
    EXPECT_TRUE(axClient->booleanAttribute("AXMinimized", element, true));
}

TEST_F(AXWindowClientTest, ABooleanAttributeThatIsAnotherKindOfValueIsTheDefault) {
    window(id).readOverrides["AXMinimized"] = std::string("true");

    EXPECT_FALSE(axClient->booleanAttribute("AXMinimized", element));
    EXPECT_TRUE(axClient->booleanAttribute("AXMinimized", element, true));
}

TEST_F(AXWindowClientTest, ReadsABoxedValueOfTheAskedType) {
    EXPECT_EQ(valueOf(axClient->valueAttribute("AXPosition", AXValueType::point, element)),
              (AXBoxedValue{AXValueType::point, Point{100, 100}}));
    EXPECT_EQ(valueOf(axClient->valueAttribute("AXSize", AXValueType::size, element)),
              (AXBoxedValue{AXValueType::size, Size{800, 600}}));
}

TEST_F(AXWindowClientTest, ABoxedValueOfAnotherTypeIsAMissingWindowFrame) {
    EXPECT_EQ(failureOf(axClient->valueAttribute("AXPosition", AXValueType::size, element)),
              WindowOperationError::missingWindowFrame);
}

TEST_F(AXWindowClientTest, ABoxedValueThatIsMissingIsAMissingWindowFrame) {
    window(id).readErrors["AXPosition"] = AXError::noValue;

    EXPECT_EQ(failureOf(axClient->valueAttribute("AXPosition", AXValueType::point, element)),
              WindowOperationError::missingWindowFrame);
}

TEST_F(AXWindowClientTest, AnAttributeThatIsNotBoxedIsAMissingWindowFrame) {
    EXPECT_EQ(failureOf(axClient->valueAttribute("AXRole", AXValueType::point, element)),
              WindowOperationError::missingWindowFrame);
}

TEST_F(AXWindowClientTest, ListsTheWindowsOfAnApplicationFrontToBack) {
    const SimulatedWindowID front = openWindow();

    EXPECT_THAT(axClient->windowList(applicationElement()), ElementsAre(elementOf(front), element));
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(AXWindowClientTest, AWindowListThatCannotBeReadIsEmptyAndLogged) {
    application().windowListError = AXError::cannotComplete;

    EXPECT_THAT(axClient->windowList(applicationElement()), IsEmpty());
    EXPECT_THAT(logLines(), ElementsAre(LogLine{LogLevel::error, "ax", "read windows failed AXError -25204"}));
}

TEST_F(AXWindowClientTest, AWindowListOfAnotherKindOfValueIsEmpty) {
    window(id).readOverrides["AXWindows"] = std::string("none");

    EXPECT_THAT(axClient->windowList(element), IsEmpty());
}

TEST_F(AXWindowClientTest, ReadsAFrameFromPositionAndSize) {
    window(id).frame = {-20.5, 30, 640, 480.25};

    EXPECT_EQ(valueOf(axClient->readFrame(element)), (Rect{-20.5, 30, 640, 480.25}));
}

struct UnreadableFrame {
    std::string_view name;
    std::function<void(SimulatedWindow&)> spoil;
};

TEST_F(AXWindowClientTest, AFrameThatCannotBeReadIsAMissingWindowFrame) {
    const std::vector<UnreadableFrame> rows{
        {"position unreadable", [](auto& window) { window.readErrors["AXPosition"] = AXError::cannotComplete; }},
        {"size unreadable", [](auto& window) { window.readErrors["AXSize"] = AXError::cannotComplete; }},
        {"position is a text", [](auto& window) { window.readOverrides["AXPosition"] = std::string("0, 0"); }},
        {"position is a size",
         [](auto& window) { window.readOverrides["AXPosition"] = AXBoxedValue{AXValueType::size, Size{1, 1}}; }},
        {"size is a point",
         [](auto& window) { window.readOverrides["AXSize"] = AXBoxedValue{AXValueType::point, Point{1, 1}}; }},
        {"a size without content",
         [](auto& window) { window.readOverrides["AXSize"] = AXBoxedValue{AXValueType::size, {}}; }},
        {"width 0", [](auto& window) { window.frame.width = 0; }},
        {"height 0", [](auto& window) { window.frame.height = 0; }},
        {"negative width", [](auto& window) { window.frame.width = -1; }},
        {"negative height", [](auto& window) { window.frame.height = -1; }},
    };
    for (const UnreadableFrame& row : rows) {
        SCOPED_TRACE(row.name);
        const SimulatedWindowID spoiled = openWindow();
        row.spoil(window(spoiled));
        EXPECT_EQ(failureOf(axClient->readFrame(elementOf(spoiled))), WindowOperationError::missingWindowFrame);
    }
}

TEST_F(AXWindowClientTest, TheFrameOfAClosedWindowIsMissing) {
    desktop().closeWindow(id);

    EXPECT_EQ(failureOf(axClient->readFrame(element)), WindowOperationError::missingWindowFrame);
}

TEST_F(AXWindowClientTest, AFrameCanBeSetWhenPositionAndSizeAreSettable) {
    EXPECT_TRUE(axClient->canSetFrame(element));
    EXPECT_THAT(accessibility.calls(), ElementsAre("settable AXPosition of window", "settable AXSize of window"));
}

TEST_F(AXWindowClientTest, AFrameCannotBeSetWithoutASettablePositionAndTheSizeIsNotAsked) {
    window(id).positionSettable = false;

    EXPECT_FALSE(axClient->canSetFrame(element));
    EXPECT_THAT(accessibility.calls(), ElementsAre("settable AXPosition of window"));
}

TEST_F(AXWindowClientTest, AFrameCannotBeSetWithoutASettableSize) {
    window(id).sizeSettable = false;

    EXPECT_FALSE(axClient->canSetFrame(element));
}

TEST_F(AXWindowClientTest, AFrameCannotBeSetWhenTheQuestionFails) {
    desktop().closeWindow(id);

    EXPECT_FALSE(axClient->canSetFrame(element));
}

TEST_F(AXWindowClientTest, AnEligibleWindowPassesAllFiveChecksInOrder) {
    EXPECT_TRUE(axClient->isEligibleWindow(element));
    EXPECT_THAT(accessibility.calls(),
                ElementsAre("copy AXRole of window", "copy AXMinimized of window", "copy AXFullScreen of window",
                            "settable AXPosition of window", "settable AXSize of window"));
}

struct IneligibleWindow {
    std::string_view name;
    std::function<void(SimulatedWindow&)> spoil;
    std::size_t checksMade;
};

TEST_F(AXWindowClientTest, AWindowIsIneligibleFromTheFirstCheckItFails) {
    const std::vector<IneligibleWindow> rows{
        {"another role", [](auto& window) { window.role = "AXSheet"; }, 1},
        {"no role", [](auto& window) { window.role.reset(); }, 1},
        {"role of another kind", [](auto& window) { window.readOverrides["AXRole"] = true; }, 1},
        {"minimised", [](auto& window) { window.minimized = true; }, 2},
        {"full screen", [](auto& window) { window.fullScreen = true; }, 3},
        {"position not settable", [](auto& window) { window.positionSettable = false; }, 4},
        {"size not settable", [](auto& window) { window.sizeSettable = false; }, 5},
    };
    for (const IneligibleWindow& row : rows) {
        SCOPED_TRACE(row.name);
        const SimulatedWindowID spoiled = openWindow();
        row.spoil(window(spoiled));
        accessibility.clearCalls();
        EXPECT_FALSE(axClient->isEligibleWindow(elementOf(spoiled)));
        EXPECT_EQ(accessibility.calls().size(), row.checksMade);
    }
}

TEST_F(AXWindowClientTest, AWindowIsEligibleWhenItCannotSayWhetherItIsMinimisedOrFullScreen) {
    window(id).readErrors["AXMinimized"] = AXError::attributeUnsupported;
    window(id).readErrors["AXFullScreen"] = AXError::attributeUnsupported;

    EXPECT_TRUE(axClient->isEligibleWindow(element));
}

TEST_F(AXWindowClientTest, TheSubroleDoesNotDecideWhetherAWindowIsEligible) {
    window(id).subrole = "AXDialog";

    EXPECT_TRUE(axClient->isEligibleWindow(element));
}

}  // namespace
}  // namespace velmorand
