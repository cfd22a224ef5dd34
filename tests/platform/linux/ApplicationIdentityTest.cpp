#include "platform/linux/ApplicationIdentity.h"

#include "platform/linux/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ostream>
#include <string>
#include <utility>

namespace velmorand {

void PrintTo(const ApplicationIdentity& identity, std::ostream* out) {
    *out << identity.identifier.value_or("no identifier") << " \"" << identity.name.value_or("no name") << '"';
}

namespace {

using testing::ExitedWithCode;

/// Clues, put together one by one.
class Clues {
public:
    Clues& process(std::int32_t pid) {
        clues_.pid = pid;
        return *this;
    }
    Clues& desktopFile(std::string file) {
        clues_.declaredDesktopFile = std::move(file);
        return *this;
    }
    Clues& applicationID(std::string id) {
        clues_.declaredApplicationID = std::move(id);
        return *this;
    }
    Clues& windowClass(std::string name) {
        clues_.windowClass = std::move(name);
        return *this;
    }
    Clues& windowInstance(std::string name) {
        clues_.windowInstance = std::move(name);
        return *this;
    }

    operator const ApplicationClues&() const { return clues_; }

private:
    ApplicationClues clues_;
};

/// An index of desktop entries and a process, both made up. Each entry can be reached by one clue alone.
class ApplicationIdentityTest : public testing::Test {
protected:
    static constexpr std::int32_t pid = 4711;

    ApplicationIdentityTest() {
        addEntry("org.example.Declared");
        addEntry("org.example.Toolkit");
        addEntry("org.example.Sandboxed");
        addEntry("org.example.Unit", "Exec=/usr/bin/the-program\n");
        addEntry("by-class", "StartupWMClass=Class-Key\n");
        addEntry("by-instance", "StartupWMClass=Instance-Key\n");
        addEntry("class-base");
        addEntry("org.example.ReverseBase");
        addEntry("by-executable", "Exec=/usr/bin/the-program %U\n");
    }

    void addEntry(const std::string& id, const std::string& more = "") const {
        folder.write("data/applications/" + id + ".desktop",
                     "[Desktop Entry]\nType=Application\nName=Name of " + id + "\n" + more);
    }

    void setProcessFile(const std::string& name, std::string_view text) const {
        folder.write("proc/" + std::to_string(pid) + "/" + name, text);
    }
    void setSandbox(const std::string& id) const {
        setProcessFile("root/.flatpak-info", "[Application]\nname=" + id + "\n");
    }
    void setControlGroup(const std::string& unit) const {
        setProcessFile("cgroup", "0::/user.slice/user-1000.slice/user@1000.service/app.slice/" + unit + "\n");
    }
    void setExecutable(std::string_view path) const { folder.link("proc/" + std::to_string(pid) + "/exe", path); }

    [[nodiscard]] ApplicationIdentity identify(const ApplicationClues& clues) {
        return identifyApplication(clues, entries, folder.path() / "proc");
    }
    [[nodiscard]] std::optional<std::string> identifierFor(const ApplicationClues& clues) {
        return identify(clues).identifier;
    }

