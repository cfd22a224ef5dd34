#include "platform/linux/x11/X11WorkAreas.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace velmorand {

void PrintTo(const X11Monitor& monitor, std::ostream* out) {
    *out << monitor.name << ' ' << describe(monitor.frame) << (monitor.primary ? " primary" : "");
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const X11Monitor primary{1, "primary", {1280, 480, 1920, 1080}, true};
const X11Monitor left{2, "left", {0, 500, 1280, 800}, false};
const X11Monitor above{3, "above", {1280, 0, 1600, 480}, false};
const X11Monitor leftAbove{4, "left above", {0, 0, 1280, 500}, false};

TEST(X11MonitorArrangementTest, OfNoMonitorsIsEmpty) {
    EXPECT_THAT(arranged({}), IsEmpty());
}

TEST(X11MonitorArrangementTest, PutsThePrimaryFirstAndTheOthersFromLeftToRightAndTopToBottom) {
    EXPECT_THAT(arranged({above, left, primary, leftAbove}), ElementsAre(primary, leftAbove, left, above));
}

TEST(X11MonitorArrangementTest, BeginsOnTheLeftWhenNoneIsPrimary) {
    X11Monitor wasPrimary = primary;
    wasPrimary.primary = false;

    EXPECT_THAT(arranged({wasPrimary, left, above}), ElementsAre(left, above, wasPrimary));
}

TEST(X11MonitorArrangementTest, LeavesOutMonitorsWithoutAnArea) {
    const X11Monitor noWidth{5, "no width", {0, 0, 0, 800}, true};
    const X11Monitor noHeight{6, "no height", {0, 0, 1280, 0}, false};

    EXPECT_THAT(arranged({noWidth, primary, noHeight}), ElementsAre(primary));
    EXPECT_THAT(arranged({noWidth, noHeight}), IsEmpty());
}

TEST(X11MonitorArrangementTest, ShowsMirroredMonitorsOnce) {
    const X11Monitor mirror{7, "mirror", left.frame, false};

    EXPECT_THAT(arranged({primary, left, mirror}), ElementsAre(primary, left));
}

TEST(X11MonitorArrangementTest, KeepsThePrimaryOneOfMirroredMonitors) {
    const X11Monitor mirror{7, "mirror", primary.frame, false};

    EXPECT_THAT(arranged({mirror, primary}), ElementsAre(primary));
}

TEST(X11MonitorArrangementTest, KeepsMonitorsThatOverlapOnlyInPart) {
    const X11Monitor smaller{8, "smaller", {1280, 480, 1280, 720}, false};

    EXPECT_THAT(arranged({smaller, primary}), ElementsAre(primary, smaller));
}

}  // namespace
}  // namespace velmorand
