#include "platform/Bundle.h"
#include "platform/contract/Contracts.h"

namespace velmorand {

TEST_P(BundleContract, SaysTheIdentifierOfTheProgram) {
    EXPECT_EQ(desktop->platform().bundle().identifier(), "app.velmorand.Velmorand");
}

TEST_P(BundleContract, SaysTheVersionOfTheProgram) {
    EXPECT_EQ(desktop->platform().bundle().informationText("CFBundleShortVersionString"), desktop->version());
}

TEST_P(BundleContract, ATextThatIsNotThereIsAbsent) {
    EXPECT_EQ(desktop->platform().bundle().informationText("CFBundleNonsense"), std::nullopt);
    EXPECT_EQ(desktop->platform().bundle().informationText(""), std::nullopt);
}

}  // namespace velmorand
