#include "windows/WindowActionCoding.h"

#include "support/Expected.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <string_view>

namespace velmorand {
namespace {

TEST(WindowActionCoding, EncodesAnActionAsItsRawValue) {
    EXPECT_EQ(encodeWindowAction(WindowAction::leftHalf).write(), R"("left")");
    EXPECT_EQ(encodeWindowAction(WindowAction::maximizeWindow).write(), R"("maximize")");
    EXPECT_EQ(encodeWindowAction(WindowAction::centerTwoThirds).write(), R"("centerTwoThirds")");
}

TEST(WindowActionCoding, DecodesWhatItEncodes) {
    for (const WindowAction action : allWindowActions) {
        SCOPED_TRACE(rawValue(action));
        EXPECT_EQ(valueOf(decodeWindowAction(encodeWindowAction(action))), action);
    }
}

TEST(WindowActionCoding, FailsForAStringThatIsNoRawValue) {
    EXPECT_EQ(failureOf(decodeWindowAction(JsonValue::text("leftHalf")))->description,
              R"("leftHalf" is not an action.)");
    EXPECT_EQ(failureOf(decodeWindowAction(JsonValue::text("")))->description, R"("" is not an action.)");
}

TEST(WindowActionCoding, FailsForAnythingButAString) {
    for (const std::string_view document : {"0", "null", "true", R"(["left"])", R"({"left":"left"})"}) {
        SCOPED_TRACE(document);
        EXPECT_EQ(failureOf(decodeWindowAction(JsonValue::parse(document).value()))->description,
                  "The action is not a string.");
    }
}

}  // namespace
}  // namespace velmorand
