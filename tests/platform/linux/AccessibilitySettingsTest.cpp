#include "platform/linux/AccessibilitySettings.h"

#include "platform/linux/DetachedProcess.h"
#include "platform/linux/support/ScopedEnvironment.h"
#include "platform/linux/support/ScratchFolder.h"
#include "platform/simulated/SimulatedLog.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <ostream>
#include <string>

namespace velmorand {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

struct CommandRow {
    std::string desktop;
    std::string program;
    std::string arguments;

    friend void PrintTo(const CommandRow& row, std::ostream* out) { *out << row.program; }
};

/// Programs in a folder that is all of PATH; each tells through a pipe that it was started, and how.
class AccessibilitySettingsTest : public testing::TestWithParam<CommandRow> {
protected:
    AccessibilitySettingsTest() { folder_.makePipe("told"); }
    ~AccessibilitySettingsTest() override { close(pipe_); }

    AccessibilitySettingsTest(const AccessibilitySettingsTest&) = delete;
    AccessibilitySettingsTest& operator=(const AccessibilitySettingsTest&) = delete;

    void SetUp() override {
        pipe_ = ::open((folder_.path() / "told").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        ASSERT_GE(pipe_, 0);
    }

    /// A program of the shell's own commands alone, as there is no other in PATH.
    void install(const std::string& name, const std::string& command = R"(printf '%s|' "${0##*/}" "$@")") {
        write("bin/" + name, "#!/bin/sh\n{ " + command + "; } >" + (folder_.path() / "told").native() + "\n");
    }
    void write(const std::string& name, const std::string& text) {
        folder_.write(name, text);
        fs::permissions(folder_.path() / name, fs::perms::owner_all);
    }

    /// What the program told before it ended; empty when none was started.
    std::string told() {
        std::string text;
        for (;;) {
            pollfd waiting{.fd = pipe_, .events = POLLIN, .revents = 0};
            if (poll(&waiting, 1, 15'000) <= 0) return text;
            std::array<char, 256> buffer{};
            const ssize_t count = read(pipe_, buffer.data(), buffer.size());
            if (count <= 0) return text;
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
    }

    void openOn(const std::string& desktop) {
        const ScopedEnvironment names("XDG_CURRENT_DESKTOP", desktop);
        const ScopedEnvironment path("PATH", (folder_.path() / "bin").native());
        AccessibilitySettings(log).open();
    }

    ScratchFolder folder_;
    SimulatedLog log;

private:
    int pipe_ = -1;
};

TEST_P(AccessibilitySettingsTest, AreOpenedByTheDesktopsProgram) {
    install(GetParam().program);

    openOn(GetParam().desktop);

    EXPECT_EQ(told(), GetParam().program + "|" + GetParam().arguments);
    EXPECT_THAT(log.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, AccessibilitySettingsTest,
                         testing::Values(CommandRow{"ubuntu:GNOME", "gnome-control-center", "universal-access|"},
                                         CommandRow{"KDE", "systemsettings", "kcm_access|"},
                                         CommandRow{"KDE", "systemsettings5", "kcm_access|"},
                                         CommandRow{"KDE", "kcmshell6", "kcm_access|"},
                                         CommandRow{"KDE", "kcmshell5", "kcm_access|"},
                                         CommandRow{"XFCE", "xfce4-accessibility-settings", ""},
                                         CommandRow{"MATE", "mate-at-properties", ""},
                                         CommandRow{"X-Cinnamon", "cinnamon-settings", "universal-access|"}));

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
