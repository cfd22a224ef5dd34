#include "platform/Logger.h"

#include "platform/simulated/SimulatedLog.h"
#include "support/SimulatedPrinting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmorand {
namespace {

using testing::ElementsAre;

TEST(Logger, WritesEachLevelInItsCategory) {
    SimulatedLog log;
    const Logger logger(log, "windows");

    logger.debug("a {}", 1);
    logger.info("b {}", "two");
    logger.error("c {} {}", -3, 0.5);

    EXPECT_THAT(log.lines(),
                ElementsAre(LogLine{LogLevel::debug, "windows", "a 1"}, LogLine{LogLevel::info, "windows", "b two"},
                            LogLine{LogLevel::error, "windows", "c -3 0.5"}));
}

TEST(Logger, WritesATextWithoutArgumentsAsItIs) {
    SimulatedLog log;

    Logger(log, "ax").info("nothing to fill in");

    EXPECT_THAT(log.lines(), ElementsAre(LogLine{LogLevel::info, "ax", "nothing to fill in"}));
}

}  // namespace
}  // namespace velmorand
