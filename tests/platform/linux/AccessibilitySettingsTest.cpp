#include "platform/linux/AccessibilitySettings.h"

#include "platform/linux/support/SettingsPageFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

namespace velmorand {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

class AccessibilitySettingsTest : public SettingsPageFixture, public testing::WithParamInterface<SettingsPageRow> {
protected:
    void openOn(const std::string& desktop) {
        const Desktop running(*this, desktop);
        AccessibilitySettings(log).open();
    }
};

TEST_P(AccessibilitySettingsTest, AreOpenedByTheDesktopsProgram) {
    install(GetParam().program);

    openOn(GetParam().desktop);

    EXPECT_EQ(told(), GetParam().program + "|" + GetParam().arguments);
    EXPECT_THAT(log.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, AccessibilitySettingsTest,
                         testing::Values(SettingsPageRow{"ubuntu:GNOME", "gnome-control-center", "universal-access|"},
                                         SettingsPageRow{"KDE", "systemsettings", "kcm_access|"},
                                         SettingsPageRow{"KDE", "systemsettings5", "kcm_access|"},
                                         SettingsPageRow{"KDE", "kcmshell6", "kcm_access|"},
                                         SettingsPageRow{"KDE", "kcmshell5", "kcm_access|"},
                                         SettingsPageRow{"XFCE", "xfce4-accessibility-settings", ""},
                                         SettingsPageRow{"MATE", "mate-at-properties", ""},
                                         SettingsPageRow{"X-Cinnamon", "cinnamon-settings", "universal-access|"}));

class AccessibilitySettingsTroubleTest : public AccessibilitySettingsTest {};

TEST_F(AccessibilitySettingsTroubleTest, TheFirstOfSeveralProgramsIsStarted) {
    install("kcmshell5");
    install("systemsettings");
    install("systemsettings5");

    openOn("KDE");

    EXPECT_EQ(told(), "systemsettings|kcm_access|");
}

TEST_F(AccessibilitySettingsTroubleTest, AProgramStartsWithoutInputAndWithSignalsAsUsual) {
    sigset_t blocked{};
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigset_t before{};
    sigprocmask(SIG_BLOCK, &blocked, &before);
    const auto pipeBefore = std::signal(SIGPIPE, SIG_IGN);
    install(
        "mate-at-properties",
        "if read line; then echo input; fi; "
        R"(while read name value; do case $name in SigBlk:|SigIgn:) echo "$name $value";; esac; done </proc/$$/status)");

    openOn("MATE");

    EXPECT_EQ(told(), "SigBlk: 0000000000000000\nSigIgn: 0000000000000000\n");
    std::signal(SIGPIPE, pipeBefore);
    sigprocmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(AccessibilitySettingsTroubleTest, ADesktopWithoutAPageLeavesALineThatNamesIt) {
    openOn("sway:wlroots");

    EXPECT_THAT(log.lines(),
                ElementsAre(AllOf(Field(&LogLine::category, "ax"),
                                  Field(&LogLine::text, "No accessibility settings to open: XDG_CURRENT_DESKTOP is "
                                                        "\"sway:wlroots\", which names none of GNOME, KDE, XFCE, "
                                                        "MATE, X-Cinnamon."))));
}

TEST_F(AccessibilitySettingsTroubleTest, AKnownDesktopWithoutAPageLeavesThatLineToo) {
    openOn("LXQt");

    EXPECT_THAT(log.lines(), ElementsAre(Field(&LogLine::text, HasSubstr("XDG_CURRENT_DESKTOP is \"LXQt\", which"))));
}

TEST_F(AccessibilitySettingsTroubleTest, AMissingProgramLeavesALineThatNamesWhatWasLookedFor) {
    openOn("KDE");

    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::error, "ax",
                                                 "Cannot open the accessibility settings: not found in PATH: "
                                                 "systemsettings, systemsettings5, kcmshell6, kcmshell5"}));
}

TEST_F(AccessibilitySettingsTroubleTest, AProgramThatCannotBeStartedLeavesALineWithTheReason) {
    write("bin/mate-at-properties", "#!/absent/interpreter\n");

    openOn("MATE");

    EXPECT_THAT(log.lines(), ElementsAre(AllOf(Field(&LogLine::level, LogLevel::error), Field(&LogLine::category, "ax"),
                                               Field(&LogLine::text, HasSubstr("No such file or directory")))));
}

TEST_F(AccessibilitySettingsTroubleTest, AFileThatMayNotBeRunIsNoProgram) {
    folder_.write("bin/mate-at-properties", "text");

    openOn("MATE");

    EXPECT_THAT(log.lines(), ElementsAre(Field(&LogLine::text, HasSubstr("not found in PATH: mate-at-properties"))));
}

}  // namespace
}  // namespace velmorand
