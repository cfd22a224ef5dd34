#include "platform/simulated/SimulatedDesktop.h"

#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class SimulatedDesktopTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
};

TEST_F(SimulatedDesktopTest, AnApplicationThatIsAddedIsFrontmost) {
    desktop.addProcess(1);
    desktop.addProcess(2);

    EXPECT_EQ(desktop.frontmost, 2);
    EXPECT_EQ(desktop.process(1).pid, 1);
    EXPECT_EQ(desktop.findProcess(3), nullptr);
}

TEST_F(SimulatedDesktopTest, AWindowThatIsAddedIsInFrontFocusedAndMain) {
    desktop.addProcess(1);
    const SimulatedWindowID back = desktop.addWindow(1);
    const SimulatedWindowID front = desktop.addWindow(1);

    EXPECT_THAT(desktop.process(1).windows, ElementsAre(front, back));
    EXPECT_EQ(desktop.process(1).focusedWindow, front);
    EXPECT_EQ(desktop.process(1).mainWindow, front);
    EXPECT_EQ(desktop.ownerOf(back), desktop.findProcess(1));
}

TEST_F(SimulatedDesktopTest, AWindowThatClosesIsNoLongerFocusedAndItsIdIsNotUsedAgain) {
    desktop.addProcess(1);
    const SimulatedWindowID closed = desktop.addWindow(1);

    desktop.closeWindow(closed);

    EXPECT_THAT(desktop.process(1).windows, IsEmpty());
    EXPECT_EQ(desktop.process(1).focusedWindow, std::nullopt);
    EXPECT_EQ(desktop.process(1).mainWindow, std::nullopt);
    EXPECT_EQ(desktop.findWindow(closed), nullptr);
    EXPECT_EQ(desktop.ownerOf(closed), nullptr);
    EXPECT_NE(desktop.addWindow(1), closed);
}

TEST_F(SimulatedDesktopTest, TellsWhereEveryWindowIs) {
    desktop.addProcess(1);
    const SimulatedWindowID one = desktop.addWindow(1);
    desktop.addProcess(2);
    const SimulatedWindowID other = desktop.addWindow(2);
    desktop.window(other).frame = {1, 2, 3, 4};

    EXPECT_THAT(desktop.windowFrames(),
                ElementsAre(Pair(one, Rect{100, 100, 800, 600}), Pair(other, Rect{1, 2, 3, 4})));
}

TEST_F(SimulatedDesktopTest, AnApplicationThatEndsTakesItsWindowsWithIt) {
    desktop.addProcess(2);
    const SimulatedWindowID other = desktop.addWindow(2);
    desktop.addProcess(1);
    const SimulatedWindowID window = desktop.addWindow(1);

    desktop.removeProcess(1);

    EXPECT_EQ(desktop.findProcess(1), nullptr);
    EXPECT_EQ(desktop.findWindow(window), nullptr);
    EXPECT_EQ(desktop.frontmost, std::nullopt);
    EXPECT_NE(desktop.findWindow(other), nullptr);
}

TEST_F(SimulatedDesktopTest, AnApplicationBehindMayEndWithoutChangingWhatIsFrontmost) {
    desktop.addProcess(1);
    desktop.addProcess(2);

    desktop.removeProcess(1);

    EXPECT_EQ(desktop.frontmost, 2);
}

struct SizeRow {
    std::string_view name;
    Size minimum;
    std::optional<Size> maximum;
    Size step;
    Size wanted;
    Size taken;
};

TEST_F(SimulatedDesktopTest, AWindowTakesASizeWithinItsLimitsAndInItsSteps) {
    const std::vector<SizeRow> rows{
        {"no limits", {1, 1}, std::nullopt, {1, 1}, {640, 480}, {640, 480}},
        {"below the minimum", {300, 200}, std::nullopt, {1, 1}, {100, 480}, {300, 480}},
        {"above the maximum", {1, 1}, Size{500, 400}, {1, 1}, {640, 100}, {500, 100}},
        {"in steps above the minimum", {20, 10}, std::nullopt, {9, 17}, {720, 875}, {713, 860}},
        {"in steps below the maximum", {20, 10}, Size{100, 100}, {9, 17}, {720, 875}, {92, 95}},
        {"exactly on a step", {20, 10}, std::nullopt, {9, 17}, {713, 860}, {713, 860}},
    };
    desktop.addProcess(1);
    for (const SizeRow& row : rows) {
        SCOPED_TRACE(row.name);
        const SimulatedWindowID id = desktop.addWindow(1);
        desktop.window(id).minimumSize = row.minimum;
        desktop.window(id).maximumSize = row.maximum;
        desktop.window(id).sizeStep = row.step;
        desktop.applySize(id, row.wanted);
        EXPECT_EQ(desktop.window(id).frame.size(), row.taken);
    }
}

TEST_F(SimulatedDesktopTest, AWindowThatIgnoresWritesStaysAsItIs) {
    desktop.addProcess(1);
    const SimulatedWindowID id = desktop.addWindow(1);
    desktop.window(id).ignoresWrites = true;

    desktop.applyPosition(id, {1, 2});
    desktop.applySize(id, {3, 4});

    EXPECT_EQ(desktop.window(id).frame, (Rect{100, 100, 800, 600}));
}

}  // namespace
}  // namespace velmorand
