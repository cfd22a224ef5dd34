#include "platform/linux/ApplicationIdentity.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <random>
#include <set>
#include <string>

namespace velmorand {
namespace {

struct SandboxRow {
    std::string name;
    std::string text;
    std::optional<std::string> expected;

    friend void PrintTo(const SandboxRow& row, std::ostream* out) { *out << row.name; }
};

class SandboxInformationTest : public testing::TestWithParam<SandboxRow> {};

TEST_P(SandboxInformationTest, NamesTheApplicationOfTheTable) {
    EXPECT_EQ(applicationIDFromSandboxInformation(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SandboxInformationTest,
    testing::Values(
        SandboxRow{"Usual", "[Application]\nname=org.example.Editor\nruntime=runtime/org.example.Platform/x86_64/1\n",
                   "org.example.Editor"},
        SandboxRow{"LaterGroup", "[Instance]\ninstance-id=1\n\n[Application]\nruntime=r\nname=org.example.Editor",
                   "org.example.Editor"},
        SandboxRow{"RuntimeOnly", "[Runtime]\nname=org.example.Platform\n", std::nullopt},
        SandboxRow{"OnlyInAnotherGroup", "[Application]\nruntime=r\n[Instance]\nname=other\n", std::nullopt},
        SandboxRow{"BeforeTheGroup", "name=other\n[Application]\n", std::nullopt},
        SandboxRow{"EmptyName", "[Application]\nname=\n", std::nullopt},
        SandboxRow{"OtherKey", "[Application]\nname2=other\nnames=other\n", std::nullopt},
        SandboxRow{"Empty", "", std::nullopt}, SandboxRow{"NoText", std::string(64, '\0'), std::nullopt}),
    [](const auto& each) { return each.param.name; });

const std::set<std::string> installed{"org.example.Editor", "editor", "my-editor", "editor-1", "Käfer", "a b"};

bool isInstalled(const std::string& id) {
    return installed.contains(id);
}

struct ControlGroupRow {
    std::string name;
    std::string unit;
    std::optional<std::string> expected;

    friend void PrintTo(const ControlGroupRow& row, std::ostream* out) { *out << row.name; }
};

class ControlGroupTest : public testing::TestWithParam<ControlGroupRow> {
protected:
    static std::string inSlice(const std::string& unit) {
        return "0::/user.slice/user-1000.slice/user@1000.service/app.slice/" + unit;
    }
};

TEST_P(ControlGroupTest, NamesTheApplicationOfTheTable) {
    EXPECT_EQ(applicationIDFromControlGroup(inSlice(GetParam().unit) + "\n", isInstalled), GetParam().expected);
    EXPECT_EQ(applicationIDFromControlGroup(inSlice(GetParam().unit), isInstalled), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Scopes, ControlGroupTest,
    testing::Values(
        ControlGroupRow{"Random", "app-org.example.Editor-4711.scope", "org.example.Editor"},
        ControlGroupRow{"LauncherAndRandom", "app-gnome-org.example.Editor-4711.scope", "org.example.Editor"},
        ControlGroupRow{"LauncherWithADash", "app-some\\x2dlauncher-editor-4711.scope", "editor"},
        ControlGroupRow{"RandomOfLetters", "app-editor-9f0cafe.scope", "editor"},
        ControlGroupRow{"RandomThatCouldBelongToAnotherId", "app-editor-1.scope", "editor"},
        ControlGroupRow{"WithoutRandom", "app-org.example.Editor.scope", "org.example.Editor"},
        ControlGroupRow{"LauncherWithoutRandom", "app-gnome-org.example.Editor.scope", "org.example.Editor"},
        ControlGroupRow{"EscapedDash", "app-gnome-my\\x2deditor-4711.scope", "my-editor"},
        ControlGroupRow{"EscapedDashInAnUpperCaseEscape", "app-gnome-my\\x2Deditor-4711.scope", "my-editor"},
        ControlGroupRow{"EscapedLettersBeyondAscii", "app-K\\xc3\\xa4fer-4711.scope", "Käfer"},
        ControlGroupRow{"EscapedBlank", "app-a\\x20b-4711.scope", "a b"},
        ControlGroupRow{"TheLongestReading", "app-my-editor-4711.scope", "my-editor"}),
    [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Services, ControlGroupTest,
    testing::Values(ControlGroupRow{"Bare", "app-org.example.Editor.service", "org.example.Editor"},
                    ControlGroupRow{"Launcher", "app-gnome-org.example.Editor.service", "org.example.Editor"},
                    ControlGroupRow{"Instance", "app-org.example.Editor@4711.service", "org.example.Editor"},
                    ControlGroupRow{"LauncherAndInstance", "app-dbus-org.example.Editor@autostart.service",
                                    "org.example.Editor"},
                    ControlGroupRow{"EmptyInstance", "app-org.example.Editor@.service", "org.example.Editor"},
                    ControlGroupRow{"InstanceWithADash", "app-org.example.Editor@a-b.service", "org.example.Editor"}),
    [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Others, ControlGroupTest,
    testing::Values(ControlGroupRow{"UnknownId", "app-gnome-org.example.Other-4711.scope", std::nullopt},
                    ControlGroupRow{"Session", "session-2.scope", std::nullopt},
                    ControlGroupRow{"OtherService", "editor.service", std::nullopt},
                    ControlGroupRow{"OtherUnit", "app-editor-4711.slice", std::nullopt},
                    ControlGroupRow{"NoUnit", "", std::nullopt},
                    ControlGroupRow{"OnlyThePrefix", "app-.scope", std::nullopt},
                    ControlGroupRow{"OnlyThePrefixOfAService", "app-.service", std::nullopt},
                    ControlGroupRow{"BrokenEscape", "app-editor\\x2-4711.scope", std::nullopt},
                    ControlGroupRow{"EscapeCutOff", "app-editor\\x.service", std::nullopt},
                    ControlGroupRow{"EscapeOfNoHexadecimalNumber", "app-editor\\xzz-4711.scope", std::nullopt}),
    [](const auto& each) { return each.param.name; });

TEST(ControlGroupFileTest, WithoutTextNamesNoApplication) {
    EXPECT_EQ(applicationIDFromControlGroup("", isInstalled), std::nullopt);
    EXPECT_EQ(applicationIDFromControlGroup("\n", isInstalled), std::nullopt);
    EXPECT_EQ(applicationIDFromControlGroup("0::/\n", isInstalled), std::nullopt);
}

TEST(ControlGroupFileTest, MayListOlderHierarchiesBeforeTheUnit) {
    EXPECT_EQ(applicationIDFromControlGroup("12:pids:/user.slice/user-1000.slice\n"
                                            "1:name=systemd:/user.slice/app.slice/app-org.example.Editor-1.scope\n"
                                            "0::/user.slice/app.slice/app-org.example.Editor-1.scope\n",
                                            isInstalled),
              "org.example.Editor");
}

TEST(ControlGroupFileTest, NeverNamesAnApplicationThatIsNotKnown) {
    constexpr std::string_view pieces = "app-\\x2d.scope.service@/\nx\\";
    std::mt19937 random(11);
    for (int round = 0; round < 5000; ++round) {
        std::string text = "0::/app-";
        for (int i = 0; i < 12; ++i) text += pieces.substr(random() % pieces.size(), random() % 8);

        EXPECT_EQ(applicationIDFromControlGroup(text, [](const std::string&) { return false; }), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace velmorand
