#include "platform/linux/LinuxAccessibility.h"
#include "platform/linux/support/LinuxAccessibilityFixture.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace velmorand {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using testing::Not;

/// A call on a window.
struct Call {
    std::string name;
    void (*make)(Accessibility& accessibility, const AXElement& window);

    friend void PrintTo(const Call& call, std::ostream* out) { *out << call.name; }
};

void read(Accessibility& accessibility, const AXElement& window) {
    static_cast<void>(accessibility.copyAttributeValue(window, ax_attribute::role));
}

void query(Accessibility& accessibility, const AXElement& window) {
    static_cast<void>(accessibility.isAttributeSettable(window, ax_attribute::size));
}

void writePosition(Accessibility& accessibility, const AXElement& window) {
    static_cast<void>(
        accessibility.setAttributeValue(window, ax_attribute::position, {AXValueType::point, Point{1, 2}}));
}

void writeSize(Accessibility& accessibility, const AXElement& window) {
    static_cast<void>(accessibility.setAttributeValue(window, ax_attribute::size, {AXValueType::size, Size{30, 40}}));
}

void writePositionAndRead(Accessibility& accessibility, const AXElement& window) {
    writePosition(accessibility, window);
    read(accessibility, window);
}

void writePositionAndQuery(Accessibility& accessibility, const AXElement& window) {
    writePosition(accessibility, window);
    query(accessibility, window);
}

/// Within which bounds the window system is called. Times are in nanoseconds from the start of the call.
class LinuxAccessibilityTimeoutTest : public LinuxAccessibilityFixture, public testing::WithParamInterface<Call> {
protected:
    /// Makes the call and tells how long each of the calls that it caused may take at most.
    std::vector<std::int64_t> boundsOfCallOn(const AXElement& window) {
        windowSystem.clearDeadlines();
        const Deadline start = std::chrono::steady_clock::now();
        GetParam().make(*accessibility, window);
        elapsed = std::chrono::nanoseconds(std::chrono::steady_clock::now() - start).count();

        std::vector<std::int64_t> bounds;
        for (const Deadline deadline : windowSystem.deadlines())
            bounds.push_back(std::chrono::nanoseconds(deadline - start).count());
        return bounds;
    }

    static constexpr std::int64_t usual = 750'000'000;
    static constexpr std::int64_t shorter = 100'000'000;
    std::int64_t elapsed = 0;
};

TEST_P(LinuxAccessibilityTimeoutTest, IsThreeQuartersOfASecondUnlessItWasSet) {
    const auto bounds = boundsOfCallOn(frontElement());

    EXPECT_THAT(bounds, AllOf(Not(IsEmpty()), Each(AllOf(Ge(usual), Le(usual + elapsed)))));
}

TEST_P(LinuxAccessibilityTimeoutTest, BoundsEveryLaterCallOnTheElementOnceSet) {
    accessibility->setMessagingTimeout(frontElement(), 0.1);

    const auto bounds = boundsOfCallOn(frontElement());

    EXPECT_THAT(bounds, AllOf(Not(IsEmpty()), Each(AllOf(Ge(shorter), Le(shorter + elapsed)))));
}

TEST_P(LinuxAccessibilityTimeoutTest, OfOneWindowLeavesTheOthersAlone) {
    accessibility->setMessagingTimeout(backElement(), 0.1);

    const auto bounds = boundsOfCallOn(frontElement());

    EXPECT_THAT(bounds, AllOf(Not(IsEmpty()), Each(Ge(usual))));
}

TEST_P(LinuxAccessibilityTimeoutTest, CanBeSetBack) {
    accessibility->setMessagingTimeout(frontElement(), 0.1);
    accessibility->setMessagingTimeout(frontElement(), 0.75);

    const auto bounds = boundsOfCallOn(frontElement());

    EXPECT_THAT(bounds, AllOf(Not(IsEmpty()), Each(Ge(usual))));
}

INSTANTIATE_TEST_SUITE_P(Calls, LinuxAccessibilityTimeoutTest,
                         testing::Values(Call{"Read", read}, Call{"Query", query}, Call{"WritePosition", writePosition},
                                         Call{"WriteSize", writeSize},
                                         Call{"WritePositionAndRead", writePositionAndRead},
                                         Call{"WritePositionAndQuery", writePositionAndQuery}),
                         [](const auto& each) { return each.param.name; });

/// A call that sends the held position of a window before it does its own work.
struct SendingCall {
    std::string name;
    void (*make)(Accessibility& accessibility, const AXElement& held, const AXElement& other);

    friend void PrintTo(const SendingCall& call, std::ostream* out) { *out << call.name; }
};

/// The position of a window is held, and sending it takes a while.
class LinuxAccessibilitySlowPlacingTest : public LinuxAccessibilityFixture,
                                          public testing::WithParamInterface<SendingCall> {
protected:
    void SetUp() override {
        ASSERT_THAT(setPosition(held, {10, 20}), Succeeds());
        windowSystem.clearDeadlines();
        windowSystem.whilePlacing = [this] {
            placing = std::min(placing, std::chrono::steady_clock::now());
            while (std::chrono::steady_clock::now() < placing + 1ms) {}
        };
    }

    AXElement held = frontElement();
    AXElement other = backElement();
    /// When the held position was being sent.
    Deadline placing = Deadline::max();
};

TEST_P(LinuxAccessibilitySlowPlacingTest, LeavesTheCallOnlyTheRestOfItsTime) {
    GetParam().make(*accessibility, held, other);

    EXPECT_THAT(windowSystem.writes(), Not(IsEmpty()));
    EXPECT_LE((windowSystem.deadlines().back() - placing).count(), std::chrono::nanoseconds(750ms).count());
}

INSTANTIATE_TEST_SUITE_P(
    Calls, LinuxAccessibilitySlowPlacingTest,
    testing::Values(
        SendingCall{"Read", [](Accessibility& calls, const AXElement& held, const AXElement&) { read(calls, held); }},
        SendingCall{"Query", [](Accessibility& calls, const AXElement& held, const AXElement&) { query(calls, held); }},
        SendingCall{"QueryOfAnother",
                    [](Accessibility& calls, const AXElement&, const AXElement& other) { query(calls, other); }},
        SendingCall{"PositionOfAnother", [](Accessibility& calls, const AXElement&,
                                            const AXElement& other) { writePosition(calls, other); }},
        SendingCall{"SizeOfAnother",
                    [](Accessibility& calls, const AXElement&, const AXElement& other) { writeSize(calls, other); }}),
    [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace velmorand
