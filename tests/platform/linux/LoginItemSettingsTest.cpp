#include "platform/linux/LoginItemSettings.h"

#include "platform/linux/support/SettingsPageFixture.h"
#include "support/SimulatedPrinting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LoginItemSettingsTest : public SettingsPageFixture, public testing::WithParamInterface<SettingsPageRow> {
protected:
    void openOn(const std::string& desktop) {
        const Desktop running(*this, desktop);
        LoginItemSettings(log).open();
    }
};

TEST_P(LoginItemSettingsTest, AreOpenedByTheDesktopsProgram) {
    install(GetParam().program);

    openOn(GetParam().desktop);

    EXPECT_EQ(told(), GetParam().program + "|" + GetParam().arguments);
    EXPECT_THAT(log.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, LoginItemSettingsTest,
                         testing::Values(SettingsPageRow{"ubuntu:GNOME", "gnome-session-properties", ""},
                                         SettingsPageRow{"GNOME", "gnome-tweaks", ""},
                                         SettingsPageRow{"KDE", "systemsettings", "kcm_autostart|"},
                                         SettingsPageRow{"KDE", "systemsettings5", "kcm_autostart|"},
                                         SettingsPageRow{"KDE", "kcmshell6", "kcm_autostart|"},
                                         SettingsPageRow{"KDE", "kcmshell5", "kcm_autostart|"},
                                         SettingsPageRow{"XFCE", "xfce4-session-settings", ""},
                                         SettingsPageRow{"MATE", "mate-session-properties", ""},
                                         SettingsPageRow{"X-Cinnamon", "cinnamon-settings", "startup|"},
                                         SettingsPageRow{"LXQt", "lxqt-config-session", ""}));

class LoginItemSettingsTroubleTest : public LoginItemSettingsTest {};

TEST_F(LoginItemSettingsTroubleTest, ADesktopWithoutAPageLeavesALineThatNamesIt) {
    openOn("i3");

    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::info, "app",
                                                 "No settings of login items to open: XDG_CURRENT_DESKTOP is \"i3\", "
                                                 "which names none of GNOME, KDE, XFCE, MATE, X-Cinnamon, LXQt."}));
}

TEST_F(LoginItemSettingsTroubleTest, AMissingProgramLeavesALineThatNamesWhatWasLookedFor) {
    openOn("GNOME");

    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::error, "app",
                                                 "Cannot open the settings of login items: not found in PATH: "
                                                 "gnome-session-properties, gnome-tweaks"}));
}

}  // namespace
}  // namespace velmorand
