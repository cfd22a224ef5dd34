#include "windows/WindowActionCoding.h"

#include "support/Expected.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <string_view>

namespace velmorand {
namespace {

using Json = nlohmann::ordered_json;

TEST(WindowActionCoding, EncodesAnActionAsItsRawValue) {
    EXPECT_EQ(encodeWindowAction(WindowAction::leftHalf).dump(), R"("left")");
    EXPECT_EQ(encodeWindowAction(WindowAction::maximizeWindow).dump(), R"("maximize")");
    EXPECT_EQ(encodeWindowAction(WindowAction::centerTwoThirds).dump(), R"("centerTwoThirds")");
}

TEST(WindowActionCoding, DecodesWhatItEncodes) {
    for (const WindowAction action : allWindowActions) {
        SCOPED_TRACE(rawValue(action));
        EXPECT_EQ(valueOf(decodeWindowAction(encodeWindowAction(action))), action);
    }
}

TEST(WindowActionCoding, FailsForAStringThatIsNoRawValue) {
    EXPECT_EQ(failureOf(decodeWindowAction(Json("leftHalf")))->description, R"("leftHalf" is not an action.)");
    EXPECT_EQ(failureOf(decodeWindowAction(Json("")))->description, R"("" is not an action.)");
}

TEST(WindowActionCoding, FailsForAnythingButAString) {
    for (const std::string_view document : {"0", "null", "true", R"(["left"])", R"({"left":"left"})"}) {
        SCOPED_TRACE(document);
        EXPECT_EQ(failureOf(decodeWindowAction(Json::parse(document)))->description, "The action is not a string.");
    }
}

}  // namespace
}  // namespace velmorand
