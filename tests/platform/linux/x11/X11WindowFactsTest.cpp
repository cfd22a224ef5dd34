#include "platform/linux/x11/X11WindowFacts.h"

#include "platform/linux/support/PropertyValues.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace velmorand {
namespace {

struct WindowTypeRow {
    std::string name;
    X11PropertyValue property;
    bool isTransient = false;
    X11WindowType type{};

    friend void PrintTo(const WindowTypeRow& row, std::ostream* out) { *out << row.name; }
};

/// Atoms as a server could have given them.
xcb_atom_t atomOf(X11AtomName name) {
    return 1000 + static_cast<xcb_atom_t>(name);
}

X11Atoms someAtoms() {
    X11Atoms::Values values{};
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = atomOf(static_cast<X11AtomName>(i));
    return X11Atoms(values);
}

X11PropertyValue typesProperty(const std::vector<X11AtomName>& names) {
    std::vector<std::uint32_t> atoms;
    for (const X11AtomName name : names) atoms.push_back(atomOf(name));
    return itemsProperty(XCB_ATOM_ATOM, atoms);
}

class X11WindowTypeTest : public testing::TestWithParam<WindowTypeRow> {};

TEST_P(X11WindowTypeTest, IsWhatTheTableSays) {
    EXPECT_EQ(decodeWindowType(GetParam().property, someAtoms(), GetParam().isTransient), GetParam().type);
}

using enum X11AtomName;

INSTANTIATE_TEST_SUITE_P(
    Known, X11WindowTypeTest,
    testing::Values(
        WindowTypeRow{"Normal", typesProperty({netWMWindowTypeNormal}), false, X11WindowType::normal},
        WindowTypeRow{"NormalOfATransient", typesProperty({netWMWindowTypeNormal}), true, X11WindowType::normal},
        WindowTypeRow{"Dialog", typesProperty({netWMWindowTypeDialog}), false, X11WindowType::dialog},
        WindowTypeRow{"Utility", typesProperty({netWMWindowTypeUtility}), false, X11WindowType::utility},
        WindowTypeRow{"Desktop", typesProperty({netWMWindowTypeDesktop}), false, X11WindowType::desktop},
        WindowTypeRow{"Dock", typesProperty({netWMWindowTypeDock}), false, X11WindowType::dock},
        WindowTypeRow{"Toolbar", typesProperty({netWMWindowTypeToolbar}), false, X11WindowType::toolbar},
        WindowTypeRow{"Menu", typesProperty({netWMWindowTypeMenu}), false, X11WindowType::menu},
        WindowTypeRow{"DropdownMenu", typesProperty({netWMWindowTypeDropdownMenu}), false, X11WindowType::menu},
        WindowTypeRow{"PopupMenu", typesProperty({netWMWindowTypePopupMenu}), false, X11WindowType::menu},
        WindowTypeRow{"Tooltip", typesProperty({netWMWindowTypeTooltip}), false, X11WindowType::notification},
        WindowTypeRow{"Notification", typesProperty({netWMWindowTypeNotification}), false, X11WindowType::notification},
        WindowTypeRow{"Splash", typesProperty({netWMWindowTypeSplash}), false, X11WindowType::splash},
        WindowTypeRow{"TheFirstThatIsKnown", typesProperty({netWMState, netWMWindowTypeDock, netWMWindowTypeNormal}),
                      false, X11WindowType::dock}),
    [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Unknown, X11WindowTypeTest,
    testing::Values(
        WindowTypeRow{"NothingSaid", {}, false, X11WindowType::normal},
        WindowTypeRow{"NothingSaidByATransient", {}, true, X11WindowType::dialog},
        WindowTypeRow{"EmptyList", itemsProperty(XCB_ATOM_ATOM, {}), false, X11WindowType::normal},
        WindowTypeRow{"EmptyListOfATransient", itemsProperty(XCB_ATOM_ATOM, {}), true, X11WindowType::dialog},
        WindowTypeRow{"WrongType", cardinals({7000}), false, X11WindowType::normal},
        WindowTypeRow{"WrongTypeOfATransient", cardinals({7000}), true, X11WindowType::dialog},
        WindowTypeRow{"Format8", withFormat(8, itemsProperty(XCB_ATOM_ATOM, {7000})), false, X11WindowType::normal},
        WindowTypeRow{"OnlyUnknownOnes", itemsProperty(XCB_ATOM_ATOM, {7000, 0xFFFFFFFF}), false, X11WindowType::other},
        WindowTypeRow{"OnlyUnknownOnesOfATransient", itemsProperty(XCB_ATOM_ATOM, {7000}), true, X11WindowType::other}),
    [](const auto& each) { return each.param.name; });

class X11OrdinaryWindowTest : public testing::TestWithParam<std::pair<X11WindowType, bool>> {};

TEST_P(X11OrdinaryWindowTest, IsWhatTheTableSays) {
    X11WindowFacts facts;
    facts.type = GetParam().first;

    EXPECT_EQ(facts.isOrdinary(), GetParam().second);
}

TEST_P(X11OrdinaryWindowTest, IsNeverOneThatTheWindowManagerDoesNotManage) {
    X11WindowFacts facts;
    facts.type = GetParam().first;
    facts.overrideRedirect = true;

    EXPECT_FALSE(facts.isOrdinary());
}

INSTANTIATE_TEST_SUITE_P(
    Table, X11OrdinaryWindowTest,
    testing::Values(std::pair(X11WindowType::normal, true), std::pair(X11WindowType::dialog, true),
                    std::pair(X11WindowType::utility, true), std::pair(X11WindowType::desktop, true),
                    std::pair(X11WindowType::toolbar, true), std::pair(X11WindowType::other, true),
                    std::pair(X11WindowType::dock, false), std::pair(X11WindowType::menu, false),
                    std::pair(X11WindowType::splash, false), std::pair(X11WindowType::notification, false)),
    [](const auto& each) { return "Type" + std::to_string(std::to_underlying(each.param.first)); });

struct MinimizedRow {
    std::string name;
    bool iconic = false;
    bool hidden = false;
    bool shaded = false;
    bool minimized = false;

    friend void PrintTo(const MinimizedRow& row, std::ostream* out) { *out << row.name; }
};

class X11MinimizedWindowTest : public testing::TestWithParam<MinimizedRow> {};

TEST_P(X11MinimizedWindowTest, IsWhatTheTableSays) {
    X11WindowFacts facts;
    facts.iconic = GetParam().iconic;
    facts.hidden = GetParam().hidden;
    facts.shaded = GetParam().shaded;

    EXPECT_EQ(facts.isMinimized(), GetParam().minimized);
}

INSTANTIATE_TEST_SUITE_P(Table, X11MinimizedWindowTest,
                         testing::Values(MinimizedRow{"Shown", false, false, false, false},
                                         MinimizedRow{"Iconic", true, false, false, true},
                                         MinimizedRow{"Hidden", false, true, false, true},
                                         MinimizedRow{"Shaded", false, false, true, false},
                                         MinimizedRow{"ShadedAndHidden", false, true, true, false},
                                         MinimizedRow{"ShadedAndIconic", true, false, true, false},
                                         MinimizedRow{"ShadedAndBoth", true, true, true, false}),
                         [](const auto& each) { return each.param.name; });

TEST(X11MaximizedWindowTest, IsMaximizedInOneDirectionOrBoth) {
    X11WindowFacts horizontally;
    horizontally.maximizedHorizontally = true;
    X11WindowFacts vertically;
    vertically.maximizedVertically = true;

    EXPECT_TRUE(horizontally.isMaximized());
    EXPECT_TRUE(vertically.isMaximized());
    EXPECT_FALSE(X11WindowFacts().isMaximized());
}

TEST(X11FailureTest, BecomesTheAccessibilityErrorThatItMeans) {
    EXPECT_EQ(asAXError(X11Failure::error), AXError::invalidElement);
    EXPECT_EQ(asAXError(X11Failure::timeout), AXError::cannotComplete);
    EXPECT_EQ(asAXError(X11Failure::lost), AXError::cannotComplete);
}

}  // namespace
}  // namespace velmorand
