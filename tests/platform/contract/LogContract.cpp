#include "platform/Log.h"
#include "platform/contract/Contracts.h"

#include <gmock/gmock.h>

namespace velmorand {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

TEST_P(LogContract, WritesEveryLineInItsOrder) {
    VELMORAND_NEEDS(Ability::readLog);
    Log& log = desktop->platform().log();

    log.write(LogLevel::info, "windows", "the first line");
    log.write(LogLevel::error, "ax", "the second line");

    EXPECT_THAT(desktop->logLines(), ElementsAre(HasSubstr("the first line"), HasSubstr("the second line")));
}

TEST_P(LogContract, ShowsALineEndInsideATextEscaped) {
    VELMORAND_NEEDS(Ability::readLog);

    desktop->platform().log().write(LogLevel::info, "windows", "before\nafter");

    ASSERT_THAT(desktop->logLines(), SizeIs(1));
    EXPECT_THAT(desktop->logLines().front(), HasSubstr("before"));
    EXPECT_THAT(desktop->logLines().front(), HasSubstr("after"));
    EXPECT_THAT(desktop->logLines().front(), Not(HasSubstr("\n")));
}

}  // namespace velmorand