    ScratchFolder folder;
    DesktopEntries entries{{folder.path() / "data"}, {}};
};

TEST_F(ApplicationIdentityTest, IsAbsentWithoutClues) {
    EXPECT_EQ(identify(Clues()), ApplicationIdentity());
}

TEST_F(ApplicationIdentityTest, IsAbsentForAProcessThatSaysNothing) {
    EXPECT_EQ(identify(Clues().process(pid)), ApplicationIdentity());
}

TEST_F(ApplicationIdentityTest, FallsBackToTheWindowClass) {
    EXPECT_EQ(identify(Clues().process(pid).windowClass("Unknown").windowInstance("unknown")),
              (ApplicationIdentity{"Unknown", "Unknown"}));
}

TEST_F(ApplicationIdentityTest, HasTheNameOfItsEntry) {
    EXPECT_EQ(identify(Clues().desktopFile("org.example.Declared")),
              (ApplicationIdentity{"org.example.Declared", "Name of org.example.Declared"}));
}

TEST_F(ApplicationIdentityTest, HasTheWindowClassAsNameWhenItsEntryHasNone) {
    folder.write("data/applications/nameless.desktop", "[Desktop Entry]\nType=Application\n");

    EXPECT_EQ(identify(Clues().applicationID("nameless").windowClass("Nameless-class")),
              (ApplicationIdentity{"nameless", "Nameless-class"}));
}

TEST_F(ApplicationIdentityTest, FollowsADeclaredFileInEveryForm) {
    EXPECT_EQ(identifierFor(Clues().desktopFile("org.example.Declared")), "org.example.Declared");
    EXPECT_EQ(identifierFor(Clues().desktopFile("org.example.Declared.desktop")), "org.example.Declared");
    EXPECT_EQ(identifierFor(Clues().desktopFile("/usr/share/applications/org.example.Declared.desktop")),
              "org.example.Declared");
}

TEST_F(ApplicationIdentityTest, SurvivesADeclaredFileThatIsNone) {
    EXPECT_EQ(identifierFor(Clues().desktopFile("").windowClass("Class")), "Class");
    EXPECT_EQ(identifierFor(Clues().desktopFile("/").windowClass("Class")), "Class");
    EXPECT_EQ(identifierFor(Clues().desktopFile(".desktop").windowClass("Class")), "Class");
    EXPECT_EQ(identifierFor(Clues().desktopFile("../../org.example.Missing.desktop").windowClass("Class")), "Class");
}

TEST_F(ApplicationIdentityTest, TakesTheMostReliableClueThatLeadsToAnEntry) {
    setSandbox("org.example.Sandboxed");
    setControlGroup("app-org.example.Unit-4711.scope");
    setExecutable("/usr/bin/the-program");
    ApplicationClues clues = Clues()
                                 .process(pid)
                                 .desktopFile("org.example.Declared")
                                 .applicationID("org.example.Toolkit")
                                 .windowClass("Class-Key")
                                 .windowInstance("class-base");
    EXPECT_EQ(identifierFor(clues), "org.example.Declared");

    clues.declaredDesktopFile = "org.example.Missing";
    EXPECT_EQ(identifierFor(clues), "org.example.Toolkit");

    clues.declaredApplicationID = "org.example.Missing";
    EXPECT_EQ(identifierFor(clues), "org.example.Sandboxed");

    setSandbox("org.example.Missing");
    EXPECT_EQ(identifierFor(clues), "org.example.Unit");

    setControlGroup("session-2.scope");
    EXPECT_EQ(identifierFor(clues), "by-class");

    clues.windowClass = "Unknown";
    EXPECT_EQ(identifierFor(clues), "class-base");

    clues.windowInstance = "unknown";
    EXPECT_EQ(identifierFor(clues), "by-executable");

    clues.pid = std::nullopt;
    EXPECT_EQ(identifierFor(clues), "Unknown");
}

TEST_F(ApplicationIdentityTest, FollowsAWindowClassThatAnEntryNamesBeforeOneThatIsABaseName) {
    EXPECT_EQ(identifierFor(Clues().windowClass("class-base").windowInstance("Instance-Key")), "by-instance");
}

TEST_F(ApplicationIdentityTest, FollowsTheClassBeforeTheInstance) {
    EXPECT_EQ(identifierFor(Clues().windowClass("Class-Key").windowInstance("Instance-Key")), "by-class");
    EXPECT_EQ(identifierFor(Clues().windowClass("reversebase").windowInstance("class-base")),
              "org.example.ReverseBase");
}

TEST_F(ApplicationIdentityTest, FollowsTheClassInAnyLetterCase) {
    EXPECT_EQ(identifierFor(Clues().windowClass("CLASS-KEY")), "by-class");
    EXPECT_EQ(identifierFor(Clues().windowInstance("CLASS-BASE")), "class-base");
}

TEST_F(ApplicationIdentityTest, FollowsTheInstanceWithoutAClass) {
    EXPECT_EQ(identifierFor(Clues().windowInstance("Instance-Key")), "by-instance");
    EXPECT_EQ(identifierFor(Clues().windowInstance("unknown")), std::nullopt);
}

TEST_F(ApplicationIdentityTest, FollowsTheExecutable) {
    setExecutable("/opt/somewhere/the-program");

    EXPECT_EQ(identifierFor(Clues().process(pid).windowClass("Unknown")), "by-executable");
}

TEST_F(ApplicationIdentityTest, DoesNotTakeAProgramForTheTerminalInWhoseUnitItRuns) {
    setControlGroup("app-org.example.Unit-4711.scope");
    setExecutable("/usr/bin/another-program");

    EXPECT_EQ(identifierFor(Clues().process(pid).windowClass("Class-Key")), "by-class");
}

TEST_F(ApplicationIdentityTest, FollowsTheExecutableOfAProgramThatWasUpdatedWhileItRuns) {
    setExecutable("/opt/somewhere/the-program (deleted)");

    EXPECT_EQ(identifierFor(Clues().process(pid).windowClass("Unknown")), "by-executable");
}

class InterpreterTest : public ApplicationIdentityTest, public testing::WithParamInterface<std::string> {};

TEST_P(InterpreterTest, SaysNothingOfTheApplication) {
    addEntry("by-interpreter", "Exec=" + GetParam() + " /usr/share/tool/main\n");
    setExecutable("/usr/bin/" + GetParam());

    EXPECT_EQ(identifierFor(Clues().process(pid).windowClass("Unknown")), "Unknown");
}

INSTANTIATE_TEST_SUITE_P(Table, InterpreterTest,
                         testing::Values("python", "python3", "python3.11", "node", "java", "wine", "wine64",
                                         "wine64-preloader", "electron", "electron25", "perl", "ruby"));

TEST_F(ApplicationIdentityTest, FollowsAProgramWhoseNameOnlyBeginsLikeAnInterpreters) {
    addEntry("gems", "Exec=/opt/rubygems-browser\n");
    setExecutable("/opt/rubygems-browser");

    EXPECT_EQ(identifierFor(Clues().process(pid).windowClass("Unknown")), "gems");
}

TEST_F(ApplicationIdentityTest, SurvivesFilesOfAProcessThatHoldAnything) {
    setProcessFile("root/.flatpak-info", std::string(100000, '\xFF'));
    setProcessFile("cgroup", std::string(100000, '-'));

    EXPECT_EQ(identifierFor(Clues().process(pid).windowClass("Unknown")), "Unknown");
}

using ApplicationIdentityDeathTest = ApplicationIdentityTest;

TEST_F(ApplicationIdentityDeathTest, DoesNotWaitForASandboxFileThatNeverEnds) {
    folder.makePipe("proc/" + std::to_string(pid) + "/root/.flatpak-info");
    const ApplicationClues clues = Clues().process(pid).windowClass("Unknown");

    EXPECT_EXIT(
        {
            alarm(5);
            std::_Exit(identifierFor(clues) == "Unknown" ? 0 : 1);
        },
        ExitedWithCode(0), "");
}

}  // namespace
}  // namespace velmorand
