#include "platform/linux/LinuxBundle.h"
#include "platform/linux/LinuxDisplays.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/support/FakeWindowSystem.h"
#include "platform/linux/support/ScopedEnvironment.h"
#include "platform/linux/support/ScratchFolder.h"
#include "platform/simulated/SimulatedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Optional;

TEST(LinuxBundleTest, KnowsItsIdentifierAndVersions) {
    const LinuxBundle bundle;

    EXPECT_EQ(bundle.identifier(), "app.velmorand.Velmorand");
    EXPECT_THAT(bundle.informationText("CFBundleShortVersionString"),
                Optional(MatchesRegex("[0-9]+[.][0-9]+[.][0-9]+")));
    EXPECT_THAT(bundle.informationText("CFBundleVersion"), Optional(MatchesRegex("[0-9]+")));
}

TEST(LinuxBundleTest, HasNoOtherTexts) {
    const LinuxBundle bundle;

    EXPECT_EQ(bundle.informationText("CFBundleName"), std::nullopt);
    EXPECT_EQ(bundle.informationText(""), std::nullopt);
}

TEST(LinuxDisplaysTest, AreReadAfreshFromTheWindowSystem) {
    FakeWindowSystem windowSystem;
    LinuxDisplays displays(windowSystem);
    EXPECT_THAT(displays.screens(), IsEmpty());

    const DisplayDescription display{7, "DP-1", {0, 0, 1920, 1080}, {0, 0, 1920, 1055}};
    windowSystem.displayList = {display};
    EXPECT_THAT(displays.screens(), ElementsAre(display));
}

class SettableMotionSource final : public MotionSource {
public:
    [[nodiscard]] std::optional<bool> reducesMotion() override { return reduces; }

    bool reduces = false;
};

class LinuxWorkspaceTest : public testing::Test {
protected:
    FakeWindowSystem windowSystem;
    SettableMotionSource motionSource;
    ReducedMotion reducedMotion{{&motionSource}};
    SimulatedLog log;
    AccessibilitySettings accessibilitySettings{log};
    ScratchFolder folder;
    DesktopApplications applications{DesktopEntries({folder.path()}, {})};
    UrlOpener urlOpener{log};
    LinuxWorkspace workspace{windowSystem, reducedMotion, accessibilitySettings, urlOpener, applications};
};

TEST_F(LinuxWorkspaceTest, AsksTheWindowSystemForTheFrontmostApplication) {
    EXPECT_EQ(workspace.frontmostApplication(), std::nullopt);

    const RunningApplication editor{501, "org.example.Editor", "Editor"};
    windowSystem.frontmost = editor;
    EXPECT_EQ(workspace.frontmostApplication(), editor);
}

TEST_F(LinuxWorkspaceTest, ReducesMotionWhereTheSessionDoes) {
    EXPECT_FALSE(workspace.accessibilityDisplayShouldReduceMotion());

    motionSource.reduces = true;
    EXPECT_TRUE(workspace.accessibilityDisplayShouldReduceMotion());
}

TEST_F(LinuxWorkspaceTest, OpensTheAccessibilitySettingsOfTheRunningDesktop) {
    const ScopedEnvironment names("XDG_CURRENT_DESKTOP", "nameless");

    workspace.openAccessibilitySettings();

    EXPECT_THAT(log.lines(), ElementsAre(testing::Field(&LogLine::category, "ax")));
}

TEST_F(LinuxWorkspaceTest, KnowsTheInstalledApplications) {
    folder.write("applications/org.example.Editor.desktop",
                 "[Desktop Entry]\nType=Application\nName=Editor\nIcon=editor\n");
    const std::filesystem::path location = folder.path() / "applications/org.example.Editor.desktop";
    const ApplicationIcon icon{ApplicationIcon::Source::theme, "editor"};

    EXPECT_EQ(workspace.applicationWithIdentifier("org.example.Editor"), location);
    EXPECT_EQ(workspace.displayName(location), "Editor");
    EXPECT_EQ(workspace.icon(location), icon);
    EXPECT_EQ(workspace.bundleIdentifier(location), "org.example.Editor");
    EXPECT_THAT(workspace.installedApplications(),
                ElementsAre(InstalledApplication{location, "org.example.Editor", "Editor", icon}));
}

}  // namespace
}  // namespace velmorand
