#include "base/JsonValue.h"
#include "base/UnicodeText.h"
#include "support/Properties.h"

namespace velmorand {
namespace {

JsonValue writtenAndRead(const JsonValue& value) {
    return JsonValue::parse(value.write()).value();
}

RC_GTEST_PROP(JsonValueProperty, TextIsTheSameAfterItWasWritten, ()) {
    const std::string text = validUtf8(*anyText());

    RC_ASSERT(*writtenAndRead(JsonValue::text(text)).asString() == text);
}

RC_GTEST_PROP(JsonValueProperty, AKeyIsTheSameAfterItWasWritten, ()) {
    const std::string key = validUtf8(*anyText());

    RC_ASSERT(writtenAndRead(JsonValue(JsonValue::Object{{key, JsonValue(true)}})).member(key) != nullptr);
}

RC_GTEST_PROP(JsonValueProperty, ADoubleIsTheSameAfterItWasWritten, ()) {
    const double number = *anyFiniteNumber();

    RC_ASSERT(writtenAndRead(JsonValue::number(number)).asDouble() == number);
}

RC_GTEST_PROP(JsonValueProperty, AnUnsignedNumberIsTheSameAfterItWasWritten, (std::uint32_t number)) {
    RC_ASSERT(writtenAndRead(JsonValue::number(number)).asUnsigned() == number);
    RC_ASSERT(writtenAndRead(JsonValue::number(static_cast<double>(number))).asUnsigned() == number);
}

RC_GTEST_PROP(JsonValueProperty, AnyBytesAreADocumentThatIsTheSameAfterItWasWrittenOrNone, ()) {
    const std::string bytes = *anyText();
    const std::string inQuotes = "\"" + bytes + "\"";
    for (const std::string& document : {bytes, inQuotes}) {
        const auto value = JsonValue::parse(document);
        if (value) RC_ASSERT(writtenAndRead(*value).write() == value->write());
        if (!value) RC_ASSERT(!value.error().description.empty());
    }
}

}  // namespace
}  // namespace velmorand
