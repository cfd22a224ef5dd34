#include "windows/WindowKey.h"

#include "support/DesktopFixture.h"

#include <unordered_map>

namespace velmorand {
namespace {

class WindowKeyTest : public DesktopFixture {};

TEST_F(WindowKeyTest, KeysOfSeparatelyObtainedReferencesToOneWindowAreEqualAndHashEqual) {
    const SimulatedWindowID id = openWindow();
    const WindowKey first{elementOf(id)};
    const WindowKey second{elementOf(id)};

    EXPECT_TRUE(first == second);
    EXPECT_EQ(std::hash<WindowKey>{}(first), std::hash<WindowKey>{}(second));
}

TEST_F(WindowKeyTest, KeysOfTwoWindowsOfOneApplicationDiffer) {
    EXPECT_FALSE(WindowKey{elementOf(openWindow())} == WindowKey{elementOf(openWindow())});
}

TEST_F(WindowKeyTest, FindsAWindowAgainInAMap) {
    const SimulatedWindowID one = openWindow();
    const SimulatedWindowID two = openWindow();
    const std::unordered_map<WindowKey, int> numbers{{WindowKey{elementOf(one)}, 1}, {WindowKey{elementOf(two)}, 2}};

    EXPECT_EQ(numbers.at(WindowKey{elementOf(one)}), 1);
    EXPECT_EQ(numbers.at(WindowKey{elementOf(two)}), 2);
}

TEST_F(WindowKeyTest, AWrapperCarriesItsElement) {
    const AXElement element = elementOf(openWindow());

    EXPECT_EQ(UnsafeAXElementWrapper{element}.element, element);
}

}  // namespace
}  // namespace velmorand
