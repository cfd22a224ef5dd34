#include "platform/linux/LinuxBundle.h"
#include "platform/linux/LinuxDisplays.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/support/FakeWindowSystem.h"

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

TEST(LinuxWorkspaceTest, AsksTheWindowSystemForTheFrontmostApplication) {
    FakeWindowSystem windowSystem;
    LinuxWorkspace workspace(windowSystem);
    EXPECT_EQ(workspace.frontmostApplication(), std::nullopt);

    const RunningApplication editor{501, "org.example.Editor", "Editor"};
    windowSystem.frontmost = editor;
    EXPECT_EQ(workspace.frontmostApplication(), editor);
}

}  // namespace
}  // namespace velmorand
