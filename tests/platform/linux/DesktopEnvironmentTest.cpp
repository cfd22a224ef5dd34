#include "platform/linux/DesktopEnvironment.h"

#include "platform/linux/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace velmorand {
namespace {

struct DesktopRow {
    std::string name;
    std::string names;
    std::optional<DesktopEnvironment> expected;

    friend void PrintTo(const DesktopRow& row, std::ostream* out) { *out << row.name; }
};

class DesktopEnvironmentTest : public testing::TestWithParam<DesktopRow> {};

TEST_P(DesktopEnvironmentTest, IsTheFirstKnownOfItsNames) {
    EXPECT_EQ(desktopEnvironmentNamedIn(GetParam().names), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, DesktopEnvironmentTest,
                         testing::Values(DesktopRow{"Gnome", "GNOME", DesktopEnvironment::gnome},
                                         DesktopRow{"Kde", "KDE", DesktopEnvironment::kde},
                                         DesktopRow{"Xfce", "XFCE", DesktopEnvironment::xfce},
                                         DesktopRow{"Mate", "MATE", DesktopEnvironment::mate},
                                         DesktopRow{"Cinnamon", "X-Cinnamon", DesktopEnvironment::cinnamon},
                                         DesktopRow{"Lxqt", "LXQt", DesktopEnvironment::lxqt},
                                         DesktopRow{"AfterAnUnknownOne", "ubuntu:GNOME", DesktopEnvironment::gnome},
                                         DesktopRow{"TheFirstOfTwo", "KDE:GNOME", DesktopEnvironment::kde},
                                         DesktopRow{"AmongEmptyOnes", "::MATE:", DesktopEnvironment::mate},
                                         DesktopRow{"OtherCase", "gnome", std::nullopt},
                                         DesktopRow{"PartOfAName", "GNOME-Flashback", std::nullopt},
                                         DesktopRow{"WithASpace", " KDE", std::nullopt},
                                         DesktopRow{"Unknown", "i3", std::nullopt},
                                         DesktopRow{"None", "", std::nullopt}),
                         [](const auto& row) { return row.param.name; });

TEST(CurrentDesktopNamesTest, AreThoseOfTheEnvironment) {
    {
        const ScopedEnvironment names("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
        EXPECT_EQ(currentDesktopNames(), "ubuntu:GNOME");
    }
    const ScopedEnvironment none("XDG_CURRENT_DESKTOP", std::nullopt);
    EXPECT_EQ(currentDesktopNames(), "");
}

}  // namespace
}  // namespace velmorand
