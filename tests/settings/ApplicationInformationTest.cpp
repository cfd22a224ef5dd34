#include "settings/ApplicationInformation.h"

#include "platform/simulated/SimulatedBundle.h"

#include <gtest/gtest.h>

#include <QVariant>

namespace velmorand {
namespace {

TEST(ApplicationInformationTest, TheVersionTextHasTheBuildInParentheses) {
    SimulatedBundle bundle;
    bundle.setInformationText("CFBundleShortVersionString", "1.4.2");
    bundle.setInformationText("CFBundleVersion", "37");
    EXPECT_EQ(versionText(bundle), "1.4.2 (37)");
}

TEST(ApplicationInformationTest, ABundleThatSaysNothingHasTheFirstVersionAndBuild) {
    SimulatedBundle bundle;
    EXPECT_EQ(versionText(bundle), "0.1.0 (1)");
    bundle.setInformationText("CFBundleVersion", "37");
    EXPECT_EQ(versionText(bundle), "0.1.0 (37)");
}

TEST(ApplicationInformationTest, ABundleWithoutABuildHasTheFirstOne) {
    SimulatedBundle bundle;
    bundle.setInformationText("CFBundleShortVersionString", "1.4.2");
    EXPECT_EQ(versionText(bundle), "1.4.2 (1)");
}

TEST(ApplicationInformationTest, OffersVersionIdentifierAndAddress) {
    SimulatedBundle bundle;
    const ApplicationInformation information(bundle);
    EXPECT_EQ(information.property("versionText").toString(), QStringLiteral("0.1.0 (1)"));
    EXPECT_EQ(information.property("bundleIdentifier").toString(), QStringLiteral("app.velmorand.Velmorand"));
    EXPECT_EQ(information.property("contactAddress").toString(), QStringLiteral("support@velmorand.app"));
}

TEST(ApplicationInformationTest, ACopyWithoutIdentifierShowsNone) {
    SimulatedBundle bundle;
    bundle.setIdentifier(std::nullopt);
    EXPECT_EQ(ApplicationInformation(bundle).property("bundleIdentifier").toString(), QString());
}

}  // namespace
}  // namespace velmorand
